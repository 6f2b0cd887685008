// SPDX-License-Identifier: MIT
#pragma once

#include "chart/BinGrid.h"
#include "chart/ChartLayout.h"
#include "chart/LevelScale.h"

#include <QPoint>
#include <QString>

#include <functional>
#include <vector>

namespace veldron {

/// A horizontal or vertical line; its end point is not painted. The colour is 0x00BBGGRR.
struct PlannedLine {
    QPoint from;
    QPoint to;
    quint32 colour = 0;

    friend bool operator==(const PlannedLine &, const PlannedLine &) = default;
};

/// A text whose upper left corner is at \a at.
struct PlannedText {
    QPoint at;
    QString text;
    quint32 colour = 0;

    friend bool operator==(const PlannedText &, const PlannedText &) = default;
};

/// What the axes are worked out from.
struct AxisInput {
    ChartLayout layout;
    const BinGrid &grid;
    LevelScale scale;
    DisplayTypeCode displayType = DisplayTypeCode::Trace;
    /// Rows and their times, for the time axis of the waterfall.
    qint32 update = 0;        ///< picks the spacing of time ticks, in playback too
    float rowInterval = 0.0F; ///< seconds a row; 0 and less leaves the time ticks out
    float nextRowTime = 0.0F; ///< end of row 0
    qint32 firstRow = 0;      ///< row at the top of the waterfall
    std::function<int(const QString &)> textWidth;
    int textHeight = 13; ///< pixels
};

/// Frames, ticks and labels of the chart, in the order in which they are drawn: lines first.
struct AxisPlan {
    std::vector<PlannedLine> lines;
    std::vector<PlannedText> texts;
    /// False when the frequency axis had no room: the receive line and the marker then stay where
    /// they are.
    bool placesMarker = false;

    /// Of a layout that can be drawn. UntrappedError(DivideByZero) for a scale without height.
    [[nodiscard]] static AxisPlan of(const AxisInput &input);

    /// dB between level ticks of a plot \a plotHeight high: 10, 20 or 30, or 0 for none, by the
    /// pixels that 10 dB have. UntrappedError(DivideByZero) for a span of 0.
    [[nodiscard]] static int levelTickSpacing(int plotHeight, int span);
    /// Seconds between short and labelled time ticks.
    struct TimeSpacing {
        int shortTicks;
        int labelledTicks;
    };
    /// For rows of \a update seconds.
    [[nodiscard]] static TimeSpacing timeSpacing(qint32 update);
    /// Most frequency labels that fit, one for each 120 pixels. May be 0 or less in a narrow plot:
    /// then the axis has neither ticks nor labels.
    [[nodiscard]] static int frequencyLabelCount(int plotWidth);
    /// Spacing of \a count labels over \a span, rounded up in the series 1, 2, 5, 10. Both are
    /// above 0; the arithmetic is exact.
    [[nodiscard]] static Hertz frequencyStep(Hertz span, int count);
    /// First multiple of \a step that is more than \a start less 1 Hz; with both in whole hertz
    /// that is the first at or above \a start. \a step is above 0.
    [[nodiscard]] static Hertz firstFrequency(Hertz start, Hertz step);
};

} // namespace veldron
