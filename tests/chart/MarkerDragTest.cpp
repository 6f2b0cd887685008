// SPDX-License-Identifier: MIT
#include "chart/MarkerDrag.h"

#include "tests/chart/WholeHertz.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

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
    MarkerDrag::Press press(QPoint at) { return marker.press(at, true, view()); }
    PointerMove move(QPoint at, bool held = false) { return marker.move(at, held, view()); }

    DisplayTypeCode type = DisplayTypeCode::TraceAndWaterfall;
    qint32 firstRow = 0;
    BinGrid grid;
    LevelScale scale;
    MarkerDrag marker;
};

using MarkerDragTest = Pointer;

TEST_F(MarkerDragTest, leftPressOnThePlot_snapsTheMarkerToTheBin) {
    marker.enable(true, grid);
    EXPECT_EQ(press({141, 50}), MarkerDrag::Press::MarkerPlaced);
    EXPECT_TRUE(marker.isActive());
    EXPECT_EQ(marker.frequency(), hz(50 * 31250));
    EXPECT_EQ(marker.bin(), 50);
}

struct EdgeCase {
    const char *name;
    QPoint at;
    MarkerDrag::Press result;
};

TEST_F(MarkerDragTest, pressOnTheEdgesOfThePlot_counts) {
    marker.enable(true, grid);
    const EdgeCase cases[] = {
        {"upper left", {40, 10}, MarkerDrag::Press::MarkerPlaced},
        {"lower right", {680, 170}, MarkerDrag::Press::MarkerPlaced},
        {"left of it", {39, 50}, MarkerDrag::Press::Nothing},
        {"right of it", {681, 50}, MarkerDrag::Press::Nothing},
        {"above it", {60, 9}, MarkerDrag::Press::Nothing},
        {"below it", {60, 171}, MarkerDrag::Press::Nothing},
        {"split, four up", {60, 196}, MarkerDrag::Press::SplitTaken},
        {"split, four down", {60, 204}, MarkerDrag::Press::SplitTaken},
        {"split, five down", {60, 205}, MarkerDrag::Press::Nothing},
        {"beside the split", {20, 200}, MarkerDrag::Press::Nothing},
    };
    for (const EdgeCase &c : cases) {
        marker.release();
        EXPECT_EQ(press(c.at), c.result) << c.name;
    }
}

TEST_F(MarkerDragTest, pressWithoutWaterfall_takesNoSplit) {
    type = DisplayTypeCode::Trace;
    EXPECT_EQ(press({60, 200}), MarkerDrag::Press::Nothing);
    EXPECT_FALSE(move({60, 200}).splitFraction.has_value());
}

TEST_F(MarkerDragTest, buttonTwoOnThePlot_setsActiveAndNothingElse) {
    marker.enable(true, grid);
    press({141, 50});
    marker.release();
    EXPECT_EQ(marker.press({300, 50}, false, view()), MarkerDrag::Press::Nothing);
    EXPECT_TRUE(marker.isActive());
    EXPECT_EQ(marker.frequency(), hz(50 * 31250));
    EXPECT_TRUE(marker.doubleClick(true)); // the press of the left button still counts
}

TEST_F(MarkerDragTest, doubleClickBegunOnThePlot_tellsOnce) {
    marker.enable(true, grid);
    press({141, 50});
    EXPECT_TRUE(marker.doubleClick(true));
    EXPECT_FALSE(marker.doubleClick(true));
}

TEST_F(MarkerDragTest, doubleClickBegunOutsideThePlot_tellsNothing) {
    marker.enable(true, grid);
    press({141, 50});
    marker.release();
    press({10, 50});
    EXPECT_FALSE(marker.doubleClick(true));
}

TEST_F(MarkerDragTest, doubleClickWithTheMarkerOff_tellsNothingAndClearsTheClick) {
    marker.enable(true, grid);
    press({141, 50});
    marker.enable(false, grid);
    EXPECT_FALSE(marker.doubleClick(true));
    marker.enable(true, grid);
    EXPECT_FALSE(marker.doubleClick(true));
}

TEST_F(MarkerDragTest, doubleClickBehindAClosedGate_tellsNothingAndClearsTheClick) {
    marker.enable(true, grid);
    press({141, 50});
    EXPECT_FALSE(marker.doubleClick(false));
    EXPECT_FALSE(marker.doubleClick(true));
}

TEST_F(MarkerDragTest, movesAfterADoubleClick_areLeftAloneUntilTheButtonIsUp) {
    marker.doubleClick(true);
    EXPECT_FALSE(move({300, 50}).tip.has_value());
    marker.release();
    EXPECT_TRUE(move({300, 50}).tip.has_value());
}

TEST_F(MarkerDragTest, moveOverThePlot_tellsFrequencyAndLevelOfThePlace) {
    const PointerMove result = move({360, 90});
    EXPECT_EQ(result.tip, QStringLiteral("5.000.000, -60 dB"));
    EXPECT_EQ(result.shape, CursorShape::Default);
    EXPECT_FALSE(result.markerMoved);
}

