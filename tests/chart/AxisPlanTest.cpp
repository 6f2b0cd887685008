// SPDX-License-Identifier: MIT
#include "chart/AxisPlan.h"

#include "chart/ChartColours.h"
#include "common/UntrappedError.h"
#include "tests/chart/WholeHertz.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace veldron {
namespace {

constexpr quint32 kAxis = ChartColours::kAxis;
constexpr quint32 kFrame = ChartColours::kFrame;

// A chart of 660 x 400 whose labels are 7 pixels a character.
class Axes : public testing::Test {
protected:
    AxisPlan plan(DisplayTypeCode type = DisplayTypeCode::Trace) {
        return AxisPlan::of({ChartLayout::of(width, height, type, 0.5F), grid, scale, type, update,
                             interval, nextRow, firstRow, [](const QString &text) {
                                 return static_cast<int>(text.size()) * 7;
                             }});
    }
    static std::vector<PlannedText> textsAt(const AxisPlan &plan, int x) {
        std::vector<PlannedText> result;
        std::copy_if(plan.texts.begin(), plan.texts.end(), std::back_inserter(result),
                     [x](const PlannedText &text) { return text.at.x() == x; });
        return result;
    }
    static std::vector<int> rowsOfTicks(const AxisPlan &plan, int x) {
        std::vector<int> rows;
        for (const PlannedLine &line : plan.lines) {
            if (line.from.x() == x && line.to == QPoint(39, line.from.y())) {
                rows.push_back(line.from.y());
            }
        }
        return rows;
    }
    // The only upright lines of four pixels.
    static qsizetype frequencyTicks(const AxisPlan &plan) {
        return std::count_if(plan.lines.begin(), plan.lines.end(), [](const PlannedLine &line) {
            return line.from.x() == line.to.x() && std::abs(line.from.y() - line.to.y()) == 4;
        });
    }
    // The only texts that are neither a whole number of dB nor a time.
    static qsizetype frequencyLabels(const AxisPlan &plan) {
        return std::count_if(plan.texts.begin(), plan.texts.end(), [](const PlannedText &text) {
            return text.text.contains(QLatin1Char('.'));
        });
    }
    static bool has(const AxisPlan &plan, const PlannedLine &line) {
        return std::count(plan.lines.begin(), plan.lines.end(), line) == 1;
    }

