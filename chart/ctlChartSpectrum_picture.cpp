// SPDX-License-Identifier: MIT
// The picture: axes, trace, waterfall, and the lines that lie over it.
#include "chart/ctlChartSpectrum.h"

#include "chart/ChartColours.h"
#include "chart/OverlayLine.h"
#include "chart/PictureBox.h"

#include <QLabel>

#include <algorithm>
#include <utility>

namespace veldron {

AxisInput ctlChartSpectrum::axisInput(const ChartLayout &layout) const {
    return {layout,
            m_grid,
            m_scale,
            m_DisplayType,
            m_waterfall.update(),
            m_waterfall.rowInterval(),
            m_waterfall.nextRowTime(),
            m_waterfall.firstRow(),
            [this](const QString &text) { return Picture1->textWidth(text); },
            Picture1->textHeight()};
}

void ctlChartSpectrum::DrawAxes() {
    const ChartLayout layout = chartLayout();
    if (!layout.isDrawable()) {
        return;
    }
    if (!Picture1->fits()) {
        // The old picture can't be shown at the new size or density, so the whole of a new one is.
        paintPicture(layout);
    }
    layOutAxes(layout);
}

void ctlChartSpectrum::redraw() {
    const ChartLayout layout = chartLayout();
    if (layout.isDrawable()) {
        layOutAxes(layout);
    }
    Refresh();
}

void ctlChartSpectrum::layOutAxes(const ChartLayout &layout) {
    AxisPlan plan = AxisPlan::of(axisInput(layout));
    const bool placesMarker = plan.placesMarker;
    m_painter.setAxes(std::move(plan));
    if (placesMarker) {
        placeReceiveLine(layout);
        placeMarker(layout);
    }
}

void ctlChartSpectrum::placeReceiveLine(const ChartLayout &layout) {
    const bool inScan = m_marker.receiveFrequency() >= m_grid.scanStart() &&
                        m_marker.receiveFrequency() <= m_grid.scanStop();
    if (inScan) {
        const int column = m_grid.columnOf(m_marker.receiveFrequency(), layout);
        const int x = column <= layout.plotLeft ? layout.plotLeft + 1 : column;
        const int end = m_DisplayType == DisplayTypeCode::TraceAndWaterfall ? layout.fallBottom
                                                                            : layout.plotBottom;
        Line2->setEnds({x, layout.plotTop}, {x, end});
        Line2->setBorderColor(ChartColours::kFrame);
    }
    Line2->showIf(inScan);
}

void ctlChartSpectrum::placeMarker(const ChartLayout &layout) {
    if (!m_marker.isEnabled()) {
        return;
    }
    const int column = m_grid.columnOf(m_marker.frequency(), layout);
    const int x = column <= layout.plotLeft ? layout.plotLeft + 1 : column;
    Line1->setEnds({x, layout.plotTop + lblMarker->height()}, {x, layout.plotBottom});
    lblMarker->move(layout.textLeft(x, lblMarker->width()), layout.plotTop);
}

void ctlChartSpectrum::Refresh() {
    // Also where nothing can be drawn: peaks age by the clock.
    if (m_Peak) {
        m_scans.agePeaks(peakLife());
    }
    const ChartLayout layout = chartLayout();
    if (!layout.isDrawable() || m_grid.binCount() <= 0) {
        return;
    }
    paintPicture(layout);
}

void ctlChartSpectrum::paintPicture(const ChartLayout &layout) {
    if (Picture1->prepare()) {
        layOutAxes(layout); // a new surface has no axes yet
    }
    const PictureChange change = m_painter.paint(
        Picture1->surface(), {{layout, m_grid, m_scans, m_scale, m_Peak, m_ScreenResolution},
                              m_DisplayType,
                              m_waterfall});
    if (layout.plotWidth() > 1) {
        // Lines are placed before the window is scrolled, which repaints what it moved of them.
        UpdateMarkerLabel();
        placePlayLine(layout);
    }
    Picture1->Refresh(change);
}

void ctlChartSpectrum::placePlayLine(const ChartLayout &layout) {
    const qint32 row = m_waterfall.playRow();
    const qint32 first = m_waterfall.firstRow();
    const bool shown = m_DisplayType == DisplayTypeCode::TraceAndWaterfall &&
                       m_waterfall.playback() && row > 0 && row >= first &&
                       row <= first + layout.fallHeight();
    if (shown) {
        const int y = row + layout.fallTop - first;
        Line3->setEnds({layout.plotLeft, y}, {layout.plotRight, y});
    }
    Line3->showIf(shown);
}

} // namespace veldron
