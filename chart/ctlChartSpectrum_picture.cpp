// SPDX-License-Identifier: MIT
// The picture: axes, trace, waterfall, and the lines that lie over it.
#include "chart/ctlChartSpectrum.h"

#include "chart/ChartColours.h"
#include "chart/OverlayLine.h"
#include "chart/PictureBox.h"
#include "chart/TraceRenderer.h"

#include <QLabel>

#include <algorithm>

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
            [this](const QString &text) {
                return Picture1->textWidth(text);
            }};
}

void ctlChartSpectrum::DrawAxes() {
    const ChartLayout layout = chartLayout();
    if (!layout.isDrawable()) {
        return;
    }
    if (Picture1->prepare()) {
        // What was shown stays in view until Refresh, so it is drawn anew at the screen's density.
        drawAxes(Picture1->surfaceShownSoon(), layout);
        paintPicture(layout);
    }
    PixelSurface &surface = Picture1->surface();
    surface.clear();
    drawAxes(surface, layout);
}

// The same as DrawAxes and Refresh, but that an area which Refresh covers isn't wiped before.
void ctlChartSpectrum::redraw() {
    const ChartLayout layout = chartLayout();
    if (layout.isDrawable()) {
        Picture1->prepare();
        PixelSurface &surface = Picture1->surfaceShownSoon();
        surface.clearAround(waterfallCoversItsArea(layout) ? layout.fallArea() : QRect());
        drawAxes(surface, layout);
    }
    Refresh();
}

bool ctlChartSpectrum::waterfallCoversItsArea(const ChartLayout &layout) const {
    return m_DisplayType == DisplayTypeCode::TraceAndWaterfall &&
           m_grid.cellCount() <= WaterfallStore::kWidth && layout.plotWidth() > 1 &&
           layout.fallHeight() <= WaterfallStore::kHeight;
}

void ctlChartSpectrum::drawAxes(PixelSurface &surface, const ChartLayout &layout) {
    // The surface is new or has been wiped, and the plan of a scale without height throws.
    m_standingTrace.forget();
    m_standingWaterfall.forget();
    const AxisPlan plan = AxisPlan::of(axisInput(layout));
    for (const PlannedLine &line : plan.lines) {
        surface.line(line.from, line.to, line.colour);
    }
    // Labels of a usual length stay outside of the plot.
    if (!Picture1->Print(surface, plan.texts).intersects(layout.plotInside())) {
        m_standingTrace.wiped(layout);
    }
    if (plan.placesMarker) {
        placeReceiveLine(layout);
        placeMarker(layout);
    }
}

void ctlChartSpectrum::placeReceiveLine(const ChartLayout &layout) {
    const bool inScan =
        m_marker.rxFreq >= m_grid.scanStart() && m_marker.rxFreq <= m_grid.scanStop();
    if (inScan) {
        const int column = m_grid.columnOf(m_marker.rxFreq, layout);
        const int x = column <= layout.plotLeft ? layout.plotLeft + 1 : column;
        const int end = m_DisplayType == DisplayTypeCode::TraceAndWaterfall ? layout.fallBottom
                                                                            : layout.plotBottom;
        Line2->setEnds({x, layout.plotTop}, {x, end});
        Line2->setBorderColor(ChartColours::kFrame);
    }
    Line2->showIf(inScan);
}

void ctlChartSpectrum::placeMarker(const ChartLayout &layout) {
    if (!m_marker.enabled) {
        return;
    }
    const int column = m_grid.columnOf(m_marker.markerFreq, layout);
    const int x = column <= layout.plotLeft ? layout.plotLeft + 1 : column;
    Line1->setEnds({x, layout.plotTop + lblMarker->height()}, {x, layout.plotBottom});
    const int width = lblMarker->width();
    int left = MarkerPointer::centred(x, width);
    left = std::max(left, layout.plotLeft);
    left = std::min(left, layout.plotRight - width);
    lblMarker->move(left, layout.plotTop);
}

void ctlChartSpectrum::Refresh() {
    if (m_Peak) {
        m_scans.agePeaks(peakLife());
    }
    const ChartLayout layout = chartLayout();
    if (!layout.isDrawable() || m_grid.binCount() <= 0) {
        return;
    }
    if (Picture1->prepare()) {
        // A new picture has no axes.
        drawAxes(Picture1->surfaceShownSoon(), layout);
    }
    paintPicture(layout);
}

void ctlChartSpectrum::paintPicture(const ChartLayout &layout) {
    if (layout.plotRight - 1 > layout.plotLeft) {
        const int lowest = paintTrace(layout);
        Line1->showIf(m_marker.enabled);
        if (lblMarker->isHidden() == m_marker.enabled) {
            lblMarker->setVisible(m_marker.enabled);
        }
        UpdateMarkerLabel();
        if (m_DisplayType == DisplayTypeCode::TraceAndWaterfall) {
            paintWaterfall(layout, lowest);
            placePlayLine(layout);
        } else {
            Line3->hide();
        }
    }
    Picture1->Refresh();
}

int ctlChartSpectrum::paintTrace(const ChartLayout &layout) {
    TraceRenderer::columns({layout, m_grid, m_scans, m_scale, m_Peak, m_ScreenResolution},
                           m_columns);
    return m_standingTrace.paint(Picture1->surfaceShownSoon(), layout, m_columns);
}

void ctlChartSpectrum::paintWaterfall(const ChartLayout &layout, int lowestTraceRow) {
    if (lowestTraceRow >= layout.fallTop) {
        m_standingWaterfall.forget();
    }
    m_standingWaterfall.paint(Picture1->surfaceShownSoon(), m_waterfall, layout,
                              m_grid.cellCount());
}

void ctlChartSpectrum::placePlayLine(const ChartLayout &layout) {
    const qint32 row = m_waterfall.playRow();
    const qint32 first = m_waterfall.firstRow();
    const bool shown =
        m_waterfall.playback() && row > 0 && row >= first && row <= first + layout.fallHeight();
    if (shown) {
        const int y = row + layout.fallTop - first;
        Line3->setEnds({layout.plotLeft, y}, {layout.plotRight, y});
    }
    Line3->showIf(shown);
}

} // namespace veldron
