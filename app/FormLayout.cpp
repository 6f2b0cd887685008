// SPDX-License-Identifier: MIT
#include "app/FormLayout.h"

namespace veldron {

namespace {

constexpr int kGapAboveTransport = 12;
constexpr int kGapBelowTransport = 25;
constexpr int kChartLeft = 10;
constexpr QSize kFirstSize(1100, 760);
/// An upper estimate of the window frame's width and height. The real frame is known only once the
/// window is on the screen, which is too late for its first size.
constexpr QSize kFrame(16, 48);

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

QSize roomForWindow(QSize screen) {
    return screen - kFrame;
}

QSize openingSize(QSize screen, QSize least) {
    return kFirstSize.boundedTo(roomForWindow(screen)).expandedTo(least);
}

} // namespace veldron
