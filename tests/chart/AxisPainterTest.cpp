// SPDX-License-Identifier: MIT
#include "chart/AxisPainter.h"

#include "chart/BinGrid.h"
#include "chart/ChartLayout.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace veldron {
namespace {

// The same plans painted piece by piece and each time whole. Printing lightens what it touches, so
// that a label printed over itself shows.
class BothWays : public testing::Test {
protected:
    static QRect area(const PlannedText &text) {
        return {text.at.x() - 1, text.at.y() - 1, static_cast<int>(text.text.size()) * 7 + 2, 15};
    }
    static void print(PixelSurface &surface, const std::vector<PlannedText> &texts) {
        for (const PlannedText &text : texts) {
            const QRect inside = area(text) & surface.bounds();
            for (int y = inside.top(); y <= inside.bottom(); ++y) {
                for (int x = inside.left(); x <= inside.right(); ++x) {
                    surface.pset({x, y}, surface.pixel(x, y) + 0x000101U);
                }
            }
        }
    }
    AxisPlan plan() const {
        return AxisPlan::of({layout, grid, scale, DisplayTypeCode::TraceAndWaterfall, 1, 1.0F,
                             nextRow, firstRow, [](const QString &text) {
                                 return static_cast<int>(text.size()) * 7;
                             }});
    }
    [[nodiscard]] std::vector<QRect> inside() const {
        return {layout.plotInside(), layout.fallArea()};
    }
    void begin() { painter.paintWhole(pieces, plan(), inside()); }
    bool replace(const QRect &erased = {}) {
        return painter.replace(pieces, plan(), {erased}, inside());
    }
    // Lines of device pixels that differ from a picture painted whole.
    [[nodiscard]] int differences() const {
        PixelSurface whole(width, height, density);
        AxisPainter({area, print}).paintWhole(whole, plan(), inside());
        int wrong = 0;
        for (int row = 0; row < whole.deviceHeight(); ++row) {
            const quint32 *line = whole.deviceLine(row);
            wrong += std::equal(line, line + whole.deviceWidth(), pieces.deviceLine(row)) ? 0 : 1;
        }
        return wrong;
    }
    void useDensity(double newDensity) {
        density = newDensity;
        pieces = PixelSurface(width, height, density);
    }

    static constexpr int width = 260;
    static constexpr int height = 300;
    double density = 1.0;
    ChartLayout layout = ChartLayout::of(width, height, DisplayTypeCode::TraceAndWaterfall, 0.5F);
    BinGrid grid;
    LevelScale scale;
    float nextRow = 43225.0F;
    qint32 firstRow = 0;
    PixelSurface pieces{width, height};
    AxisPainter painter{{area, print}};
};

using AxisPainterTest = BothWays;

TEST_F(AxisPainterTest, rowAfterRow_leavesWhatAWholePaintMakes) {
    for (const double each : {1.0, 1.25, 1.5, 1.75, 2.0}) {
        useDensity(each);
        begin();
        for (int row = 0; row < 40; ++row) {
            nextRow += 3.0F;
            EXPECT_TRUE(replace()) << row;
            ASSERT_EQ(differences(), 0) << each << ", " << row;
        }
    }
}

TEST_F(AxisPainterTest, rowClosed_touchesTheTimeAxisAlone) {
    begin();
    pieces.takeChange();
    nextRow += 1.0F;
    EXPECT_TRUE(replace());
    const QRect touched = pieces.takeChange();
    EXPECT_LT(touched.right(), layout.plotLeft - 1);
    EXPECT_GE(touched.top(), layout.fallTop - 9);
}

TEST_F(AxisPainterTest, samePlan_touchesNothing) {
    begin();
    pieces.takeChange();
    EXPECT_TRUE(replace());
    EXPECT_TRUE(pieces.takeChange().isEmpty());
}

TEST_F(AxisPainterTest, wipedSurface_isNoticedByItself) {
    begin();
    pieces.clear();
    EXPECT_FALSE(replace());
}

TEST_F(AxisPainterTest, erasedPixelsOnTheFrame_areDrawnAgain) {
    begin();
    const QRect stray(layout.plotLeft, 4, layout.plotWidth(), 7);
    pieces.fill(stray, 0x00ABCDEF);
    EXPECT_TRUE(replace(stray));
    EXPECT_EQ(differences(), 0);
}

TEST_F(AxisPainterTest, differenceThatReachesPlotOrWaterfall_isLeftToAWholePaint) {
    begin();
    scale.start = -32000; // labels as wide as the margin
    EXPECT_FALSE(replace());
    EXPECT_FALSE(replace({50, 50, 10, 10}));
}

TEST_F(AxisPainterTest, viewScrolledBackOverMidnight_isRightWhicheverWayItIsPainted) {
    nextRow = 30.0F;
    begin();
    for (firstRow = 0; firstRow < 120; firstRow += 5) {
        if (!replace()) {
            begin();
        }
        ASSERT_EQ(differences(), 0) << firstRow;
    }
}

TEST_F(AxisPainterTest, areasThatCutTheSameLabels_printEachOnce) {
    begin();
    const std::vector<QRect> strays{
        {40, layout.plotBottom + 1, layout.plotWidth(), layout.fallTop - layout.plotBottom - 1},
        {},
        {60, layout.plotBottom + 12, 90, 3}};
    for (const QRect &stray : strays) {
        pieces.fill(stray, 0x00345678);
    }
    EXPECT_TRUE(painter.replace(pieces, plan(), strays, inside()));
    EXPECT_EQ(differences(), 0);
}

} // namespace
} // namespace veldron
