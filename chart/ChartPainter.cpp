// SPDX-License-Identifier: MIT
#include "chart/ChartPainter.h"

#include <utility>

namespace veldron {

void ChartPainter::setAxes(AxisPlan plan) {
    m_axes = std::move(plan);
    m_axesAreDue = true;
}

bool ChartPainter::drawsTrace(const Input &input) {
    return input.trace.layout.plotWidth() > 1;
}

// True only for a waterfall that covers its whole area: a larger grid or picture than the history
// has bytes for draws none.
bool ChartPainter::drawsWaterfall(const Input &input) {
    return drawsTrace(input) && input.displayType == DisplayTypeCode::TraceAndWaterfall &&
           input.trace.grid.cellCount() <= WaterfallStore::kWidth &&
           input.trace.layout.fallHeight() <= WaterfallStore::kHeight;
}

PictureChange ChartPainter::paint(PixelSurface &surface, const Input &input) {
    PictureChange change;
    // A rectangle for each part: one around all of them would be nearly the whole picture.
    const auto collect = [&] {
        if (const QRect painted = surface.takeChange(); !painted.isEmpty()) {
            change.painted.push_back(painted);
        }
    };
    const ChartLayout &layout = input.trace.layout;
    if (drawsTrace(input)) {
        // Before anything is painted, because a scale without height throws here.
        TraceRenderer::columns(input.trace, m_columns);
    }
    paintAxes(surface, input);
    collect();
    int lowestOfTrace = 0;
    if (drawsTrace(input)) {
        lowestOfTrace = m_trace.paint(surface, layout, m_columns,
                                      drawsWaterfall(input) ? layout.fallArea() : QRect());
        collect();
    }
    if (drawsTrace(input) && input.displayType == DisplayTypeCode::TraceAndWaterfall) {
        change.scrolled = layout.fallArea();
        change.rows = m_waterfall.paint(surface, input.waterfall, layout,
                                        input.trace.grid.cellCount(), lowestOfTrace);
        collect();
    }
    return change;
}

void ChartPainter::paintAxes(PixelSurface &surface, const Input &input) {
    if (!std::exchange(m_axesAreDue, false)) {
        return;
    }
    const ChartLayout &layout = input.trace.layout;
    std::vector<QRect> covered;
    if (drawsTrace(input)) {
        covered.push_back(layout.plotInside());
    }
    if (drawsWaterfall(input)) {
        covered.push_back(layout.fallArea());
    }
    const QRect below = m_trace.strayBelow();
    // Where no waterfall covers its area, a trace may have left pixels in there, which replace()
    // can't clear: only a whole wipe removes them.
    const bool piecewise =
        covered == m_covered && drawsTrace(input) && (below.isEmpty() || drawsWaterfall(input));
    const std::vector<QRect> strays{m_trace.strayAbove(),
                                    below & QRect(0, 0, layout.scaleWidth, layout.fallTop),
                                    below & QRect(0, layout.fallBottom, layout.scaleWidth,
                                                  layout.scaleHeight - layout.fallBottom)};
    if (piecewise &&
        m_axisPainter.replace(surface, m_axes, strays, {layout.plotInside(), layout.fallArea()})) {
        m_trace.straysErased();
        return;
    }
    m_axisPainter.paintWhole(surface, m_axes, covered);
    m_covered = std::move(covered);
}

} // namespace veldron
