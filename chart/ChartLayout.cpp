// SPDX-License-Identifier: MIT
#include "chart/ChartLayout.h"

#include "common/Numbers.h"

#include <algorithm>

namespace veldron {

namespace {

int splitRow(int scaleHeight, float splitFraction) {
    // Nobody limits a fraction that comes from a file or from code; the bounds keep the sums of
    // the layout from overflowing.
    const double row = static_cast<double>(scaleHeight) * static_cast<double>(splitFraction);
    return Numbers::roundTo<qint32>(qBound(-1.0e6, row, 1.0e6));
}

} // namespace

ChartLayout ChartLayout::of(int scaleWidth, int scaleHeight, DisplayTypeCode displayType,
                            float splitFraction) {
    ChartLayout layout;
    layout.scaleWidth = scaleWidth;
    layout.scaleHeight = scaleHeight;
    layout.plotLeft = ChartMargins::kLeft;
    layout.plotRight = scaleWidth - ChartMargins::kRight;
    layout.plotTop = ChartMargins::kTop;
    layout.splitY = splitRow(scaleHeight, splitFraction);
    if (displayType == DisplayTypeCode::Trace) {
        layout.plotBottom = scaleHeight - ChartMargins::kBottom;
        layout.fallBottom = scaleHeight;
        layout.fallTop = scaleHeight - 1;
    } else {
        layout.plotBottom = layout.splitY - ChartMargins::kBottom;
        layout.fallTop = layout.splitY + ChartMargins::kSplitGap;
        layout.fallBottom = scaleHeight - ChartMargins::kFootGap;
    }
    return layout;
}

int ChartLayout::textLeft(int column, int textWidth, int overhang) const {
    const auto centred =
        static_cast<int>(Numbers::divideHalfEven(2 * qint64{column} - textWidth, 2));
    return std::min(std::max(centred, plotLeft - overhang), plotRight - textWidth);
}

ChartLayout ChartLayout::forPointer(DisplayTypeCode displayType) const {
    ChartLayout layout = *this;
    if (displayType == DisplayTypeCode::Trace) {
        layout.fallTop = scaleHeight;
        layout.fallBottom = layout.fallTop + 1;
        layout.splitY = layout.fallBottom + ChartMargins::kSplitGap;
    }
    return layout;
}

int visibleFallRows(int scaleHeight, float splitFraction) {
    return scaleHeight - splitRow(scaleHeight, splitFraction) - ChartMargins::kFootGap -
           ChartMargins::kSplitGap;
}

} // namespace veldron
