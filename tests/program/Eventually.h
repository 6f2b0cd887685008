// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

#include <algorithm>
#include <chrono>

namespace veldron {

/// Waits until \a holds returns true, for \a limit at most. Returns its last result.
///
/// It looks every 20 ms. A look that takes long itself, such as one at a whole picture, comes less
/// often, so that a waiting test leaves the processor to others; at least five times a second.
template <typename Condition>
[[nodiscard]] bool eventually(std::chrono::milliseconds limit, Condition holds) {
    constexpr qint64 kShortest = 20;
    constexpr qint64 kLongest = 150;
    QElapsedTimer since;
    since.start();
    for (;;) {
        const qint64 begin = since.elapsed();
        if (holds()) {
            return true;
        }
        if (since.hasExpired(limit.count())) {
            return false;
        }
        const qint64 look = since.elapsed() - begin;
        QCoreApplication::processEvents();
        QThread::msleep(static_cast<unsigned long>(std::clamp(3 * look, kShortest, kLongest)));
    }
}

} // namespace veldron
