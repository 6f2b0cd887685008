// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

#include <chrono>

namespace veldron {

/// Waits until \a holds returns true, for \a limit at most. Returns its last result.
template <typename Condition>
[[nodiscard]] bool eventually(std::chrono::milliseconds limit, Condition holds) {
    constexpr unsigned long kPause = 20;
    QElapsedTimer since;
    since.start();
    while (!holds()) {
        if (since.hasExpired(limit.count())) {
            return false;
        }
        QCoreApplication::processEvents();
        QThread::msleep(kPause);
    }
    return true;
}

} // namespace veldron
