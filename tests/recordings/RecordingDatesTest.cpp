// SPDX-License-Identifier: MIT
#include "recordings/RecordingDates.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

using Outcome = RecordingDates::Outcome;
constexpr qint32 kLastSecond = 86399;

TEST(RecordingDates, scanAboveTheFirstDate_hasNone) {
    RecordingDates dates;
    EXPECT_FALSE(dates.takeScan(10));
}

TEST(RecordingDates, timeThatFallsBackOverMidnight_isTheNextDay) {
    RecordingDates dates;
    EXPECT_EQ(dates.takeBlock("21/03/2005"), Outcome::Read);
    EXPECT_EQ(dates.takeScan(kLastSecond), QDate(2005, 3, 21));
    EXPECT_EQ(dates.takeScan(0), QDate(2005, 3, 22));
    EXPECT_EQ(dates.takeScan(1), QDate(2005, 3, 22));
}

TEST(RecordingDates, blockWithTheNewDate_movesItOnlyOnce) {
    RecordingDates above;
    (void)above.takeBlock("21/03/2005");
    (void)above.takeScan(kLastSecond);
    (void)above.takeBlock("22/03/2005");
    EXPECT_EQ(above.takeScan(0), QDate(2005, 3, 22));
    RecordingDates behind;
    (void)behind.takeBlock("21/03/2005");
    (void)behind.takeScan(kLastSecond);
    (void)behind.takeScan(0);
    (void)behind.takeBlock("22/03/2005");
    EXPECT_EQ(behind.takeScan(1), QDate(2005, 3, 22));
}

TEST(RecordingDates, blockOfTheOldDateRightAboveMidnight_doesNotHoldTheDateBack) {
    RecordingDates dates;
    (void)dates.takeBlock("21/03/2005");
    (void)dates.takeScan(kLastSecond - 1);
    (void)dates.takeBlock("21/03/2005");
    EXPECT_EQ(dates.takeScan(0), QDate(2005, 3, 22));
}

TEST(RecordingDates, clockThatIsPutBackByAnHour_keepsTheDate) {
    RecordingDates dates;
    (void)dates.takeBlock("30/10/2005");
    (void)dates.takeScan(3 * 3600 - 1);
    EXPECT_EQ(dates.takeScan(2 * 3600), QDate(2005, 10, 30));
}

TEST(RecordingDates, laterBlock_correctsTheDate) {
    RecordingDates dates;
    (void)dates.takeBlock("21/03/2005");
    (void)dates.takeScan(50000);
    (void)dates.takeScan(100);
    (void)dates.takeBlock("21/03/2005");
    EXPECT_EQ(dates.takeScan(101), QDate(2005, 3, 21));
}

TEST(RecordingDates, ambiguousDate_takesTheAssumedOrderAndSaysSoOnce) {
    RecordingDates dates({std::nullopt, DateOrder::MonthDayYear});
    EXPECT_EQ(dates.takeBlock("03/02/2005"), Outcome::ReadAsAssumed);
    EXPECT_EQ(dates.date(), QDate(2005, 3, 2));
    EXPECT_EQ(dates.takeBlock("03/03/2005"), Outcome::Read);
}

TEST(RecordingDates, laterDateThatTellsTheOrder_refutesTheAssumption) {
    RecordingDates dates({std::nullopt, DateOrder::MonthDayYear});
    (void)dates.takeBlock("03/02/2005");
    EXPECT_EQ(dates.takeBlock("13/02/2005"), Outcome::Refuted);
    EXPECT_EQ(dates.date(), QDate(2005, 2, 13));
    EXPECT_EQ(dates.takeBlock("04/02/2005"), Outcome::Read);
    EXPECT_EQ(dates.date(), QDate(2005, 2, 4));
}

TEST(RecordingDates, givenOrder_leavesNoDoubt) {
    RecordingDates dates({DateOrder::DayMonthYear, DateOrder::MonthDayYear});
    EXPECT_EQ(dates.takeBlock("03/02/2005"), Outcome::Read);
    EXPECT_EQ(dates.date(), QDate(2005, 2, 3));
    EXPECT_EQ(dates.takeBlock("02/13/2005"), Outcome::NoDate);
}

TEST(RecordingDates, dateOfAnotherForm_isNone) {
    RecordingDates dates;
    (void)dates.takeBlock("21/03/2005");
    EXPECT_EQ(dates.takeBlock("22.03.2005"), Outcome::NoDate);
    EXPECT_EQ(dates.date(), QDate(2005, 3, 21));
}

} // namespace
} // namespace veldron
