// SPDX-License-Identifier: MIT
#include "utilities/TimesOfDay.h"

#include "common/TimeOfDay.h"
#include "common/WaitLimit.h"

#include <cmath>

namespace veldron::GeneralUtilities {

namespace {

constexpr float kDay = kSecondsPerDay;
constexpr float kHalfDay = kDay / 2.0F;
/// Longest rest between two looks at the clock.
constexpr int kRestMilliseconds = 5;

QString twoDigits(int number) {
    return QString::number(number).rightJustified(2, QLatin1Char('0'));
}

} // namespace

void WaitSeconds(Clock &clock, float Seconds) {
    const float start = clock.timeOfDay();
    const WaitLimit longest(clock);
    float now = start;
    // The plain difference, so a wait across midnight is ended by the steady clock below.
    while (start + Seconds > now && !longest.isReached()) {
        clock.rest(kRestMilliseconds);
        now = clock.timeOfDay();
    }
}

float TimeDifference(float From, float To) {
    const float difference = To - From;
    if (difference >= kHalfDay) {
        return difference - kDay;
    }
    return difference < -kHalfDay ? difference + kDay : difference;
}

QString TimeText(float Seconds, bool ShowSeconds) {
    float rest = std::isfinite(Seconds) ? std::fmod(Seconds, kDay) : 0.0F;
    if (rest < 0.0F) {
        rest += kDay;
    } else if (rest == 0.0F && Seconds >= kDay && std::isfinite(Seconds)) {
        // A whole day is hour 24, not hour 0.
        rest = kDay;
    }
    const int whole = static_cast<int>(rest);
    QString text = twoDigits(whole / 3600) + QLatin1Char(':') + twoDigits(whole % 3600 / 60);
    if (ShowSeconds) {
        text += QLatin1Char(':') + twoDigits(whole % 60);
    }
    return text;
}

} // namespace veldron::GeneralUtilities
