// SPDX-License-Identifier: MIT
// Rows of the waterfall in the control: row clock, scroll bar, Update.
#include "tests/chart/ChartFixture.h"

namespace veldron {
namespace {

TEST_F(ChartTest, rowsClosed_moveDownThePicture) {
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    liveRows(3);
    // The open row begins as a copy of the one just closed.
    EXPECT_EQ(shown(60, 205), 0x00030303U);
    EXPECT_EQ(shown(60, 206), 0x00030303U);
    EXPECT_EQ(shown(60, 207), 0x00020202U);
    EXPECT_EQ(shown(60, 208), 0x00010101U);
}

TEST_F(ChartTest, rowsWithoutWaterfall_areMadeAllTheSame) {
    liveRows(3);
    EXPECT_EQ(shown(60, 206), 0U);
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    EXPECT_EQ(shown(60, 207), 0x00020202U);
}

TEST_F(ChartTest, clockSetBackAnHour_emptiesTheWaterfall) {
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    liveRows(3);
    clock.setTimeOfDay(kNoon - 3600.0);
    chart.onTimer1();
    chart.Refresh();
    EXPECT_EQ(shown(60, 206), 0U);
}

TEST_F(ChartTest, scrollBar_comesWhenRowsPassTheVisibleOnes) {
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    liveRows(190);
    EXPECT_TRUE(scrollBar().isHidden());
    liveRows(2);
    EXPECT_FALSE(scrollBar().isHidden());
    EXPECT_EQ(scrollBar().maximum(), 2);
    EXPECT_EQ(scrollBar().pageStep(), 190);
    EXPECT_EQ(scrollBar().value(), 0);
    EXPECT_EQ(scrollBar().geometry(), QRect(680, 207, 13, 191));
    chart.setDisplayType(DisplayTypeCode::Trace);
    chart.setSplitFraction(0.5F);
    EXPECT_TRUE(scrollBar().isHidden());
}

TEST_F(ChartTest, splitAtFourFifths_showsTheScrollBarEarlier) {
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    chart.setSplitFraction(0.8F);
    liveRows(70);
    EXPECT_TRUE(scrollBar().isHidden());
    seconds(1);
    EXPECT_FALSE(scrollBar().isHidden());
    EXPECT_EQ(scrollBar().pageStep(), 70);
    EXPECT_EQ(scrollBar().maximum(), 1);
}

TEST_F(ChartTest, scrollBarMoved_looksBack) {
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    liveRows(250);
    scrollBar().setValue(30);
    const quint32 level = 250 - 29 - 200; // row 30 was closed with the scan of 221, from 1 anew
    EXPECT_EQ(shown(60, 205), level * 0x010101U);
    seconds(1);
    EXPECT_EQ(scrollBar().value(), 31); // the view keeps its rows
    EXPECT_EQ(shown(60, 205), level * 0x010101U);
}

TEST_F(ChartTest, thumbDragged_isWorkedOutFromItsShareOfTheBar) {
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    liveRows(250);
    scrollBar().setRange(0, 160); // as if set up a hundred rows later
    scrollBar().setSliderDown(true);
    scrollBar().setSliderPosition(70);
    EXPECT_EQ(shown(60, 205), (250U - 49U - 200U) * 0x010101U); // 70 / 350 of 250 rows
    scrollBar().setSliderDown(false);
}

TEST_F(ChartTest, scrollBarSetUpByCode_sendsNothing) {
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    liveRows(250);
    QSignalSpy moved(&scrollBar(), &QScrollBar::valueChanged);
    scrollBar().setValue(30);
    EXPECT_EQ(moved.count(), 1);
    seconds(3);
    chart.setSplitFraction(0.6F);
    EXPECT_EQ(moved.count(), 1);
}

TEST_F(ChartTest, resizedWhileLookingBack_looksAtNoRowsPastTheLast) {
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    liveRows(250);
    scrollBar().setValue(60);
    size(695, 450);
    EXPECT_EQ(scrollBar().value(), 0); // 60 + 410 plot rows pass the 250 there are
}

TEST_F(ChartTest, updateFromOneToTwo_compressesTheWaterfall) {
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    liveRows(100);
    chart.setUpdate(2);
    EXPECT_EQ(timer().interval(), 1000);
    EXPECT_EQ(shown(60, 205 + 25), 51U * 0x010101U);
    EXPECT_EQ(shown(60, 205 + 51), 0U);
}

TEST_F(ChartTest, deadLink_leavesBlankRows) {
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    chart.setPoll(1000);
    liveRows(3);
    seconds(5);
    EXPECT_EQ(shown(60, 205), 0U);
    EXPECT_EQ(shown(60, 206), 0U);
}

TEST_F(ChartTest, liveTip_isRenewedByEachClosedRow) {
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    liveRows(5);
    QTest::mouseMove(&picture(), {360, 207});
    EXPECT_EQ(picture().toolTip(), QStringLiteral("5.000.000, -128 dB"));
    scan(100);
    seconds(1);
    EXPECT_EQ(picture().toolTip(), QStringLiteral("5.000.000, -127 dB"));
}

} // namespace
} // namespace veldron
