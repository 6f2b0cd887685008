// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>

namespace veldron {

/// The one source of time. The program's reads the machine, a test's is moved by hand.
class Clock {
public:
    Clock() = default;
    Clock(const Clock &) = delete;
    Clock &operator=(const Clock &) = delete;
    virtual ~Clock() = default;

    /// Local time of day in seconds since midnight, from 0 up to 86400, in single precision
    /// (steps of 1/128 s in the evening).
    [[nodiscard]] virtual float timeOfDay() = 0;
    /// Local date and time of day of one and the same moment, to the millisecond.
    [[nodiscard]] virtual QDateTime now() = 0;
    /// A steady reading in milliseconds: it starts anywhere, never goes back, and knows neither
    /// midnight nor a change of the system's time. For differences only.
    [[nodiscard]] virtual qint64 steadyMilliseconds() = 0;
    /// Rests the thread for about \a milliseconds, without running the event loop.
    virtual void rest(int milliseconds) = 0;
};

} // namespace veldron
