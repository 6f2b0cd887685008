// SPDX-License-Identifier: MIT
#include "tests/chart/ChartFixture.h"

#include "common/UntrappedError.h"

#include <cmath>

namespace veldron {
namespace {

class Playback : public ChartTest {
protected:
    Playback() {
        chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
        chart.setPoll(1000);
        chart.setPlayback(true);
    }
    void setTime(QTime time) {
        chart.SetPlaybackTime(time.toString(QStringLiteral("HH:mm:ss")), time);
    }
    // Scans of the levels 1 upward, one each second from 10:00:00 on.
    void play(int scans) {
        for (int i = 0; i < scans; ++i) {
            setTime(QTime(10, 0).addSecs(i));
            scan(static_cast<quint8>(i + 1));
        }
    }
    // Thirty scans of the levels 100 downward, one each second, the last at \a end.
    void playFalling(QTime end) {
        for (int i = 0; i < 30; ++i) {
            setTime(end.addSecs(i - 29));
            scan(static_cast<quint8>(100 - i));
        }
    }
    // A peak's dot for raw level \a level, with 42 to 102 on 160 rows from 170 upward.
    [[nodiscard]] bool peakStandsAt(int level) const {
        const int row = static_cast<int>(std::lrint(170.0 - (level - 42) * 160.0 / 60.0));
        return shown(100, row) == ChartColours::kPeak;
    }
};

using ChartPlaybackTest = Playback;

TEST_F(ChartPlaybackTest, time_isShownInTheChartsOwnStatusBar) {
    setTime(QTime(10, 20, 30));
    EXPECT_EQ(chartStatus(), QStringLiteral("10:20:30"));
}

TEST_F(ChartPlaybackTest, scans_makeOneRowEach) {
    play(5);
    for (int row = 0; row < 5; ++row) {
        EXPECT_EQ(shown(60, 205 + row), static_cast<quint32>(5 - row) * 0x010101U) << row;
    }
    EXPECT_EQ(shown(60, 210), 0U);
}

TEST_F(ChartPlaybackTest, rewindByZero_isTrueAndChangesNothing) {
    play(3);
    const QImage before = picture().image().copy();
    EXPECT_TRUE(chart.Rewind(0));
    EXPECT_EQ(picture().image(), before);
}

TEST_F(ChartPlaybackTest, rewindAtTheLimits_isFalse) {
    play(3);
    EXPECT_FALSE(chart.Rewind(1));
    EXPECT_TRUE(chart.Rewind(-2));
    EXPECT_FALSE(chart.Rewind(-1));
}

TEST_F(ChartPlaybackTest, stepBack_showsTheStoredRowAsTraceAndMarksItsPlace) {
    play(80);
    EXPECT_FALSE(line("Line3").Visible());
    EXPECT_TRUE(chart.Rewind(-10));
    EXPECT_EQ(traceTop(100), 96); // raw 70 on 160 rows from 42 to 102
    EXPECT_TRUE(line("Line3").Visible());
    EXPECT_EQ(line("Line3").Y1(), 215);
    EXPECT_EQ(line("Line3").X1(), 40);
    EXPECT_EQ(line("Line3").X2(), 680);
    EXPECT_TRUE(chart.Rewind(10));
    EXPECT_FALSE(line("Line3").Visible());
}

TEST_F(ChartPlaybackTest, stepFarBack_bringsTheRowIntoTheMiddle) {
    play(250);
    EXPECT_TRUE(chart.Rewind(-150));
    EXPECT_EQ(scrollBar().value(), 55);
    EXPECT_EQ(line("Line3").Y1(), 205 + 150 - 55);
    EXPECT_TRUE(chart.Rewind(-99));
    EXPECT_EQ(scrollBar().value(), 60); // no further than the last row
}

TEST_F(ChartPlaybackTest, playLine_isHiddenWithoutAWaterfall) {
    play(80);
    EXPECT_TRUE(chart.Rewind(-10));
    EXPECT_TRUE(line("Line3").Visible());
    chart.setDisplayType(DisplayTypeCode::Trace);
    EXPECT_FALSE(line("Line3").Visible());
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    EXPECT_TRUE(line("Line3").Visible());
}

TEST_F(ChartPlaybackTest, plotOnePixelWide_hidesNothing) {
    play(80);
    EXPECT_TRUE(chart.Rewind(-10));
    EXPECT_TRUE(line("Line3").Visible());
    size(56, 400);
    chart.setDisplayType(DisplayTypeCode::Trace);
    chart.Refresh();
    EXPECT_TRUE(line("Line3").Visible());
    size(57, 400);
    EXPECT_FALSE(line("Line3").Visible());
}

struct PlayLineCase {
    const char *name;
    qint32 playRow;
    qint32 firstRow;
    int y; // 0 is hidden
};

TEST_F(ChartPlaybackTest, playLine_isShownWhileItsRowIsInViewBothEdgesIncluded) {
    const PlayLineCase cases[] = {
        {"in the middle", 150, 55, 205 + 95},      {"just under the lower edge", 200, 9, 0},
        {"on the lower edge", 200, 10, 205 + 190}, {"far under the view", 249, 1, 0},
        {"on the upper edge", 50, 50, 205},        {"just over the upper edge", 50, 51, 0},
        {"on the second row", 1, 0, 206},
    };
    play(250);
    qint32 row = 0;
    for (const PlayLineCase &c : cases) {
        EXPECT_TRUE(chart.Rewind(static_cast<qint16>(row - c.playRow))) << c.name;
        row = c.playRow;
        scrollBar().setValue(c.firstRow);
        EXPECT_EQ(line("Line3").Visible(), c.y != 0) << c.name;
        if (c.y != 0) {
            EXPECT_EQ(line("Line3").Y1(), c.y) << c.name;
            EXPECT_EQ(line("Line3").Y2(), c.y) << c.name;
        }
    }
}

TEST_F(ChartPlaybackTest, stepPastTheNewestRow_readsBeforeTheRaster) {
    play(80);
    EXPECT_TRUE(chart.Rewind(-2));
    EXPECT_TRUE(chart.Rewind(5));
    EXPECT_EQ(traceTop(100), picture().ScaleHeight()); // raw 0 has no body
    EXPECT_FALSE(chart.Rewind(1));
}

TEST_F(ChartPlaybackTest, stepBack_startsThePeaksAfresh) {
    play(80);
    chart.setPeak(true);
    chart.Refresh();
    EXPECT_TRUE(chart.Rewind(-20));
    EXPECT_EQ(shown(100, 122), ChartColours::kPeak); // raw 60 of 42 to 102 on 160 rows
}

TEST_F(ChartPlaybackTest, peaksAge_byTheTimeOfTheRowOnWhichPlaybackStands) {
    playFalling(QTime(10, 0));
    chart.setTimespan(5);
    chart.setPeak(true);
    EXPECT_TRUE(chart.Rewind(-10)); // level 81, 9:59:50
    EXPECT_TRUE(peakStandsAt(81));
    EXPECT_TRUE(chart.Rewind(5));
    EXPECT_TRUE(peakStandsAt(81)); // five seconds old
    EXPECT_TRUE(chart.Rewind(1));
    EXPECT_FALSE(peakStandsAt(81));
    EXPECT_TRUE(peakStandsAt(75));
}

TEST_F(ChartPlaybackTest, peaksOfHalfTheRowSpacing_ageHalfAsFast) {
    playFalling(QTime(10, 0));
    chart.setTimespan(5);
    chart.setPeak(true);
    chart.setPoll(500);
    EXPECT_TRUE(chart.Rewind(-20)); // level 91
    EXPECT_TRUE(chart.Rewind(10));
    EXPECT_TRUE(peakStandsAt(91)); // five seconds old
    EXPECT_TRUE(chart.Rewind(2));
    EXPECT_FALSE(peakStandsAt(91));
    EXPECT_TRUE(peakStandsAt(79));
}

TEST_F(ChartPlaybackTest, rowsBeforeMidnight_haveTheirTimesOfTheDayBefore) {
    playFalling(QTime(0, 0, 14));
    chart.setTimespan(5);
    chart.setPeak(true);
    EXPECT_TRUE(chart.Rewind(-20)); // level 91, 23:59:54
    EXPECT_TRUE(chart.Rewind(5));   // 23:59:59, five seconds old
    EXPECT_TRUE(peakStandsAt(91));
    EXPECT_TRUE(chart.Rewind(1)); // midnight: a time below the last one ages nothing
    EXPECT_TRUE(peakStandsAt(91));
    EXPECT_TRUE(chart.Rewind(1)); // and 0 stands for no time yet
    EXPECT_TRUE(peakStandsAt(91));
    EXPECT_TRUE(chart.Rewind(1)); // 0:00:02
    EXPECT_FALSE(peakStandsAt(91));
    EXPECT_TRUE(peakStandsAt(83));
}

TEST_F(ChartPlaybackTest, leavingPlayback_emptiesTheWaterfall) {
    play(5);
    chart.setPlayback(false);
    chart.Refresh();
    EXPECT_EQ(shown(60, 205), 0U);
}

TEST_F(ChartPlaybackTest, pollUnderASecond_makesOneRowOfEachScan) {
    chart.setPoll(250);
    for (int i = 0; i < 8; ++i) {
        setTime(QTime(10, 0).addSecs(i / 4));
        scan(static_cast<quint8>(i + 1));
    }
    for (int row = 0; row < 8; ++row) {
        EXPECT_EQ(shown(60, 205 + row), static_cast<quint32>(8 - row) * 0x010101U) << row;
    }
}

TEST_F(ChartPlaybackTest, gapThatFillsTheHistory_bringsTheScrollBar) {
    play(3);
    EXPECT_TRUE(scrollBar().isHidden());
    setTime(QTime(15, 0));
    EXPECT_FALSE(scrollBar().isHidden());
    EXPECT_EQ(scrollBar().maximum(), WaterfallStore::kHeight - scrollBar().pageStep());
}

} // namespace
} // namespace veldron
