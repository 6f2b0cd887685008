// SPDX-License-Identifier: MIT
// Colours are 0x00BBGGRR values, as everywhere in the program.
#pragma once

#include <QtGlobal>

namespace veldron::ChartColours {

constexpr quint32 kAxis = 0x00FFFFFF;
constexpr quint32 kFrame = 0x007F7F7F;
constexpr quint32 kTrace = 0x000000FF;
constexpr quint32 kPeak = 0x0000FFFF;
constexpr quint32 kBackground = 0x00000000;

} // namespace veldron::ChartColours
