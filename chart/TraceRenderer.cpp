// SPDX-License-Identifier: MIT
#include "chart/TraceRenderer.h"

#include <algorithm>
#include <array>

namespace veldron {

namespace {

using Rows = std::array<int, 256>;

void spread(const TraceRenderer::Input &input, const Rows &rows, std::vector<TraceColumn> &result) {
    const ChartLayout &layout = input.layout;
    const auto limited = [&](quint8 level) {
        return std::clamp(rows[level], layout.plotTop, layout.plotBottom);
    };
    // Each column is cellCount / plotWidth cells further on; the rest is carried along.
    std::size_t bin = 0;
    qint64 carried = 0;
    for (int x = layout.plotLeft; x < layout.plotRight; ++x) {
        const int dot = input.peak ? limited(input.scans.peaks()[bin]) : TraceColumn::kNoDot;
        result.push_back({limited(input.scans.current()[bin]), dot});
        for (carried += input.grid.cellCount(); carried >= layout.plotWidth();
             carried -= layout.plotWidth()) {
            ++bin;
        }
    }
}

void gather(const TraceRenderer::Input &input, const Rows &rows, std::vector<TraceColumn> &result) {
    const ChartLayout &layout = input.layout;
    std::size_t bin = 0;
    for (int x = layout.plotLeft; x < layout.plotRight; ++x) {
        const qint64 reach = qint64{x + 1 - layout.plotLeft} * input.grid.cellCount();
        quint8 highest = 0;
        quint8 highestPeak = 0;
        while (reach > static_cast<qint64>(bin) * layout.plotWidth()) {
            highest = std::max(highest, input.scans.current()[bin]);
            ++bin;
            // Peaks are read after the step on purpose, which is why the arrays have spare ends.
            highestPeak = std::max(highestPeak, input.scans.peaks()[bin]);
        }
        result.push_back({rows[highest], input.peak ? rows[highestPeak] : TraceColumn::kNoDot});
    }
}

} // namespace

void TraceRenderer::columns(const Input &input, std::vector<TraceColumn> &result) {
    result.clear();
    const Rows rows = input.scale.rows(input.layout.plotTop, input.layout.plotBottom);
    if (input.screenResolution < input.grid.dataResolution()) {
        spread(input, rows, result);
    } else {
        gather(input, rows, result);
    }
}

} // namespace veldron