    int width = 660;
    int height = 400;
    BinGrid grid;
    LevelScale scale;
    qint32 update = 1;
    float interval = 1.0F;
    float nextRow = 43200.0F;
    qint32 firstRow = 0;
};

using AxisPlanTest = Axes;

TEST_F(AxisPlanTest, plotFrame_isBrightAtLeftAndBottomAndGreyAtTopAndRight) {
    const AxisPlan axes = plan();
    EXPECT_TRUE(has(axes, {{39, 371}, {39, 10}, kAxis}));
    EXPECT_TRUE(has(axes, {{39, 371}, {645, 371}, kAxis}));
    EXPECT_TRUE(has(axes, {{39, 10}, {645, 10}, kFrame}));
    EXPECT_TRUE(has(axes, {{645, 10}, {645, 371}, kFrame}));
}

struct SpacingCase {
    int height;
    int spacing;
};

TEST_F(AxisPlanTest, levelTicks_areSpacedByThePixelsPerTenDecibels) {
    const SpacingCase cases[] = {{130, 10}, {91, 10}, {90, 20}, {60, 20}, {43, 20},
                                 {42, 30},  {19, 30}, {18, 0},  {15, 0}};
    for (const SpacingCase &c : cases) {
        EXPECT_EQ(AxisPlan::levelTickSpacing(c.height, 60), c.spacing) << c.height;
    }
    EXPECT_THROW(static_cast<void>(AxisPlan::levelTickSpacing(60, 0)), UntrappedError);
}

TEST_F(AxisPlanTest, levelTicks_standEverySixtyPixelsWithTheirLabels) {
    const AxisPlan axes = plan();
    EXPECT_EQ(rowsOfTicks(axes, 35), std::vector<int>({370, 310, 250, 190, 130, 70, 10}));
    auto labels = textsAt(axes, 5);
    ASSERT_EQ(labels.size(), 8U); // the first frequency's label begins there, too
    labels.pop_back();
    EXPECT_EQ(labels.front(), (PlannedText{{5, 362}, QStringLiteral("-90"), kAxis}));
    EXPECT_EQ(labels.back(), (PlannedText{{5, 2}, QStringLiteral("-30"), kAxis}));
}

TEST_F(AxisPlanTest, waterfallFrame_isAChain) {
    const AxisPlan axes = plan(DisplayTypeCode::TraceAndWaterfall);
    EXPECT_TRUE(has(axes, {{39, 395}, {39, 204}, kAxis}));
    EXPECT_TRUE(has(axes, {{39, 204}, {645, 204}, kAxis}));
    EXPECT_TRUE(has(axes, {{39, 395}, {645, 395}, kFrame}));
    EXPECT_TRUE(has(axes, {{645, 204}, {645, 396}, kFrame}));
}

struct TimeCase {
    qint32 update;
    int shortTicks;
    int labelled;
};

TEST_F(AxisPlanTest, timeTicks_areSpacedByTheRowInterval) {
    const TimeCase cases[] = {{1, 10, 60},     {2, 60, 120},    {4, 60, 120},    {5, 60, 300},
                              {9, 60, 300},    {10, 300, 600},  {29, 300, 600},  {30, 300, 1800},
                              {59, 300, 1800}, {60, 600, 1800}, {999, 600, 1800}};
    for (const TimeCase &c : cases) {
        EXPECT_EQ(AxisPlan::timeSpacing(c.update).shortTicks, c.shortTicks) << c.update;
        EXPECT_EQ(AxisPlan::timeSpacing(c.update).labelledTicks, c.labelled) << c.update;
    }
}

TEST_F(AxisPlanTest, timeLabels_standOnWholeMinutesDownThePicture) {
    nextRow = 43225.0F; // 25 seconds past noon: the minute is 25 rows down
    const AxisPlan axes = plan(DisplayTypeCode::TraceAndWaterfall);
    const auto labels = textsAt(axes, 0);
    ASSERT_EQ(labels.size(), 3U);
    EXPECT_EQ(labels[0], (PlannedText{{0, 205 + 25 - 8}, QStringLiteral("12:00"), kAxis}));
    EXPECT_EQ(labels[1], (PlannedText{{0, 205 + 85 - 8}, QStringLiteral("11:59"), kAxis}));
    EXPECT_EQ(labels[2].text, QStringLiteral("11:58"));
    EXPECT_EQ(rowsOfTicks(axes, 34), std::vector<int>({230, 290, 350}));
    const auto all = rowsOfTicks(axes, 35);
    EXPECT_EQ(std::count(all.begin(), all.end(), 210), 1);
    EXPECT_EQ(std::count(all.begin(), all.end(), 220), 1);
}

TEST_F(AxisPlanTest, timeLabelsAcrossMidnight_nameTheDayBefore) {
    nextRow = 30.0F;
    const auto labels = textsAt(plan(DisplayTypeCode::TraceAndWaterfall), 0);
    ASSERT_GE(labels.size(), 2U);
    EXPECT_EQ(labels[0].text, QStringLiteral("00:00"));
    EXPECT_EQ(labels[1].text, QStringLiteral("23:59"));
}

TEST_F(AxisPlanTest, viewScrolledBack_movesTheTicksUp) {
    nextRow = 43225.0F;
    firstRow = 10;
    const auto labels = textsAt(plan(DisplayTypeCode::TraceAndWaterfall), 0);
    ASSERT_FALSE(labels.empty());
    EXPECT_EQ(labels[0], (PlannedText{{0, 205 + 15 - 8}, QStringLiteral("12:00"), kAxis}));
}

TEST_F(AxisPlanTest, viewScrolledBackOverMidnight_beginsItsTicksAboveTheWaterfall) {
    // The top row is 25 seconds before midnight, and the remainder of a negative time is negative:
    // the first marks stand over the waterfall, which is odd and meant.
    nextRow = 30.0F;
    firstRow = 55;
    const AxisPlan axes = plan(DisplayTypeCode::TraceAndWaterfall);
    EXPECT_EQ(rowsOfTicks(axes, 34), std::vector<int>({205 - 25, 240, 300, 360}));
    const std::vector<int> all = rowsOfTicks(axes, 35);
    const auto first = std::find_if(all.begin(), all.end(), [](int row) {
        return row > 170; // those of the level axis end there
    });
    ASSERT_EQ(all.end() - first, 20);
    EXPECT_EQ(*first, 205 - 5);
    EXPECT_EQ(all.back(), 390);
    const auto labels = textsAt(axes, 0);
    ASSERT_EQ(labels.size(), 4U);
    EXPECT_EQ(labels[0], (PlannedText{{0, 180 - 8}, QStringLiteral("00:00"), kAxis}));
    EXPECT_EQ(labels[1], (PlannedText{{0, 240 - 8}, QStringLiteral("23:59"), kAxis}));
}

TEST_F(AxisPlanTest, rowIntervalOfZero_hasNoTimeTicks) {
    interval = 0.0F;
    EXPECT_TRUE(textsAt(plan(DisplayTypeCode::TraceAndWaterfall), 0).empty());
}

TEST_F(AxisPlanTest, rowIntervalOfManyMinutes_stepsOnePixelAtLeast) {
    update = 1;
    interval = 1000.0F;
    nextRow = 0.0F;
    EXPECT_EQ(rowsOfTicks(plan(DisplayTypeCode::TraceAndWaterfall), 34).size(), 190U);
}

TEST_F(AxisPlanTest, timeLabels_leaveOutThoseThatWouldTouchTheOneBefore) {
    update = 1; // a labelled tick each minute
    nextRow = 0.0F;
    for (const float seconds : {1.0F, 4.0F, 5.0F, 10.0F, 1000.0F}) {
        interval = seconds;
        const AxisPlan axes = plan(DisplayTypeCode::TraceAndWaterfall);
        const auto labels = textsAt(axes, 0);
        ASSERT_GT(labels.size(), 1U);
        for (std::size_t i = 1; i < labels.size(); ++i) {
            EXPECT_GT(labels[i].at.y() - labels[i - 1].at.y(), 13) << seconds;
        }
        EXPECT_GE(rowsOfTicks(axes, 34).size(), labels.size()) << seconds;
    }
    interval = 4.0F; // 15 rows apart: all of them have room
    EXPECT_EQ(textsAt(plan(DisplayTypeCode::TraceAndWaterfall), 0).size(),
              rowsOfTicks(plan(DisplayTypeCode::TraceAndWaterfall), 34).size());
}

struct CountCase {
    int width;
    int labels;
};

TEST_F(AxisPlanTest, frequencyLabels_wantOneHundredAndTwentyPixels) {
    const CountCase cases[] = {{60, 0}, {61, 1}, {360, 3}, {605, 5}, {180, 2}};
    for (const CountCase &c : cases) {
        EXPECT_EQ(AxisPlan::frequencyLabelCount(c.width), c.labels) << c.width;
    }
}

struct StepCase {
    qint64 span;
    int labels;
    qint64 step;
};

TEST_F(AxisPlanTest, frequencySteps_areRoundedUpInTheSeriesOneTwoFive) {
    const StepCase cases[] = {
        {10000000, 5, 2000000},  {10000000, 3, 5000000}, {10000000, 10, 1000000},
        {10000000, 9, 2000000},  {10000000, 4, 5000000}, {10000000, 1, 10000000},
        {11000000, 2, 10000000}, {3000, 3, 1000},        {500, 1, 500}};
    for (const StepCase &c : cases) {
        EXPECT_EQ(AxisPlan::frequencyStep(hz(c.span), c.labels), hz(c.step))
            << c.span << " / " << c.labels;
    }
}

TEST_F(AxisPlanTest, startOnAMultipleOfTheStep_isTheFirstTick) {
    EXPECT_EQ(AxisPlan::firstFrequency(hz(1000000), hz(1000000)), hz(1000000));
    EXPECT_EQ(AxisPlan::firstFrequency(hz(1000001), hz(1000000)), hz(2000000));
    EXPECT_EQ(AxisPlan::firstFrequency(Hertz::fromUnits(10000005000), hz(1000000)), hz(1000000));
    EXPECT_EQ(AxisPlan::firstFrequency(hz(-4500000), hz(1000000)), hz(-4000000));
}

TEST_F(AxisPlanTest, frequencyAxis_hasTicksAndLabelsEveryTwoMegahertz) {
    const AxisPlan axes = plan(DisplayTypeCode::TraceAndWaterfall);
    EXPECT_TRUE(axes.placesMarker);
    EXPECT_TRUE(has(axes, {{161, 174}, {161, 170}, kAxis})); // 2 MHz: 40 + 121
    EXPECT_TRUE(has(axes, {{161, 201}, {161, 205}, kAxis}));
    const auto label = textsAt(axes, 161 - 35);
    ASSERT_EQ(label.size(), 1U);
    EXPECT_EQ(label[0].text, QStringLiteral("2.000.000"));
    EXPECT_EQ(label[0].at.y(), 180);
    EXPECT_EQ(axes.texts.back().text, QStringLiteral("10.000.000"));
    // Column 645 would print past the edge: the label moves to 80 pixels before it, or behind the
    // one before.
    EXPECT_EQ(axes.texts.back().at.x(), 580);
}

TEST_F(AxisPlanTest, lastLabelOnTopOfTheOneBefore_movesBehindIt) {
    grid.setScanStop(hz(3500000000));
    grid.setScanStart(hz(3494000000));
    width = 360;
    const AxisPlan axes = plan();
    const PlannedText &last = axes.texts.back();
    const PlannedText &before = axes.texts[axes.texts.size() - 2];
    EXPECT_EQ(before, (PlannedText{{208, 380}, QStringLiteral("3498.000.000"), kAxis}));
    // 80 pixels before the edge would be 280, but the one before goes on to 292.
    EXPECT_EQ(last, (PlannedText{{302, 380}, QStringLiteral("3500.000.000"), kAxis}));
}

TEST_F(AxisPlanTest, firstLabelNearTheRightEdge_keepsClearOfTheLastTicksRow) {
    // One label alone, at the right edge: the level ticks ended in row 10 and time ticks at 395.
    grid.setScanStart(hz(100));
    grid.setScanStop(hz(10000000));
    width = 155;
    const AxisPlan narrow = plan(DisplayTypeCode::TraceAndWaterfall);
    ASSERT_TRUE(narrow.placesMarker);
    EXPECT_EQ(narrow.texts.back().text, QStringLiteral("10.000.000"));
    EXPECT_GE(narrow.texts.back().at.x(), 395 + 10);
    EXPECT_EQ(plan(DisplayTypeCode::Trace).texts.back().at.x(), 155 - 80);
}

TEST_F(AxisPlanTest, plotOfSixtyPixels_hasNoFrequencyAxisAndLeavesTheMarker) {
    for (const DisplayTypeCode type :
         {DisplayTypeCode::Trace, DisplayTypeCode::TraceAndWaterfall}) {
        width = 115;
        EXPECT_FALSE(plan(type).placesMarker) << static_cast<int>(type);
        EXPECT_EQ(frequencyTicks(plan(type)), 0) << static_cast<int>(type);
        EXPECT_EQ(frequencyLabels(plan(type)), 0) << static_cast<int>(type);
        width = 116;
        EXPECT_TRUE(plan(type).placesMarker) << static_cast<int>(type);
        EXPECT_GT(frequencyTicks(plan(type)), 0) << static_cast<int>(type);
        EXPECT_GT(frequencyLabels(plan(type)), 0) << static_cast<int>(type);
    }
}

TEST_F(AxisPlanTest, scanWithoutSpan_hasNoFrequencyAxis) {
    grid.setScanStart(hz(3500000000));
    EXPECT_FALSE(plan().placesMarker);
}

} // namespace
} // namespace veldron
