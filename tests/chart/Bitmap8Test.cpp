// SPDX-License-Identifier: MIT
#include "chart/Bitmap8.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <random>
#include <stdexcept>
#include <vector>

namespace veldron {
namespace {

// A raster in which each row holds its own number plus one.
struct Numbered : Bitmap8 {
    Numbered(qint32 width, qint32 height) {
        Create(width, height);
        for (qint32 y = 0; y < height; ++y) {
            for (qint32 x = 0; x < width; ++x) {
                setdata(x, y, static_cast<quint8>(y + 1));
            }
        }
    }
};

TEST(Bitmap8, created_describesATopDownRasterOfZeros) {
    Bitmap8 bitmap;
    EXPECT_NE(bitmap.Create(320, 10000), 0U);
    EXPECT_NE(bitmap.hDC(), 0U);
    EXPECT_EQ(bitmap.hBitmap(), bitmap.Create(320, 10000));
    EXPECT_EQ(bitmap.header().biSize, 40U);
    EXPECT_EQ(bitmap.header().biWidth, 320);
    EXPECT_EQ(bitmap.header().biHeight, -10000);
    EXPECT_EQ(bitmap.header().biPlanes, 1);
    EXPECT_EQ(bitmap.header().biBitCount, 8);
    EXPECT_EQ(bitmap.header().biCompression, 0U);
    EXPECT_EQ(bitmap.header().biSizeImage, 3200000U);
    EXPECT_EQ(bitmap.stretchMode(), 4);
    EXPECT_EQ(bitmap.data(319, 9999), 0);
}

TEST(Bitmap8, destroyed_hasNoHandlesAndNoPixels) {
    Numbered bitmap(4, 4);
    bitmap.Destroy();
    EXPECT_EQ(bitmap.hDC(), 0U);
    EXPECT_EQ(bitmap.hBitmap(), 0U);
    EXPECT_EQ(bitmap.data(0, 0), 0);
}

// Beside a plain array, through all that writes, moves or stretches rows.
TEST(Bitmap8, longSequences_scrollAllThatWasEverWritten) {
    constexpr int kSide = 12;
    std::mt19937 random(5);
    Bitmap8 bitmap;
    bitmap.Create(kSide, kSide);
    std::vector<quint8> rows(kSide * kSide, 0);
    for (int step = 0; step < 4000; ++step) {
        const auto kind = random() % 40;
        if (kind == 0) {
            bitmap.Clear();
            std::fill(rows.begin(), rows.end(), quint8{0});
        } else if (kind < 4) {
            // Twice as tall, then as before: only what is stretched out of the raster is lost.
            bitmap.Resize(2.0F);
            for (int y = kSide - 1; y > 0; --y) {
                std::copy_n(rows.begin() + y / 2 * kSide, kSide, rows.begin() + y * kSide);
            }
        } else if (kind < 20) {
            const auto at = random() % rows.size();
            rows[at] = static_cast<quint8>(random() % 3);
            bitmap.setdata(static_cast<qint32>(at % kSide), static_cast<qint32>(at / kSide),
                           rows[at]);
        } else {
            const auto down = static_cast<qint16>(1 + random() % 3);
            bitmap.Scroll(0, down);
            std::copy_backward(rows.begin(), rows.end() - down * kSide, rows.end());
        }
        for (std::size_t i = 0; i < rows.size(); ++i) {
            ASSERT_EQ(bitmap.data(static_cast<qint32>(i), 0), rows[i]) << step << " at " << i;
        }
    }
}

TEST(Bitmap8, destroyedAfterScrolling_takesEverythingQuietly) {
    Numbered bitmap(4, 6);
    bitmap.Scroll(0, 2);
    bitmap.Destroy();
    bitmap.Scroll(0, 5);
    bitmap.Scroll(-1, 0);
    bitmap.Resize(2.0F);
    bitmap.Resize(0.1F);
    bitmap.Clear();
    EXPECT_EQ(bitmap.data(0, 0), 0);
    EXPECT_EQ(bitmap.data(3, 5), 0);
}

TEST(Bitmap8, strideOfWidth321_is324AndOf320Is320) {
    Bitmap8 bitmap;
    bitmap.Create(321, 2);
    EXPECT_EQ(bitmap.stride(), 324);
    bitmap.Create(320, 2);
    EXPECT_EQ(bitmap.stride(), 320);
}

TEST(Bitmap8, dataAt320OfRowZero_isTheFirstByteOfRowOne) {
    Bitmap8 bitmap;
    bitmap.Create(320, 3);
    bitmap.setdata(320, 0, 77);
    EXPECT_EQ(bitmap.data(0, 1), 77);
    EXPECT_EQ(bitmap.data(320, 0), 77);
    EXPECT_EQ(bitmap.data(-320, 2), 77);
}

TEST(Bitmap8, dataOutsideTheRaster_readsZeroAndDropsWrites) {
    Numbered bitmap(4, 2);
    bitmap.setdata(0, -1, 9);
    bitmap.setdata(0, 2, 9);
    EXPECT_EQ(bitmap.data(0, -1), 0);
    EXPECT_EQ(bitmap.data(0, 2), 0);
    EXPECT_EQ(bitmap.data(0, 0), 1);
    EXPECT_EQ(bitmap.data(3, 1), 2);
}

TEST(Bitmap8, cleared_isZeroEverywhere) {
    Numbered bitmap(4, 2);
    bitmap.Clear();
    EXPECT_EQ(bitmap.data(0, 0), 0);
    EXPECT_EQ(bitmap.data(3, 1), 0);
}

TEST(Bitmap8, scrolledDown_keepsTheOldBytesOfTheTopRows) {
    Numbered bitmap(4, 6);
    bitmap.Scroll(0, 2);
    const quint8 expected[] = {1, 2, 1, 2, 3, 4};
    for (qint32 y = 0; y < 6; ++y) {
        EXPECT_EQ(bitmap.data(1, y), expected[y]) << y;
    }
}

TEST(Bitmap8, scrolledDownByMoreThanHalf_keepsTheOldBytesOfTheTopRows) {
    Numbered bitmap(4, 6);
    bitmap.Scroll(0, 4);
    const quint8 expected[] = {1, 2, 3, 4, 1, 2};
    for (qint32 y = 0; y < 6; ++y) {
        EXPECT_EQ(bitmap.data(1, y), expected[y]) << y;
    }
}

TEST(Bitmap8, scrolledByItsHeightAndMore_staysAsItWas) {
    Numbered bitmap(4, 6);
    bitmap.Scroll(0, 6);
    bitmap.Scroll(0, 32767);
    for (qint32 y = 0; y < 6; ++y) {
        EXPECT_EQ(bitmap.data(1, y), y + 1) << y;
    }
}

TEST(Bitmap8, scrolledManyTimes_addressesStayFlat) {
    Numbered bitmap(4, 5);
    for (int i = 0; i < 13; ++i) {
        bitmap.Scroll(0, 1);
        bitmap.setdata(4, 0, static_cast<quint8>(100 + i));
        EXPECT_EQ(bitmap.data(0, 1), 100 + i);
    }
    EXPECT_EQ(bitmap.data(0, 2), 111);
    EXPECT_EQ(bitmap.data(0, 3), 110);
    EXPECT_EQ(bitmap.data(0, 5), 0);
}

TEST(Bitmap8, scrolledUpByANegativeAmount_readsFromBeforeTheRasterAndMovesDown) {
    Numbered bitmap(4, 4);
    bitmap.Scroll(0, -1);
    const quint8 expected[] = {1, 1, 2, 3};
    for (qint32 y = 0; y < 4; ++y) {
        EXPECT_EQ(bitmap.data(1, y), expected[y]) << y;
    }
}

TEST(Bitmap8, scrolledSideways_movesRightForEitherSign) {
    for (const qint16 dx : {qint16{1}, qint16{-1}}) {
        Bitmap8 bitmap;
        bitmap.Create(4, 2);
        for (qint32 x = 0; x < 4; ++x) {
            bitmap.setdata(x, 1, static_cast<quint8>(x + 1));
        }
        bitmap.Scroll(dx, 0);
        const quint8 expected[] = {1, 1, 2, 3};
        for (qint32 x = 0; x < 4; ++x) {
            EXPECT_EQ(bitmap.data(x, 1), expected[x]) << x;
        }
    }
}

TEST(Bitmap8, rendered_picksFloorOfTheSourceAndNeverBlends) {
    Numbered bitmap(4, 4);
    bitmap.setdata(2, 1, 200);
    PixelSurface surface(8, 6);
    bitmap.Render(&surface, {1, 1, 6, 5}, {0, 0, 4, 4});
    // floor(j x 4 / 5) and floor(i x 4 / 6)
    const quint8 rows[] = {1, 1, 2, 3, 4};
    for (int j = 0; j < 5; ++j) {
        EXPECT_EQ(surface.pixel(1, 1 + j) & 0xFFU, rows[j]) << j;
    }
    EXPECT_EQ(surface.pixel(4, 3), 0xC8C8C8U); // column 3 of 6 is source column 2
    EXPECT_EQ(surface.pixel(0, 1), 0U);
    EXPECT_EQ(surface.pixel(7, 1), 0U);
}

struct RefusedRender {
    const char *name;
    QRect source;
};

TEST(Bitmap8, renderOfASourceOutsideTheRaster_drawsNothing) {
    const RefusedRender cases[] = {
        {"height 0", {0, 0, 4, 0}},        {"y at the height", {0, 4, 4, 1}},
        {"width 0", {0, 0, 0, 2}},         {"too wide", {1, 0, 4, 2}},
        {"too high", {0, 2, 4, 3}},        {"before the left edge", {-1, 0, 2, 2}},
        {"before the top", {0, -1, 2, 2}}, {"x at the width", {4, 0, 1, 1}},
    };
    Numbered bitmap(4, 4);
    for (const RefusedRender &c : cases) {
        PixelSurface surface(4, 4);
        bitmap.Render(&surface, {0, 0, 4, 4}, c.source);
        for (int y = 0; y < 4; ++y) {
            EXPECT_EQ(surface.pixel(0, y), 0U) << c.name;
        }
    }
}

TEST(Bitmap8, renderWithoutATarget_doesNothing) {
    Numbered bitmap(4, 4);
    bitmap.Render(nullptr, {0, 0, 4, 4}, {0, 0, 4, 4});
    EXPECT_EQ(bitmap.data(0, 0), 1);
}

TEST(Bitmap8, renderedOntoADenseSurface_fillsWholeBlocks) {
    Numbered bitmap(2, 2);
    PixelSurface surface(2, 2, 2.0);
    bitmap.Render(&surface, {0, 0, 2, 2}, {0, 0, 2, 2});
    EXPECT_EQ(surface.deviceLine(1)[1], 0xFF010101U);
    EXPECT_EQ(surface.deviceLine(3)[3], 0xFF020202U);
}

TEST(Bitmap8, resizedByOne_isUnchanged) {
    Numbered bitmap(4, 16);
    bitmap.Resize(1.0F);
    for (qint32 y = 0; y < 16; ++y) {
        EXPECT_EQ(bitmap.data(0, y), y + 1);
    }
}

TEST(Bitmap8, resizedByHalf_hasAllRowsAtHalfDensityInTheTopHalfAndZerosBelow) {
    Numbered bitmap(4, 16);
    bitmap.Resize(0.5F);
    for (qint32 y = 0; y < 8; ++y) {
        EXPECT_EQ(bitmap.data(0, y), 2 * y + 1);
        EXPECT_EQ(bitmap.data(0, y + 8), 0);
    }
}

TEST(Bitmap8, resizedByTwo_doublesTheRowsOfTheTopHalf) {
    Numbered bitmap(4, 16);
    bitmap.Resize(2.0F);
    for (qint32 y = 0; y < 16; ++y) {
        EXPECT_EQ(bitmap.data(0, y), y / 2 + 1);
    }
}

TEST(Bitmap8, resizedBy64_takesTwoStepsOfEight) {
    Numbered bitmap(4, 100);
    bitmap.Resize(64.0F);
    // An eighth is twelve rows of the hundred: row y is row floor(y x 12 / 100) of the first step,
    // and that is floor(x 12 / 100) of it. In one step the second row would begin at row 50.
    EXPECT_EQ(bitmap.data(0, 0), 1);
    EXPECT_EQ(bitmap.data(0, 74), 1);
    EXPECT_EQ(bitmap.data(0, 75), 2);
    EXPECT_EQ(bitmap.data(0, 99), 2);
}

TEST(Bitmap8, resizedBy65_takesTwoStepsOfEightAndALastOfALittleMoreThanOne) {
    Numbered bitmap(4, 128);
    bitmap.Resize(65.0F);
    // The last stretch takes round(128 / 1.015625) = 126 rows.
    EXPECT_EQ(bitmap.data(0, 64), 1); // 64 x 126 / 128 = 63
    EXPECT_EQ(bitmap.data(0, 66), 2); // 66 x 126 / 128 = 64.9
    EXPECT_EQ(bitmap.data(0, 65), 1); // 63.98
}

TEST(Bitmap8, resizedByASixteenth_zeroesByTheFactorThatIsLeft) {
    Numbered bitmap(4, 64);
    bitmap.Resize(1.0F / 16.0F);
    // One step into the top eighth over the old rows, then a half: 4 rows of the whole, then old
    // rows at half density up to 32, zeros from there.
    EXPECT_EQ(bitmap.data(0, 0), 1);
    EXPECT_EQ(bitmap.data(0, 3), 49);
    EXPECT_EQ(bitmap.data(0, 4), 9);
    EXPECT_EQ(bitmap.data(0, 31), 63);
    EXPECT_EQ(bitmap.data(0, 32), 0);
}

TEST(Bitmap8, resizedToAPartOfARow_zeroesFromWithinTheRow) {
    Numbered bitmap(8, 10);
    bitmap.Resize(0.55F); // 5.5 rows: five are stretched, zeros begin in the middle of the sixth
    EXPECT_EQ(bitmap.data(0, 4), 9);
    EXPECT_EQ(bitmap.data(3, 5), 6);
    EXPECT_EQ(bitmap.data(4, 5), 0);
    EXPECT_EQ(bitmap.data(0, 6), 0);
}

TEST(Bitmap8, resizedByAnImpossibleFactor_isUnchanged) {
    Numbered bitmap(4, 8);
    for (const float factor : {0.0F, -1.0F, std::numeric_limits<float>::infinity(),
                               std::numeric_limits<float>::quiet_NaN()}) {
        bitmap.Resize(factor);
        EXPECT_EQ(bitmap.data(0, 7), 8);
    }
}

// The same raster with nothing clever in it: every move goes through a copy.
struct PlainRaster {
    PlainRaster(qint32 width, qint32 height) : stride(width), rows(height) {
        for (qint32 y = 0; y < rows; ++y) {
            bytes.insert(bytes.end(), static_cast<std::size_t>(stride), static_cast<quint8>(y + 1));
        }
    }
    void scroll(qint32 by) {
        const std::vector<quint8> old(bytes);
        const auto moved = std::min(qsizetype{by} * stride, static_cast<qsizetype>(old.size()));
        std::copy(old.begin(), old.end() - moved, bytes.begin() + moved);
    }
    void stretch(double from, double to) {
        const std::vector<quint8> old(bytes);
        const auto source = static_cast<qint32>(from);
        const auto target = static_cast<qint32>(to);
        for (qint32 y = 0; y < target; ++y) {
            std::copy_n(old.begin() + qsizetype{y * source / target} * stride, stride,
                        bytes.begin() + qsizetype{y} * stride);
        }
    }
    void resize(float factor) {
        const double height = rows;
        const double eighth = std::nearbyint(height / 8.0);
        for (; factor > 8.0F; factor /= 8.0F) {
            stretch(eighth, height);
        }
        if (factor >= 1.0F) {
            stretch(std::nearbyint(height / static_cast<double>(factor)), height);
            return;
        }
        for (; factor < 0.125F; factor *= 8.0F) {
            stretch(height, eighth);
        }
        const double covered = height * static_cast<double>(factor);
        stretch(height, std::floor(covered));
        std::fill(bytes.begin() + static_cast<qsizetype>(std::nearbyint(covered * stride)),
                  bytes.end(), quint8{0});
    }

