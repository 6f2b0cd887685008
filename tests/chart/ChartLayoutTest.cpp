// SPDX-License-Identifier: MIT
#include "chart/ChartLayout.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

TEST(ChartLayout, traceOnly_fillsThePictureDownToTheLabels) {
    const ChartLayout layout = ChartLayout::of(660, 400, DisplayTypeCode::Trace, 0.5F);
    EXPECT_EQ(layout.plotLeft, 40);
    EXPECT_EQ(layout.plotRight, 645);
    EXPECT_EQ(layout.plotWidth(), 605);
    EXPECT_EQ(layout.plotTop, 10);
    EXPECT_EQ(layout.plotBottom, 370);
    EXPECT_EQ(layout.fallTop, 399);
    EXPECT_EQ(layout.fallBottom, 400);
}

TEST(ChartLayout, withWaterfall_isDividedAtTheSplit) {
    const ChartLayout layout = ChartLayout::of(660, 400, DisplayTypeCode::TraceAndWaterfall, 0.5F);
    EXPECT_EQ(layout.splitY, 200);
    EXPECT_EQ(layout.plotBottom, 170);
    EXPECT_EQ(layout.fallTop, 205);
    EXPECT_EQ(layout.fallBottom, 395);
    EXPECT_EQ(layout.fallHeight(), 190);
}

TEST(ChartLayout, splitRow_roundsTiesToEven) {
    EXPECT_EQ(ChartLayout::of(660, 401, DisplayTypeCode::TraceAndWaterfall, 0.5F).splitY, 200);
    EXPECT_EQ(ChartLayout::of(660, 403, DisplayTypeCode::TraceAndWaterfall, 0.5F).splitY, 202);
}

struct SmallCase {
    int width;
    int height;
    DisplayTypeCode type;
    bool drawable;
};

TEST(ChartLayout, pictureTooSmall_isNotDrawable) {
    const SmallCase cases[] = {
        {56, 41, DisplayTypeCode::Trace, true},
        {55, 41, DisplayTypeCode::Trace, false},
        {56, 40, DisplayTypeCode::Trace, false},
        {56, 200, DisplayTypeCode::TraceAndWaterfall, true},
        {56, 80, DisplayTypeCode::TraceAndWaterfall, false},
        {660, 0, DisplayTypeCode::TraceAndWaterfall, false},
    };
    for (const SmallCase &c : cases) {
        EXPECT_EQ(ChartLayout::of(c.width, c.height, c.type, 0.5F).isDrawable(), c.drawable)
            << c.width << " x " << c.height << ", type " << static_cast<int>(c.type);
    }
}

TEST(ChartLayout, forThePointerWithoutWaterfall_areaAndSplitLieBelowThePicture) {
    const ChartLayout layout =
        ChartLayout::of(660, 400, DisplayTypeCode::Trace, 0.5F).forPointer(DisplayTypeCode::Trace);
    EXPECT_EQ(layout.fallTop, 400);
    EXPECT_EQ(layout.fallBottom, 401);
    EXPECT_EQ(layout.splitY, 406);
}

struct TextCase {
    const char *name;
    int column;
    int width;
    int overhang;
    int left;
};

TEST(ChartLayout, text_isCentredOnItsColumnAndKeptInsideThePlot) {
    const ChartLayout layout = ChartLayout::of(695, 400, DisplayTypeCode::Trace, 0.5F);
    const TextCase cases[] = {
        {"centred", 300, 100, 0, 250},
        {"half down to even", 301, 101, 0, 250},
        {"half up to even", 300, 101, 0, 250},
        {"half up to the next even", 302, 101, 0, 252},
        {"at the left limit", 90, 100, 0, 40},
        {"beyond the left limit", 45, 100, 0, 40},
        {"beyond the left limit, with overhang", 45, 100, 1, 39},
        {"inside the overhang", 89, 100, 1, 39},
        {"at the right limit", 630, 100, 0, 580},
        {"beyond the right limit", 680, 100, 0, 580},
        {"overhang is for the left alone", 680, 100, 1, 580},
        {"wider than the plot", 300, 700, 0, -20},
    };
    for (const TextCase &c : cases) {
        EXPECT_EQ(layout.textLeft(c.column, c.width, c.overhang), c.left) << c.name;
    }
}

TEST(ChartLayout, visibleRows_areWhatTheGapsLeave) {
    EXPECT_EQ(visibleFallRows(400, 0.5F), 190);
    EXPECT_EQ(visibleFallRows(400, 0.8F), 70);
    EXPECT_LT(visibleFallRows(400, 5.0F), 0);
}

} // namespace
} // namespace veldron
