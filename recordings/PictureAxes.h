// SPDX-License-Identifier: MIT
#pragma once

#include "chart/AxisPlan.h"
#include "chart/LevelScale.h"
#include "recordings/WaterfallRaster.h"

#include <QRect>
#include <QString>

#include <vector>

namespace veldron {

/// Where the parts of an exported picture stand, in its pixels.
struct PictureLayout {
    QRect trace; ///< empty without a trace
    QRect fall;

    /// Axes leave room around the two; without them they fill the picture. With a trace, that takes
    /// the upper third. Either may be empty in a small picture.
    [[nodiscard]] static PictureLayout of(QSize size, bool hasAxes, bool hasTrace);
};

/// Lines and texts around an exported picture: frequencies below, times at the left, levels at the
/// left of the trace, and what the picture covers on top.
///
/// Ticks of time stand at whole multiples of their spacing on the clock. What differs from the
/// chart's axes is that a picture may cover years.
struct PictureAxes {
    std::vector<PlannedLine> lines;
    /// A text is centred on its place across (\a Middle) or ends there, and always down.
    struct Label {
        enum class Anchor { Middle, Right, Left };
        QPoint at;
        Anchor anchor;
        QString text;
    };
    std::vector<Label> labels;
    /// Rows of the waterfall with a dotted line.
    std::vector<int> timeRows;

    /// For a picture of \a size that \a layout was made for. A layout without a trace has no level
    /// ticks.
    [[nodiscard]] static PictureAxes of(QSize size, const PictureLayout &layout,
                                        const WaterfallRaster::Extent &extent,
                                        const LevelScale &scale);

    /// Seconds between time ticks, so that those of \a seconds over \a height pixels are 40 pixels
    /// apart at least: a spacing that is round on the clock, or a number of whole days.
    [[nodiscard]] static qint64 timeSpacing(qint64 seconds, int height);
    /// The text of a moment (as of momentOf()) at ticks so far apart: a time, with seconds where
    /// the spacing is below a minute, or the date alone at midnight. A spacing of 0 gives date and
    /// time in full.
    [[nodiscard]] static QString timeText(qint64 moment, qint64 spacing);
};

} // namespace veldron
