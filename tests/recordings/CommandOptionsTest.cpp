// SPDX-License-Identifier: MIT
#include "recordings/CommandOptions.h"

#include "common/UntrappedError.h"
#include "recordings/CommandError.h"
#include "tests/recordings/Recordings.h"

#include <gtest/gtest.h>

#include <QTemporaryFile>

namespace veldron {
namespace {

RecordedScan scanAt(const QDate &date, int hour, int minute = 0) {
    RecordedScan scan;
    scan.date = date;
    scan.second = hour * 3600 + minute * 60;
    return scan;
}

TimeWindow window(const std::string &from, const std::string &to) {
    TimeWindow window;
    window.from = from;
    window.to = to;
    window.parse();
    return window;
}

TEST(TimeWindow, bounds_holdTheFirstAndLeaveOutTheLast) {
    TimeWindow window = veldron::window("2005-03-21 14:00:00", "2005-03-22T03:30");
    EXPECT_FALSE(window.has(scanAt(kDay, 13, 59)));
    EXPECT_TRUE(window.has(scanAt(kDay, 14)));
    EXPECT_TRUE(window.has(scanAt(kDay.addDays(1), 3, 29)));
    EXPECT_FALSE(window.has(scanAt(kDay.addDays(1), 3, 30)));
}

TEST(TimeWindow, dateAlone_isItsMidnight) {
    TimeWindow window = veldron::window("2005-03-22", "");
    EXPECT_FALSE(window.has(scanAt(kDay, 23, 59)));
    EXPECT_TRUE(window.has(scanAt(kDay.addDays(1), 0)));
}

TEST(TimeWindow, timeAlone_isThatOfTheFirstScansDay) {
    TimeWindow window = veldron::window("14:00", "15:00:00");
    EXPECT_FALSE(window.has(scanAt(kDay, 9)));
    EXPECT_TRUE(window.has(scanAt(kDay, 14, 30)));
    EXPECT_FALSE(window.has(scanAt(kDay.addDays(1), 14, 30)));
}

TEST(TimeWindow, scanWithoutADate_liesInNoWindowWithABound) {
    RecordedScan scan;
    EXPECT_TRUE(window("", "").has(scan));
    EXPECT_FALSE(window("14:00", "").has(scan));
}

TEST(TimeWindow, otherTexts_areWrongUsage) {
    for (const char *text : {"yesterday", "2005-03-32", "25:00", "2005-03-21 x", " "}) {
        try {
            (void)window(text, "");
            ADD_FAILURE() << text;
        } catch (const CommandError &error) {
            EXPECT_EQ(error.code(), ExitCode::WrongUsage);
        }
    }
}

TEST(OutputOptions, recordingItself_isNeverTheOutput) {
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    OutputOptions options;
    options.path = file.fileName().toStdString();
    options.force = true;
    EXPECT_THROW((void)options.open("-", file.fileName().toStdString()), UntrappedError);
}

TEST(DateOptions, order_isTakenOver) {
    DateOptions options;
    EXPECT_FALSE(options.rules().given);
    options.order = "mdy";
    EXPECT_EQ(options.rules().given, DateOrder::MonthDayYear);
}

} // namespace
} // namespace veldron
