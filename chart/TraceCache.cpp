// SPDX-License-Identifier: MIT
#include "chart/TraceCache.h"

#include "chart/ChartColours.h"

#include <algorithm>

namespace veldron {

int TraceCache::paint(PixelSurface &surface, const ChartLayout &layout,
                      const std::vector<TraceColumn> &columns, const QRect &hidden) {
    m_hidden = hidden;
    begin(surface, layout);
    const int count = static_cast<int>(std::min(columns.size(), m_standing.size()));
    const auto at = [](int i) {
        return static_cast<std::size_t>(i);
    };
    for (int first = 0; first < count;) {
        int end = first + 1;
        while (end < count && columns[at(end)] == columns[at(first)] &&
               m_standing[at(end)] == m_standing[at(first)]) {
            ++end;
        }
        // Columns that are to show the same, and show the same now, as one.
        paintRun(first, end, columns[at(first)]);
        first = end;
    }
    m_surface = nullptr;
    return m_lowest;
}

void TraceCache::begin(PixelSurface &surface, const ChartLayout &layout) {
    m_surface = &surface;
    m_lowest = layout.plotTop;
    if (m_generation == surface.generation() && layout.plotInside() == m_layout.plotInside()) {
        return;
    }
    // Whatever stands there, an all-background plot is a state to go on from: each of its pixels
    // belongs to body or background.
    surface.fill(layout.plotInside(), ChartColours::kBackground);
    m_generation = surface.generation();
    m_layout = layout;
    m_highestStray = layout.plotTop + 1;
    m_lowestStray = layout.plotBottom;
    m_standing.assign(static_cast<std::size_t>(layout.plotWidth()),
                      {layout.plotBottom, TraceColumn::kNoDot, layout.plotBottom});
}

QRect TraceCache::acrossThePlot(int firstRow, int lastRow) const {
    return {m_layout.plotLeft, firstRow, m_layout.plotWidth(), lastRow - firstRow + 1};
}

QRect TraceCache::strayAbove() const {
    return acrossThePlot(m_highestStray, m_layout.plotTop);
}

QRect TraceCache::strayBelow() const {
    return acrossThePlot(m_layout.plotBottom + 1, m_lowestStray);
}

void TraceCache::straysErased() {
    m_highestStray = m_layout.plotTop + 1;
    m_lowestStray = m_layout.plotBottom;
    for (Standing &standing : m_standing) {
        if (standing.dot <= m_layout.plotTop || standing.dot > m_layout.plotBottom) {
            standing.dot = TraceColumn::kNoDot;
        }
        standing.cleared = m_layout.plotBottom;
    }
}

void TraceCache::paintRun(int first, int last, const TraceColumn &column) {
    Standing standing = m_standing[static_cast<std::size_t>(first)];
    const QRect run(m_layout.plotLeft + first, 0, last - first, 1);
    paintInside(run, column, standing);
    paintOutside(run, column, standing);
    std::fill(m_standing.begin() + first, m_standing.begin() + last, standing);
}

void TraceCache::paintInside(const QRect &run, const TraceColumn &column, Standing &standing) {
    const int y = std::clamp(column.y, m_layout.plotTop, m_layout.plotBottom);
    const int oldDot = standing.dot;
    // The old dot goes in the colour that its row has now; the two fills cover only the rows
    // between the old edge of the body and the new one.
    if (oldDot != column.dot && oldDot > m_layout.plotTop && oldDot <= m_layout.plotBottom) {
        fillRows(run, oldDot, oldDot,
                 oldDot > y ? ChartColours::kTrace : ChartColours::kBackground);
    }
    fillRows(run, y + 1, standing.inside, ChartColours::kTrace);
    fillRows(run, standing.inside + 1, y, ChartColours::kBackground);
    const bool dotWasCovered =
        oldDot > std::min(y, standing.inside) && oldDot <= std::max(y, standing.inside);
    standing.inside = y;
    if (dotWasCovered || oldDot != column.dot) {
        standing.dot = TraceColumn::kNoDot;
    }
}

void TraceCache::paintOutside(const QRect &run, const TraceColumn &column, Standing &standing) {
    // Beyond the scale a level takes rows from the axes; they have them back when these are painted
    // anew (straysErased).
    if (column.y > standing.cleared) {
        fillRows(run, standing.cleared + 1, column.y, ChartColours::kBackground);
        standing.cleared = column.y;
        standing.dot = TraceColumn::kNoDot;
    }
    if (column.y < m_layout.plotTop) {
        fillRows(run, m_layout.plotTop, m_layout.plotTop, ChartColours::kTrace);
        fillRows(run, column.y, m_layout.plotTop - 1, ChartColours::kBackground);
        standing.dot = TraceColumn::kNoDot;
    }
    if (column.dot != standing.dot) {
        paintDot(run, column.dot, standing);
    }
}

void TraceCache::paintDot(const QRect &run, int row, Standing &standing) {
    standing.dot = row;
    if (row == TraceColumn::kNoDot) {
        return;
    }
    fillRows(run, row, row, ChartColours::kPeak);
    if (row > m_layout.plotBottom) {
        standing.cleared = std::min(standing.cleared, row - 1);
    }
}

void TraceCache::fillRows(const QRect &run, int from, int to, quint32 colour) {
    if (m_hidden.isEmpty()) {
        fillShown(run, from, to, colour);
        return;
    }
    fillShown(run, from, std::min(to, m_hidden.top() - 1), colour);
    fillShown(run, std::max(from, m_hidden.bottom() + 1), to, colour);
}

void TraceCache::fillShown(const QRect &run, int from, int to, quint32 colour) {
    if (from > to) {
        return;
    }
    m_surface->fill({run.x(), from, run.width(), to - from + 1}, colour);
    m_lowest = std::max(m_lowest, to);
    m_highestStray = std::min(m_highestStray, from);
    m_lowestStray = std::max(m_lowestStray, to);
}

} // namespace veldron
