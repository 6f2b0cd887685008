// SPDX-License-Identifier: MIT
#pragma once

#include "chart/ChartColours.h"
#include "chart/PixelSurface.h"
#include "chart/TraceRenderer.h"

namespace veldron {

/// Paints column \a x of a trace the plain way, whatever stands there: body, background over it,
/// and dot.
inline void paintPlain(PixelSurface &surface, const ChartLayout &layout, int x,
                       const TraceColumn &column) {
    surface.line({x, layout.plotBottom}, {x, column.y}, ChartColours::kTrace);
    surface.line({x, column.y}, {x, layout.plotTop}, ChartColours::kBackground);
    if (column.dot != TraceColumn::kNoDot) {
        surface.pset({x, column.dot}, ChartColours::kPeak);
    }
}

} // namespace veldron
