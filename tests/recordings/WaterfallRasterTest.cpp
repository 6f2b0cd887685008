// SPDX-License-Identifier: MIT
#include "recordings/WaterfallRaster.h"

#include <gtest/gtest.h>

#include <QByteArray>

#include <algorithm>
#include <random>

namespace veldron {
namespace {

using Row = std::vector<int>;

/// A level a column, from 0 Hz on, and \a seconds.
WaterfallRaster::Extent extentOf(qint64 seconds, int levels) {
    return {0, seconds, Hertz(), Hertz::fromWhole(1000) * (levels - 1)};
}

FrequencyAxis axisFrom(qint64 hertz) {
    return {Hertz::fromWhole(hertz), Hertz::fromWhole(1000)};
}

QByteArray bytesOf(const Row &levels) {
    QByteArray bytes;
    for (const int level : levels) {
        bytes.append(static_cast<char>(level));
    }
    return bytes;
}

Row rowOf(const WaterfallRaster &raster, int y) {
    return {raster.row(y), raster.row(y) + raster.width()};
}

TEST(WaterfallRaster, scansOfOneRow_areMergedLevelByLevel) {
    std::mt19937 random(7);
    // Shorter and longer than the pieces that are merged at a time.
    for (const int levels : {1, 31, 32, 33, 96, 321, 325}) {
        WaterfallRaster raster(levels, 1, extentOf(50, levels));
        Row strongest(static_cast<std::size_t>(levels));
        for (int second = 0; second < 50; ++second) {
            Row scan(static_cast<std::size_t>(levels));
            std::generate(scan.begin(), scan.end(),
                          [&] { return static_cast<int>(random() % 256); });
            std::transform(scan.begin(), scan.end(), strongest.begin(), strongest.begin(),
                           [](int one, int other) { return std::max(one, other); });
            raster.take(second, 2, axisFrom(0), bytesOf(scan));
        }
        raster.finish();
        EXPECT_EQ(rowOf(raster, 0), strongest) << levels;
    }
}

TEST(WaterfallRaster, newestScan_isOnTop) {
    WaterfallRaster raster(2, 3, extentOf(3, 2));
    for (int second = 0; second < 3; ++second) {
        raster.take(second, 2, axisFrom(0), bytesOf({second + 1, 200 + second}));
    }
    raster.finish();
    EXPECT_EQ(rowOf(raster, 0), (Row{3, 202}));
    EXPECT_EQ(rowOf(raster, 1), (Row{2, 201}));
    EXPECT_EQ(rowOf(raster, 2), (Row{1, 200}));
}

TEST(WaterfallRaster, scan_lastsUntilTheNextOneOrItsInterval) {
    WaterfallRaster raster(1, 10, extentOf(10, 1));
    raster.take(0, 3, axisFrom(0), bytesOf({7}));
    raster.take(3, 3, axisFrom(0), bytesOf({8}));
    raster.take(8, 3, axisFrom(0), bytesOf({9}));
    raster.finish();
    Row column;
    for (int y = 9; y >= 0; --y) {
        column.push_back(raster.row(y)[0]);
    }
    EXPECT_EQ(column, (Row{7, 7, 7, 8, 0, 0, 0, 0, 9, 9}));
}

TEST(WaterfallRaster, levels_fillTheColumnsThatAreNearest) {
    WaterfallRaster wide(6, 1, extentOf(1, 2));
    wide.take(0, 1, axisFrom(0), bytesOf({5, 9}));
    wide.finish();
    EXPECT_EQ(rowOf(wide, 0), (Row{5, 5, 5, 9, 9, 9}));
    WaterfallRaster narrow(2, 1, extentOf(1, 4));
    narrow.take(0, 1, axisFrom(0), bytesOf({5, 9, 4, 8}));
    narrow.finish();
    EXPECT_EQ(rowOf(narrow, 0), (Row{9, 8}));
}

TEST(WaterfallRaster, whatWasNotMeasured_isZero) {
    WaterfallRaster raster(4, 1, extentOf(1, 4));
    raster.take(0, 1, axisFrom(2000), bytesOf({5, 9, 3}));
    raster.finish();
    EXPECT_EQ(rowOf(raster, 0), (Row{0, 0, 5, 9}));
}

TEST(WaterfallRaster, scansOutsideItsTime_areLeftOut) {
    WaterfallRaster raster(1, 2, extentOf(2, 1));
    raster.take(-1, 1, axisFrom(0), bytesOf({5}));
    raster.take(0, 1, axisFrom(0), bytesOf({6}));
    raster.take(2, 1, axisFrom(0), bytesOf({7}));
    raster.finish();
    EXPECT_EQ(rowOf(raster, 0), (Row{0}));
    EXPECT_EQ(rowOf(raster, 1), (Row{6}));
}

TEST(WaterfallRaster, counts_areOfAllLevelsOfAColumn) {
    WaterfallRaster raster(2, 1, extentOf(4, 4));
    raster.beginCounting();
    raster.take(0, 1, axisFrom(0), bytesOf({5, 5, 7, 8}));
    raster.take(1, 1, axisFrom(0), bytesOf({5, 6, 7, 7}));
    // Other frequencies.
    raster.take(2, 1, axisFrom(2000), bytesOf({9, 9}));
    raster.finish();
    EXPECT_EQ(raster.counts(0)[5], 3U);
    EXPECT_EQ(raster.counts(0)[6], 1U);
    EXPECT_EQ(raster.counts(0)[9], 0U);
    EXPECT_EQ(raster.counts(1)[7], 3U);
    EXPECT_EQ(raster.counts(1)[8], 1U);
    EXPECT_EQ(raster.counts(1)[9], 2U);
}

} // namespace
} // namespace veldron
