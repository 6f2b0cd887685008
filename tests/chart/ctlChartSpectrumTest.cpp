// SPDX-License-Identifier: MIT
#include "tests/chart/ChartFixture.h"

#include "common/UntrappedError.h"

#include <QMouseEvent>

#include <functional>

namespace veldron {
namespace {

TEST_F(ChartTest, newChart_hasItsDefaults) {
    EXPECT_EQ(chart.ScanStart(), hz(0));
    EXPECT_EQ(chart.ScanStop(), hz(10000000));
    EXPECT_EQ(chart.DataResolution(), hz(31250));
    EXPECT_EQ(chart.ScreenResolution(), hz(15625));
    EXPECT_EQ(chart.DisplayType(), DisplayTypeCode::Trace);
    EXPECT_EQ(chart.Timespan(), 0);
    EXPECT_EQ(chart.Update(), 10);
    EXPECT_FALSE(chart.Peak());
    EXPECT_EQ(chart.dBSpan(), 60);
    EXPECT_EQ(chart.dBStart(), -90);
    EXPECT_EQ(chart.dBOffset(), -132);
    EXPECT_EQ(chart.Palette(), 0);
    EXPECT_EQ(chart.SplitFraction(), 0.5F);
    EXPECT_EQ(chart.Poll(), 0);
    EXPECT_TRUE(chart.Enabled());
    EXPECT_FALSE(chart.Playback());
    EXPECT_FALSE(chart.MarkerEn());
    EXPECT_FALSE(chart.Active());
    EXPECT_EQ(chartStatus(), QStringLiteral("Initialising"));
    EXPECT_EQ(timer().interval(), 200);
    EXPECT_EQ(readOut().y(), 10);
    EXPECT_TRUE(child<QWidget>("StatusBar1").isHidden());
    EXPECT_EQ(picture().cursor().shape(), Qt::CrossCursor);
}

TEST_F(ChartTest, timer_runsFromTheStartAndRestsInPlayback) {
    const ctlChartSpectrum fresh(guard, clock, texts, cursor);
    EXPECT_TRUE(fresh.findChild<QTimer *>(QStringLiteral("Timer1"))->isActive());
    chart.setPlayback(true);
    EXPECT_FALSE(timer().isActive());
    chart.setUpdate(5);
    EXPECT_FALSE(timer().isActive());
    EXPECT_EQ(timer().interval(), 2500);
    chart.setPlayback(false);
    EXPECT_TRUE(timer().isActive());
}

TEST_F(ChartTest, updateWrittenWithTheValueInForce_leavesTheCountdownRunning) {
    chart.setUpdate(60);
    timer().start();
    while (timer().remainingTime() > 29990) {
        // The countdown has to have begun; it takes ten milliseconds.
    }
    chart.setUpdate(60);
    EXPECT_LE(timer().remainingTime(), 29990);
    chart.setUpdate(70);
    EXPECT_GT(timer().remainingTime(), 29990);
}

TEST_F(ChartTest, updateOfZeroAndLess_isDropped) {
    chart.setUpdate(0);
    chart.setUpdate(-5);
    EXPECT_EQ(chart.Update(), 10);
    EXPECT_EQ(timer().interval(), 200);
}

TEST_F(ChartTest, enabled_isAPlainFlag) {
    chart.setEnabled(false);
    EXPECT_FALSE(chart.Enabled());
    EXPECT_TRUE(chart.QWidget::isEnabled());
}

TEST_F(ChartTest, scanOf324_changesNothingAnd323IsTaken) {
    scan(60, 324);
    EXPECT_EQ(traceTop(100), picture().ScaleHeight());
    scan(60, 323);
    EXPECT_EQ(traceTop(100), 263); // round(370 - 18 x 6) and one
}

TEST_F(ChartTest, scanOf324_leavesTheHistoryAsItIs) {
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    liveRows(2);
    scan(60);
    scan(200, 324);
    EXPECT_EQ(shown(60, 205), 60U * 0x010101U);
    EXPECT_EQ(shown(41, 206), 60U * 0x010101U); // bin 320 of the scan that was taken
    EXPECT_EQ(shown(60, 206), 2U * 0x010101U);
    seconds(1);
    scan(200, 324); // nor does it begin the open row
    EXPECT_EQ(shown(60, 205), 60U * 0x010101U);
    scan(200, 323);
    EXPECT_EQ(shown(60, 205), 200U * 0x010101U);
}

TEST_F(ChartTest, dataResolutionAlone_keepsTheHistory) {
    liveRows(3);
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    chart.setDataResolution(hz(40000));
    chart.Refresh();
    EXPECT_NE(shown(60, 206), 0U);
    chart.setDataResolution(hz(499));
    EXPECT_EQ(chart.DataResolution(), hz(40000));
}

TEST_F(ChartTest, scanStartChanged_emptiesTheHistoryAndTheSameValueDoesNot) {
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    liveRows(3);
    chart.setScanStart(hz(0));
    chart.Refresh();
    EXPECT_NE(shown(60, 206), 0U);
    chart.setScanStart(hz(1000000));
    chart.Refresh();
    EXPECT_EQ(shown(60, 206), 0U);
}

struct EdgeCase {
    const char *name;
    void (ctlChartSpectrum::*write)(Hertz);
    Hertz value;
};

TEST_F(ChartTest, eitherEndOfTheScanChanged_emptiesTheHistoryAndHidesTheScrollBar) {
    const EdgeCase cases[] = {{"ScanStart", &ctlChartSpectrum::setScanStart, hz(1000000)},
                              {"ScanStop", &ctlChartSpectrum::setScanStop, hz(9000000)}};
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    for (const EdgeCase &c : cases) {
        chart.setScanStart(hz(0));
        chart.setScanStop(hz(10000000));
        liveRows(200);
        EXPECT_FALSE(scrollBar().isHidden()) << c.name;
        EXPECT_NE(shown(60, 206), 0U) << c.name;
        (chart.*c.write)(c.value);
        EXPECT_TRUE(scrollBar().isHidden()) << c.name;
        chart.Refresh();
        EXPECT_EQ(shown(60, 205), 0U) << c.name;
        EXPECT_EQ(shown(60, 206), 0U) << c.name;
        seconds(1);
        EXPECT_TRUE(scrollBar().isHidden()) << c.name; // one row again
    }
}

TEST_F(ChartTest, gridChanged_putsTheMarkersBinToZeroAndLeavesItsFrequency) {
    chart.setRXFreq(hz(5000000));
    chart.setMarkerEn(true);
    scan(61);
    EXPECT_EQ(readOut().text(), QStringLiteral("5.000.000  -71dB"));
    chart.setScanStop(hz(9000000));
    EXPECT_EQ(chart.MarkerFreq(), hz(5000000));
    chart.SetData({72});
    chart.Refresh();
    EXPECT_EQ(readOut().text(), QStringLiteral("5.000.000  -60dB"));
}

TEST_F(ChartTest, scanAlone_showsNothingBeforeRefresh) {
    chart.SetData(LevelScan(321, 72));
    EXPECT_EQ(traceTop(100), picture().ScaleHeight());
    chart.Refresh();
    EXPECT_EQ(traceTop(100), 191);
}

TEST_F(ChartTest, axesAlone_showNothingBeforeRefresh) {
    scan(72);
    const QImage before = picture().image().copy();
    chart.setRXFreq(hz(1000000));
    chart.DrawAxes();
    EXPECT_EQ(picture().image(), before);
    EXPECT_EQ(picture().grab().toImage().pixel(100, 300), 0xFFFF0000U);
    chart.Refresh();
    EXPECT_EQ(picture().image(), before);
}

TEST_F(ChartTest, dBStartWritten_movesTheTraceAtRefreshAndTheLabelsAtDrawAxes) {
    scan(72);
    const QImage before = picture().image().copy(0, 0, 39, 400);
    chart.setdBStart(-80);
    EXPECT_EQ(traceTop(100), 191);
    chart.Refresh();
    EXPECT_EQ(traceTop(100), 251);
    EXPECT_EQ(picture().image().copy(0, 0, 39, 400), before);
    chart.DrawAxes();
    chart.Refresh();
    EXPECT_NE(picture().image().copy(0, 0, 39, 400), before);
}

TEST_F(ChartTest, dBStartWritten_leavesTheColoursUntilPaletteIsWritten) {
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    chart.setPalette(0);
    scan(72);
    EXPECT_EQ(shown(60, 205), 0x00808080U);
    chart.setdBStart(-80);
    chart.Refresh();
    EXPECT_EQ(shown(60, 205), 0x00808080U);
    chart.setPalette(0);
    EXPECT_EQ(shown(60, 205), 0x00555555U);
}

TEST_F(ChartTest, beforeTheFirstPalette_levelsAreShownGreyByteForByte) {
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    scan(72);
    EXPECT_EQ(shown(60, 205), 0x00484848U);
}

TEST_F(ChartTest, whiteToBlack_showsRowsNeverFilledWhite) {
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    chart.setPalette(1);
    EXPECT_EQ(shown(60, 390), 0x00FFFFFFU);
}

TEST_F(ChartTest, scaleAbove128Decibels_overflowsWhenThePaletteIsWritten) {
    chart.setdBSpan(130);
    EXPECT_THROW(chart.setPalette(2), UntrappedError);
}

TEST_F(ChartTest, scaleWithoutHeight_dividesByZeroAtRefresh) {
    chart.setdBSpan(0);
    EXPECT_THROW(chart.Refresh(), UntrappedError);
    EXPECT_THROW(chart.DrawAxes(), UntrappedError);
    chart.setdBSpan(60);
}

TEST_F(ChartTest, scaleWithoutHeight_leavesNoTraceBehindThatIsOnlyThoughtToStand) {
    scan(72);
    chart.setdBSpan(0);
    EXPECT_THROW(chart.DrawAxes(), UntrappedError);
    chart.setdBSpan(60);
    chart.Refresh();
    EXPECT_EQ(traceTop(100), 191);
    EXPECT_EQ(shown(100, 369), ChartColours::kTrace);
}

struct OwnEvent {
    const char *name;
    std::function<void()> happen;
};

TEST_F(ChartTest, errorOutOfItsOwnEvents_goesToTheGuard) {
    const OwnEvent cases[] = {
        {"scroll bar moved",
         [this] {
             scrollBar().setValue(30);
         }},
        {"split dragged",
         [this] {
             QTest::mousePress(&picture(), Qt::LeftButton, {}, {300, 200});
             QMouseEvent move(QEvent::MouseMove, QPointF(300, 250), QPointF(300, 250), Qt::NoButton,
                              Qt::LeftButton, Qt::NoModifier);
             QApplication::sendEvent(&picture(), &move);
             QTest::mouseRelease(&picture(), Qt::LeftButton, {}, {300, 250});
         }},
        {"size changed",
         [this] {
             size(600, 300);
         }},
        {"shown again",
         [this] {
             chart.hide();
             chart.show();
         }},
    };
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    liveRows(250);
    chart.setdBSpan(0);
    for (const OwnEvent &c : cases) {
        reported.clear();
        EXPECT_NO_THROW(c.happen()) << c.name;
        ASSERT_FALSE(reported.empty()) << c.name;
        EXPECT_EQ(reported[0], UntrappedError::Kind::DivideByZero) << c.name;
    }
    reported.clear();
    chart.setdBSpan(60);
}

TEST_F(ChartTest, peakSwitchedOn_beginsFromNothingAndHolds) {
    chart.setPeak(true);
    scan(92);
    scan(52);
    EXPECT_EQ(shown(100, 70), ChartColours::kPeak);
    chart.setPeak(false);
    scan(52);
    EXPECT_EQ(shown(100, 70), ChartColours::kBackground);
    chart.setPeak(true);
    scan(62);
    EXPECT_EQ(shown(100, 250), ChartColours::kPeak);
}

TEST_F(ChartTest, peakOfTwoSeconds_dropsAfterThreeOfTheClock) {
    chart.setPeak(true);
    chart.setTimespan(2);
    scan(92);
    clock.advance(2.0);
    scan(52);
    EXPECT_EQ(shown(100, 70), ChartColours::kPeak);
    clock.advance(1.0);
    scan(52);
    EXPECT_EQ(shown(100, 70), ChartColours::kBackground);
    EXPECT_EQ(shown(100, 310), ChartColours::kPeak);
}

TEST_F(ChartTest, plotOnePixelWide_drawsNoTraceAndStillShowsThePicture) {
    size(56, 400);
    chart.setdBStart(-80);
    chart.DrawAxes();
    const QImage before = picture().image().copy();
    scan(90);
    EXPECT_NE(picture().image(), before); // the labels of the new scale
    EXPECT_EQ(shown(40, 360), 0U);
}

TEST_F(ChartTest, chartTooSmall_drawsAndShowsNothing) {
    scan(90);
    size(50, 30);
    scan(90);
    const QImage screen = picture().grab().toImage();
    for (int x = 0; x < 40; ++x) { // up to the receive line
        EXPECT_EQ(screen.pixel(x, 20), 0xFF000000U) << x;
    }
}

TEST_F(ChartTest, resized_drawsAtTheNewSize) {
    scan(72);
    size(500, 300);
    EXPECT_EQ(picture().width(), 500);
    EXPECT_EQ(traceTop(100), 141);
    EXPECT_EQ(chart.ScreenResolution(), Hertz::fromUnits(224719101));
}

TEST_F(ChartTest, resizedToNoHeight_keepsThePicturesHeightAndTakesTheWidth) {
    QWidget other;
    ctlChartSpectrum inner(guard, clock, texts, cursor, &other);
    inner.resize(500, 300);
    other.resize(800, 600);
    other.show();
    QApplication::processEvents();
    const auto *inside = inner.findChild<PictureBox *>(QStringLiteral("Picture1"));
    ASSERT_EQ(inside->size(), QSize(500, 300));
    inner.resize(450, 0);
    EXPECT_EQ(inside->size(), QSize(450, 300));
    EXPECT_EQ(inner.ScreenResolution(), Hertz::fromUnits(253164557)); // of 395 pixels
    inner.resize(450, 200);
    EXPECT_EQ(inside->size(), QSize(450, 200));
}

TEST_F(ChartTest, chartTooSmall_agesItsPeaksAllTheSame) {
    chart.setPeak(true);
    scan(52);
    size(50, 30);
    scan(92);
    chart.SetData(LevelScan(321, 52));
    size(695, 400);
    EXPECT_EQ(shown(100, 70), ChartColours::kPeak);
    EXPECT_EQ(shown(100, 310), ChartColours::kBackground);
}

TEST_F(ChartTest, hiddenAndShownAgain_looksTheSame) {
    scan(72);
    const QImage before = picture().image().copy();
    chart.hide();
    chart.show();
    QApplication::processEvents();
    EXPECT_EQ(picture().image(), before);
}

TEST_F(ChartTest, scaleChangedWhileHidden_isSeenWhenShownAgain) {
    scan(72);
    const QImage labels = picture().image().copy(0, 0, 39, 400);
    chart.hide();
    chart.setdBStart(-80);
    EXPECT_EQ(traceTop(100), 191);
    chart.show();
    EXPECT_EQ(traceTop(100), 251);
    EXPECT_NE(picture().image().copy(0, 0, 39, 400), labels);
}

TEST_F(ChartTest, scanThatIsDropped_stillAgesThePeaksAtRefresh) {
    chart.setPeak(true);
    chart.setTimespan(2);
    scan(92);
    scan(52);
    clock.advance(3.0);
    scan(60, 324); // too long
    EXPECT_EQ(shown(100, 70), ChartColours::kBackground);
    EXPECT_EQ(shown(100, 310), ChartColours::kPeak);
}

TEST_F(ChartTest, receiveLine_isGrey) {
    chart.setRXFreq(hz(5000000));
    chart.Refresh();
    EXPECT_EQ(picture().grab().toImage().pixel(360, 100), 0xFF7F7F7FU);
}

TEST_F(ChartTest, peakWrittenTrueAgain_keepsThePeaks) {
    chart.setPeak(true);
    scan(92);
    chart.setPeak(true);
    scan(52);
    EXPECT_EQ(shown(100, 70), ChartColours::kPeak);
}

TEST_F(ChartTest, dataResolutionWrittenWithTheSameValue_startsTheScanAnew) {
    chart.setPeak(true);
    scan(72);
    chart.setDataResolution(hz(31250));
    chart.Refresh();
    EXPECT_EQ(traceTop(100), picture().ScaleHeight());
    EXPECT_EQ(shown(100, 190), ChartColours::kBackground);
}

TEST_F(ChartTest, displayTypeWrittenWithTheSameValue_redrawsNothing) {
    scan(72);
    const QImage before = picture().image().copy();
    chart.setdBStart(-80);
    chart.setDisplayType(DisplayTypeCode::Trace);
    EXPECT_EQ(picture().image(), before);
}

TEST_F(ChartTest, peaksOff_ageNothing) {
    // Of 320 bins gathered a bin a column, the last column shows the peak behind the last bin,
    // which no start of the peaks forgets.
    size(375, 400);
    chart.setScanStop(hz(9968750));
    scan(102);
    chart.setPeak(true);
    scan(52);
    EXPECT_EQ(shown(359, 310), ChartColours::kPeak);
    EXPECT_EQ(shown(359, 10), ChartColours::kFrame);
}

TEST_F(ChartTest, partsOfTheChart_haveNames) {
    for (const char *name : {"Picture1", "VScroll1", "lblMarker", "Line1", "Line2", "Line3"}) {
        EXPECT_FALSE(child<QWidget>(name).accessibleName().isEmpty()) << name;
    }
    EXPECT_FALSE(chart.accessibleName().isEmpty());
    EXPECT_TRUE(picture().accessibleDescription().contains(QStringLiteral("split")));
}

} // namespace
} // namespace veldron
