// SPDX-License-Identifier: MIT
#include "utilities/Palette.h"

#include "common/Numbers.h"

namespace veldron::GeneralUtilities {

namespace {

constexpr float kFullCircle = 360.0F;

quint32 colourOf(int red, int green, int blue) {
    return static_cast<quint32>(blue) << 16U | static_cast<quint32>(green) << 8U |
           static_cast<quint32>(red);
}

/// A share from 0 to 1 as a channel from 0 to 255.
int channelOf(float share) {
    return qBound(0, Numbers::roundTo<int>(static_cast<double>(share * 255.0F)), kHighestLevel);
}

quint32 greyColour(int level) {
    return colourOf(level, level, level);
}

/// The hue runs from cyan (180 degrees) through blue and red to a yellow (435, which is 75), and
/// the lightness grows with the square of the level.
quint32 hotMetalColour(int level) {
    const float share = static_cast<float>(level) / 256.0F;
    const float lightness = level == 0 ? 0.0F : share * share * 0.9F + 0.1F;
    return HLSToRGB(static_cast<float>(level + 180), lightness, 1.0F);
}

/// The hue runs from a violet blue (255 degrees) down to red (0) at one lightness.
quint32 rainbowColour(int level) {
    // The empty part of the waterfall is a dark violet, not black.
    return HLSToRGB(static_cast<float>(kHighestLevel - level), level == 0 ? 0.3F : 0.5F, 1.0F);
}

quint32 risingRainbowColour(int level) {
    const float lightness = level == 0 ? 0.0F : static_cast<float>(level) * 0.4F / 255.0F + 0.1F;
    return HLSToRGB(static_cast<float>(kHighestLevel - level), lightness, 1.0F);
}

/// From blue to green in the lower half, then from green to red.
quint32 twoSegmentColour(int level) {
    if (level == 0) {
        return colourOf(0, 0, 0);
    }
    if (level < 128) {
        return colourOf(0, level, 127 - level);
    }
    return colourOf((level - 128) * 2, kHighestLevel - level, 0);
}

} // namespace

quint32 PaletteColour(quint8 Level, qint16 Scheme) {
    switch (static_cast<PaletteCode>(Scheme)) {
    case PaletteCode::BlackToWhite:
        return greyColour(Level);
    case PaletteCode::WhiteToBlack:
        return greyColour(kHighestLevel - Level);
    case PaletteCode::HotMetal:
        return hotMetalColour(Level);
    case PaletteCode::Rainbow:
        return rainbowColour(Level);
    case PaletteCode::Spectrum5:
        return risingRainbowColour(Level);
    case PaletteCode::Spectrum6:
    default:
        return twoSegmentColour(Level);
    }
}

quint32 HLSToRGB(float Hue, float Lightness, float Saturation) {
    if (Saturation == 0.0F) {
        return greyColour(channelOf(Lightness));
    }
    // The common conversion: the least and the greatest of the channels follow from lightness and
    // saturation, the hue places each channel between them.
    const float m2 = Lightness < 0.5F ? (Saturation + 1.0F) * Lightness
                                      : Lightness + Saturation - Lightness * Saturation;
    const float m1 = 2.0F * Lightness - m2;
    return colourOf(channelOf(HLSValue(m1, m2, Hue + 120.0F)), channelOf(HLSValue(m1, m2, Hue)),
                    channelOf(HLSValue(m1, m2, Hue - 120.0F)));
}

float HLSValue(float n1, float n2, float Hue) {
    while (Hue > kFullCircle) {
        Hue -= kFullCircle;
    }
    while (Hue < 0.0F) {
        Hue += kFullCircle;
    }
    if (Hue < 60.0F) {
        return n1 + (n2 - n1) * Hue / 60.0F;
    }
    if (Hue < 180.0F) {
        return n2;
    }
    if (Hue < 240.0F) {
        return n1 + (n2 - n1) * (240.0F - Hue) / 60.0F;
    }
    return n1;
}

} // namespace veldron::GeneralUtilities
