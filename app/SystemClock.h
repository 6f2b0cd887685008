// SPDX-License-Identifier: MIT
#pragma once

#include "common/Clock.h"

namespace veldron {

/// The machine's local time. Times of day follow the system's clock and its time zone, also when
/// either is changed while the program runs.
class SystemClock : public Clock {
public:
    float timeOfDay() override;
    QDateTime now() override;
    qint64 steadyMilliseconds() override;
    void rest(int milliseconds) override;

private:
    /// The offset of local time from UTC, cached for the second that it was asked in.
    qint64 m_second = -1; ///< since 1970, of the offset
    qint64 m_offsetMilliseconds = 0;
};

} // namespace veldron
