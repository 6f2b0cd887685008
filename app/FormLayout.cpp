// SPDX-License-Identifier: MIT
#include "app/FormLayout.h"

namespace veldron {

namespace {

constexpr int kGapAboveTransport = 12;
constexpr int kGapBelowTransport = 25;
constexpr int kChartLeft = 10;

} // namespace

FormLayout FormLayout::of(const Input &input) {
    FormLayout layout;
    layout.picture2Top = input.picture1Bottom + kGapAboveTransport;
    // A hidden strip leaves no gap.
    const int top = input.picture2Visible
                        ? layout.picture2Top + input.picture2Height + kGapBelowTransport
                        : layout.picture2Top;
    const int height = input.inside.height() - top - input.statusBarHeight;
    const int width = input.inside.width() - kChartLeft;
    layout.chart = QRect(kChartLeft, top, width > 0 ? width : input.chart.width(),
                         height > 0 ? height : input.chart.height());
    return layout;
}

} // namespace veldron
