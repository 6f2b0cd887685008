// SPDX-License-Identifier: MIT
#include "chart/PixelSurface.h"

#include <QSize>

#include <gtest/gtest.h>

#include <vector>

namespace veldron {
namespace {

int litPixels(const PixelSurface &surface) {
    int lit = 0;
    for (int y = 0; y < surface.height(); ++y) {
        for (int x = 0; x < surface.width(); ++x) {
            lit += surface.pixel(x, y) != 0 ? 1 : 0;
        }
    }
    return lit;
}

// Each device pixel, line by line, with what lies between the lines left out.
std::vector<quint32> pixelsOf(const PixelSurface &surface) {
    std::vector<quint32> pixels;
    for (int row = 0; row < surface.deviceHeight(); ++row) {
        const quint32 *line = surface.deviceLine(row);
        pixels.insert(pixels.end(), line, line + surface.deviceWidth());
    }
    return pixels;
}

struct LineCase {
    const char *name;
    QPoint from;
    QPoint to;
    QRect painted;
};

TEST(PixelSurface, line_leavesItsEndPointOut) {
    const LineCase cases[] = {
        {"to the right", {2, 3}, {6, 3}, {2, 3, 4, 1}},
        {"to the left", {6, 3}, {2, 3}, {3, 3, 4, 1}},
        {"down", {4, 1}, {4, 5}, {4, 1, 1, 4}},
        {"up", {4, 5}, {4, 1}, {4, 2, 1, 4}},
        {"clipped", {-5, 2}, {50, 2}, {0, 2, 10, 1}},
        {"nowhere", {4, 4}, {4, 4}, {}},
        {"outside", {4, -9}, {4, -2}, {}},
    };
    for (const LineCase &c : cases) {
        PixelSurface surface(10, 8);
        surface.line(c.from, c.to, 0x0000FF);
        EXPECT_EQ(litPixels(surface), c.painted.width() * c.painted.height()) << c.name;
        for (int x = c.painted.left(); x <= c.painted.right(); ++x) {
            EXPECT_EQ(surface.pixel(x, c.painted.top()), 0x0000FFU) << c.name;
        }
    }
}

TEST(PixelSurface, colours_areRedInTheLowByteOutsideAndInTheHighByteOfAWord) {
    PixelSurface surface(1, 1);
    surface.pset({0, 0}, 0x00112233);
    EXPECT_EQ(surface.pixel(0, 0), 0x00112233U);
    EXPECT_EQ(surface.deviceLine(0)[0], 0xFF332211U);
}

TEST(PixelSurface, denseLine_isAWholeBlock) {
    PixelSurface surface(4, 4, 2.0);
    surface.line({1, 1}, {3, 1}, 0x00FFFFFF);
    EXPECT_EQ(surface.deviceWidth(), 8);
    for (const int row : {2, 3}) {
        EXPECT_EQ(surface.deviceLine(row)[1], 0xFF000000U);
        EXPECT_EQ(surface.deviceLine(row)[2], 0xFFFFFFFFU);
        EXPECT_EQ(surface.deviceLine(row)[5], 0xFFFFFFFFU);
        EXPECT_EQ(surface.deviceLine(row)[6], 0xFF000000U);
    }
    EXPECT_EQ(surface.deviceLine(4)[2], 0xFF000000U);
}

TEST(PixelSurface, brokenScale_coversEveryDevicePixelOnce) {
    PixelSurface surface(5, 5, 1.5);
    EXPECT_EQ(surface.deviceWidth(), 8);
    EXPECT_EQ(surface.columnEdge(1), 2);
    EXPECT_EQ(surface.columnEdge(2), 3);
    surface.fill(surface.bounds(), 0x00FFFFFF);
    EXPECT_EQ(surface.deviceLine(7)[7], 0xFFFFFFFFU);
}

TEST(PixelSurface, emptySurface_takesEverythingQuietly) {
    for (const QSize size : {QSize(0, 0), QSize(6, 0), QSize(0, 6)}) {
        PixelSurface surface(size.width(), size.height());
        const std::vector<quint32> before = pixelsOf(surface);
        surface.line({0, 0}, {5, 0}, 1);
        surface.line({0, 0}, {0, 5}, 1);
        surface.pset({0, 0}, 1);
        surface.fill({0, 0, 5, 5}, 1);
        surface.clearAround({{1, 1, 2, 2}});
        surface.clear();
        EXPECT_EQ(pixelsOf(surface), before) << size.width();
        EXPECT_TRUE(surface.takeChange().isEmpty()) << size.width();
    }
}

TEST(PixelSurface, drawingThatPaintsNothing_leavesEachPixelAsItIs) {
    PixelSurface surface(10, 8);
    for (int y = 0; y < 8; ++y) {
        surface.fill({0, y, 10, 1}, static_cast<quint32>(y + 1) * 0x010203U);
    }
    surface.takeChange();
    const std::vector<quint32> before = pixelsOf(surface);
    surface.line({4, 4}, {4, 4}, 0x00ABCDEF);
    surface.line({2, 2}, {5, 5}, 0x00ABCDEF);
    surface.line({10, 0}, {10, 8}, 0x00ABCDEF);
    surface.line({0, -1}, {10, -1}, 0x00ABCDEF);
    surface.pset({-1, 3}, 0x00ABCDEF);
    surface.pset({3, 8}, 0x00ABCDEF);
    surface.fill({3, 3, 0, 4}, 0x00ABCDEF);
    surface.fill({3, 3, 4, -1}, 0x00ABCDEF);
    surface.fill({-5, -5, 5, 20}, 0x00ABCDEF);
    EXPECT_EQ(pixelsOf(surface), before);
    EXPECT_TRUE(surface.takeChange().isEmpty());
}

TEST(PixelSurface, clearedAroundAnArea_keepsThatAreaAlone) {
    PixelSurface surface(10, 8);
    surface.fill(surface.bounds(), 0x00FFFFFF);
    surface.clearAround({{3, 2, 4, 5}});
    EXPECT_EQ(litPixels(surface), 20);
    EXPECT_EQ(surface.pixel(3, 2), 0x00FFFFFFU);
    EXPECT_EQ(surface.pixel(6, 6), 0x00FFFFFFU);
    surface.clearAround({});
    EXPECT_EQ(litPixels(surface), 0);
}

TEST(PixelSurface, clearedAroundTwoAreas_keepsBoth) {
    PixelSurface surface(10, 8);
    surface.fill(surface.bounds(), 0x00FFFFFF);
    surface.clearAround({{1, 1, 4, 2}, {-3, 5, 5, 9}});
    EXPECT_EQ(litPixels(surface), 8 + 2 * 3);
    EXPECT_EQ(surface.pixel(4, 2), 0x00FFFFFFU);
    EXPECT_EQ(surface.pixel(1, 7), 0x00FFFFFFU);
}

TEST(PixelSurface, wipeAndChangeOfSize_takeAnotherGeneration) {
    PixelSurface surface(10, 8);
    const quint64 first = surface.generation();
    surface.fill(surface.bounds(), 0x00FFFFFF);
    EXPECT_EQ(surface.generation(), first);
    surface.clear();
    const quint64 second = surface.generation();
    EXPECT_NE(second, first);
    surface.resize(10, 8, 2.0);
    EXPECT_NE(surface.generation(), second);
}

TEST(PixelSurface, smallerAndLargerByASixteenth_keepItsMemory) {
    PixelSurface surface(320, 320);
    const quint32 *memory = surface.deviceLine(0);
    for (const int size : {300, 330, 320, 336}) {
        surface.resize(size, size, 1.0);
        EXPECT_EQ(surface.deviceLine(0), memory) << size;
        surface.clear();
        EXPECT_EQ(surface.takeChange(), surface.bounds()) << size;
    }
}

struct ScrollCase {
    const char *name;
    int rows;
    std::vector<int> expected; // of rows 1 to 6
};

TEST(PixelSurface, scrolled_movesTheRowsOfItsAreaAtEveryScale) {
    const ScrollCase cases[] = {{"down", 2, {1, 2, 1, 2, 3, 4}},
                                {"up", -2, {3, 4, 5, 6, 5, 6}},
                                {"not at all", 0, {1, 2, 3, 4, 5, 6}},
                                {"by all its rows", 6, {1, 2, 3, 4, 5, 6}}};
    for (const ScrollCase &c : cases) {
        for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0}) {
            PixelSurface found(10, 8, scale);
            PixelSurface expected(10, 8, scale);
            for (int y = 0; y < 8; ++y) {
                found.fill({0, y, 10, 1}, static_cast<quint32>(y));
                expected.fill({0, y, 10, 1}, static_cast<quint32>(y));
            }
            for (int y = 1; y <= 6; ++y) {
                const int row = c.expected[static_cast<std::size_t>(y - 1)];
                expected.fill({3, y, 4, 1}, static_cast<quint32>(row));
            }
            found.scroll({3, 1, 4, 6}, c.rows);
            EXPECT_EQ(pixelsOf(found), pixelsOf(expected)) << c.name << ", " << scale;
        }
    }
}

TEST(PixelSurface, changes_areBoundedUntilTheyAreTaken) {
    PixelSurface surface(60, 40);
    EXPECT_EQ(surface.takeChange(), surface.bounds());
    EXPECT_TRUE(surface.takeChange().isEmpty());
    surface.pset({2, 3}, 1);
    EXPECT_EQ(surface.takeChange(), QRect(2, 3, 1, 1));
    surface.pset({20, 30}, 1);
    surface.line({50, 5}, {80, 5}, 1);
    EXPECT_EQ(surface.takeChange(), QRect(20, 5, 40, 26));
}

} // namespace
} // namespace veldron
