// SPDX-License-Identifier: MIT
// The colours of the chart, as 0x00BBGGRR values. Axes, ticks and labels have kAxis; the far edges
// of plot and waterfall and the receive line kFrame; the body of a trace kTrace, its peak dots
// kPeak.
#pragma once

#include <QtGlobal>

namespace veldron::ChartColours {

constexpr quint32 kAxis = 0x00FFFFFF;
constexpr quint32 kFrame = 0x007F7F7F;
constexpr quint32 kTrace = 0x000000FF;
constexpr quint32 kPeak = 0x0000FFFF;
constexpr quint32 kBackground = 0x00000000;

} // namespace veldron::ChartColours
