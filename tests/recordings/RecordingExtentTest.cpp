// SPDX-License-Identifier: MIT
#include "recordings/RecordingExtent.h"

#include "tests/recordings/Recordings.h"
#include "tests/recordings/TestConsole.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

class RecordingExtentTest : public testing::Test {
protected:
    const RecordingExtent &of(const RecordingText &text) {
        MemorySource source(text.bytes);
        RecordingReader(source, m_extent).read();
        m_extent.finish();
        return m_extent;
    }
    TestConsole m_console;
    RecordingExtent m_extent{"a.rec", TimeWindow(), m_console};
};

TEST_F(RecordingExtentTest, time_runsFromTheEarliestScanToTheEndOfTheLatest) {
    RecordingText text;
    // The clock is put back in between.
    text.block(kDay).scan(QTime(9, 30)).scan(QTime(10, 0)).scan(QTime(9, 0));
    const RecordingExtent &extent = of(text);
    EXPECT_TRUE(extent.hasScans());
    EXPECT_EQ(extent.begin(), momentOf(kDay, 9 * 3600));
    EXPECT_EQ(extent.end(), momentOf(kDay, 10 * 3600) + 1);
}

TEST_F(RecordingExtentTest, frequencies_areThoseOfTheOutermostLevels) {
    RecordingText text;
    text.block(kDay).scan(QTime(9, 0), {1, 2, 3});
    text.block(kDay, {"MonitorMode 3", "Start 140000000", "Step 12500", "End 140025000"});
    text.scan(QTime(9, 1), {1, 2, 3, 4});
    const RecordingExtent &extent = of(text);
    EXPECT_EQ(extent.low().rounded(), 140000000);
    EXPECT_EQ(extent.high().rounded(), 140500000 + 2 * 31250);
}

TEST_F(RecordingExtentTest, failedTransfersAndScansWithoutSettings_coverNothing) {
    RecordingText text;
    text.scan(QTime(8, 0)).block(kDay).scan(QTime(9, 0), {0}).scan(QTime(9, 1), LevelScan(325));
    EXPECT_FALSE(of(text).hasScans());
    text.scan(QTime(9, 2), {0, 0});
    EXPECT_EQ(of(text).begin(), momentOf(kDay, 9 * 3600 + 120));
}

TEST_F(RecordingExtentTest, colours_areThoseThatTheRecordingNames) {
    EXPECT_FALSE(of(RecordingText().block(kDay)).palette());
    EXPECT_EQ(of(RecordingText().block(kDay, {"Palette 4"})).palette(), 4);
}

} // namespace
} // namespace veldron
