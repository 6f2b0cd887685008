// SPDX-License-Identifier: MIT
#pragma once

#include "chart/AxisPainter.h"
#include "chart/AxisPlan.h"
#include "chart/DisplayTypeCode.h"
#include "chart/PixelSurface.h"
#include "chart/TraceCache.h"
#include "chart/TraceRenderer.h"
#include "chart/WaterfallCache.h"
#include "chart/WaterfallStore.h"

#include <QRect>

#include <vector>

namespace veldron {

/// How a picture differs from the one before: \a scrolled moved down by \a rows (up if negative),
/// and then the areas of \a painted were painted.
struct PictureChange {
    QRect scrolled;
    int rows = 0;
    std::vector<QRect> painted;
};

/// Paints the chart onto its surface: axes, trace, waterfall, in this order, because the trace
/// covers labels that run into the plot, and the waterfall a trace that leaves it downwards.
///
/// This is the one way in which pixels of the chart come to be. Each of the three parts paints
/// what differs from what it painted last, and all of it when the surface's generation is another;
/// the pixels are those of painting everything.
class ChartPainter {
public:
    struct Input {
        TraceRenderer::Input trace;
        DisplayTypeCode displayType = DisplayTypeCode::Trace;
        WaterfallStore &waterfall;
    };

    explicit ChartPainter(LabelPrinter printer) : m_axisPainter(std::move(printer)) {}

    /// The next paint() wipes the picture and draws \a plan. Until then the picture stays as it
    /// is, so that nobody sees new axes over a trace of the old scale.
    void setAxes(AxisPlan plan);
    /// Paints onto \a surface what \a input describes, a chart large enough to be drawn. A level
    /// scale without height is an UntrappedError(DivideByZero), and nothing is painted then. Limits
    /// the first row of the waterfall to what there is.
    PictureChange paint(PixelSurface &surface, const Input &input);

private:
    [[nodiscard]] static bool drawsTrace(const Input &input);
    [[nodiscard]] static bool drawsWaterfall(const Input &input);
    void paintAxes(PixelSurface &surface, const Input &input);

    AxisPlan m_axes;
    bool m_axesAreDue = false;
    AxisPainter m_axisPainter;
    TraceCache m_trace;
    WaterfallCache m_waterfall;
    std::vector<TraceColumn> m_columns;
    // Areas that the trace and the waterfall covered when the axes were last painted whole.
    std::vector<QRect> m_covered;
};

} // namespace veldron
