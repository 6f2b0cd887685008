// SPDX-License-Identifier: MIT
#include "app/FormLayout.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

/// A form with a strip of panels that ends at 80, a transport of 40 and a status bar of 30.
FormLayout::Input form(QSize inside, bool transport) {
    return {inside, 80, 40, transport, 30, QSize(333, 222)};
}

TEST(FormLayout, hiddenTransport_leavesNoGap) {
    const FormLayout layout = FormLayout::of(form({1000, 700}, false));
    EXPECT_EQ(layout.picture2Top, 92);
    EXPECT_EQ(layout.chart, QRect(10, 92, 990, 700 - 92 - 30));
}

TEST(FormLayout, visibleTransport_movesTheChartDown) {
    const FormLayout layout = FormLayout::of(form({1000, 700}, true));
    EXPECT_EQ(layout.picture2Top, 92);
    EXPECT_EQ(layout.chart, QRect(10, 92 + 40 + 25, 990, 700 - 157 - 30));
}

TEST(FormLayout, severalSizes_chartTakesAllThatIsLeft) {
    for (const QSize inside : {QSize(640, 480), QSize(1024, 700), QSize(1920, 1080)}) {
        for (const bool transport : {false, true}) {
            const QRect chart = FormLayout::of(form(inside, transport)).chart;
            EXPECT_EQ(chart.left(), 10);
            EXPECT_EQ(chart.x() + chart.width(), inside.width());
            EXPECT_EQ(chart.y() + chart.height(), inside.height() - 30);
        }
    }
}

TEST(FormLayout, tooShortForTheChart_keepsItsHeight) {
    // 92 above and 30 below: with 122 nothing is left, with 123 one line is.
    EXPECT_EQ(FormLayout::of(form({1000, 122}, false)).chart, QRect(10, 92, 990, 222));
    EXPECT_EQ(FormLayout::of(form({1000, 123}, false)).chart, QRect(10, 92, 990, 1));
    EXPECT_EQ(FormLayout::of(form({1000, 0}, true)).chart.height(), 222);
}

TEST(FormLayout, tooNarrowForTheChart_keepsItsWidth) {
    EXPECT_EQ(FormLayout::of(form({10, 700}, false)).chart.width(), 333);
    EXPECT_EQ(FormLayout::of(form({11, 700}, false)).chart.width(), 1);
}

TEST(OpeningSize, largeScreen_givesTheSizeThatSuits) {
    EXPECT_EQ(openingSize({1920, 1040}, {700, 400}), QSize(1100, 760));
    EXPECT_EQ(openingSize({1116, 808}, {700, 400}), QSize(1100, 760));
}

TEST(OpeningSize, smallScreens_leaveRoomForTitleBarAndEdges) {
    for (const QSize screen : {QSize(1280, 720), QSize(1366, 768), QSize(1024, 600)}) {
        const QSize inside = openingSize(screen, {700, 400});
        EXPECT_EQ(inside.width(), qMin(1100, screen.width() - 16));
        EXPECT_EQ(inside.height(), screen.height() - 48);
    }
}

TEST(OpeningSize, screenWithoutRoom_givesTheSmallestForm) {
    EXPECT_EQ(openingSize({640, 480}, {700, 460}), QSize(700, 460));
    EXPECT_EQ(openingSize({0, 0}, {700, 460}), QSize(700, 460));
}

} // namespace
} // namespace veldron
