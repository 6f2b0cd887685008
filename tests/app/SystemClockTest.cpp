// SPDX-License-Identifier: MIT
#include "app/SystemClock.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

TEST(SystemClock, timeOfDay_isThatOfNow) {
    SystemClock clock;
    const QDateTime before = clock.now();
    const float reading = clock.timeOfDay();
    const QDateTime after = clock.now();
    if (before.date() == after.date()) {
        EXPECT_GE(reading, static_cast<float>(before.time().msecsSinceStartOfDay()) / 1000.0F);
        EXPECT_LE(reading, static_cast<float>(after.time().msecsSinceStartOfDay()) / 1000.0F);
    } else {
        EXPECT_TRUE(reading >= 86399.0F || reading <= 1.0F); // midnight came in between
    }
}

TEST(SystemClock, rest_movesTheSteadyReadingByAtLeastThat) {
    SystemClock clock;
    const qint64 before = clock.steadyMilliseconds();
    clock.rest(3);
    EXPECT_GE(clock.steadyMilliseconds() - before, 3);
}

} // namespace
} // namespace veldron
