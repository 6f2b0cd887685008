// SPDX-License-Identifier: MIT
#include "tests/support/ManualClock.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

TEST(ManualClock, advanceOverMidnight_startsTheNextDay) {
    ManualClock clock(86399.5, QDate(2026, 12, 31));
    clock.advance(1.0);
    EXPECT_FLOAT_EQ(clock.timeOfDay(), 0.5F);
    EXPECT_EQ(clock.now(), QDateTime(QDate(2027, 1, 1), QTime(0, 0, 0, 500)));
}

TEST(ManualClock, stepPerReading_movesAfterEachReading) {
    ManualClock clock(10.0);
    clock.setStepPerReading(0.25);
    EXPECT_FLOAT_EQ(clock.timeOfDay(), 10.0F);
    EXPECT_FLOAT_EQ(clock.timeOfDay(), 10.25F);
    EXPECT_EQ(clock.readings(), 2);
}

TEST(ManualClock, rest_movesByWhatWasAskedFor) {
    ManualClock clock(10.0);
    clock.rest(5);
    EXPECT_DOUBLE_EQ(clock.seconds(), 10.005);
    EXPECT_EQ(clock.rests(), std::vector<int>{5});
}

TEST(ManualClock, timeOfDaySetBack_leavesTheSteadyReadingAlone) {
    ManualClock clock(10.0);
    clock.setTimeOfDay(5.0);
    EXPECT_EQ(clock.steadyMilliseconds(), 1000000);
    clock.advance(0.25);
    EXPECT_EQ(clock.steadyMilliseconds(), 1000250);
}

TEST(ManualClock, frozenTimeOfDay_movesTheSteadyReadingAlone) {
    ManualClock clock(10.0);
    clock.freezeTimeOfDay();
    clock.advance(1.5);
    EXPECT_FLOAT_EQ(clock.timeOfDay(), 10.0F);
    EXPECT_EQ(clock.steadyMilliseconds(), 1001500);
}

} // namespace
} // namespace veldron
