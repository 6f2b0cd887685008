// SPDX-License-Identifier: MIT
#include "tests/chart/ChartFixture.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QToolTip>

namespace veldron {
namespace {

class Hand : public ChartTest {
protected:
    Hand() {
        chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
        chart.setMarkerEn(true);
        scan(61);
    }
    void press(QPoint at, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mousePress(&picture(), button, {}, at);
    }
    void release(QPoint at, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseRelease(&picture(), button, {}, at);
    }
    void drag(QPoint to) { moveWith(Qt::LeftButton, to); }
    void hover(QPoint to) { moveWith(Qt::NoButton, to); }
    /// The shape that the whole screen's cursor has; an arrow is the ordinary one.
    static Qt::CursorShape shownCursor() {
        const QCursor *shown = QGuiApplication::overrideCursor();
        return shown == nullptr ? Qt::ArrowCursor : shown->shape();
    }
    void loseFocus() {
        QFocusEvent lost(QEvent::FocusOut);
        QApplication::sendEvent(&picture(), &lost);
    }
    void doubleClick(QPoint at) {
        press(at);
        release(at);
        QTest::mouseDClick(&picture(), Qt::LeftButton, {}, at);
    }

private:
    void moveWith(Qt::MouseButtons buttons, QPoint to) {
        QMouseEvent event(QEvent::MouseMove, QPointF(to), QPointF(picture().mapToGlobal(to)),
                          Qt::NoButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(&picture(), &event);
    }
};

using ChartPointerTest = Hand;

TEST_F(ChartPointerTest, clickOnThePlot_placesTheMarkerOnTheBin) {
    press({361, 50});
    EXPECT_TRUE(chart.Active());
    EXPECT_EQ(chart.MarkerFreq(), hz(5000000));
    EXPECT_EQ(line("Line1").X1(), 360);
    EXPECT_EQ(line("Line1").X2(), 360);
    EXPECT_EQ(line("Line1").Y2(), 170);
    EXPECT_EQ(readOut().text(), QStringLiteral("5.000.000  -71dB"));
    EXPECT_NEAR(readOut().x(), 361 - readOut().width() / 2.0, 0.6);
    release({361, 50});
    EXPECT_FALSE(chart.Active());
}

TEST_F(ChartPointerTest, markerDragged_followsThePointerAndNotTheBin) {
    press({361, 50});
    drag({401, 60});
    EXPECT_EQ(line("Line1").X1(), 401);
    EXPECT_EQ(chart.MarkerFreq(), hz(180 * 31250));
    EXPECT_EQ(picture().toolTip(), QStringLiteral("5.625.000, -49 dB"));
    drag({402, 60});
    EXPECT_EQ(picture().toolTip(), QString()); // on the marker now
    EXPECT_EQ(shownCursor(), Qt::SizeHorCursor);
    release({402, 60});
    EXPECT_EQ(shownCursor(), Qt::ArrowCursor);
}

TEST_F(ChartPointerTest, clickAtThePlotsEdge_keepsTheReadOutInside) {
    press({679, 50});
    EXPECT_EQ(readOut().x() + readOut().width(), 680);
    release({679, 50});
    press({41, 50});
    EXPECT_EQ(readOut().x(), 40);
    release({41, 50});
}

TEST_F(ChartPointerTest, doubleClickOnThePlot_raisesChangedOnceWithZero) {
    QSignalSpy changed(&chart, &ctlChartSpectrum::Changed);
    doubleClick({361, 50});
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed[0][0].toInt(), 0);
    EXPECT_EQ(chart.MarkerFreq(), hz(5000000));
}

struct SilentDoubleClick {
    const char *name;
    bool marker;
    bool enabled;
    QPoint at;
};

TEST_F(ChartPointerTest, doubleClickThatMustNotTune_raisesNothing) {
    const SilentDoubleClick cases[] = {
        {"marker off", false, true, {361, 50}},
        {"gate closed", true, false, {361, 50}},
        {"begun in the margin", true, true, {20, 50}},
        {"begun on the waterfall", true, true, {361, 300}},
    };
    QSignalSpy changed(&chart, &ctlChartSpectrum::Changed);
    for (const SilentDoubleClick &c : cases) {
        chart.setMarkerEn(c.marker);
        chart.setEnabled(c.enabled);
        press({361, 50}); // an earlier click on the plot
        release({361, 50});
        doubleClick(c.at);
        EXPECT_EQ(changed.count(), 0) << c.name;
        chart.setEnabled(true);
    }
}

TEST_F(ChartPointerTest, secondPressOfADoubleClick_isNotRunAgain) {
    press({361, 50});
    release({361, 50});
    QMouseEvent second(QEvent::MouseButtonDblClick, QPointF(401, 50),
                       QPointF(picture().mapToGlobal(QPoint(401, 50))), Qt::LeftButton,
                       Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&picture(), &second);
    EXPECT_EQ(chart.MarkerFreq(), hz(5000000));
    EXPECT_FALSE(chart.Active());
}

TEST_F(ChartPointerTest, buttonTwoOnThePlot_setsActiveAndChangesNothingElse) {
    const Hertz before = chart.MarkerFreq();
    press({361, 50}, Qt::RightButton);
    EXPECT_TRUE(chart.Active());
    EXPECT_EQ(chart.MarkerFreq(), before);
    release({361, 50}, Qt::RightButton);
    EXPECT_FALSE(chart.Active());
}

TEST_F(ChartPointerTest, splitDragged_movesWithThePointerUpToItsLimits) {
    press({300, 200});
    EXPECT_EQ(shownCursor(), Qt::SizeVerCursor);
    drag({300, 300});
    EXPECT_EQ(chart.SplitFraction(), 0.75F);
    drag({300, 0});
    EXPECT_EQ(chart.SplitFraction(), 0.2F);
    drag({300, 399});
    EXPECT_EQ(chart.SplitFraction(), 0.8F);
    release({300, 399});
    EXPECT_EQ(shownCursor(), Qt::ArrowCursor);
    drag({300, 100});
    EXPECT_EQ(chart.SplitFraction(), 0.8F);
}

TEST_F(ChartPointerTest, splitWrittenFromOutside_isNotLimited) {
    chart.setSplitFraction(0.95F);
    EXPECT_EQ(chart.SplitFraction(), 0.95F);
}

TEST_F(ChartPointerTest, moveOverTheSplit_showsNorthSouthUntilItLeavesThePicture) {
    QTest::mouseMove(&picture(), {300, 201});
    EXPECT_EQ(shownCursor(), Qt::SizeVerCursor);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&picture(), &leave);
    EXPECT_EQ(shownCursor(), Qt::ArrowCursor);
}

TEST_F(ChartPointerTest, leavingThePictureWithAButtonDown_keepsTheShape) {
    press({300, 200});
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&picture(), &leave);
    EXPECT_EQ(shownCursor(), Qt::SizeVerCursor);
    release({300, 200});
}

