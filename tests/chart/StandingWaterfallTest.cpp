// SPDX-License-Identifier: MIT
#include "chart/StandingWaterfall.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace veldron {
namespace {

class Fall : public testing::Test {
protected:
    void scan(quint8 level) { store.addScan(LevelScan(320, level), 1000.0F); }
    void rows(int count) {
        for (int i = 0; i < count; ++i) {
            store.AdvanceRows(store.nextRowTime(), 0.0F, [](bool) {});
            scan(static_cast<quint8>(i + 1));
        }
    }
    void paint(qint32 cells = 320) { standing.paint(surface, store, layout, cells); }
    [[nodiscard]] quint32 levelAt(int row) const {
        return surface.pixel(layout.plotLeft + 7, layout.fallTop + row) & 0xFFU;
    }

    WaterfallStore store{1000.0F};
    ChartLayout layout = ChartLayout::of(375, 200, DisplayTypeCode::TraceAndWaterfall, 0.5F);
    PixelSurface surface{375, 200};
    StandingWaterfall standing;
};

using StandingWaterfallTest = Fall;

TEST_F(StandingWaterfallTest, rows_standOneToOneWithTheNewestOnTop) {
    rows(5);
    paint();
    EXPECT_EQ(levelAt(0), 5U);
    EXPECT_EQ(levelAt(4), 1U);
    EXPECT_EQ(levelAt(5), 0U);
}

TEST_F(StandingWaterfallTest, scanIntoTheOpenRow_repaintsThatRowAlone) {
    rows(5);
    paint();
    surface.fill({layout.plotLeft, layout.fallTop + 3, 20, 1}, 0x00ABCDEF);
    scan(99);
    paint();
    EXPECT_EQ(levelAt(0), 99U);
    EXPECT_EQ(levelAt(3), 0xEFU); // untouched, so that nothing but the open row was copied
    standing.forget();
    paint();
    EXPECT_EQ(levelAt(3), 2U);
}

TEST_F(StandingWaterfallTest, moreColumnsThanTheRasterHas_copyNothing) {
    rows(5);
    paint(321);
    EXPECT_EQ(levelAt(0), 0U);
}

TEST_F(StandingWaterfallTest, firstRowPastTheRows_isBroughtBack) {
    rows(200);
    store.setFirstRow(5000);
    paint();
    EXPECT_EQ(store.firstRow(), store.rowCount() - layout.fallHeight());
    store.setFirstRow(-4);
    paint();
    EXPECT_EQ(store.firstRow(), 0);
}

TEST_F(StandingWaterfallTest, viewMovedBack_showsOlderRows) {
    rows(200);
    paint();
    store.setFirstRow(50);
    paint();
    EXPECT_EQ(levelAt(0), 150U);
    EXPECT_EQ(levelAt(80), 70U);
}

TEST_F(StandingWaterfallTest, rowClosedSinceTheLastCopy_movesTheOthersDown) {
    rows(5);
    paint();
    store.AdvanceRows(store.nextRowTime(), 0.0F, [](bool) {});
    paint();
    EXPECT_EQ(levelAt(0), 5U); // a copy of the one below
    EXPECT_EQ(levelAt(1), 5U);
    EXPECT_EQ(levelAt(5), 1U);
}

TEST_F(StandingWaterfallTest, rowsStretchedSinceTheLastCopy_areCopiedAnew) {
    rows(6);
    paint();
    store.setUpdate(5, 1060.0F);
    paint();
    EXPECT_EQ(levelAt(4), 4U);
    EXPECT_EQ(levelAt(5), 4U);
    EXPECT_EQ(levelAt(11), 1U);
}

TEST_F(StandingWaterfallTest, historyEmptiedSinceTheLastCopy_isBlank) {
    rows(6);
    paint();
    store.clearRows();
    paint();
    for (int row = 0; row < 8; ++row) {
        EXPECT_EQ(levelAt(row), 0U) << row;
    }
}

TEST_F(StandingWaterfallTest, anotherPlace_getsTheWholeCopy) {
    rows(60);
    paint();
    layout.fallTop -= 20;
    layout.fallBottom -= 20;
    paint();
    EXPECT_EQ(levelAt(0), 60U);
    EXPECT_EQ(levelAt(30), 30U);
}

TEST_F(StandingWaterfallTest, paletteWritten_recoloursEveryRow) {
    rows(90);
    paint();
    store.buildPalette(1, LevelScale());
    paint();
    EXPECT_EQ(surface.pixel(layout.plotLeft, layout.fallTop + 89), 0x00FFFFFFU);
}

} // namespace
} // namespace veldron
