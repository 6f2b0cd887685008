// SPDX-License-Identifier: MIT
#include "app/SystemClock.h"

#include "common/TimeOfDay.h"

#include <QThread>

#include <chrono>

namespace veldron {

namespace {

constexpr qint64 kMillisecondsPerSecond = 1000;
constexpr qint64 kMillisecondsPerDay = kMillisecondsPerSecond * kSecondsPerDay;

} // namespace

float SystemClock::timeOfDay() {
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    // Each time that the system is asked for the offset it looks for a new time zone file, which
    // was a fifth of a poll's processor time. The offset changes with a whole second only.
    if (const qint64 second = now / kMillisecondsPerSecond; second != m_second) {
        m_second = second;
        m_offsetMilliseconds =
            qint64{QDateTime::fromMSecsSinceEpoch(now).offsetFromUtc()} * kMillisecondsPerSecond;
    }
    return static_cast<float>((now + m_offsetMilliseconds) % kMillisecondsPerDay) / 1000.0F;
}

QDateTime SystemClock::now() {
    return QDateTime::currentDateTime();
}

qint64 SystemClock::steadyMilliseconds() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

void SystemClock::rest(int milliseconds) {
    QThread::msleep(static_cast<unsigned long>(qMax(milliseconds, 0)));
}

} // namespace veldron
