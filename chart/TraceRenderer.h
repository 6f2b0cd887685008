// SPDX-License-Identifier: MIT
#pragma once

#include "chart/BinGrid.h"
#include "chart/ChartLayout.h"
#include "chart/LevelScale.h"
#include "chart/ScanStore.h"

#include <climits>
#include <vector>

namespace veldron {

/// One pixel column of the trace: row at which body and background meet, and row of the peak dot.
struct TraceColumn {
    static constexpr int kNoDot = INT_MIN;

    int y = 0;
    int dot = kNoDot;

    friend bool operator==(const TraceColumn &, const TraceColumn &) = default;
};

/// From a scan to the columns of a trace, which TraceCache paints.
///
/// Two methods: spread, for more pixels than bins, holds its rows within the plot and shows one
/// bin in each column; gather, for fewer, shows the highest of a column's bins, does not hold its
/// rows within the plot, and takes its peaks one bin further on. Both differences are intended. A
/// screen resolution below that of the data means more pixels than bins.
class TraceRenderer {
public:
    struct Input {
        ChartLayout layout;
        const BinGrid &grid;
        const ScanStore &scans;
        LevelScale scale;
        bool peak = false;
        /// Hertz a pixel of the plot, which chooses the method.
        Hertz screenResolution;
    };

    /// Fills \a result, which keeps its memory, with the columns from plotLeft to plotRight - 1.
    /// UntrappedError(DivideByZero) for a scale without height.
    static void columns(const Input &input, std::vector<TraceColumn> &result);
};

} // namespace veldron
