// SPDX-License-Identifier: MIT
#include "chart/AxisPlan.h"

#include "chart/ChartColours.h"
#include "common/Numbers.h"
#include "common/UntrappedError.h"
#include "utilities/NumberTexts.h"
#include "utilities/TimesOfDay.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace veldron {

namespace {

using ChartColours::kAxis;
using ChartColours::kFrame;

constexpr int kLabelPitch = 120;   // pixels that a frequency label wants
constexpr int kLabelRoom = 80;     // pixels that the last label needs at the right edge
constexpr int kLabelDistance = 10; // pixels between two labels there
constexpr int kHalfLabel = 35;
constexpr int kHalfLine = 8;

class Planner {
public:
    explicit Planner(const AxisInput &input) : m_in(input), m_layout(input.layout) {}

    AxisPlan plan() {
        // Frequencies last: their axis begins with the row of the tick before it, see
        // frequencyAxis().
        plotFrame();
        levelAxis();
        if (m_in.displayType == DisplayTypeCode::TraceAndWaterfall) {
            waterfallFrame();
            timeAxis();
        }
        m_plan.placesMarker = frequencyAxis();
        return std::move(m_plan);
    }

private:
    void line(QPoint from, QPoint to, quint32 colour) {
        m_plan.lines.push_back({from, to, colour});
    }
    void text(QPoint at, const QString &label) { m_plan.texts.push_back({at, label, kAxis}); }

    void plotFrame() {
        const QPoint upperLeft(m_layout.plotLeft - 1, m_layout.plotTop);
        const QPoint lowerLeft(m_layout.plotLeft - 1, m_layout.plotBottom + 1);
        const QPoint upperRight(m_layout.plotRight, m_layout.plotTop);
        const QPoint lowerRight(m_layout.plotRight, m_layout.plotBottom + 1);
        line(lowerLeft, upperLeft, kAxis);
        line(lowerLeft, lowerRight, kAxis);
        line(upperLeft, upperRight, kFrame);
        line(upperRight, lowerRight, kFrame);
    }

    void levelAxis() {
        const int height = m_layout.plotBottom - m_layout.plotTop;
        const int spacing = AxisPlan::levelTickSpacing(height, m_in.scale.span);
        for (int d = 0; spacing > 0 && d <= m_in.scale.span; d += spacing) {
            // The fraction of LevelScale::rowOf(), rounded once, so that a tick stands at its
            // level.
            m_row = static_cast<int>(Numbers::divideHalfEven(
                qint64{-height} * d + qint64{m_layout.plotBottom} * m_in.scale.span,
                m_in.scale.span));
            line({m_layout.plotLeft - 5, m_row}, {m_layout.plotLeft - 1, m_row}, kAxis);
            text({ChartMargins::kLeft - 35, m_row - kHalfLine},
                 QString::number(m_in.scale.start + d));
        }
    }

    void waterfallFrame() {
        const int left = m_layout.plotLeft - 1;
        const int top = m_layout.fallTop - 1;
        line({left, m_layout.fallBottom}, {left, top}, kAxis);
        line({left, top}, {m_layout.plotRight, top}, kAxis);
        line({left, m_layout.fallBottom}, {m_layout.plotRight, m_layout.fallBottom}, kFrame);
        line({m_layout.plotRight, top}, {m_layout.plotRight, m_layout.fallBottom + 1}, kFrame);
    }

    // Ticks stand at whole multiples of the spacing on the clock, for \a mark to draw.
    template <typename Mark>
    void timeTicks(int spacing, Mark mark) {
        const double interval = static_cast<double>(m_in.rowInterval);
        const auto top = Numbers::roundTo<qint64>(static_cast<double>(m_in.nextRowTime) -
                                                  interval * m_in.firstRow);
        m_row = Numbers::roundTo<qint32>(static_cast<double>(top % spacing) / interval +
                                         m_layout.fallTop);
        while (m_row < m_layout.fallBottom) {
            mark(m_row);
            // One row on at least: where a spacing is less than half a row this would never end.
            m_row = std::max(Numbers::roundTo<qint32>(m_row + spacing / interval), m_row + 1);
        }
    }

