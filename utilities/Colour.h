// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace veldron {

/// The program's colours are 0x00BBGGRR, the toolkit's QRgb is 0xFFRRGGBB: this is the way from
/// the one to the other.
[[nodiscard]] constexpr quint32 toRgb(quint32 colour) {
    return 0xFF000000U | (colour & 0x0000FF00U) | ((colour & 0xFFU) << 16U) |
           ((colour >> 16U) & 0xFFU);
}

/// And back.
[[nodiscard]] constexpr quint32 fromRgb(quint32 rgb) {
    return toRgb(rgb) & 0x00FFFFFFU;
}

} // namespace veldron
