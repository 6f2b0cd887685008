// SPDX-License-Identifier: MIT
#pragma once

#include "chart/TraceRenderer.h"

#include <vector>

namespace veldron {

/// Paints a trace over the one that stands in the picture, touching only what differs.
///
/// The pixels come out exactly as if each column were painted anew by TraceRenderer::paint; a scan
/// costs a fraction of that, because most of a column stays as it is. It must be told by forget()
/// whenever somebody else may have painted over the plot.
class StandingTrace {
public:
    void forget() { m_known = false; }
    /// The plot of \a layout has just been wiped, and nothing was drawn within it since.
    void wiped(const ChartLayout &layout);

    /// Returns the lowest row that was painted, which lies under the plot when levels under the
    /// scale are gathered.
    int paint(PixelSurface &surface, const ChartLayout &layout,
              const std::vector<TraceColumn> &columns);

private:
    // What stands in a column. Within the plot: body under `inside`, background down to it, and
    // the dot. Under the plot: background down to `cleared`.
    struct Standing {
        int inside = 0;
        int dot = TraceColumn::kNoDot;
        int cleared = 0;

        friend bool operator==(const Standing &, const Standing &) = default;
    };

    void begin(PixelSurface &surface, const ChartLayout &layout);
    void paintRun(int first, int last, const TraceColumn &column);
    void paintInside(const QRect &run, const TraceColumn &column, Standing &standing);
    void paintOutside(const QRect &run, const TraceColumn &column, Standing &standing);
    void paintDot(const QRect &run, int row, Standing &standing);
    void fillRows(const QRect &run, int from, int to, quint32 colour);

    bool m_known = false;
    ChartLayout m_layout;
    std::vector<Standing> m_standing;
    PixelSurface *m_surface = nullptr;
    int m_lowest = 0;
};

} // namespace veldron