TEST_F(MarkerDragTest, moveWithinFourPixelsOfTheMarker_clearsTheTipAndShowsEastWest) {
    marker.enable(true, grid);
    for (const int x : {196, 200, 204}) {
        EXPECT_EQ(move({x, 50}).shape, CursorShape::EastWest) << x;
        EXPECT_EQ(move({x, 50}).tip, QString()) << x;
    }
    EXPECT_EQ(move({205, 50}).shape, CursorShape::Default);
    marker.enable(false, grid);
    EXPECT_EQ(move({200, 50}).shape, CursorShape::Default);
}

TEST_F(MarkerDragTest, moveWithTheLeftButton_dragsTheMarker) {
    marker.enable(true, grid);
    EXPECT_TRUE(move({142, 50}, true).markerMoved);
    EXPECT_EQ(marker.frequency(), hz(51 * 31250));
    EXPECT_EQ(marker.bin(), 51);
    marker.enable(false, grid);
    EXPECT_FALSE(move({150, 50}, true).markerMoved);
}

TEST_F(MarkerDragTest, moveOverTheWaterfall_tellsTheStoredLevelOfThePlace) {
    firstRow = 7;
    const PointerMove result = move({360, 215});
    EXPECT_TRUE(marker.hasLiveTip());
    // Column 160 and row 17 of the history: 160 / 10 + 17 - 132.
    EXPECT_EQ(result.tip, QStringLiteral("5.000.000, -99 dB"));
    EXPECT_EQ(marker.liveTip(view()), *result.tip);
}

TEST_F(MarkerDragTest, moveElsewhere_endsTheLiveTip) {
    move({360, 215});
    EXPECT_EQ(move({10, 215}).tip, QString());
    EXPECT_FALSE(marker.hasLiveTip());
}

TEST_F(MarkerDragTest, moveOverTheSplit_showsNorthSouthAndKeepsTheTip) {
    const PointerMove result = move({100, 201});
    EXPECT_EQ(result.shape, CursorShape::NorthSouth);
    EXPECT_FALSE(result.tip.has_value());
}

TEST_F(MarkerDragTest, moveWithoutWaterfall_findsNeitherSplitNorWaterfall) {
    type = DisplayTypeCode::Trace;
    EXPECT_NE(move({100, 200}).shape, CursorShape::NorthSouth);
    EXPECT_EQ(move({100, 399}).tip, QString());
    EXPECT_FALSE(marker.hasLiveTip());
}

struct SplitCase {
    int y;
    float fraction;
};

TEST_F(MarkerDragTest, splitDragged_staysBetweenAFifthAndFourFifths) {
    press({100, 200});
    const SplitCase cases[] = {{0, 0.2F}, {-50, 0.2F}, {100, 0.25F}, {300, 0.75F}, {400, 0.8F}};
    for (const SplitCase &c : cases) {
        EXPECT_EQ(move({100, c.y}).splitFraction, c.fraction) << c.y;
    }
    marker.release();
    EXPECT_FALSE(move({100, 100}).splitFraction.has_value());
}

TEST_F(MarkerDragTest, enabled_returnsToTheReceiveFrequency) {
    marker.tuneTo(hz(70 * 31250), grid);
    EXPECT_EQ(marker.frequency(), hz(70 * 31250));
    marker.moveTo(hz(50 * 31250), grid);
    EXPECT_EQ(marker.receiveFrequency(), hz(70 * 31250));
    marker.enable(true, grid);
    EXPECT_EQ(marker.frequency(), hz(70 * 31250));
    EXPECT_EQ(marker.bin(), 70);
    marker.forgetBin();
    EXPECT_EQ(marker.bin(), 0);
}

TEST_F(MarkerDragTest, readOut_namesFrequencyAndLevel) {
    marker.moveTo(hz(145000000), grid);
    EXPECT_EQ(marker.readOut(61, scale), QStringLiteral("145.000.000  -71dB"));
}

TEST_F(MarkerDragTest, focusLost_endsTheLiveTip) {
    move({360, 215});
    marker.loseFocus();
    EXPECT_FALSE(marker.hasLiveTip());
}

TEST_F(MarkerDragTest, fivePixelsLeftOfTheMarker_isPlainPlot) {
    marker.enable(true, grid);
    EXPECT_EQ(move({195, 50}).shape, CursorShape::Default);
    EXPECT_NE(move({195, 50}).tip, QString());
}

TEST_F(MarkerDragTest, firstAndLastPixelRowOfTheWaterfall_haveTheTipOfTheirPlace) {
    EXPECT_EQ(move({360, 205}).tip, QStringLiteral("5.000.000, -116 dB")); // 16 - 132
    EXPECT_EQ(move({360, 395}).tip, QStringLiteral("5.000.000, 74 dB"));   // 16 + 190 - 132
    EXPECT_TRUE(marker.hasLiveTip());
    EXPECT_EQ(move({360, 396}).tip, QString());
    EXPECT_FALSE(marker.hasLiveTip());
    move({360, 204});
    EXPECT_FALSE(marker.hasLiveTip());
}

} // namespace
} // namespace veldron
