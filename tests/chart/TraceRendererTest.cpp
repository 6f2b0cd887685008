// SPDX-License-Identifier: MIT
#include "chart/TraceRenderer.h"

#include "tests/chart/PlainTrace.h"
#include "tests/chart/WholeHertz.h"

#include <gtest/gtest.h>

#include <string>

namespace veldron {
namespace {

// A plot 60 rows high, one row a dB: raw 42 is row 70, raw 102 row 10.
class Trace : public testing::Test {
protected:
    void use(qint64 bins, int columns) {
        grid.setDataResolution(hz(1000));
        grid.setScanStop(hz((bins - 1) * 1000));
        scans.reset(grid.binCount());
        layout = ChartLayout::of(columns + 55, 100, DisplayTypeCode::Trace, 0.5F);
    }
    std::vector<TraceColumn> columns() {
        std::vector<TraceColumn> result;
        TraceRenderer::columns(
            {layout, grid, scans, scale, peak, grid.screenResolution(layout.plotWidth())}, result);
        return result;
    }
    // Rows of the picture's column x of the plot: T body, P dot, "." background.
    std::string pixels(int x) {
        PixelSurface surface(layout.scaleWidth, layout.scaleHeight);
        surface.fill(surface.bounds(), 0x00123456);
        paintPlain(surface, layout, layout.plotLeft + x, columns()[static_cast<std::size_t>(x)]);
        std::string text;
        for (int y = 0; y < surface.height(); ++y) {
            const quint32 colour = surface.pixel(layout.plotLeft + x, y);
            text += colour == ChartColours::kTrace        ? 'T'
                    : colour == ChartColours::kPeak       ? 'P'
                    : colour == ChartColours::kBackground ? '.'
                                                          : ' ';
        }
        return text;
    }
    static std::string rows(int blank, int background, int body, int after) {
        return std::string(static_cast<std::size_t>(blank), ' ') +
               std::string(static_cast<std::size_t>(background), '.') +
               std::string(static_cast<std::size_t>(body), 'T') +
               std::string(static_cast<std::size_t>(after), ' ');
    }

    BinGrid grid;
    ScanStore scans{321};
    LevelScale scale;
    ChartLayout layout;
    bool peak = false;
};

using TraceRendererTest = Trace;

LevelScan ramp(std::size_t size) {
    LevelScan scan(size);
    for (std::size_t i = 0; i < size; ++i) {
        scan[i] = static_cast<quint8>(42 + i % 61);
    }
    return scan;
}

TEST_F(TraceRendererTest, fullGridIn640Columns_givesEachBinTwoAndTheLastNone) {
    use(321, 640);
    scans.take(ramp(321));
    const auto result = columns();
    ASSERT_EQ(result.size(), 640U);
    for (std::size_t x = 0; x < 640; ++x) {
        EXPECT_EQ(result[x].y, 70 - static_cast<int>(x / 2 % 61)) << x;
    }
}

TEST_F(TraceRendererTest, fullGridIn320Columns_gathersOneBinEachAndPeaksOneBinFurtherOn) {
    use(321, 320);
    peak = true;
    scans.take(ramp(321));
    scans.agePeaks({100.0F, false, 0});
    const auto result = columns();
    ASSERT_EQ(result.size(), 320U);
    for (std::size_t x = 0; x < 320; ++x) {
        EXPECT_EQ(result[x].y, 70 - static_cast<int>(x % 61)) << x;
        EXPECT_EQ(result[x].dot, 70 - static_cast<int>((x + 1) % 61)) << x;
    }
}

TEST_F(TraceRendererTest, fullGridIn160Columns_showsTheHigherOfTwoBins) {
    use(321, 160);
    LevelScan scan(321, 42);
    scan[6] = 50;
    scan[9] = 60;
    scans.take(scan);
    const auto result = columns();
    EXPECT_EQ(result[2].y, 70);
    EXPECT_EQ(result[3].y, 62);
    EXPECT_EQ(result[4].y, 52);
    EXPECT_EQ(result[5].y, 70);
}

TEST_F(TraceRendererTest, gridOfFiveBinsIn500Columns_givesFiveStepsOf100) {
    use(5, 500);
    scans.take({50, 60, 70, 80, 90});
    const auto result = columns();
    ASSERT_EQ(result.size(), 500U);
    for (std::size_t x = 0; x < 500; ++x) {
        EXPECT_EQ(result[x].y, 62 - 10 * static_cast<int>(x / 100)) << x;
    }
}

TEST_F(TraceRendererTest, spreadLevels_areHeldWithinThePlot) {
    use(5, 500);
    scans.take({0, 42, 102, 103, 255});
    peak = true;
    scans.agePeaks({100.0F, false, 0});
    const auto result = columns();
    const int rowsOfBins[] = {70, 70, 10, 10, 10};
    for (std::size_t bin = 0; bin < 5; ++bin) {
        EXPECT_EQ(result[bin * 100].y, rowsOfBins[bin]) << bin;
        EXPECT_EQ(result[bin * 100].dot, rowsOfBins[bin]) << bin;
    }
}

TEST_F(TraceRendererTest, gatheredLevels_areNotHeldWithinThePlot) {
    use(321, 320);
    scans.take({0, 112});
    const auto result = columns();
    EXPECT_EQ(result[0].y, 112); // 0.7 of 60 rows below the plot
    EXPECT_EQ(result[1].y, 0);
}

TEST_F(TraceRendererTest, peakOff_readsNoPeaks) {
    use(321, 320);
    scans.take(LevelScan(321, 90));
    scans.agePeaks({100.0F, false, 0});
    for (const TraceColumn &column : columns()) {
        EXPECT_EQ(column.dot, TraceColumn::kNoDot);
    }
}

TEST_F(TraceRendererTest, columnInsideThePlot_isBodyUnderBackgroundUpToTheFrame) {
    use(5, 500);
    scans.take(LevelScan(5, 52));
    EXPECT_EQ(pixels(0), rows(11, 50, 10, 29)); // row 10 is the frame's, rows 61 to 70 the body
}

TEST_F(TraceRendererTest, columnAtTheBottom_isBackgroundAlone) {
    use(5, 500);
    scans.take(LevelScan(5, 42));
    EXPECT_EQ(pixels(0), rows(11, 60, 0, 29));
}

TEST_F(TraceRendererTest, columnAtTheTop_isBodyAlone) {
    use(5, 500);
    scans.take(LevelScan(5, 102));
    EXPECT_EQ(pixels(0), rows(11, 0, 60, 29));
}

TEST_F(TraceRendererTest, gatheredColumnUnderTheScale_runsAcrossTheBottomAxis) {
    use(321, 320);
    scans.take(LevelScan(321, 32));
    EXPECT_EQ(pixels(0), rows(11, 70, 0, 19));
}

TEST_F(TraceRendererTest, gatheredColumnOverTheScale_runsIntoTheTopMargin) {
    use(321, 320);
    scans.take(LevelScan(321, 107)); // row 5
    EXPECT_EQ(pixels(0), rows(5, 5, 61, 29));
}

TEST_F(TraceRendererTest, peakDot_liesOverTheBackground) {
    use(5, 500);
    peak = true;
    scans.take(LevelScan(5, 62));
    scans.agePeaks({100.0F, false, 0});
    scans.take(LevelScan(5, 52));
    std::string expected = rows(11, 50, 10, 29);
    expected[50] = 'P';
    EXPECT_EQ(pixels(0), expected);
}

} // namespace
} // namespace veldron
