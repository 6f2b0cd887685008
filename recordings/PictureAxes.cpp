// SPDX-License-Identifier: MIT
#include "recordings/PictureAxes.h"

#include "chart/ChartColours.h"
#include "chart/ChartLayout.h"
#include "common/Numbers.h"
#include "common/TimeOfDay.h"
#include "utilities/NumberTexts.h"

#include <QDate>
#include <QTime>

#include <array>

namespace veldron {

namespace {

using Anchor = PictureAxes::Label::Anchor;
using ChartColours::kAxis;
using ChartColours::kFrame;

/// A date needs more room than the chart's times.
constexpr int kTimeRoom = 90;
constexpr int kCaptionRoom = 24;
/// Across, for a letter or digit of a caption.
constexpr int kLetterRoom = 7;
constexpr int kTimePitch = 40;
constexpr int kTick = 5;
/// The trace takes a third.
constexpr int kTraceShare = 3;

class Planner {
public:
    Planner(const PictureLayout &layout, const WaterfallRaster::Extent &extent)
        : m_layout(layout), m_extent(extent) {}

    PictureAxes plan(QSize size, const LevelScale &scale) {
        frame(m_layout.fall);
        frequencies();
        times();
        if (!m_layout.trace.isEmpty()) {
            frame(m_layout.trace);
            levels(scale);
        }
        caption(size);
        return std::move(m_axes);
    }

private:
    void line(QPoint from, QPoint to, quint32 colour) {
        m_axes.lines.push_back({from, to, colour});
    }

    void frame(const QRect &area) {
        const QRect around = area.adjusted(-1, -1, 1, 1);
        line(around.topLeft(), around.topRight() + QPoint(1, 0), kFrame);
        line(around.topRight(), around.bottomRight() + QPoint(0, 1), kFrame);
        line(around.topLeft(), around.bottomLeft() + QPoint(0, 1), kAxis);
        line(around.bottomLeft(), around.bottomRight() + QPoint(1, 0), kAxis);
    }

    void frequencies() {
        const QRect &area = m_layout.fall;
        const Hertz span = m_extent.high - m_extent.low;
        const int count = AxisPlan::frequencyLabelCount(area.width());
        if (span <= Hertz() || count < 1) {
            return;
        }
        const Hertz step = AxisPlan::frequencyStep(span, count);
        for (Hertz at = AxisPlan::firstFrequency(m_extent.low, step); at <= m_extent.high;
             at += step) {
            const int x =
                area.left() + static_cast<int>(Numbers::divideHalfEven(
                                  (at - m_extent.low).units() * (area.width() - 1), span.units()));
            line({x, area.bottom() + 2}, {x, area.bottom() + 2 + kTick}, kAxis);
            m_axes.labels.push_back({{x, area.bottom() + 3 * kTick},
                                     Anchor::Middle,
                                     GeneralUtilities::FrequencyText(at)});
        }
    }

    void times() {
        const QRect &area = m_layout.fall;
        const qint64 seconds = m_extent.end - m_extent.begin;
        const qint64 spacing = PictureAxes::timeSpacing(seconds, area.height());
        for (qint64 at = Numbers::floorDivide(m_extent.end - 1, spacing) * spacing;
             at >= m_extent.begin; at -= spacing) {
            const int y =
                area.top() + static_cast<int>((m_extent.end - 1 - at) * area.height() / seconds);
            line({area.left() - 1 - kTick, y}, {area.left() - 1, y}, kAxis);
            m_axes.labels.push_back(
                {{area.left() - 2 * kTick, y}, Anchor::Right, PictureAxes::timeText(at, spacing)});
            m_axes.timeRows.push_back(y);
        }
    }

    void levels(const LevelScale &scale) {
        const QRect &area = m_layout.trace;
        const int spacing = AxisPlan::levelTickSpacing(area.height(), scale.span);
        for (int level = 0; spacing > 0 && level <= scale.span; level += spacing) {
            const int y =
                scale.rowOf(scale.start + level - scale.offset, area.top(), area.bottom());
            line({area.left() - 1 - kTick, y}, {area.left() - 1, y}, kAxis);
            m_axes.labels.push_back({{area.left() - 2 * kTick, y},
                                     Anchor::Right,
                                     QStringLiteral("%1 dB").arg(scale.start + level)});
        }
    }

    void caption(QSize size) {
        const QString from = PictureAxes::timeText(m_extent.begin, 0);
        const QString both =
            from + QStringLiteral(" to ") + PictureAxes::timeText(m_extent.end - 1, 0);
        // The longest that has room.
        for (const QString &text :
             {both + QStringLiteral(", local time of the recording; Hz"), both, from, QString()}) {
            if (text.size() * kLetterRoom <= size.width()) {
                m_axes.labels.push_back(
                    {{size.width() / 2, kCaptionRoom / 2}, Anchor::Middle, text});
                return;
            }
        }
    }

    const PictureLayout &m_layout;
    const WaterfallRaster::Extent &m_extent;
    PictureAxes m_axes;
};

} // namespace

PictureLayout PictureLayout::of(QSize size, bool hasAxes, bool hasTrace) {
    QRect inside({0, 0}, size);
    if (hasAxes) {
        inside.adjust(kTimeRoom, kCaptionRoom, -3 * ChartMargins::kRight, -ChartMargins::kBottom);
    }
    PictureLayout layout{{}, inside};
    if (hasTrace) {
        layout.trace = inside;
        layout.trace.setHeight(inside.height() / kTraceShare);
        layout.fall.setTop(layout.trace.bottom() + 1 + 2 * ChartMargins::kSplitGap);
    }
    return layout;
}

PictureAxes PictureAxes::of(QSize size, const PictureLayout &layout,
                            const WaterfallRaster::Extent &extent, const LevelScale &scale) {
    return Planner(layout, extent).plan(size, scale);
}

qint64 PictureAxes::timeSpacing(qint64 seconds, int height) {
    constexpr std::array<qint64, 18> kSpacings{1,    2,    5,     10,    15,    30,
                                               60,   120,  300,   600,   900,   1800,
                                               3600, 7200, 10800, 21600, 43200, kSecondsPerDay};
    for (const qint64 spacing : kSpacings) {
        if (spacing * height >= seconds * kTimePitch) {
            return spacing;
        }
    }
    const qint64 days = seconds * kTimePitch / height / kSecondsPerDay + 1;
    return days * kSecondsPerDay;
}

QString PictureAxes::timeText(qint64 moment, qint64 spacing) {
    const auto second = static_cast<int>(moment % kSecondsPerDay);
    const QString date = QDate::fromJulianDay(moment / kSecondsPerDay).toString(Qt::ISODate);
    const QTime time = QTime(0, 0).addSecs(second);
    if (spacing == 0) {
        return date + QLatin1Char(' ') + time.toString(Qt::ISODate);
    }
    if (spacing >= kSecondsPerDay || second == 0) {
        return date;
    }
    return time.toString(spacing < 60 ? QStringLiteral("HH:mm:ss") : QStringLiteral("HH:mm"));
}

} // namespace veldron
