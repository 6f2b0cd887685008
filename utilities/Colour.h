// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace veldron {

/// The toolkit's colour (QRgb, 0xFFRRGGBB) for one of the program's (0x00BBGGRR): red and blue
/// change places, and the alpha is opaque.
[[nodiscard]] constexpr quint32 toRgb(quint32 colour) {
    return 0xFF000000U | (colour & 0x0000FF00U) | ((colour & 0xFFU) << 16U) |
           ((colour >> 16U) & 0xFFU);
}

/// The program's colour for one of the toolkit's, whose alpha is dropped.
[[nodiscard]] constexpr quint32 fromRgb(quint32 rgb) {
    return toRgb(rgb) & 0x00FFFFFFU;
}

} // namespace veldron
