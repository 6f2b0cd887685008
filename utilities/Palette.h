// SPDX-License-Identifier: MIT
// The colours that levels are shown in. A colour is 0x00BBGGRR.
#pragma once

#include <QtGlobal>

namespace veldron {

/// Levels that have a colour run from 0 to this.
inline constexpr int kHighestLevel = 255;

/// The schemes by which a level becomes a colour; every other number stands for the last one.
enum class PaletteCode : qint16 {
    BlackToWhite = 0,
    WhiteToBlack = 1,
    HotMetal = 2,
    Rainbow = 3,
    Spectrum5 = 4,
    Spectrum6 = 5,
};

} // namespace veldron

namespace veldron::GeneralUtilities {

/// The colour of a level from 0 to 255 in the scheme with the number of a PaletteCode.
[[nodiscard]] quint32 PaletteColour(quint8 Level, qint16 Scheme);
/// The colour of a hue in degrees (red 0, green 120, blue 240), a lightness and a saturation, both
/// from 0 to 1. Channels are rounded half to even.
[[nodiscard]] quint32 HLSToRGB(float Hue, float Lightness, float Saturation);
/// One channel, from 0 to 1: between \a n1 and \a n2 by where \a Hue lies on the circle.
[[nodiscard]] float HLSValue(float n1, float n2, float Hue);

} // namespace veldron::GeneralUtilities
