// SPDX-License-Identifier: MIT
// The marker and the pointer over the picture.
#include "chart/ctlChartSpectrum.h"

#include "chart/OverlayLine.h"
#include "chart/PictureBox.h"
#include "chart/ScreenCursor.h"

#include <QCursor>
#include <QLabel>
#include <QToolTip>

namespace veldron {

void ctlChartSpectrum::setRXFreq(Hertz frequency) {
    m_marker.tuneTo(frequency, m_grid);
    DrawAxes();
}

void ctlChartSpectrum::setMarkerEn(bool on) {
    m_marker.enable(on, m_grid);
    // The label first, because the line begins at its lower edge.
    UpdateMarkerLabel();
    Line1->setEnds({Line2->X1(), lblMarker->height() + Line2->Y1()}, {Line2->X2(), Line2->Y2()});
    Line1->showIf(on);
    Line1->raise();
    const ChartLayout layout = chartLayout();
    lblMarker->move(layout.textLeft(Line1->X1(), lblMarker->width(), 1), layout.plotTop);
    lblMarker->setVisible(on);
}

void ctlChartSpectrum::UpdateMarkerLabel() {
    const LevelScan &levels = m_scans.current();
    const qint32 bin = m_marker.bin();
    // Outside of the scan the read-out keeps its last text.
    if (bin < 0 || bin >= static_cast<qint32>(levels.size()) - 1) {
        return;
    }
    const QString text = m_marker.readOut(levels[static_cast<std::size_t>(bin)], m_scale);
    if (text != lblMarker->text()) {
        lblMarker->setText(text);
        lblMarker->adjustSize();
    }
}

PointerView ctlChartSpectrum::pointerView(const ChartLayout &layout) const {
    return {layout,
            m_grid,
            m_scale,
            m_DisplayType,
            Line1->X1(),
            m_waterfall.firstRow(),
            [this](qint32 column, qint32 row) {
                return m_waterfall.level(column, row);
            }};
}

void ctlChartSpectrum::placeReadOut(int x) {
    lblMarker->move(chartLayout().textLeft(x, lblMarker->width()), lblMarker->y());
}

void ctlChartSpectrum::onPress(QPoint at, Qt::MouseButton button) {
    const ChartLayout layout = chartLayout();
    switch (m_marker.press(at, button == Qt::LeftButton, pointerView(layout))) {
    case MarkerDrag::Press::MarkerPlaced:
        UpdateMarkerLabel();
        Line1->setX(m_grid.columnOf(m_marker.frequency(), layout));
        Line1->setY2(layout.plotBottom);
        placeReadOut(at.x());
        break;
    case MarkerDrag::Press::SplitTaken:
        m_cursor.setShape(CursorShape::NorthSouth);
        break;
    case MarkerDrag::Press::Nothing:
        break;
    }
}

void ctlChartSpectrum::onMove(QPoint at, Qt::MouseButtons buttons) {
    applyMove(m_marker.move(at, buttons.testFlag(Qt::LeftButton), pointerView(chartLayout())), at);
}

void ctlChartSpectrum::applyMove(const PointerMove &move, QPoint at) {
    if (move.splitFraction) {
        setSplitFraction(*move.splitFraction);
    }
    if (move.shape) {
        m_cursor.setShape(*move.shape);
    }
    if (move.tip) {
        showTip(*move.tip);
    }
    if (move.markerMoved) {
        Line1->setX(at.x());
        UpdateMarkerLabel();
        placeReadOut(at.x());
    }
}

void ctlChartSpectrum::onRelease() {
    m_marker.release();
    m_cursor.setShape(CursorShape::Default);
}

void ctlChartSpectrum::onDoubleClick() {
    if (m_marker.doubleClick(m_Enabled)) {
        Q_EMIT Changed(0);
    }
}

void ctlChartSpectrum::onPointerLeft() {
    // A drag goes on outside of the picture, and keeps its shape there.
    if (!m_marker.isActive()) {
        m_cursor.setShape(CursorShape::Default);
    }
}

void ctlChartSpectrum::onFocusLost() {
    m_marker.loseFocus();
    m_cursor.setShape(CursorShape::Default);
}

void ctlChartSpectrum::renewTip() {
    m_cursor.setShape(CursorShape::Default);
    showTip(m_marker.liveTip(pointerView(chartLayout())));
}

void ctlChartSpectrum::showTip(const QString &text) {
    if (text == Picture1->toolTip()) {
        return;
    }
    Picture1->setToolTip(text);
    if (QToolTip::isVisible() && Picture1->underMouse()) {
        QToolTip::showText(QCursor::pos(), text, Picture1);
    }
}

} // namespace veldron
