// SPDX-License-Identifier: MIT
#pragma once

#include "chart/ChartLayout.h"
#include "chart/PixelSurface.h"
#include "chart/WaterfallStore.h"

#include <QRect>

namespace veldron {

/// Copies the visible rows of the history onto the picture, one history row to a pixel row, and
/// touches only rows that changed since the last copy to the same place.
class StandingWaterfall {
public:
    /// To be called whenever somebody else may have painted over the waterfall.
    void forget() { m_known = false; }

    /// Limits the store's first row to what there is, then copies \a cellCount columns. Nothing is
    /// copied where the raster has fewer columns.
    void paint(PixelSurface &surface, WaterfallStore &store, const ChartLayout &layout,
               qint32 cellCount);

private:
    bool m_known = false;
    QRect m_target;
    QRect m_source;
};

} // namespace veldron
