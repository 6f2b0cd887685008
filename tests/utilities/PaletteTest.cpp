// SPDX-License-Identifier: MIT
#include "utilities/Palette.h"

#include <gtest/gtest.h>

#include <array>

namespace veldron {
namespace {

using namespace GeneralUtilities;

using Channels = std::array<int, 3>;

Channels channels(quint32 colour) {
    return {static_cast<int>(colour & 0xFFU), static_cast<int>(colour >> 8U & 0xFFU),
            static_cast<int>(colour >> 16U)};
}

TEST(Palette, tellingLevels_haveTheirColoursInEachScheme) {
    struct Row {
        quint8 level;
        std::array<Channels, 6> colours;
    };
    const Row rows[] = {
        {0, {{{0, 0, 0}, {255, 255, 255}, {0, 0, 0}, {38, 0, 153}, {0, 0, 0}, {0, 0, 0}}}},
        {1, {{{1, 1, 1}, {254, 254, 254}, {0, 50, 51}, {60, 0, 255}, {12, 0, 52}, {0, 1, 126}}}},
        {64,
         {{{64, 64, 64}, {191, 191, 191}, {5, 0, 80}, {0, 208, 255}, {0, 83, 102}, {0, 64, 63}}}},
        {128,
         {{{128, 128, 128},
           {127, 127, 127},
           {166, 0, 144},
           {0, 255, 30},
           {0, 153, 18},
           {0, 127, 0}}}},
        {192,
         {{{192, 192, 192},
           {63, 63, 63},
           {255, 94, 54},
           {242, 255, 0},
           {194, 205, 0},
           {128, 63, 0}}}},
        {255,
         {{{255, 255, 255}, {0, 0, 0}, {254, 255, 251}, {255, 0, 0}, {255, 0, 0}, {254, 0, 0}}}}};
    for (const Row &row : rows) {
        for (std::size_t scheme = 0; scheme < row.colours.size(); ++scheme) {
            EXPECT_EQ(channels(PaletteColour(row.level, static_cast<qint16>(scheme))),
                      row.colours[scheme])
                << "level " << int{row.level} << " scheme " << scheme;
        }
    }
}

TEST(Palette, anyOtherSchemeIndex_givesTheColoursOfSpectrum6) {
    for (const int scheme : {6, 7, 32767, -1, -32768}) {
        for (int level = 0; level <= 255; ++level) {
            EXPECT_EQ(PaletteColour(static_cast<quint8>(level), static_cast<qint16>(scheme)),
                      PaletteColour(static_cast<quint8>(level), 5));
        }
    }
}

TEST(Palette, levelZeroOfRainbow_isDarkVioletAndOfWhiteToBlackWhite) {
    EXPECT_EQ(PaletteColour(0, 3), 0x00990026U);
    EXPECT_EQ(PaletteColour(0, 1), 0x00FFFFFFU);
}

TEST(Palette, bothHalvesOfSpectrum6_areStraight) {
    EXPECT_EQ(channels(PaletteColour(127, 5)), (Channels{0, 127, 0}));
    for (int level = 128; level <= 255; ++level) {
        EXPECT_EQ(channels(PaletteColour(static_cast<quint8>(level), 5)),
                  (Channels{(level - 128) * 2, 255 - level, 0}));
    }
}

TEST(Palette, colourWithoutSaturation_isGrey) {
    EXPECT_EQ(channels(HLSToRGB(77.0F, 0.5F, 0.0F)), (Channels{128, 128, 128}));
    EXPECT_EQ(channels(HLSToRGB(0.0F, 1.0F, 0.0F)), (Channels{255, 255, 255}));
}

TEST(Palette, pureHues_areRedAt0GreenAt120BlueAt240) {
    EXPECT_EQ(channels(HLSToRGB(0.0F, 0.5F, 1.0F)), (Channels{255, 0, 0}));
    EXPECT_EQ(channels(HLSToRGB(120.0F, 0.5F, 1.0F)), (Channels{0, 255, 0}));
    EXPECT_EQ(channels(HLSToRGB(240.0F, 0.5F, 1.0F)), (Channels{0, 0, 255}));
}

TEST(Palette, hlsValue_followsTheHueRoundTheCircle) {
    struct Case {
        float hue;
        float value;
    };
    const Case cases[] = {{0, 0.2F},    {30, 0.5F},   {60, 0.8F},  {179, 0.8F}, {180, 0.8F},
                          {210, 0.5F},  {240, 0.2F},  {300, 0.2F}, {360, 0.2F}, {390, 0.5F},
                          {-150, 0.5F}, {-330, 0.5F}, {750, 0.5F}};
    for (const Case &example : cases) {
        EXPECT_FLOAT_EQ(HLSValue(0.2F, 0.8F, example.hue), example.value) << example.hue;
    }
}

} // namespace
} // namespace veldron
