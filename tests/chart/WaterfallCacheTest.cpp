// SPDX-License-Identifier: MIT
#include "chart/WaterfallCache.h"

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
    int paint(qint32 cells = 320) { return cache.paint(surface, store, layout, cells, 0); }
    [[nodiscard]] quint32 levelAt(int row) const {
        return surface.pixel(layout.plotLeft + 7, layout.fallTop + row) & 0xFFU;
    }

    WaterfallStore store{1000.0F};
    ChartLayout layout = ChartLayout::of(375, 200, DisplayTypeCode::TraceAndWaterfall, 0.5F);
    PixelSurface surface{375, 200};
    WaterfallCache cache;
};

using WaterfallCacheTest = Fall;

TEST_F(WaterfallCacheTest, rows_standOneToOneWithTheNewestOnTop) {
    rows(5);
    paint();
    EXPECT_EQ(levelAt(0), 5U);
    EXPECT_EQ(levelAt(4), 1U);
    EXPECT_EQ(levelAt(5), 0U);
}

TEST_F(WaterfallCacheTest, scanIntoTheOpenRow_repaintsThatRowAlone) {
    rows(5);
    paint();
    surface.fill({layout.plotLeft, layout.fallTop + 3, 20, 1}, 0x00ABCDEF);
    scan(99);
    paint();
    EXPECT_EQ(levelAt(0), 99U);
    EXPECT_EQ(levelAt(3), 0xEFU); // untouched, so that nothing but the open row was copied
    surface.clear();              // which the cache notices by itself
    paint();
    EXPECT_EQ(levelAt(3), 2U);
}

TEST_F(WaterfallCacheTest, moreColumnsThanTheRasterHas_copyNothing) {
    rows(5);
    paint(321);
    EXPECT_EQ(levelAt(0), 0U);
}

TEST_F(WaterfallCacheTest, firstRowPastTheRows_isBroughtBack) {
    rows(200);
    store.lookFrom(5000);
    paint();
    EXPECT_EQ(store.firstRow(), store.rowCount() - layout.fallHeight());
    store.lookFrom(-4);
    paint();
    EXPECT_EQ(store.firstRow(), 0);
}

TEST_F(WaterfallCacheTest, viewMovedAmongItsRows_isScrolled) {
    rows(200);
    paint();
    store.lookFrom(10);
    EXPECT_EQ(paint(), -10);
    EXPECT_EQ(levelAt(0), 190U);
    EXPECT_EQ(levelAt(84), 106U);
    EXPECT_EQ(levelAt(89), 101U);
    store.lookFrom(7);
    EXPECT_EQ(paint(), 3);
    EXPECT_EQ(levelAt(0), 193U);
    EXPECT_EQ(levelAt(89), 104U);
}

TEST_F(WaterfallCacheTest, rowClosedBehindAViewThatIsScrolledBack_movesNothing) {
    rows(200);
    store.lookFrom(10);
    paint();
    store.AdvanceRows(store.nextRowTime(), 0.0F, [](bool) {});
    EXPECT_EQ(store.firstRow(), 11);
    EXPECT_EQ(paint(), 0);
    EXPECT_EQ(levelAt(0), 190U);
}

TEST_F(WaterfallCacheTest, overpaintedFromAbove_isPaintedWhole) {
    rows(90);
    paint();
    surface.fill({layout.plotLeft, layout.fallTop, 20, 3}, 0x00ABCDEF);
    cache.paint(surface, store, layout, 320, layout.fallTop + 2);
    for (int row = 0; row < 3; ++row) {
        EXPECT_EQ(levelAt(row), static_cast<quint32>(90 - row)) << row;
    }
}

TEST_F(WaterfallCacheTest, viewMovedBack_showsOlderRows) {
    rows(200);
    paint();
    store.lookFrom(50);
    paint();
    EXPECT_EQ(levelAt(0), 150U);
    EXPECT_EQ(levelAt(80), 70U);
}

TEST_F(WaterfallCacheTest, rowClosedSinceTheLastCopy_movesTheOthersDown) {
    rows(5);
    paint();
    store.AdvanceRows(store.nextRowTime(), 0.0F, [](bool) {});
    EXPECT_EQ(paint(), 1);
    EXPECT_EQ(levelAt(0), 5U); // a copy of the one below
    EXPECT_EQ(levelAt(1), 5U);
    EXPECT_EQ(levelAt(5), 1U);
}

TEST_F(WaterfallCacheTest, rowsStretchedSinceTheLastCopy_areCopiedAnew) {
    rows(6);
    paint();
    store.setUpdate(5, 1060.0F);
    paint();
    EXPECT_EQ(levelAt(4), 4U);
    EXPECT_EQ(levelAt(5), 4U);
    EXPECT_EQ(levelAt(11), 1U);
}

TEST_F(WaterfallCacheTest, historyEmptiedSinceTheLastCopy_isBlank) {
    rows(6);
    paint();
    store.clearRows();
    paint();
    for (int row = 0; row < 8; ++row) {
        EXPECT_EQ(levelAt(row), 0U) << row;
    }
}

TEST_F(WaterfallCacheTest, anotherPlace_getsTheWholeCopy) {
    rows(60);
    paint();
    layout.fallTop -= 20;
    layout.fallBottom -= 20;
    paint();
    EXPECT_EQ(levelAt(0), 60U);
    EXPECT_EQ(levelAt(30), 30U);
}

TEST_F(WaterfallCacheTest, paletteWritten_recoloursEveryRow) {
    rows(90);
    paint();
    store.buildPalette(1, LevelScale());
    paint();
    EXPECT_EQ(surface.pixel(layout.plotLeft, layout.fallTop + 89), 0x00FFFFFFU);
}

} // namespace
} // namespace veldron
