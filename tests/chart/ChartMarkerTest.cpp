// SPDX-License-Identifier: MIT
// The marker, its read-out and the receive line in the control.
#include "tests/chart/ChartFixture.h"

namespace veldron {
namespace {

TEST_F(ChartTest, receiveLine_standsAtItsFrequencyWhileThatIsInTheScan) {
    chart.setRXFreq(hz(5000000));
    EXPECT_TRUE(line("Line2").Visible());
    EXPECT_EQ(line("Line2").X1(), 360);
    EXPECT_EQ(line("Line2").Y1(), 10);
    EXPECT_EQ(line("Line2").Y2(), 370);
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    EXPECT_EQ(line("Line2").Y2(), 395);
    chart.setRXFreq(hz(0));
    EXPECT_EQ(line("Line2").X1(), 41);
    chart.setRXFreq(hz(10000001));
    EXPECT_FALSE(line("Line2").Visible());
}

TEST_F(ChartTest, receiveFrequencyWritten_pullsTheMarkerOntoIt) {
    chart.setMarkerEn(true);
    chart.setRXFreq(hz(2500000));
    EXPECT_EQ(chart.MarkerFreq(), hz(2500000));
    EXPECT_EQ(line("Line1").X1(), 200);
    EXPECT_EQ(line("Line1").Y1(), 10 + readOut().height());
    EXPECT_EQ(readOut().x(), 200 - readOut().width() / 2);
}

TEST_F(ChartTest, markerSwitched_goesBackToTheReceiveFrequency) {
    chart.setRXFreq(hz(2500000));
    chart.setMarkerEn(true);
    EXPECT_TRUE(line("Line1").Visible());
    EXPECT_FALSE(readOut().isHidden());
    EXPECT_EQ(line("Line1").X1(), 200);
    QTest::mouseClick(&picture(), Qt::LeftButton, {}, {400, 50});
    EXPECT_NE(chart.MarkerFreq(), hz(2500000));
    chart.setMarkerEn(false);
    EXPECT_EQ(chart.MarkerFreq(), hz(2500000));
    EXPECT_FALSE(line("Line1").Visible());
    EXPECT_TRUE(readOut().isHidden());
}

TEST_F(ChartTest, markerOutsideTheScan_keepsItsCaption) {
    chart.setRXFreq(hz(5000000));
    chart.setMarkerEn(true);
    scan(61);
    chart.setRXFreq(hz(-2000000));
    scan(70);
    EXPECT_EQ(readOut().text(), QStringLiteral("5.000.000  -71dB"));
}

TEST_F(ChartTest, readOut_followsTheSignal) {
    chart.setRXFreq(hz(145000000));
    chart.setScanStop(hz(150000000));
    chart.setScanStart(hz(140000000));
    chart.setMarkerEn(true);
    scan(61);
    EXPECT_EQ(readOut().text(), QStringLiteral("145.000.000  -71dB"));
    scan(71);
    EXPECT_EQ(readOut().text(), QStringLiteral("145.000.000  -61dB"));
}

TEST_F(ChartTest, markerOnTheLastCell_keepsTheReadOutInsideThePlot) {
    scan(61);
    chart.setRXFreq(hz(10000000));
    chart.setMarkerEn(true);
    chart.DrawAxes();
    EXPECT_EQ(readOut().x() + readOut().width(), 680);
    EXPECT_EQ(line("Line1").X1(), 680);
}

TEST_F(ChartTest, readOut_isTakenFromOneBinBeyondTheScanAndNoFurther) {
    LevelScan levels(323, 61);
    levels[321] = 71;
    levels[322] = 81;
    chart.setMarkerEn(true);
    chart.SetData(levels);
    chart.setRXFreq(hz(321 * 31250));
    chart.Refresh();
    EXPECT_EQ(readOut().text(), QStringLiteral("10.031.250  -61dB"));
    chart.setRXFreq(hz(322 * 31250));
    chart.Refresh();
    EXPECT_EQ(chart.MarkerFreq(), hz(322 * 31250));
    EXPECT_EQ(readOut().text(), QStringLiteral("10.031.250  -61dB"));
}

TEST_F(ChartTest, markerSwitchedOn_takesTheEndsOfTheReceiveLine) {
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    chart.setRXFreq(hz(5000000));
    chart.setRXFreq(hz(10000001)); // the receive line is hidden where it stood
    ASSERT_FALSE(line("Line2").Visible());
    chart.setMarkerEn(true);
    EXPECT_EQ(line("Line1").X1(), 360);
    EXPECT_EQ(line("Line1").X2(), 360);
    EXPECT_EQ(line("Line1").Y1(), readOut().height() + 10);
    EXPECT_EQ(line("Line1").Y2(), 395);
    chart.DrawAxes();
    EXPECT_EQ(line("Line1").X1(), 680);
    EXPECT_EQ(line("Line1").Y2(), 170);
}

TEST_F(ChartTest, markerSwitchedOnBeforeAnyAxes_measuresFromTheReceiveLineAlone) {
    ctlChartSpectrum fresh(guard, clock, texts, cursor); // too small yet to be drawn
    const auto *label = fresh.findChild<QLabel *>(QStringLiteral("lblMarker"));
    const auto *marker = fresh.findChild<OverlayLine *>(QStringLiteral("Line1"));
    ASSERT_EQ(fresh.findChild<OverlayLine *>(QStringLiteral("Line2"))->Y1(), 0);
    fresh.setMarkerEn(true);
    EXPECT_GT(label->height(), 0);
    EXPECT_EQ(marker->Y1(), label->height());
    EXPECT_EQ(marker->Y2(), 0);
    EXPECT_EQ(label->y(), 10);
}

TEST_F(ChartTest, markerSwitchedOn_comesToTheFront) {
    ASSERT_NE(picture().children().last(), &line("Line1"));
    chart.setMarkerEn(true);
    EXPECT_EQ(picture().children().last(), &line("Line1"));
}

TEST_F(ChartTest, markerSwitchedOnAtAnEdge_keepsTheReadOutWithinTheMargins) {
    chart.setRXFreq(hz(0));
    chart.setMarkerEn(true);
    EXPECT_EQ(readOut().x(), 39); // a pixel before where the axes put it
    chart.DrawAxes();
    EXPECT_EQ(readOut().x(), 40);
    chart.setMarkerEn(false);
    chart.setRXFreq(hz(10000000));
    chart.setMarkerEn(true);
    EXPECT_EQ(line("Line1").X1(), 680);
    EXPECT_EQ(readOut().x() + readOut().width(), 680);
}

TEST_F(ChartTest, markerOnTheFirstCell_standsBesideTheFrameOnceTheAxesAreDrawn) {
    chart.setMarkerEn(true);
    scan(61);
    QTest::mouseClick(&picture(), Qt::LeftButton, {}, {41, 50});
    EXPECT_EQ(line("Line1").X1(), 40); // the click leaves it on the bin's own column
    EXPECT_EQ(line("Line1").X2(), 40);
    chart.DrawAxes();
    EXPECT_EQ(line("Line1").X1(), 41);
    EXPECT_EQ(line("Line1").X2(), 41);
    EXPECT_EQ(readOut().x(), 40);
    chart.setRXFreq(hz(-2000000));
    EXPECT_EQ(line("Line1").X1(), 41);
    EXPECT_EQ(readOut().x(), 40);
}

TEST_F(ChartTest, plotOfSixtyPixels_leavesReceiveLineAndMarkerWhereTheyAre) {
    chart.setRXFreq(hz(5000000));
    chart.setMarkerEn(true);
    scan(61);
    const QPoint label = readOut().pos();
    size(115, 300);
    chart.setRXFreq(hz(2500000));
    chart.setRXFreq(hz(10000001));
    EXPECT_TRUE(line("Line2").Visible());
    for (const char *name : {"Line2", "Line1"}) {
        EXPECT_EQ(line(name).X1(), 360) << name;
        EXPECT_EQ(line(name).X2(), 360) << name;
        EXPECT_EQ(line(name).Y2(), 370) << name;
    }
    EXPECT_EQ(readOut().pos(), label);
    size(116, 300);
    EXPECT_FALSE(line("Line2").Visible());
    EXPECT_EQ(line("Line1").Y2(), 270);
    EXPECT_NE(readOut().pos(), label);
}

} // namespace
} // namespace veldron
