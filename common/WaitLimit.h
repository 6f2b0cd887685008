// SPDX-License-Identifier: MIT
#pragma once

#include "common/Clock.h"

#include <QtGlobal>

namespace veldron {

/// Ends a wait whose own limit is a difference of two times of day.
///
/// Such a difference is negative after midnight, and so the limit isn't reached until the clock
/// shows the old time again, a day later. Each of these waits also asks this object, made when the
/// wait begins, and ends when the steady clock has moved on by kLongestMilliseconds.
class WaitLimit {
public:
    /// A minute: four times the longest wait of the program, that of an image download (168036
    /// bytes of 10 bits at 115200 baud), so that it ends none before its own limit.
    static constexpr qint64 kLongestMilliseconds = 60000;

    explicit WaitLimit(Clock &clock) : m_clock(clock), m_start(clock.steadyMilliseconds()) {}

    [[nodiscard]] bool isReached() const {
        return m_clock.steadyMilliseconds() - m_start >= kLongestMilliseconds;
    }

private:
    Clock &m_clock;
    qint64 m_start;
};

} // namespace veldron
