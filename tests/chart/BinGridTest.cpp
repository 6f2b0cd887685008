// SPDX-License-Identifier: MIT
#include "chart/BinGrid.h"

#include "tests/chart/WholeHertz.h"

#include <gtest/gtest.h>

#include <limits>

namespace veldron {
namespace {

// A layout whose plot is \a width columns wide.
ChartLayout plotOf(int width) {
    return ChartLayout::of(width + ChartMargins::kLeft + ChartMargins::kRight, 300,
                           DisplayTypeCode::Trace, 0.5F);
}

BinGrid gridOf(qint64 start, qint64 stop, qint64 resolution) {
    BinGrid grid;
    grid.setDataResolution(hz(resolution));
    grid.setScanStart(hz(start));
    grid.setScanStop(hz(stop));
    return grid;
}

TEST(BinGrid, defaults_areAFullGridOfTenMegahertz) {
    const BinGrid grid;
    EXPECT_EQ(grid.scanStart(), hz(0));
    EXPECT_EQ(grid.scanStop(), hz(10000000));
    EXPECT_EQ(grid.dataResolution(), hz(31250));
    EXPECT_EQ(grid.binCount(), 321);
    EXPECT_EQ(grid.binCentred(), 0);
    EXPECT_EQ(grid.cellCount(), 320);
}

struct GridCase {
    qint64 span;
    qint32 bins;
    qint32 centred;
    qint32 cells;
};

TEST(BinGrid, countsOfBinsAndCells_roundTiesToEven) {
    const GridCase cases[] = {
        {320000, 321, 0, 320}, {319000, 320, 1, 320}, {4000, 5, 1, 5},       {1000, 2, 1, 2},
        {2500, 4, 1, 4},       {1500, 2, 1, 2},       {320500, 322, 0, 320},
    };
    for (const GridCase &c : cases) {
        const BinGrid grid = gridOf(0, c.span, 1000);
        EXPECT_EQ(grid.binCount(), c.bins) << c.span;
        EXPECT_EQ(grid.binCentred(), c.centred) << c.span;
        EXPECT_EQ(grid.cellCount(), c.cells) << c.span;
    }
}

TEST(BinGrid, dataResolutionOf499_isIgnoredAnd500IsTaken) {
    BinGrid grid;
    EXPECT_FALSE(grid.setDataResolution(hz(499)));
    EXPECT_EQ(grid.dataResolution(), hz(31250));
    EXPECT_TRUE(grid.setDataResolution(hz(500)));
    EXPECT_EQ(grid.binCount(), 20001);
}

TEST(BinGrid, scanStartOf3600MHz_isIgnored) {
    BinGrid grid;
    EXPECT_FALSE(grid.setScanStart(hz(3600000000)));
    EXPECT_FALSE(grid.setScanStop(hz(3600000000)));
    EXPECT_FALSE(grid.setScanStart(hz(-5000001)));
    EXPECT_EQ(grid.scanStart(), hz(0));
    EXPECT_TRUE(grid.setScanStart(hz(-5000000)));
}

TEST(BinGrid, sameScanStart_isNoWrite) {
    BinGrid grid;
    EXPECT_FALSE(grid.setScanStart(hz(0)));
    EXPECT_FALSE(grid.setScanStop(hz(10000000)));
}

TEST(BinGrid, scanStartAboveScanStop_pullsTheStopAlong) {
    BinGrid grid;
    EXPECT_TRUE(grid.setScanStart(hz(20000000)));
    EXPECT_EQ(grid.scanStop(), hz(20031250));
    EXPECT_EQ(grid.binCount(), 2);
}

TEST(BinGrid, scanStartAtTheHighestFrequency_leavesOneBin) {
    BinGrid grid;
    EXPECT_TRUE(grid.setScanStart(hz(3500000000)));
    EXPECT_EQ(grid.scanStop(), hz(3500000000));
    EXPECT_EQ(grid.binCount(), 1);
    EXPECT_EQ(grid.cellCount(), 1);
}

TEST(BinGrid, scanStopBelowScanStart_pullsTheStartAlongDownToTheLowest) {
    BinGrid grid;
    grid.setScanStart(hz(1000000));
    EXPECT_TRUE(grid.setScanStop(hz(500000)));
    EXPECT_EQ(grid.scanStart(), hz(468750));
    EXPECT_TRUE(grid.setScanStop(hz(-5000000)));
    EXPECT_EQ(grid.scanStart(), hz(-5000000));
}

TEST(BinGrid, screenResolution_addsOneBinWhereBinsAreCentred) {
    EXPECT_EQ(gridOf(0, 320000, 1000).screenResolution(320), hz(1000));
    EXPECT_EQ(gridOf(0, 4000, 1000).screenResolution(500), hz(10));
    EXPECT_EQ(gridOf(0, 4000, 1000).screenResolution(0), hz(0));
    EXPECT_EQ(gridOf(0, 4000, 1000).screenResolution(-3), hz(0));
}

TEST(BinGrid, firstCentreOfFiveBinsIn500Columns_is50PastTheLeftEdge) {
    EXPECT_EQ(gridOf(0, 4000, 1000).firstCentre(plotOf(500)), ChartMargins::kLeft + 50);
    EXPECT_EQ(BinGrid().firstCentre(plotOf(500)), ChartMargins::kLeft);
}

TEST(BinGrid, columns_followTheFrequencies) {
    const BinGrid five = gridOf(0, 4000, 1000);
    EXPECT_EQ(five.columnOf(hz(0), plotOf(500)), 90);
    EXPECT_EQ(five.columnOf(hz(4000), plotOf(500)), 490);
    const BinGrid full;
    EXPECT_EQ(full.columnOf(hz(0), plotOf(640)), 40);
    EXPECT_EQ(full.columnOf(hz(10000000), plotOf(640)), 680);
    EXPECT_EQ(full.columnOf(hz(-31250), plotOf(640)), 38);
    // Exactly half a column goes to the right.
    EXPECT_EQ(full.columnOf(hz(15625), plotOf(320)), 41);
    EXPECT_EQ(full.columnOf(Hertz::fromUnits(156249999), plotOf(320)), 40);
}

TEST(BinGrid, resolutionWiderThanEverything_putsAllFrequenciesIntoTheMiddle) {
    const BinGrid one = gridOf(0, 4000, 20000000000);
    ASSERT_EQ(one.cellCount(), 1);
    EXPECT_EQ(one.columnOf(hz(0), plotOf(500)), 290);
    EXPECT_EQ(one.columnOf(hz(4000), plotOf(500)), 290);
}

TEST(BinGrid, absurdFrequencies_stayFarOutsideThePlot) {
    const BinGrid full;
    EXPECT_LT(full.columnOf(Hertz::fromUnits(-9000000000000000000), plotOf(640)), -10000);
    EXPECT_GT(full.columnOf(Hertz::fromUnits(9000000000000000000), plotOf(640)), 10000);
}

TEST(BinGrid, lowestFrequencyThereIs_staysFarOutsideThePlot) {
    const Hertz lowest = Hertz::fromUnits(std::numeric_limits<qint64>::min());
    BinGrid grid;
    EXPECT_LT(grid.columnOf(lowest, plotOf(640)), -10000);
    EXPECT_EQ(grid.binOf(lowest), std::numeric_limits<qint32>::min());
    EXPECT_FALSE(grid.setScanStart(lowest));
    EXPECT_FALSE(grid.setScanStop(lowest));
    EXPECT_FALSE(grid.setDataResolution(lowest));
}

TEST(BinGrid, frequencyUnderAColumn_isThatOfItsCellsBin) {
    const BinGrid full;
    EXPECT_EQ(full.frequencyAt(40, plotOf(640)), hz(0));
    EXPECT_EQ(full.frequencyAt(41, plotOf(640)), hz(0));
    EXPECT_EQ(full.frequencyAt(42, plotOf(640)), hz(31250));
    EXPECT_EQ(full.frequencyAt(680, plotOf(640)), hz(10000000));
}

TEST(BinGrid, binOfAFrequency_roundsTiesToEven) {
    const BinGrid full;
    EXPECT_EQ(full.binOf(hz(15625)), 0);
    EXPECT_EQ(full.binOf(hz(46875)), 2);
    EXPECT_EQ(full.binOf(hz(-31250)), -1);
}

} // namespace
} // namespace veldron
