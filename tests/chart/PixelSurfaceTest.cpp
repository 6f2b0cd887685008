// SPDX-License-Identifier: MIT
#include "chart/PixelSurface.h"

#include <gtest/gtest.h>

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
    PixelSurface surface(0, 0);
    surface.line({0, 0}, {5, 0}, 1);
    surface.clear();
    EXPECT_EQ(surface.pixel(0, 0), 0U);
}

TEST(PixelSurface, clearedAroundAnArea_keepsThatAreaAlone) {
    PixelSurface surface(10, 8);
    surface.fill(surface.bounds(), 0x00FFFFFF);
    surface.clearAround({3, 2, 4, 5});
    EXPECT_EQ(litPixels(surface), 20);
    EXPECT_EQ(surface.pixel(3, 2), 0x00FFFFFFU);
    EXPECT_EQ(surface.pixel(6, 6), 0x00FFFFFFU);
    surface.clearAround({});
    EXPECT_EQ(litPixels(surface), 0);
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
