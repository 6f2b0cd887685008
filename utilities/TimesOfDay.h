// SPDX-License-Identifier: MIT
// Times of day in seconds since midnight: waiting, differences across midnight, and their text.
#pragma once

#include "common/Clock.h"

#include <QString>

namespace veldron::GeneralUtilities {

/// Holds the thread until \a Seconds have passed on \a clock; the event loop does not run.
/// It compares times of day, which start again at midnight, so a wait that crosses midnight ends
/// only with WaitLimit, after a minute.
void WaitSeconds(Clock &clock, float Seconds);
/// \a To minus \a From, both seconds since midnight, folded into -43200 up to but not including
/// 43200, so that two moments just across midnight are a small difference apart.
[[nodiscard]] float TimeDifference(float From, float To);
/// A time of day as "01:01", or "01:01:01" with \a ShowSeconds; whole days are taken off or added.
/// Exactly 86400 prints as hour 24. Infinity and NaN print as 0.
[[nodiscard]] QString TimeText(float Seconds, bool ShowSeconds);

} // namespace veldron::GeneralUtilities
