// SPDX-License-Identifier: MIT
#pragma once

#include "chart/PixelSurface.h"
#include "chart/TraceRenderer.h"

#include <QRect>

#include <vector>

namespace veldron {

/// Paints a trace over the one that stands in the picture, touching only what differs.
///
/// The pixels come out exactly as if each column were painted anew: body from the plot's bottom up
/// to its row, background from there to the top, then the dot. A scan costs a fraction of that,
/// because most of a column stays as it is. Another generation of the surface or another place of
/// the plot invalidates the cache. Nobody else paints within the plot.
class TraceCache {
public:
    /// Returns the lowest row that was painted, which lies under the plot when levels under the
    /// scale are gathered. The rows of \a hidden, under the plot and as wide, are left out:
    /// somebody else covers them.
    int paint(PixelSurface &surface, const ChartLayout &layout,
              const std::vector<TraceColumn> &columns, const QRect &hidden = {});

    /// Pixels over and under the plot that the trace has painted and not yet erased: levels beyond
    /// the scale. Each may be empty.
    [[nodiscard]] QRect strayAbove() const;
    [[nodiscard]] QRect strayBelow() const;
    /// The strays have just been erased by somebody else, who draws the axes there.
    void straysErased();

private:
    // What stands in a column. Within the plot: body under `inside`, background down to it, and
    // the dot. Under the plot: background down to `cleared`.
    struct Standing {
        int inside = 0;
        int dot = TraceColumn::kNoDot;
        int cleared = 0;

        friend bool operator==(const Standing &, const Standing &) = default;
    };

    /// Starts from an empty plot where the cache no longer holds.
    void begin(PixelSurface &surface, const ChartLayout &layout);
    /// Columns \a first up to \a last, not included, all alike, by one fill for each part: a bin is
    /// many pixels wide as a rule.
    void paintRun(int first, int last, const TraceColumn &column);
    void paintInside(const QRect &run, const TraceColumn &column, Standing &standing);
    void paintOutside(const QRect &run, const TraceColumn &column, Standing &standing);
    void paintDot(const QRect &run, int row, Standing &standing);
    void fillRows(const QRect &run, int from, int to, quint32 colour);
    void fillShown(const QRect &run, int from, int to, quint32 colour);
    [[nodiscard]] QRect acrossThePlot(int firstRow, int lastRow) const;

    quint64 m_generation = 0; // of the surface; 0 is none
    ChartLayout m_layout;
    QRect m_hidden;
    std::vector<Standing> m_standing;
    PixelSurface *m_surface = nullptr;
    int m_lowest = 0;
    // Rows reached since the plot was painted whole.
    int m_highestStray = 0;
    int m_lowestStray = 0;
};

} // namespace veldron
