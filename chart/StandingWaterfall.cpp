// SPDX-License-Identifier: MIT
#include "chart/StandingWaterfall.h"

#include <algorithm>

namespace veldron {

void StandingWaterfall::paint(PixelSurface &surface, WaterfallStore &store,
                              const ChartLayout &layout, qint32 cellCount) {
    const int height = layout.fallHeight();
    store.limitFirstRow(height);
    const QRect target = layout.fallArea();
    const QRect source(0, store.firstRow(), std::max(cellCount, 1), height);
    WaterfallStore::RowRange rows = store.takeChangedRows();
    if (!m_known || target != m_target || source != m_source) {
        rows = {0, WaterfallStore::kHeight - 1};
    }
    m_known = true;
    m_target = target;
    m_source = source;
    const qint32 first = std::max(rows.first, source.top());
    const qint32 count = std::min(rows.last, source.bottom()) - first + 1;
    // The whole copy is refused when its rows don't lie within the raster, so a part is, too.
    if (count > 0 && source.bottom() < WaterfallStore::kHeight) {
        store.history().Render(
            &surface, {target.left(), target.top() + first - source.top(), target.width(), count},
            {0, first, source.width(), count});
    }
}

} // namespace veldron
