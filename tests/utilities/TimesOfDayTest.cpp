// SPDX-License-Identifier: MIT
#include "utilities/TimesOfDay.h"
#include "tests/support/ManualClock.h"

#include <gtest/gtest.h>

#include <limits>

namespace veldron {
namespace {

using namespace GeneralUtilities;

TEST(TimesOfDay, waitSeconds_endsWhenTheTimeHasPassed) {
    ManualClock clock(1000.0);
    WaitSeconds(clock, 1.0F);
    EXPECT_GE(static_cast<float>(clock.seconds()), 1001.0F);
    EXPECT_LT(clock.seconds(), 1001.1);
    EXPECT_FALSE(clock.rests().empty());
}

TEST(TimesOfDay, waitSecondsOfNothing_returnsAtOnce) {
    ManualClock clock(1000.0);
    WaitSeconds(clock, 0.0F);
    WaitSeconds(clock, -1.0F);
    EXPECT_DOUBLE_EQ(clock.seconds(), 1000.0);
}

TEST(TimesOfDay, waitSecondsAcrossMidnight_endsAfterAMinute) {
    ManualClock clock(86399.5);
    WaitSeconds(clock, 1.0F);
    EXPECT_NEAR(clock.seconds(), 59.5, 0.02);
}

TEST(TimesOfDay, waitSecondsWithAFrozenTimeOfDay_goesOnFor59SecondsAndEndsAt60) {
    ManualClock clock(1000.0);
    clock.freezeTimeOfDay();
    const qint64 start = clock.steadyMilliseconds();
    WaitSeconds(clock, 1.0F);
    EXPECT_GE(clock.steadyMilliseconds() - start, 60000);
    EXPECT_LE(clock.steadyMilliseconds() - start, 60010);
}

TEST(TimesOfDay, waitOfMoreThanAMinute_endsAt60) {
    ManualClock clock(1000.0);
    WaitSeconds(clock, 100.0F);
    EXPECT_NEAR(clock.seconds(), 1060.0, 0.02);
}

TEST(TimesOfDay, momentsJustAcrossMidnight_areTwoSecondsApart) {
    EXPECT_FLOAT_EQ(TimeDifference(86399, 1), 2);
    EXPECT_FLOAT_EQ(TimeDifference(1, 86399), -2);
}

TEST(TimesOfDay, timeDifference_foldsAcrossMidnight) {
    struct Case {
        float from;
        float to;
        float difference;
    };
    const Case cases[] = {{86399, 1, 2},      {1, 86399, -2},         {0, 43200, -43200},
                          {43200, 0, -43200}, {0, 43199.5, 43199.5F}, {43200.5F, 0, 43199.5F},
                          {100, 100, 0},      {10, 25.5F, 15.5F}};
    for (const Case &example : cases) {
        EXPECT_FLOAT_EQ(TimeDifference(example.from, example.to), example.difference)
            << example.from << " " << example.to;
    }
}

TEST(TimesOfDay, timeText_showsHoursMinutesAndSeconds) {
    struct Case {
        float seconds;
        const char *text;
    };
    const Case cases[] = {{3661, "01:01:01"},   {0, "00:00:00"},      {59.99F, "00:00:59"},
                          {86399, "23:59:59"},  {86400, "24:00:00"},  {86401, "00:00:01"},
                          {172800, "24:00:00"}, {-1, "23:59:59"},     {-86400, "00:00:00"},
                          {-90000, "23:00:00"}, {200000, "07:33:20"}, {82799.99F, "22:59:59"}};
    for (const Case &example : cases) {
        EXPECT_EQ(TimeText(example.seconds, true), example.text) << example.seconds;
        EXPECT_EQ(TimeText(example.seconds, false), QString(example.text).left(5));
    }
}

TEST(TimesOfDay, timeTextOf3661_isOneHourOneMinuteAndOneSecondIfShown) {
    EXPECT_EQ(TimeText(3661, true), "01:01:01");
    EXPECT_EQ(TimeText(3661, false), "01:01");
}

TEST(TimesOfDay, timeTextOfAnEndlessTime_comesToAnEnd) {
    EXPECT_EQ(TimeText(std::numeric_limits<float>::infinity(), true), "00:00:00");
    EXPECT_EQ(TimeText(std::numeric_limits<float>::quiet_NaN(), false), "00:00");
    EXPECT_EQ(TimeText(1e30F, true).size(), 8);
}

} // namespace
} // namespace veldron
