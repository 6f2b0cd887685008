// SPDX-License-Identifier: MIT
#include "chart/WaterfallCache.h"

#include <algorithm>
#include <cstdlib>

namespace veldron {

namespace {

// Renders rows \a first to \a last of the area \a target, counted from its top; row 0 shows the
// history's row firstRow().
void render(PixelSurface &surface, const WaterfallStore &store, const QRect &target, qint32 columns,
            qint32 first, qint32 last) {
    first = std::max(first, 0);
    last = std::min(last, target.height() - 1);
    // A view that passes the raster's end is rendered not at all, as one Render() of it would be.
    if (first <= last && store.firstRow() + target.height() <= WaterfallStore::kHeight) {
        const qint32 count = last - first + 1;
        store.history().Render(&surface,
                               {target.left(), target.top() + first, target.width(), count},
                               {0, store.firstRow() + first, columns, count});
    }
}

} // namespace

int WaterfallCache::paint(PixelSurface &surface, WaterfallStore &store, const ChartLayout &layout,
                          qint32 cellCount, int overpainted) {
    store.limitFirstRow(layout.fallHeight());
    const QRect target = layout.fallArea();
    const qint32 columns = std::max(cellCount, 1);
    // Taken also where all rows are rendered: behind this call the picture has the changes.
    const WaterfallStore::RowChange change = store.takeChange();
    // By how much the picture's rows move down: the shift of the history less that of the view.
    const qint32 moved = change.shift - (store.firstRow() - m_firstRow);
    const bool stands = standsIn(surface, target, columns) && overpainted < target.top() &&
                        std::abs(moved) < target.height();
    m_generation = surface.generation();
    m_target = target;
    m_columns = columns;
    m_firstRow = store.firstRow();
    if (!stands) {
        render(surface, store, target, columns, 0, target.height() - 1);
        return 0;
    }
    surface.scroll(target, moved);
    if (moved > 0) {
        render(surface, store, target, columns, 0, moved - 1);
    } else if (moved < 0) {
        render(surface, store, target, columns, target.height() + moved, target.height() - 1);
    }
    render(surface, store, target, columns, change.first - m_firstRow, change.last - m_firstRow);
    return moved;
}

bool WaterfallCache::standsIn(const PixelSurface &surface, const QRect &target,
                              qint32 columns) const {
    return surface.generation() == m_generation && target == m_target && columns == m_columns;
}

} // namespace veldron
