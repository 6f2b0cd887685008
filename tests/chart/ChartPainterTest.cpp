// SPDX-License-Identifier: MIT
// What the painter says that it changed, which decides what is brought to the window. The pixels
// themselves are compared by the tests of whole pictures and of long sequences.
#include "chart/ChartPainter.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

class Painter : public testing::Test {
protected:
    Painter() {
        scans.take(LevelScan(321, 60));
        rows.setUpdate(1, 1000.0F);
        setAxes();
        paint();
    }
    void setAxes() {
        painter.setAxes(AxisPlan::of(
            {layout, grid, scale, type, 1, 1.0F, rows.nextRowTime(), 0, [](const QString &) {
                 return 50;
             }}));
    }
    PictureChange paint() {
        return painter.paint(surface, {{layout, grid, scans, scale, false, hz}, type, rows});
    }
    void take(quint8 level) {
        scans.take(LevelScan(321, level));
        rows.addScan(LevelScan(320, level), 1000.0F);
    }
    void closeRow() {
        rows.AdvanceRows(rows.nextRowTime(), 0.0F, [](bool) {});
        setAxes();
    }

    Hertz hz = Hertz::fromWhole(15625);
    const DisplayTypeCode type = DisplayTypeCode::TraceAndWaterfall;
    ChartLayout layout = ChartLayout::of(695, 400, type, 0.5F);
    BinGrid grid;
    ScanStore scans{grid.binCount()};
    LevelScale scale;
    WaterfallStore rows{1000.0F};
    PixelSurface surface{695, 400};
    ChartPainter painter{{[](const PlannedText &text) { return QRect(text.at, QSize(30, 12)); },
                          [](PixelSurface &, const std::vector<PlannedText> &) {
                          }}};
};

using ChartPainterTest = Painter;

TEST_F(ChartPainterTest, nothingNew_changesNothing) {
    const PictureChange change = paint();
    EXPECT_EQ(change.rows, 0);
    EXPECT_TRUE(change.painted.empty());
}

TEST_F(ChartPainterTest, scan_changesItsRowsOfTheTraceAndTheOpenRow) {
    take(66);
    const PictureChange change = paint();
    EXPECT_EQ(change.rows, 0);
    ASSERT_EQ(change.painted.size(), 2U);
    // Raw 42 stands on row 170 and each level above it is 160 / 60 rows higher: 60 is on 122, 66
    // on 106.
    EXPECT_EQ(change.painted[0], QRect(40, 107, 640, 16));
    EXPECT_EQ(change.painted[1], QRect(40, 205, 640, 2)); // a scan may reach into row 1
}

TEST_F(ChartPainterTest, closedRow_scrollsTheWaterfallAndPaintsOneRow) {
    take(66);
    paint();
    closeRow();
    const PictureChange change = paint();
    EXPECT_EQ(change.scrolled, QRect(40, 205, 640, 190));
    EXPECT_EQ(change.rows, 1);
    ASSERT_EQ(change.painted.size(), 2U); // the time axis and the row
    EXPECT_LT(change.painted[0].right(), 40);
    EXPECT_EQ(change.painted[1], QRect(40, 205, 640, 1));
}

TEST_F(ChartPainterTest, axesSet_areDrawnByTheNextPaintAlone) {
    surface.takeChange();
    scale.start = -80;
    setAxes();
    EXPECT_TRUE(surface.takeChange().isEmpty());
    EXPECT_FALSE(paint().painted.empty());
}

TEST_F(ChartPainterTest, anotherLayout_isPaintedWhole) {
    layout = ChartLayout::of(695, 400, type, 0.4F);
    setAxes();
    const PictureChange change = paint();
    EXPECT_EQ(change.rows, 0);
    EXPECT_EQ(change.painted.at(0), surface.bounds());
}

// Gathered bins leave the plot downwards: over the labels, and to where the waterfall covers them.
TEST_F(ChartPainterTest, closedRowUnderLevelsUnderTheScale_scrollsTheWaterfallAllTheSame) {
    hz = Hertz::fromWhole(31250);
    setAxes();
    take(20);
    paint();
    closeRow();
    const PictureChange change = paint();
    EXPECT_EQ(change.rows, 1);
    ASSERT_FALSE(change.painted.empty());
    EXPECT_EQ(change.painted.back(), QRect(40, 205, 640, 1));
}

} // namespace
} // namespace veldron
