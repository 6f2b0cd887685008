// SPDX-License-Identifier: MIT
// A chart that comes onto a screen of another density.
#include "tests/chart/TwoScreens.h"

namespace veldron {
namespace {

class Screens : public TwoScreensTest {
protected:
    void begin(DisplayTypeCode displayType) {
        chart.setDisplayType(displayType);
        liveRows(20);
        scan(72);
    }
    // What is shown, and that it is no more and no less than a whole redraw.
    void expectWhole(int density, const char *name) {
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

} // namespace
} // namespace veldron
