// SPDX-License-Identifier: MIT
#include "chart/MarkerPointer.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

constexpr Hertz hz(qint64 hertz) {
    return Hertz::fromWhole(hertz);
}

// A chart of 695 x 400 (a plot of 640 columns) with the marker line at column 200.
class Pointer : public testing::Test {
protected:
    PointerView view() {
        return {ChartLayout::of(695, 400, type, 0.5F),
                grid,
                scale,
                type,
                200,
                firstRow,
                [](qint32 column, qint32 row) {
                    return static_cast<quint8>(column / 10 + row);
                }};
    }
    MarkerPointer::Press press(QPoint at) { return marker.press(at, true, view()); }
    PointerMove move(QPoint at, bool held = false) { return marker.move(at, held, view()); }

    DisplayTypeCode type = DisplayTypeCode::TraceAndWaterfall;
    qint32 firstRow = 0;
    BinGrid grid;
    LevelScale scale;
    MarkerPointer marker;
};

using MarkerPointerTest = Pointer;

TEST_F(MarkerPointerTest, leftPressOnThePlot_snapsTheMarkerToTheBin) {
    marker.enabled = true;
    EXPECT_EQ(press({141, 50}), MarkerPointer::Press::MarkerPlaced);
    EXPECT_TRUE(marker.active);
    EXPECT_TRUE(marker.markerClick);
    EXPECT_EQ(marker.markerFreq, hz(50 * 31250));
    EXPECT_EQ(marker.markerBin, 50);
}

struct EdgeCase {
    const char *name;
    QPoint at;
    MarkerPointer::Press result;
};

TEST_F(MarkerPointerTest, pressOnTheEdgesOfThePlot_counts) {
    marker.enabled = true;
    const EdgeCase cases[] = {
        {"upper left", {40, 10}, MarkerPointer::Press::MarkerPlaced},
        {"lower right", {680, 170}, MarkerPointer::Press::MarkerPlaced},
        {"left of it", {39, 50}, MarkerPointer::Press::Nothing},
        {"right of it", {681, 50}, MarkerPointer::Press::Nothing},
        {"above it", {60, 9}, MarkerPointer::Press::Nothing},
        {"below it", {60, 171}, MarkerPointer::Press::Nothing},
        {"split, four up", {60, 196}, MarkerPointer::Press::SplitTaken},
        {"split, four down", {60, 204}, MarkerPointer::Press::SplitTaken},
        {"split, five down", {60, 205}, MarkerPointer::Press::Nothing},
        {"beside the split", {20, 200}, MarkerPointer::Press::Nothing},
    };
    for (const EdgeCase &c : cases) {
        marker.release();
        EXPECT_EQ(press(c.at), c.result) << c.name;
    }
}

TEST_F(MarkerPointerTest, pressWithoutWaterfall_takesNoSplit) {
    type = DisplayTypeCode::Trace;
    EXPECT_EQ(press({60, 200}), MarkerPointer::Press::Nothing);
    EXPECT_FALSE(marker.dragSplit);
}

TEST_F(MarkerPointerTest, buttonTwoOnThePlot_setsActiveAndNothingElse) {
    marker.enabled = true;
    marker.markerClick = true;
    EXPECT_EQ(marker.press({141, 50}, false, view()), MarkerPointer::Press::Nothing);
    EXPECT_TRUE(marker.active);
    EXPECT_TRUE(marker.markerClick);
    EXPECT_EQ(marker.markerFreq, hz(0));
}

TEST_F(MarkerPointerTest, doubleClickBegunOnThePlot_tellsOnce) {
    marker.enabled = true;
    press({141, 50});
    EXPECT_TRUE(marker.doubleClick(true));
    EXPECT_FALSE(marker.doubleClick(true));
}

TEST_F(MarkerPointerTest, doubleClickBegunOutsideThePlot_tellsNothing) {
    marker.enabled = true;
    press({141, 50});
    marker.release();
    press({10, 50});
    EXPECT_FALSE(marker.doubleClick(true));
}

TEST_F(MarkerPointerTest, doubleClickWithTheMarkerOff_tellsNothingAndClearsTheClick) {
    marker.markerClick = true;
    EXPECT_FALSE(marker.doubleClick(true));
    EXPECT_FALSE(marker.markerClick);
}

TEST_F(MarkerPointerTest, doubleClickBehindAClosedGate_tellsNothingAndClearsTheClick) {
    marker.enabled = true;
    press({141, 50});
    EXPECT_FALSE(marker.doubleClick(false));
    EXPECT_FALSE(marker.markerClick);
}

TEST_F(MarkerPointerTest, movesAfterADoubleClick_areLeftAloneUntilTheButtonIsUp) {
    marker.doubleClick(true);
    EXPECT_FALSE(move({300, 50}).tip.has_value());
    marker.release();
    EXPECT_TRUE(move({300, 50}).tip.has_value());
}

