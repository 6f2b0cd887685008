// SPDX-License-Identifier: MIT
#include "chart/ScanStore.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

class Peaks : public testing::Test {
protected:
    void scan(quint8 level) { store.take(LevelScan(5, level)); }
    quint8 peakAt(float time, qint32 timespan = 5, bool playback = false) {
        store.agePeaks({time, playback, timespan});
        return store.peaks()[0];
    }

    ScanStore store{5};
};

using ScanStorePeaks = Peaks;

TEST(ScanStore, arrays_haveTwoElementsMoreThanBins) {
    const ScanStore store(321);
    EXPECT_EQ(store.current().size(), 323U);
    EXPECT_EQ(store.peaks().size(), 323U);
}

TEST(ScanStore, scanOfUpTo323_isAcceptedOnAFullGridAnd324IsNot) {
    const ScanStore store(321);
    EXPECT_TRUE(store.accepts(LevelScan(0)));
    EXPECT_TRUE(store.accepts(LevelScan(323)));
    EXPECT_FALSE(store.accepts(LevelScan(324)));
}

TEST(ScanStore, shorterScan_leavesTheBinsBehindItsEnd) {
    ScanStore store(5);
    store.take({1, 2, 3, 4, 5});
    store.take({9, 9});
    EXPECT_EQ(store.current(), LevelScan({9, 9, 3, 4, 5, 0, 0}));
}

TEST(ScanStore, newGrid_startsFromZero) {
    ScanStore store(5);
    store.take({1, 2, 3, 4, 5});
    store.reset(3);
    EXPECT_EQ(store.current(), LevelScan(5, 0));
}

TEST_F(ScanStorePeaks, higherScan_raisesThePeakAndLowerOneLeavesIt) {
    scan(50);
    EXPECT_EQ(peakAt(100.0F), 50);
    scan(40);
    EXPECT_EQ(peakAt(101.0F), 50);
    scan(60);
    EXPECT_EQ(peakAt(102.0F), 60);
}

TEST_F(ScanStorePeaks, peakOfFiveSeconds_dropsAtOnceWhenMoreThanFiveAreCounted) {
    scan(50);
    EXPECT_EQ(peakAt(100.0F), 50);
    scan(40);
    EXPECT_EQ(peakAt(105.0F), 50);
    EXPECT_EQ(peakAt(106.0F), 40);
    scan(30); // the new peak lives its five seconds too
    EXPECT_EQ(peakAt(111.0F), 40);
    EXPECT_EQ(peakAt(112.0F), 30);
}

TEST_F(ScanStorePeaks, equalScan_beginsThePeaksLifeAnew) {
    scan(50);
    EXPECT_EQ(peakAt(100.0F), 50);
    scan(40);
    EXPECT_EQ(peakAt(104.0F), 50);
    scan(50);
    EXPECT_EQ(peakAt(105.0F), 50);
    scan(40);
    EXPECT_EQ(peakAt(110.0F), 50);
    EXPECT_EQ(peakAt(111.0F), 40);
}

TEST_F(ScanStorePeaks, timespanZeroAndMinusOne_holdForEver) {
    for (const qint32 timespan : {0, -1}) {
        store.reset(5);
        scan(50);
        EXPECT_EQ(peakAt(100.0F, timespan), 50);
        scan(10);
        EXPECT_EQ(peakAt(50000.0F, timespan), 50);
        EXPECT_EQ(peakAt(50005.0F, 5), 50); // its life begins only now
    }
}

TEST_F(ScanStorePeaks, midnight_addsTheRealElapsedTimeOnly) {
    scan(50);
    EXPECT_EQ(peakAt(86398.0F), 50);
    scan(40);
    EXPECT_EQ(peakAt(2.0F), 50);
    EXPECT_EQ(peakAt(3.0F), 50);
    EXPECT_EQ(peakAt(4.0F), 40);
}

TEST_F(ScanStorePeaks, jumpBackInPlayback_agesNothing) {
    scan(50);
    EXPECT_EQ(peakAt(1000.0F, 5, true), 50);
    scan(40);
    EXPECT_EQ(peakAt(500.0F, 5, true), 50);
    EXPECT_EQ(peakAt(505.0F, 5, true), 50);
    EXPECT_EQ(peakAt(506.0F, 5, true), 40);
}

TEST_F(ScanStorePeaks, passesUnderHalfASecond_roundToNothing) {
    scan(50);
    EXPECT_EQ(peakAt(100.0F), 50);
    scan(40);
    for (int i = 1; i <= 40; ++i) {
        EXPECT_EQ(peakAt(100.0F + static_cast<float>(i) * 0.25F), 50);
    }
    EXPECT_EQ(peakAt(115.0F), 50);
    EXPECT_EQ(peakAt(116.0F), 40);
}

TEST_F(ScanStorePeaks, zeroedPeaks_areThoseOfTheBinsOnly) {
    store.take(LevelScan(7, 50));
    EXPECT_EQ(peakAt(100.0F), 50);
    EXPECT_EQ(store.peaks()[5], 50); // one past the last bin is aged, too
    EXPECT_EQ(store.peaks()[6], 0);
    store.zeroPeaks();
    EXPECT_EQ(store.peaks()[4], 0);
    EXPECT_EQ(store.peaks()[5], 50);
}

} // namespace
} // namespace veldron
