// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <array>

namespace veldron {

/// The scale of levels: whole dB, raw bytes (dB = raw + offset), and pixel rows that grow
/// downwards. All arithmetic is of integers, rounded to nearest with ties to even.
///
/// A span of 0 makes rowOf and rows throw UntrappedError(DivideByZero).
struct LevelScale {
    qint16 span = 60;     ///< height of the scale
    qint16 start = -90;   ///< level at the bottom of the scale
    qint16 offset = -132; ///< level of raw value 0

    /// Row of a raw level: \a plotBottom at the start of the scale, \a plotTop at its end. Not
    /// limited to the plot.
    [[nodiscard]] int rowOf(int raw, int plotTop, int plotBottom) const;
    /// rowOf for each raw level.
    [[nodiscard]] std::array<int, 256> rows(int plotTop, int plotBottom) const;
    /// Level at the height of row \a y on the scale, in dB; the plot has a height.
    [[nodiscard]] qint32 decibelsAt(int y, int plotTop, int plotBottom) const;
    /// Place of a raw level, 0 to 255, on the scale of a colour scheme: 0 up to the start of the
    /// scale, 255 from its end. UntrappedError(Overflow) where the product with 256 leaves 16
    /// bits, which takes a span above 128.
    [[nodiscard]] quint8 schemeLevel(int raw) const;
};

} // namespace veldron
