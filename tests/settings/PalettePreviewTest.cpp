// SPDX-License-Identifier: MIT
#include "settings/PalettePreview.h"

#include "utilities/Palette.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPixmap>

namespace veldron {
namespace {

QRgb screenColour(quint32 colour) {
    return qRgb(static_cast<int>(colour & 0xFFU), static_cast<int>((colour >> 8U) & 0xFFU),
                static_cast<int>((colour >> 16U) & 0xFFU));
}

QImage shownBy(PalettePreview &preview) {
    return preview.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

TEST(PalettePreview, columns_areLevelsRoundedHalfToEven) {
    EXPECT_EQ(PalettePreview::levelOfColumn(0, 200), 0);
    EXPECT_EQ(PalettePreview::levelOfColumn(1, 200), 1);
    EXPECT_EQ(PalettePreview::levelOfColumn(2, 200), 3);
    EXPECT_EQ(PalettePreview::levelOfColumn(100, 200), 128);
    EXPECT_EQ(PalettePreview::levelOfColumn(199, 200), 254);
    EXPECT_EQ(PalettePreview::levelOfColumn(1, 510), 0);
    EXPECT_EQ(PalettePreview::levelOfColumn(3, 510), 2);
    EXPECT_EQ(PalettePreview::levelOfColumn(509, 510), 254);
}

TEST(PalettePreview, noSchemeYet_drawsNothing) {
    PalettePreview preview;
    preview.resize(40, 10);
    const QImage empty = shownBy(preview);
    EXPECT_EQ(empty.pixel(0, 5), empty.pixel(39, 5));
}

class PalettePreviewSchemeTest : public testing::TestWithParam<int> {};

TEST_P(PalettePreviewSchemeTest, everyColumn_isALineOfItsLevelsColour) {
    const auto scheme = static_cast<qint16>(GetParam());
    PalettePreview preview;
    preview.resize(200, 12);
    preview.setScheme(scheme);
    const QImage shown = shownBy(preview);
    for (int x = 0; x < 200; ++x) {
        const QRgb expected = screenColour(
            GeneralUtilities::PaletteColour(PalettePreview::levelOfColumn(x, 200), scheme));
        EXPECT_EQ(shown.pixel(x, 0), expected) << x;
        EXPECT_EQ(shown.pixel(x, 11), expected) << x;
    }
}

INSTANTIATE_TEST_SUITE_P(AllSchemes, PalettePreviewSchemeTest, testing::Range(0, 6));

TEST(PalettePreview, rainbowAtItsLeftEnd_isDarkViolet) {
    PalettePreview preview;
    preview.resize(200, 12);
    preview.setScheme(3);
    EXPECT_EQ(shownBy(preview).pixel(0, 6), qRgb(38, 0, 153));
}

} // namespace
} // namespace veldron