TEST_F(MarkerPointerTest, moveOverThePlot_tellsFrequencyAndLevelOfThePlace) {
    const PointerMove result = move({360, 90});
    EXPECT_EQ(result.tip, QStringLiteral("5.000.000, -60 dB"));
    EXPECT_EQ(result.shape, CursorShape::Default);
    EXPECT_FALSE(result.markerMoved);
}

TEST_F(MarkerPointerTest, moveWithinFourPixelsOfTheMarker_clearsTheTipAndShowsEastWest) {
    marker.enabled = true;
    for (const int x : {196, 200, 204}) {
        EXPECT_EQ(move({x, 50}).shape, CursorShape::EastWest) << x;
        EXPECT_EQ(move({x, 50}).tip, QString()) << x;
    }
    EXPECT_EQ(move({205, 50}).shape, CursorShape::Default);
    marker.enabled = false;
    EXPECT_EQ(move({200, 50}).shape, CursorShape::Default);
}

TEST_F(MarkerPointerTest, moveWithTheLeftButton_dragsTheMarker) {
    marker.enabled = true;
    EXPECT_TRUE(move({142, 50}, true).markerMoved);
    EXPECT_EQ(marker.markerFreq, hz(51 * 31250));
    EXPECT_EQ(marker.markerBin, 51);
    marker.enabled = false;
    EXPECT_FALSE(move({150, 50}, true).markerMoved);
}

TEST_F(MarkerPointerTest, moveOverTheWaterfall_tellsTheStoredLevelOfThePlace) {
    firstRow = 7;
    const PointerMove result = move({360, 215});
    EXPECT_TRUE(marker.tipLive);
    EXPECT_EQ(marker.tipColumn, 160);
    EXPECT_EQ(marker.tipRow, 17);
    EXPECT_EQ(result.tip, QStringLiteral("5.000.000, -99 dB")); // 16 + 17 - 132
    EXPECT_EQ(marker.liveTip(view()), *result.tip);
}

TEST_F(MarkerPointerTest, moveElsewhere_endsTheLiveTip) {
    move({360, 215});
    EXPECT_EQ(move({10, 215}).tip, QString());
    EXPECT_FALSE(marker.tipLive);
}

TEST_F(MarkerPointerTest, moveOverTheSplit_showsNorthSouthAndKeepsTheTip) {
    const PointerMove result = move({100, 201});
    EXPECT_EQ(result.shape, CursorShape::NorthSouth);
    EXPECT_FALSE(result.tip.has_value());
}

TEST_F(MarkerPointerTest, moveWithoutWaterfall_findsNeitherSplitNorWaterfall) {
    type = DisplayTypeCode::Trace;
    EXPECT_NE(move({100, 200}).shape, CursorShape::NorthSouth);
    EXPECT_EQ(move({100, 399}).tip, QString());
    EXPECT_FALSE(marker.tipLive);
}

struct SplitCase {
    int y;
    float fraction;
};

TEST_F(MarkerPointerTest, splitDragged_staysBetweenAFifthAndFourFifths) {
    press({100, 200});
    const SplitCase cases[] = {{0, 0.2F}, {-50, 0.2F}, {100, 0.25F}, {300, 0.75F}, {400, 0.8F}};
    for (const SplitCase &c : cases) {
        EXPECT_EQ(move({100, c.y}).splitFraction, c.fraction) << c.y;
    }
    marker.release();
    EXPECT_FALSE(move({100, 100}).splitFraction.has_value());
}

TEST_F(MarkerPointerTest, readOut_namesFrequencyAndLevel) {
    marker.markerFreq = hz(145000000);
    EXPECT_EQ(marker.readOut(61, scale), QStringLiteral("145.000.000  -71dB"));
}

TEST_F(MarkerPointerTest, focusLost_endsTheLiveTip) {
    move({360, 215});
    marker.loseFocus();
    EXPECT_FALSE(marker.tipLive);
}

TEST_F(MarkerPointerTest, fivePixelsLeftOfTheMarker_isPlainPlot) {
    marker.enabled = true;
    EXPECT_EQ(move({195, 50}).shape, CursorShape::Default);
    EXPECT_NE(move({195, 50}).tip, QString());
}

TEST_F(MarkerPointerTest, firstAndLastPixelRowOfTheWaterfall_haveTheTipOfTheirPlace) {
    EXPECT_EQ(move({360, 205}).tip, QStringLiteral("5.000.000, -116 dB")); // 16 - 132
    EXPECT_EQ(marker.tipRow, 0);
    EXPECT_TRUE(move({360, 395}).tip.has_value());
    EXPECT_EQ(marker.tipRow, 190);
    EXPECT_TRUE(marker.tipLive);
    EXPECT_EQ(move({360, 396}).tip, QString());
    EXPECT_FALSE(marker.tipLive);
    move({360, 204});
    EXPECT_FALSE(marker.tipLive);
}

} // namespace
} // namespace veldron