TEST_F(ChartPointerTest, focusLost_restoresThePointer) {
    hover({300, 201});
    EXPECT_EQ(shownCursor(), Qt::SizeVerCursor);
    loseFocus();
    EXPECT_EQ(shownCursor(), Qt::ArrowCursor);
}

TEST_F(ChartPointerTest, focusLost_endsTheLiveTip) {
    liveRows(5);
    hover({360, 207});
    seconds(1);
    EXPECT_EQ(picture().toolTip(), QStringLiteral("5.000.000, -127 dB")); // renewed by the row
    loseFocus();
    seconds(2); // a row without a scan stands under the pointer now
    EXPECT_EQ(picture().toolTip(), QStringLiteral("5.000.000, -127 dB"));
    hover({360, 208});
    hover({360, 207});
    EXPECT_EQ(picture().toolTip(), QStringLiteral("5.000.000, -132 dB"));
}

TEST_F(ChartPointerTest, tipOverThePlot_tellsThePointersHeightOnTheScale) {
    QTest::mouseMove(&picture(), {520, 90});
    EXPECT_EQ(picture().toolTip(), QStringLiteral("7.500.000, -60 dB"));
    QTest::mouseMove(&picture(), {20, 90});
    EXPECT_EQ(picture().toolTip(), QString());
}

TEST_F(ChartPointerTest, markerDragged_takesItsReadOutAlong) {
    press({361, 50});
    drag({461, 50});
    EXPECT_NEAR(readOut().x(), 461 - readOut().width() / 2.0, 0.6);
    release({461, 50});
}

TEST_F(ChartPointerTest, tipRenewedByAClosedRow_bringsTheOrdinaryCursorBack) {
    liveRows(5);
    hover({360, 207});
    cursor.setShape(CursorShape::NorthSouth);
    seconds(1);
    EXPECT_EQ(shownCursor(), Qt::ArrowCursor);
}

TEST_F(ChartPointerTest, tipRenewedUnderARestingPointer_isShownAtOnce) {
    liveRows(5);
    hover({360, 207});
    picture().setAttribute(Qt::WA_UnderMouse);
    const QString before = picture().toolTip();
    QToolTip::showText(QCursor::pos(), before, &picture());
    ASSERT_EQ(QToolTip::text(), before);
    seconds(1);
    EXPECT_NE(picture().toolTip(), before);
    EXPECT_EQ(QToolTip::text(), picture().toolTip());
    QToolTip::hideText();
}

TEST_F(ChartPointerTest, pageKeysAndHome_lookBackAndForthInTheWaterfall) {
    liveRows(600);
    QTest::keyClick(&picture(), Qt::Key_PageDown);
    EXPECT_EQ(scrollBar().value(), 190);
    EXPECT_EQ(shown(60, 205), (600U - 189U - 400U) * 0x010101U);
    QTest::keyClick(&picture(), Qt::Key_PageDown);
    EXPECT_EQ(scrollBar().value(), 380);
    QTest::keyClick(&picture(), Qt::Key_PageUp);
    EXPECT_EQ(scrollBar().value(), 190);
    QTest::keyClick(&picture(), Qt::Key_Home);
    EXPECT_EQ(scrollBar().value(), 0);
    EXPECT_NE(picture().focusPolicy() & Qt::TabFocus, 0);
}

TEST_F(ChartPointerTest, pageKeysWithoutAScrollBar_doNothing) {
    liveRows(5);
    const QImage before = picture().image().copy();
    QTest::keyClick(&picture(), Qt::Key_PageDown);
    QTest::keyClick(&picture(), Qt::Key_Home);
    EXPECT_EQ(picture().image(), before);
}

} // namespace
} // namespace veldron
