// SPDX-License-Identifier: MIT
#include "chart/WaterfallScroll.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

TEST(WaterfallScroll, limited_endsAtTheLastRowAndBeginsAtTheFirst) {
    WaterfallScroll scroll;
    scroll.lookFrom(500);
    scroll.limitTo(100, 30);
    EXPECT_EQ(scroll.firstRow(), 70);
    scroll.limitTo(20, 30);
    EXPECT_EQ(scroll.firstRow(), 0);
}

TEST(WaterfallScroll, centred_roundsHalvesToEven) {
    WaterfallScroll scroll;
    scroll.centreOn(50, 100, 31);
    EXPECT_EQ(scroll.firstRow(), 34);
    scroll.centreOn(51, 100, 31);
    EXPECT_EQ(scroll.firstRow(), 36);
    scroll.centreOn(99, 100, 31);
    EXPECT_EQ(scroll.firstRow(), 69);
}

TEST(WaterfallScroll, rowsPushed_areFollowedOnlyWhenScrolledBackAmongTheRows) {
    WaterfallScroll scroll;
    EXPECT_FALSE(scroll.rowsPushed(3, 10));
    EXPECT_EQ(scroll.firstRow(), 0);
    scroll.lookFrom(4);
    EXPECT_TRUE(scroll.rowsPushed(3, 10));
    EXPECT_EQ(scroll.firstRow(), 7);
    scroll.lookFrom(10);
    EXPECT_FALSE(scroll.rowsPushed(3, 10));
    EXPECT_EQ(scroll.firstRow(), 10);
}

TEST(WaterfallScroll, fitted_changesOnlyAViewThatPassesTheLastRow) {
    WaterfallScroll scroll;
    scroll.lookFrom(60);
    scroll.fitTo(100, 40);
    EXPECT_EQ(scroll.firstRow(), 60);
    scroll.fitTo(100, 41);
    EXPECT_EQ(scroll.firstRow(), 59);
    scroll.lookFrom(-4);
    scroll.fitTo(100, 200);
    EXPECT_EQ(scroll.firstRow(), -4);
}

TEST(WaterfallScroll, stretched_keepsTheTimeOfItsTopAndRoundsHalvesToEven) {
    WaterfallScroll scroll;
    scroll.lookFrom(3);
    scroll.stretch(10, 5);
    EXPECT_EQ(scroll.firstRow(), 6);
    scroll.lookFrom(5);
    scroll.stretch(5, 10);
    EXPECT_EQ(scroll.firstRow(), 2);
    scroll.lookFrom(2000000000);
    scroll.stretch(60, 1);
    EXPECT_EQ(scroll.firstRow(), 2147483647);
}

} // namespace
} // namespace veldron
