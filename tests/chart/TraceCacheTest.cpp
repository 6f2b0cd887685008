// SPDX-License-Identifier: MIT
#include "chart/TraceCache.h"

#include "tests/chart/PlainTrace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace veldron {
namespace {

// Paints the same columns twice: over what stands, and each column anew.
class BothWays : public testing::Test {
protected:
    void wipe() {
        for (PixelSurface *surface : {&fast, &plain}) {
            surface->clear();
            surface->fill(surface->bounds(), 0x00336699);
        }
    }
    void paint(const std::vector<TraceColumn> &columns) {
        cache.paint(fast, layout, columns, hidden);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            paintPlain(plain, layout, layout.plotLeft + static_cast<int>(i), columns[i]);
        }
    }
    [[nodiscard]] bool isSame() const {
        for (int row = 0; row < fast.deviceHeight(); ++row) {
            if (!std::equal(fast.deviceLine(row), fast.deviceLine(row) + fast.deviceWidth(),
                            plain.deviceLine(row))) {
                return false;
            }
        }
        return true;
    }

    QRect hidden;
    ChartLayout layout = ChartLayout::of(105, 100, DisplayTypeCode::Trace, 0.5F);
    PixelSurface fast{105, 100};
    PixelSurface plain{105, 100};
    TraceCache cache;
};

using TraceCacheTest = BothWays;

struct RangeCase {
    const char *name;
    int lowest;
    int highest;
};

TEST_F(TraceCacheTest, randomScans_lookAsIfPaintedAnew) {
    const RangeCase cases[] = {{"inside the plot", 10, 70},
                               {"across both edges", -5, 110},
                               {"just around the edges", 8, 13},
                               {"under the plot", 68, 80}};
    std::mt19937 random(11);
    for (const RangeCase &c : cases) {
        std::uniform_int_distribution<int> row(c.lowest, c.highest);
        wipe();
        for (int scan = 0; scan < 400; ++scan) {
            std::vector<TraceColumn> columns(50);
            const bool dots = scan / 20 % 3 != 0;
            for (std::size_t i = 0; i < columns.size(); ++i) {
                const bool stays = i > 0 && random() % 3 == 0;
                columns[i] =
                    stays ? columns[i - 1]
                          : TraceColumn{row(random), dots ? row(random) : TraceColumn::kNoDot};
            }
            paint(columns);
            paint(columns);
            ASSERT_TRUE(isSame()) << c.name << ", scan " << scan;
            if (scan % 97 == 96) {
                wipe();
            }
        }
    }
}

TEST_F(TraceCacheTest, wipedSurface_isNoticedByItself) {
    const std::vector<TraceColumn> columns(50, {40, 30});
    paint(columns);
    for (PixelSurface *surface : {&fast, &plain}) {
        surface->clear();
    }
    paint(columns);
    EXPECT_TRUE(isSame());
    EXPECT_EQ(fast.pixel(60, 50), ChartColours::kTrace);
}

TEST_F(TraceCacheTest, levelsBeyondTheScale_areToldAsStrayPixels) {
    wipe();
    paint(std::vector<TraceColumn>(50, {40, 30}));
    EXPECT_TRUE(cache.strayAbove().isEmpty());
    EXPECT_TRUE(cache.strayBelow().isEmpty());
    paint(std::vector<TraceColumn>(50, {40, 10})); // a peak on the frame
    EXPECT_EQ(cache.strayAbove(), QRect(40, 10, 50, 1));
    paint(std::vector<TraceColumn>(50, {75, 3}));
    EXPECT_EQ(cache.strayAbove(), QRect(40, 3, 50, 8));
    EXPECT_EQ(cache.strayBelow(), QRect(40, 71, 50, 5));
}

TEST_F(TraceCacheTest, erasedAbove_paintsItsDotsAnew) {
    const std::vector<TraceColumn> columns(50, {40, 10});
    wipe();
    paint(columns);
    fast.fill(cache.strayAbove(), 0);
    cache.straysErased();
    EXPECT_TRUE(cache.strayAbove().isEmpty());
    paint(columns);
    EXPECT_TRUE(isSame());
}

TEST_F(TraceCacheTest, hiddenRows_areLeftOutAndOthersPaintedAsEver) {
    hidden = QRect(40, 75, 50, 10);
    std::mt19937 random(12);
    wipe();
    const PixelSurface blank = fast;
    for (int scan = 0; scan < 200; ++scan) {
        std::vector<TraceColumn> columns(50);
        for (TraceColumn &column : columns) {
            column = {static_cast<int>(random() % 100), static_cast<int>(random() % 100)};
        }
        paint(columns);
        for (int y = 0; y < 100; ++y) {
            const bool isHidden = y >= 75 && y < 85;
            const quint32 *expected = (isHidden ? blank : plain).deviceLine(y);
            ASSERT_TRUE(std::equal(expected, expected + 105, fast.deviceLine(y))) << scan << y;
        }
    }
}

TEST_F(TraceCacheTest, erasedBelow_isPaintedAnew) {
    const std::vector<TraceColumn> columns(50, {80, 85});
    wipe();
    paint(columns);
    fast.fill(cache.strayBelow(), 0x00336699);
    cache.straysErased();
    EXPECT_TRUE(cache.strayBelow().isEmpty());
    paint(columns);
    EXPECT_TRUE(isSame());
}

TEST_F(TraceCacheTest, anotherPlot_isPaintedAnew) {
    wipe();
    for (const int height : {90, 100, 80, 97}) {
        layout = ChartLayout::of(105, height, DisplayTypeCode::Trace, 0.5F);
        paint(std::vector<TraceColumn>(50, {40, 30}));
        EXPECT_TRUE(isSame()) << height;
    }
}

TEST_F(TraceCacheTest, lowestRowPainted_isTold) {
    wipe();
    EXPECT_EQ(cache.paint(fast, layout, std::vector<TraceColumn>(50, {85, TraceColumn::kNoDot})),
              85);
    EXPECT_LT(cache.paint(fast, layout, std::vector<TraceColumn>(50, {85, TraceColumn::kNoDot})),
              71);
}

} // namespace
} // namespace veldron
