// SPDX-License-Identifier: MIT
#pragma once

#include "chart/DisplayTypeCode.h"

#include <QRect>
#include <QtGlobal>

namespace veldron {

/// The margins of the chart, in pixels.
namespace ChartMargins {
constexpr int kTop = 10;     ///< above the trace
constexpr int kRight = 15;   ///< right of the plot
constexpr int kBottom = 30;  ///< between the trace and the split, or the lower edge
constexpr int kLeft = 40;    ///< left of the plot
constexpr int kSplitGap = 5; ///< between split and waterfall; also the split's grab distance
constexpr int kFootGap = 5;  ///< under the waterfall
} // namespace ChartMargins

/// Where things stand in the picture, in its pixels; rows grow downwards.
///
/// Worked out wherever it is needed, never stored. Right edges and the waterfall's bottom are the
/// first pixel beyond; the trace fills the rows below plotTop down to plotBottom itself. Without a
/// waterfall, that area is one row at the foot of the picture.
struct ChartLayout {
    int scaleWidth = 0;
    int scaleHeight = 0;
    int plotLeft = 0;
    int plotRight = 0;
    int plotTop = 0;
    int plotBottom = 0;
    int splitY = 0;
    int fallTop = 0;
    int fallBottom = 0;

    /// Of a picture of that size in pixels, with the split at \a splitFraction of its height from
    /// the top. Nothing is limited: a small picture gives edges in the wrong order (see
    /// isDrawable).
    [[nodiscard]] static ChartLayout of(int scaleWidth, int scaleHeight,
                                        DisplayTypeCode displayType, float splitFraction);

    [[nodiscard]] int plotWidth() const { return plotRight - plotLeft; }
    [[nodiscard]] int fallHeight() const { return fallBottom - fallTop; }
    /// The pixels that each trace repaints.
    [[nodiscard]] QRect plotInside() const {
        return {plotLeft, plotTop + 1, plotWidth(), plotBottom - plotTop};
    }
    [[nodiscard]] QRect fallArea() const { return {plotLeft, fallTop, plotWidth(), fallHeight()}; }
    /// False when the picture is too small for plot or waterfall: nothing is drawn then.
    [[nodiscard]] bool isDrawable() const {
        return plotRight > plotLeft && plotBottom > plotTop && fallBottom > fallTop;
    }
    /// Left edge of a text \a textWidth wide: centred on \a column, halves to even, and kept inside
    /// the plot. At the left it may stick out by \a overhang; too wide a text ends at the right
    /// edge.
    [[nodiscard]] int textLeft(int column, int textWidth, int overhang = 0) const;
    /// The same with waterfall and split out of the pointer's reach where \a displayType has none.
    [[nodiscard]] ChartLayout forPointer(DisplayTypeCode displayType) const;
};

/// Rows of the waterfall that can be seen, as the scroll bar counts them, one to a pixel row; may
/// be negative.
[[nodiscard]] int visibleFallRows(int scaleHeight, float splitFraction);

} // namespace veldron
