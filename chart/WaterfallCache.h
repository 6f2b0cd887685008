// SPDX-License-Identifier: MIT
#pragma once

#include "chart/ChartLayout.h"
#include "chart/PixelSurface.h"
#include "chart/WaterfallStore.h"

#include <QRect>

namespace veldron {

/// Paints the visible rows of the history, one history row to a pixel row, and touches only what
/// differs: rows that moved are moved in the picture, and only those that changed are painted.
/// Another generation of the surface invalidates the cache.
class WaterfallCache {
public:
    /// Limits the store's first row to what there is, then paints \a cellCount columns. Nothing is
    /// painted where the raster has fewer columns. Down to \a overpainted, somebody else has
    /// painted since the last call. Returns the rows by which the area was scrolled, downwards if
    /// positive.
    int paint(PixelSurface &surface, WaterfallStore &store, const ChartLayout &layout,
              qint32 cellCount, int overpainted);

private:
    /// Whether what was painted last still stands, at this place and of this width.
    [[nodiscard]] bool standsIn(const PixelSurface &surface, const QRect &target,
                                qint32 columns) const;

    quint64 m_generation = 0; // of the surface; 0 is none
    QRect m_target;
    qint32 m_columns = 0;
    qint32 m_firstRow = 0;
};

} // namespace veldron
