// SPDX-License-Identifier: MIT
#include "chart/WaterfallStore.h"

#include "common/UntrappedError.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <vector>

namespace veldron {
namespace {

constexpr float kNoon = 43200.0F;

class Rows : public testing::Test {
protected:
    void begin(float now, qint32 update) {
        store = std::make_unique<WaterfallStore>(now);
        if (update != WaterfallStore::kDefaultUpdate) {
            store->setUpdate(update, now);
        }
    }
    int advance(float time) {
        int closed = 0;
        store->AdvanceRows(time, 1.0e6F, [&closed](bool) {
            if (++closed > 10 * WaterfallStore::kHeight) {
                throw std::length_error("rows without end");
            }
        });
        return closed;
    }
    // \a count rows of update() seconds from \a now on, each with a scan of its own.
    float fill(int count, float now) {
        for (int i = 1; i <= count; ++i) {
            scan(static_cast<quint8>(1 + i % 200), now);
            now += static_cast<float>(store->update());
            advance(now);
        }
        return now;
    }
    void scan(quint8 level, float now) { store->addScan(LevelScan(320, level), now); }
    [[nodiscard]] int level(qint32 row) const { return store->level(5, row); }

    std::unique_ptr<WaterfallStore> store = std::make_unique<WaterfallStore>(kNoon);
};

using WaterfallStoreTest = Rows;

TEST_F(WaterfallStoreTest, clockOfThreePastNoonAtTenSeconds_endsItsRowAtTen) {
    begin(kNoon + 3.0F, 10);
    EXPECT_EQ(store->nextRowTime(), kNoon + 10.0F);
}

TEST_F(WaterfallStoreTest, lastRowOfTheDay_endsAtZero) {
    begin(86395.0F, 10);
    EXPECT_EQ(store->nextRowTime(), 0.0F);
}

TEST_F(WaterfallStoreTest, openRow_holdsTheHighestOfItsScans) {
    scan(50, kNoon);
    scan(40, kNoon);
    EXPECT_EQ(level(0), 50);
    scan(60, kNoon);
    EXPECT_EQ(level(0), 60);
}

TEST_F(WaterfallStoreTest, firstScanAfterAClosedRow_startsTheRowAfresh) {
    begin(kNoon, 1);
    scan(50, kNoon);
    EXPECT_EQ(advance(kNoon + 1.0F), 1);
    scan(40, kNoon + 1.0F);
    EXPECT_EQ(level(0), 40);
    EXPECT_EQ(level(1), 50);
    scan(30, kNoon + 1.0F);
    EXPECT_EQ(level(0), 40); // and later ones don't
}

TEST_F(WaterfallStoreTest, playback_keepsTheLastScanOnly) {
    store->setPlayback(true);
    scan(50, 0.0F);
    scan(40, 0.0F);
    EXPECT_EQ(level(0), 40);
}

TEST_F(WaterfallStoreTest, fullScansLastBin_goesToTheFirstByteOfRowOne) {
    LevelScan levels(321, 10);
    levels[320] = 77;
    store->addScan(levels, kNoon);
    EXPECT_EQ(store->level(0, 1), 77);
    EXPECT_EQ(store->level(1, 1), 0);
}

TEST_F(WaterfallStoreTest, scanTime_isRoundedToWholeSecondsTiesToEven) {
    // A row is blank when it begins more than two poll periods after the scan's time.
    begin(100.0F, 1);
    store->setPoll(750);
    scan(50, 100.5F); // counts as 100
    advance(102.0F);
    EXPECT_EQ(level(0), 0);
    begin(100.0F, 1);
    store->setPoll(750);
    scan(50, 101.5F); // counts as 102
    advance(103.0F);
    EXPECT_EQ(level(0), 50);
}

TEST_F(WaterfallStoreTest, noScanForMoreThanTwoPollPeriods_leavesTheRowBlank) {
    begin(kNoon, 1);
    store->setPoll(1000);
    scan(50, kNoon);
    advance(kNoon + 1.0F);
    advance(kNoon + 2.0F);
    EXPECT_EQ(level(0), 50); // a scan is still expected: a copy of the old row stands in
    advance(kNoon + 3.0F);
    EXPECT_EQ(level(0), 0);
    EXPECT_EQ(level(1), 50);
}

TEST_F(WaterfallStoreTest, pauseOf35SecondsAtOneSecond_leaves34BlankRowsAndRestartsTheRowClock) {
    begin(kNoon, 1); // the row ends a second past noon
    store->setPoll(1000);
    advance(kNoon + 1.0F);
    scan(50, kNoon + 1.0F);
    const float late = kNoon + 2.0F + 35.2F;
    EXPECT_EQ(advance(late), 1);
    EXPECT_EQ(store->nextRowTime(), kNoon + 38.0F);
    EXPECT_EQ(store->rowCount(), 1 + 34 + 1);
    EXPECT_EQ(level(0), 50); // the open row still held its scan when it was closed
    EXPECT_EQ(level(1), 50);
    for (qint32 row = 2; row <= 35; ++row) {
        EXPECT_EQ(level(row), 0) << row;
    }
}

TEST_F(WaterfallStoreTest, pauseOfNineSecondsAtOneSecond_isCaughtUpRowByRow) {
    begin(kNoon, 1);
    store->setPoll(1000);
    advance(kNoon + 1.0F);
    scan(50, kNoon + 1.0F);
    EXPECT_EQ(advance(kNoon + 2.0F + 9.0F), 10);
    EXPECT_EQ(store->rowCount(), 11);
    EXPECT_EQ(store->nextRowTime(), kNoon + 12.0F);
    // The first of them is a copy of the scan's row; from then on the scan is too old.
    EXPECT_EQ(level(10), 50);
    EXPECT_EQ(level(9), 50);
    EXPECT_EQ(level(8), 0);
    EXPECT_EQ(level(0), 0);
}

TEST_F(WaterfallStoreTest, midnight_closesRowsAsAlwaysAndWrapsTheRowClock) {
    begin(86398.0F, 1);
    EXPECT_EQ(advance(86399.0F), 1);
    EXPECT_EQ(store->nextRowTime(), 0.0F);
    EXPECT_EQ(advance(86399.9F), 0);
    EXPECT_EQ(advance(0.1F), 1);
    EXPECT_EQ(store->nextRowTime(), 1.0F);
    EXPECT_EQ(store->rowCount(), 2);
}

TEST_F(WaterfallStoreTest, clockSetBackAnHour_emptiesTheHistory) {
    begin(kNoon, 10);
    scan(50, kNoon);
    advance(kNoon + 10.0F);
    store->resetAfterClockJump(kNoon - 3590.0F);
    EXPECT_EQ(store->rowCount(), 0);
    EXPECT_EQ(level(0), 0);
    EXPECT_EQ(store->nextRowTime(), kNoon - 3580.0F);
}

TEST_F(WaterfallStoreTest, clockOnTimeOrTenMinutesLate_isNoJump) {
    begin(kNoon, 10);
    scan(50, kNoon);
    store->resetAfterClockJump(kNoon);
    store->resetAfterClockJump(kNoon + 610.0F);
    EXPECT_EQ(level(0), 50);
    store->resetAfterClockJump(kNoon + 611.0F);
    EXPECT_EQ(level(0), 0);
}

TEST_F(WaterfallStoreTest, rowsPastTenThousand_fallOffTheEnd) {
    begin(1000.0F, 1);
    scan(1, 1000.0F);
    for (int i = 1; i <= 10010; ++i) {
        advance(1000.0F + static_cast<float>(i));
        scan(static_cast<quint8>(i % 200), 1000.0F + static_cast<float>(i));
    }
    EXPECT_EQ(store->rowCount(), WaterfallStore::kHeight);
    EXPECT_EQ(level(0), 10);
    EXPECT_EQ(level(9999), 11);
}

TEST_F(WaterfallStoreTest, gapOfMoreRowsThanTheRasterHas_leavesItBlankAndFull) {
    store->setPoll(1000);
    store->setPlayback(true);
    store->setPlaybackTime(100.0F);
    advance(100.0F);
    scan(50, 0.0F);
    store->setPlaybackTime(20100.0F);
    EXPECT_EQ(advance(20100.0F), 1);
    EXPECT_EQ(store->rowCount(), WaterfallStore::kHeight);
    for (const qint32 row : {0, 2, 5000, 9999}) {
        EXPECT_EQ(level(row), 0) << row;
    }
}

TEST_F(WaterfallStoreTest, gapOfMoreThan32767Rows_leavesTheRasterBlankAndGoesOn) {
    store->setPoll(1000);
    store->setPlayback(true);
    store->setPlaybackTime(100.0F);
    advance(100.0F);
    scan(50, 0.0F);
    const float late = store->nextRowTime() + 40000.5F;
    store->setPlaybackTime(late);
    EXPECT_EQ(advance(late), 1);
    EXPECT_EQ(store->rowCount(), WaterfallStore::kHeight);
    for (const qint32 row : {2, 5000, 9999}) {
        EXPECT_EQ(level(row), 0) << row;
    }
    scan(60, 0.0F);
    EXPECT_EQ(level(0), 60);
    EXPECT_EQ(advance(store->nextRowTime()), 1);
}

TEST_F(WaterfallStoreTest, rowsOfWholeDays_closeOneRowACall) {
    for (const qint32 days : {1, 3, 24854}) {
        begin(3600.0F, 86400 * days);
        EXPECT_EQ(store->nextRowTime(), 0.0F);
        EXPECT_EQ(advance(3600.0F), 1) << days;
        EXPECT_EQ(store->nextRowTime(), 0.0F);
        EXPECT_EQ(store->rowCount(), 1);
        EXPECT_EQ(advance(50000.0F), 0) << days; // nearer to the row's end than to its beginning
    }
}

TEST_F(WaterfallStoreTest, rowsOfHalfDays_areCaughtUpAndEnd) {
    begin(3600.0F, 43200);
    EXPECT_EQ(store->nextRowTime(), 43200.0F);
    EXPECT_EQ(advance(43300.0F), 1);
    EXPECT_EQ(store->nextRowTime(), 0.0F);
    EXPECT_EQ(advance(86300.0F), 0);
    EXPECT_EQ(advance(100.0F), 1);
}

TEST_F(WaterfallStoreTest, rowIntervalUnderASecond_closesOneRowACall) {
    store->setPoll(250);
    store->setPlayback(true);
    store->setPlaybackTime(100.0F);
    EXPECT_EQ(advance(100.0F), 1);
    EXPECT_EQ(store->nextRowTime(), 100.0F);
    EXPECT_EQ(advance(101.0F), 1);
    EXPECT_EQ(advance(101.0F), 1);
    EXPECT_EQ(store->rowCount(), 3);
    EXPECT_EQ(advance(104.0F), 1); // twelve intervals: a gap of floor(12 - 0.5) rows, and one
    EXPECT_EQ(store->rowCount(), 3 + 11 + 1);
    EXPECT_EQ(store->nextRowTime(), 104.0F);
}

TEST_F(WaterfallStoreTest, rowIntervalOfZero_closesOneRowACallAndKnowsNoGap) {
    store->setPlayback(true);
    store->setPlaybackTime(100.0F);
    EXPECT_EQ(advance(100.0F), 1);
    EXPECT_EQ(advance(5000.0F), 1);
    EXPECT_EQ(store->rowCount(), 2);
}

TEST_F(WaterfallStoreTest, viewScrolledBack_keepsShowingTheSameRows) {
    begin(kNoon, 1);
    for (int i = 1; i <= 5; ++i) {
        advance(kNoon + static_cast<float>(i));
    }
    store->lookFrom(2);
    bool due = false;
    store->AdvanceRows(kNoon + 6.0F, 1.0e6F, [&due](bool isDue) { due = isDue; });
    EXPECT_EQ(store->firstRow(), 3);
    EXPECT_TRUE(due);
    store->lookFrom(0);
    advance(kNoon + 7.0F);
    EXPECT_EQ(store->firstRow(), 0);
}

struct BackCase {
    const char *name;
    qint32 before;
    qint32 after;
};

TEST_F(WaterfallStoreTest, gap_movesAViewThatIsScrolledBackByItsRows) {
    const BackCase cases[] = {
        {"at the newest row", 0, 0},
        {"among the rows", 2, 2 + 34 + 1},
        {"past the rows but not past those of the gap", 20, 20 + 34},
        {"past all rows", 60, 60},
    };
    for (const BackCase &c : cases) {
        begin(kNoon, 1);
        fill(5, kNoon);
        store->lookFrom(c.before);
        EXPECT_EQ(advance(kNoon + 6.0F + 35.2F), 1) << c.name;
        EXPECT_EQ(store->rowCount(), 5 + 34 + 1) << c.name;
        EXPECT_EQ(store->firstRow(), c.after) << c.name;
    }
}

TEST_F(WaterfallStoreTest, scrollBar_isDueOnceRowsPassTheRoom) {
    begin(kNoon, 1);
    std::vector<bool> due;
    for (int i = 1; i <= 4; ++i) {
        store->AdvanceRows(kNoon + static_cast<float>(i), 2.0F,
                           [&due](bool isDue) { due.push_back(isDue); });
    }
    EXPECT_EQ(due, std::vector<bool>({false, false, true, true}));
}

TEST_F(WaterfallStoreTest, updateFromTenToFive_doublesTheRows) {
    for (int i = 1; i <= 6; ++i) {
        scan(static_cast<quint8>(i), kNoon);
        advance(kNoon + 10.0F * static_cast<float>(i));
    }
    store->lookFrom(3);
    store->setUpdate(5, kNoon + 61.0F);
    EXPECT_EQ(store->rowCount(), 12);
    EXPECT_EQ(store->firstRow(), 6);
    EXPECT_EQ(level(2), level(3));
    EXPECT_EQ(level(4), 5);
    EXPECT_EQ(store->nextRowTime(), kNoon + 65.0F);
}

TEST_F(WaterfallStoreTest, updateFromFiveToTen_halvesTheRows) {
    begin(kNoon, 5);
    for (int i = 1; i <= 6; ++i) {
        scan(static_cast<quint8>(i), kNoon);
        advance(kNoon + 5.0F * static_cast<float>(i));
    }
    store->setUpdate(10, kNoon + 30.0F);
    EXPECT_EQ(store->rowCount(), 3);
    EXPECT_EQ(level(1), 5);
}

TEST_F(WaterfallStoreTest, moreThanHalfOfTheRowsCompressed_leaveTheLowerHalfBlank) {
    begin(1000.0F, 5);
    const float now = fill(6000, 1000.0F);
    EXPECT_NE(level(5000), 0);
    EXPECT_NE(level(5999), 0);
    store->setUpdate(10, now);
    EXPECT_EQ(store->rowCount(), 3000);
    EXPECT_NE(level(2999), 0);
    EXPECT_EQ(level(3001), 0);
    for (const qint32 row : {5000, 5999, 9999}) {
        EXPECT_EQ(level(row), 0) << row;
    }
}

TEST_F(WaterfallStoreTest, moreThanHalfOfTheRowsSpread_areNoMoreThanTheRasterHolds) {
    begin(1000.0F, 10);
    const float now = fill(5001, 1000.0F);
    store->lookFrom(4000);
    store->setUpdate(5, now);
    EXPECT_EQ(store->rowCount(), WaterfallStore::kHeight);
    EXPECT_EQ(store->firstRow(), 8000);
    EXPECT_NE(level(9999), 0);
    EXPECT_EQ(fill(3, now), now + 15.0F);
    EXPECT_EQ(store->rowCount(), WaterfallStore::kHeight);
}

TEST_F(WaterfallStoreTest, updateInPlayback_takesThePlaybackTime) {
    store->setPlayback(true);
    store->setPlaybackTime(777.0F);
    store->setUpdate(5, kNoon);
    EXPECT_EQ(store->nextRowTime(), 777.0F);
}

TEST_F(WaterfallStoreTest, playbackWrittenEitherWay_emptiesTheHistory) {
    for (const bool on : {true, false}) {
        scan(50, kNoon);
        store->setPlayback(on);
        EXPECT_EQ(level(0), 0);
        EXPECT_EQ(store->rowCount(), 0);
        EXPECT_EQ(store->playRow(), 0);
    }
}

TEST_F(WaterfallStoreTest, playbackTime_movesTheRowClockOnlyWhileThereAreNoRows) {
    store->setPlayback(true);
    store->setPoll(1000);
    store->setPlaybackTime(100.0F);
    EXPECT_EQ(store->nextRowTime(), 100.0F);
    advance(100.0F);
    store->setPlaybackTime(101.0F);
    EXPECT_EQ(store->nextRowTime(), 101.0F);
    store->setPlaybackTime(105.0F);
    EXPECT_EQ(store->nextRowTime(), 101.0F);
}

TEST_F(WaterfallStoreTest, steps_stopAtBothEndsAndAreNotLimitedWithin) {
    begin(kNoon, 1);
    for (int i = 1; i <= 4; ++i) {
        advance(kNoon + static_cast<float>(i));
    }
    EXPECT_FALSE(store->step(1));
    EXPECT_TRUE(store->step(-2));
    EXPECT_EQ(store->playRow(), 2);
    EXPECT_TRUE(store->step(5));
    EXPECT_EQ(store->playRow(), -3);
    EXPECT_FALSE(store->step(1));
    EXPECT_EQ(store->playRow(), 0);
    EXPECT_TRUE(store->step(-9));
    EXPECT_FALSE(store->step(-1));
    EXPECT_EQ(store->playRow(), 3);
}

TEST_F(WaterfallStoreTest, stepBackInAnEmptyHistory_isRefused) {
    EXPECT_FALSE(store->step(-1));
    EXPECT_EQ(store->playRow(), -1);
    EXPECT_FALSE(store->step(1));
    EXPECT_EQ(store->playRow(), 0);
}

TEST_F(WaterfallStoreTest, palette_takesItsLevelsFromTheScale) {
    store->buildPalette(0, LevelScale());
    EXPECT_EQ(store->history().Palette(42), 0U);
    EXPECT_EQ(store->history().Palette(43), 0x00040404U);
    EXPECT_THROW(static_cast<void>(store->history().Palette(102)), std::overflow_error);
}

TEST_F(WaterfallStoreTest, schemeSix_hasTheColoursOfSchemeFive) {
    store->buildPalette(5, LevelScale());
    std::vector<quint32> five;
    for (qint16 raw = 0; raw < 70; ++raw) {
        five.push_back(store->history().Palette(raw));
    }
    store->buildPalette(6, LevelScale());
    for (qint16 raw = 0; raw < 70; ++raw) {
        EXPECT_EQ(store->history().Palette(raw), five[static_cast<std::size_t>(raw)]) << raw;
    }
    EXPECT_EQ(five[69], 0x000C7300U); // level 115: blue 12, green 115
}

TEST_F(WaterfallStoreTest, lowestLevels_areTheSchemesOwnGround) {
    store->buildPalette(3, LevelScale());
    EXPECT_EQ(store->history().Palette(0), 0x00990026U); // a dark violet, not black
}

TEST_F(WaterfallStoreTest, pauseOfExactlyTenRows_isCaughtUpRowByRow) {
    begin(kNoon, 1);
    EXPECT_EQ(advance(kNoon + 1.0F + 10.0F), 11);
    EXPECT_EQ(store->rowCount(), 11);
}

TEST_F(WaterfallStoreTest, updateThatDividesNoRowsEvenly_roundsRowsAndView) {
    const float now = fill(7, kNoon);
    store->lookFrom(5);
    store->setUpdate(4, now);
    EXPECT_EQ(store->rowCount(), 18); // 17.5
    EXPECT_EQ(store->firstRow(), 12); // 12.5, to even
    store->setUpdate(10, now);
    EXPECT_EQ(store->rowCount(), 7); // 7.2
    EXPECT_EQ(store->firstRow(), 5); // 4.8
}

TEST_F(WaterfallStoreTest, scanInPlayback_hasTheTimeOfPlayback) {
    store->setPlayback(true);
    store->setPoll(1000);
    store->setPlaybackTime(777.0F);
    scan(50, kNoon + 5.0F);
    advance(779.0F);
    EXPECT_EQ(level(0), 50);
    advance(780.0F); // more than two poll periods later
    EXPECT_EQ(level(0), 0);
}

} // namespace
} // namespace veldron