    void timeAxis() {
        if (m_in.rowInterval <= 0.0F) {
            return;
        }
        const AxisPlan::TimeSpacing spacing = AxisPlan::timeSpacing(m_in.update);
        timeTicks(spacing.shortTicks, [this](int y) {
            line({m_layout.plotLeft - 5, y}, {m_layout.plotLeft - 1, y}, kAxis);
        });
        // A label that would touch the one above is left out; its tick stays.
        int lowest = std::numeric_limits<int>::min();
        timeTicks(spacing.labelledTicks, [this, &lowest](int y) {
            line({m_layout.plotLeft - 6, y}, {m_layout.plotLeft - 1, y}, kAxis);
            const float seconds =
                m_in.nextRowTime -
                m_in.rowInterval * static_cast<float>(y + m_in.firstRow - m_layout.fallTop);
            if (const int top = y - kHalfLine; top > lowest) {
                text({ChartMargins::kLeft - 40, top}, GeneralUtilities::TimeText(seconds, false));
                lowest = top + m_in.textHeight;
            }
        });
    }

    bool frequencyAxis() {
        const Hertz start = m_in.grid.scanStart();
        const Hertz stop = m_in.grid.scanStop();
        const int count = AxisPlan::frequencyLabelCount(m_layout.plotWidth());
        if (stop <= start || count < 1) {
            return false;
        }
        const Hertz step = AxisPlan::frequencyStep(stop - start, count);
        // A column is wanted here, the right end of the label before, and before the first label it
        // begins with the row of the last time or level tick. That is odd, and shows only in a
        // single label at the right edge; its place is fixed by it all the same.
        int lastEnd = m_row;
        for (Hertz f = AxisPlan::firstFrequency(start, step); f <= stop; f += step) {
            lastEnd = frequencyTick(f, lastEnd);
        }
        return true;
    }

    int frequencyTick(Hertz frequency, int lastEnd) {
        const int x = m_in.grid.columnOf(frequency, m_layout);
        line({x, m_layout.plotBottom + 4}, {x, m_layout.plotBottom}, kAxis);
        if (m_in.displayType == DisplayTypeCode::TraceAndWaterfall) {
            line({x, m_layout.fallTop - 4}, {x, m_layout.fallTop}, kAxis);
        }
        int left = std::max(x - kHalfLabel, 0);
        if (m_layout.scaleWidth - left < kLabelRoom) {
            left = std::max(m_layout.scaleWidth - kLabelRoom, lastEnd + kLabelDistance);
        }
        const QString label = GeneralUtilities::FrequencyText(frequency);
        text({left, m_layout.plotBottom + 10}, label);
        return left + m_in.textWidth(label);
    }

    const AxisInput &m_in;
    const ChartLayout &m_layout;
    AxisPlan m_plan;
    int m_row = 0;
};

} // namespace

AxisPlan AxisPlan::of(const AxisInput &input) {
    return Planner(input).plan();
}

int AxisPlan::levelTickSpacing(int plotHeight, int span) {
    if (span == 0) {
        throw UntrappedError(UntrappedError::Kind::DivideByZero,
                             QStringLiteral("The chart's level scale has no height."));
    }
    const double pixelsPerTen = plotHeight * 10.0 / span;
    if (pixelsPerTen > 15.0) {
        return 10;
    }
    if (pixelsPerTen > 7.0) {
        return 20;
    }
    return pixelsPerTen > 3.0 ? 30 : 0;
}

AxisPlan::TimeSpacing AxisPlan::timeSpacing(qint32 update) {
    struct Row {
        qint32 below;
        TimeSpacing spacing;
    };
    constexpr std::array<Row, 5> kRows{
        {{2, {10, 60}}, {5, {60, 120}}, {10, {60, 300}}, {30, {300, 600}}, {60, {300, 1800}}}};
    for (const Row &row : kRows) {
        if (update < row.below) {
            return row.spacing;
        }
    }
    return {600, 1800};
}

int AxisPlan::frequencyLabelCount(int plotWidth) {
    return static_cast<int>(Numbers::divideHalfEven(plotWidth, kLabelPitch));
}

Hertz AxisPlan::frequencyStep(Hertz span, int count) {
    // The largest power of ten that the raw spacing reaches; compared as products, exactly.
    qint64 power = 1;
    while (span.units() >= power * 10 * count) {
        power *= 10;
    }
    for (const qint64 factor : {1, 2, 5}) {
        if (span.units() <= factor * power * count) {
            return Hertz::fromUnits(factor * power);
        }
    }
    return Hertz::fromUnits(10 * power);
}

Hertz AxisPlan::firstFrequency(Hertz start, Hertz step) {
    const Hertz below = start - Hertz::fromWhole(1);
    return step * (Numbers::floorDivide(below.units(), step.units()) + 1);
}

} // namespace veldron