    qint32 stride;
    qint32 rows;
    std::vector<quint8> bytes;
};

TEST(Bitmap8, scrolledAndResizedInTurn_isAsIfEachMoveWentThroughACopy) {
    constexpr float kFactors[] = {1.0F, 2.0F, 0.5F, 5.0F, 0.2F, 20.0F, 0.05F, 100.0F, 0.4F, 2.5F};
    Numbered bitmap(8, 100);
    PlainRaster plain(8, 100);
    std::mt19937 random(31);
    for (int step = 0; step < 400; ++step) {
        const auto by = static_cast<qint16>(random() % (step % 7 == 0 ? 110 : 20));
        bitmap.Scroll(0, by);
        plain.scroll(by);
        for (int i = 0; i < 40; ++i) {
            const auto place = static_cast<std::size_t>(random() % plain.bytes.size());
            bitmap.setdata(static_cast<qint32>(place), 0, static_cast<quint8>(step + i));
            plain.bytes[place] = static_cast<quint8>(step + i);
        }
        if (random() % 3 == 0) {
            const float factor = kFactors[random() % std::size(kFactors)];
            bitmap.Resize(factor);
            plain.resize(factor);
        }
        for (std::size_t place = 0; place < plain.bytes.size(); ++place) {
            ASSERT_EQ(bitmap.data(static_cast<qint32>(place), 0), plain.bytes[place])
                << "step " << step << ", byte " << place;
        }
    }
}

TEST(Bitmap8, anyGroup_isStoredAndLeavesTheModeAtFour) {
    Bitmap8 bitmap;
    bitmap.Create(4, 4);
    for (const qint16 group : {qint16{1}, qint16{2}, qint16{7}}) {
        bitmap.setGroup(group);
        EXPECT_EQ(bitmap.Group(), group);
        EXPECT_EQ(bitmap.stretchMode(), 4);
    }
}

TEST(Bitmap8, paletteWritten_readsBackTheSameColour) {
    Bitmap8 bitmap;
    bitmap.Create(4, 4);
    bitmap.setPalette(255, 0x00FF7F01);
    EXPECT_EQ(bitmap.Palette(255), 0x00FF7F01U);
}

TEST(Bitmap8, paletteOfANewRaster_isTheGreyRampUpToTheTopEntry) {
    Bitmap8 bitmap;
    bitmap.Create(1, 1);
    PixelSurface surface(1, 1);
    for (int level = 0; level < 256; ++level) {
        bitmap.setdata(0, 0, static_cast<quint8>(level));
        bitmap.Render(&surface, {0, 0, 1, 1}, {0, 0, 1, 1});
        EXPECT_EQ(surface.pixel(0, 0), static_cast<quint32>(level) * 0x010101U);
    }
}

TEST(Bitmap8, paletteIndexOutside_isOutOfRangeBothWays) {
    Bitmap8 bitmap;
    bitmap.Create(4, 4);
    for (const qint16 index : {qint16{-1}, qint16{256}}) {
        EXPECT_THROW(bitmap.setPalette(index, 0), std::out_of_range);
        EXPECT_THROW(static_cast<void>(bitmap.Palette(index)), std::out_of_range);
    }
}

TEST(Bitmap8, paletteReadOfAGreenOf128_overflows) {
    Bitmap8 bitmap;
    bitmap.Create(4, 4);
    bitmap.setPalette(3, 0x00008000);
    EXPECT_THROW(static_cast<void>(bitmap.Palette(3)), std::overflow_error);
    bitmap.setPalette(3, 0x00007FFF);
    EXPECT_EQ(bitmap.Palette(3), 0x00007FFFU);
}

TEST(Bitmap8, resizedByExactlyAnEighth_takesOneStepAndZeroesTheRest) {
    Numbered bitmap(4, 64);
    bitmap.Resize(0.125F);
    for (qint32 y = 0; y < 64; ++y) {
        EXPECT_EQ(bitmap.data(1, y), y < 8 ? 8 * y + 1 : 0) << y;
    }
}

TEST(Bitmap8, renderOfRowsThatEndAtTheFoot_drawsThem) {
    const Numbered bitmap(4, 6);
    PixelSurface surface(4, 2);
    bitmap.Render(&surface, {0, 0, 4, 2}, {0, 4, 4, 2});
    EXPECT_EQ(surface.pixel(0, 0), 0x00050505U);
    EXPECT_EQ(surface.pixel(3, 1), 0x00060606U);
}

} // namespace
} // namespace veldron
