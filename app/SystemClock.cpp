// SPDX-License-Identifier: MIT
#include "app/SystemClock.h"

#include <QThread>

namespace veldron {

float SystemClock::timeOfDay() {
    return static_cast<float>(QTime::currentTime().msecsSinceStartOfDay()) / 1000.0F;
}

QDateTime SystemClock::now() {
    return QDateTime::currentDateTime();
}

void SystemClock::rest(int milliseconds) {
    QThread::msleep(static_cast<unsigned long>(qMax(milliseconds, 0)));
}

} // namespace veldron
