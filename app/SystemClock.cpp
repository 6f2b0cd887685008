// SPDX-License-Identifier: MIT
#include "app/SystemClock.h"

#include <QThread>

#include <chrono>

namespace veldron {

float SystemClock::timeOfDay() {
    return static_cast<float>(QTime::currentTime().msecsSinceStartOfDay()) / 1000.0F;
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
