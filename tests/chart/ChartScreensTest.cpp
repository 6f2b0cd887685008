// SPDX-License-Identifier: MIT
// A chart that comes onto a screen of another density.
#include "tests/chart/Screens.h"

namespace veldron {
namespace {

class Screens : public ScreensTest {
protected:
    void begin(DisplayTypeCode displayType) {
        chart.setDisplayType(displayType);
        liveRows(20);
        scan(72);
    }
    void show(const LevelScan &levels) {
        chart.SetData(levels);
        chart.Refresh();
        QApplication::processEvents();
    }
    // What is shown, and that it is no more and no less than a whole redraw.
    void expectWhole(double density, const char *name) {
        const QImage found = picture().image().copy();
        EXPECT_EQ(found.size(), chart.size() * density) << name;
        EXPECT_EQ(shown(39, 100), ChartColours::kAxis) << name;
        EXPECT_EQ(shown(100, chart.DisplayType() == DisplayTypeCode::Trace ? 369 : 169),
                  ChartColours::kTrace)
            << name;
        if (chart.DisplayType() == DisplayTypeCode::TraceAndWaterfall) {
            EXPECT_EQ(shown(60, 205), 72U * 0x010101U) << name;
            EXPECT_EQ(shown(60, 206), 20U * 0x010101U) << name;
        }
        chart.DrawAxes();
        chart.Refresh();
        EXPECT_EQ(found, picture().image()) << name;
    }
};

using ChartScreensTest = Screens;

TEST_F(ChartScreensTest, paintedOnADenserScreen_isDrawnAnewThereAndBack) {
    for (const DisplayTypeCode displayType :
         {DisplayTypeCode::Trace, DisplayTypeCode::TraceAndWaterfall}) {
        begin(displayType);
        const QImage before = picture().image().copy();
        goTo(2);
        expectWhole(2, "on the dense screen");
        goTo(1);
        EXPECT_EQ(picture().image(), before);
    }
}

TEST_F(ChartScreensTest, refreshBeforeTheFirstPaintOnADenserScreen_drawsTheAxesToo) {
    for (const DisplayTypeCode displayType :
         {DisplayTypeCode::Trace, DisplayTypeCode::TraceAndWaterfall}) {
        begin(displayType);
        goUnseenTo(2);
        chart.Refresh();
        expectWhole(2, displayType == DisplayTypeCode::Trace ? "trace alone" : "over a waterfall");
        paintAgain();
        goTo(1);
    }
}

TEST_F(ChartScreensTest, axesBeforeTheFirstPaintOnADenserScreen_leaveTheWholePictureInView) {
    for (const DisplayTypeCode displayType :
         {DisplayTypeCode::Trace, DisplayTypeCode::TraceAndWaterfall}) {
        begin(displayType);
        goUnseenTo(2);
        chart.DrawAxes();
        expectWhole(2, displayType == DisplayTypeCode::Trace ? "trace alone" : "over a waterfall");
        paintAgain();
        goTo(1);
    }
}

TEST_F(ChartScreensTest, axesBeforeTheFirstPaintOnADenserScreen_ageNoPeaks) {
    chart.setPeak(true);
    chart.setTimespan(2);
    scan(92);
    scan(52);
    clock.advance(3.0);
    goUnseenTo(2);
    chart.DrawAxes();
    EXPECT_EQ(shown(100, 70), ChartColours::kPeak);
    chart.Refresh();
    EXPECT_EQ(shown(100, 70), ChartColours::kBackground);
}

TEST_F(ChartScreensTest, eachDevicePixelOfThePicture_isShownAsItIs) {
    chart.setRXFreq(hz(50000000)); // its line lies over the picture
    begin(DisplayTypeCode::TraceAndWaterfall);
    LevelScan levels(321, 60);
    for (std::size_t bin = 0; bin < levels.size(); bin += 2) {
        levels[bin] = 90;
    }
    for (const double each : {1.0, 1.25, 1.5, 1.75, 2.0}) {
        goTo(each);
        for (const QPoint offset : {QPoint(0, 0), QPoint(7, 11), QPoint(1, 3)}) {
            chart.move(offset);
            size(695, 400);
            show(levels);
            const QPoint place(qRound(offset.x() * each), qRound(offset.y() * each));
            const QRect within = QRect(place, picture().image().size()) & onScreen().rect();
            EXPECT_EQ(onScreen().copy(within),
                      picture().image().copy(QRect(QPoint(0, 0), within.size())))
                << each << " at " << offset.x() << ", " << offset.y();
        }
    }
}

TEST_F(ChartScreensTest, signalsThatComeAndGo_leaveNoLineOnTheScreen) {
    for (const double each : {1.0, 1.25, 1.5, 1.75, 2.0}) {
        goTo(each);
        for (const QPoint offset : {QPoint(0, 0), QPoint(7, 11), QPoint(1, 3)}) {
            chart.move(offset);
            size(695, 400);
            LevelScan levels(321, 60);
            show(levels);
            const QImage before = onScreen();
            int lines = 0;
            // Each comes with all of the trace, and goes alone.
            for (std::size_t bin = 0; bin < 320; bin += 7) {
                show(LevelScan(321, 95));
                levels[bin] = 90;
                show(levels);
                levels[bin] = 60;
                show(levels);
                lines += onScreen() == before ? 0 : 1;
            }
            EXPECT_EQ(lines, 0) << each << " at " << offset.x() << ", " << offset.y();
        }
    }
}

} // namespace
} // namespace veldron
