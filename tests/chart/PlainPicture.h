// SPDX-License-Identifier: MIT
#pragma once

#include "chart/AxisPlan.h"
#include "chart/ChartColours.h"
#include "chart/ChartLayout.h"
#include "chart/LevelScale.h"
#include "chart/PictureBox.h"
#include "common/LevelScan.h"
#include "utilities/Colour.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

namespace veldron {

/// The expected picture of a chart: one colour a pixel, painted point by point and always anew. Of
/// the product's painting it uses the printing of labels alone.
class PlainPicture {
public:
    /// What a trace is painted from.
    struct Trace {
        const LevelScan &levels;
        int cells;
        LevelScale scale;
        const LevelScan *peaks = nullptr;
    };
    using FallColour = std::function<quint32(int column, int row)>;

    PlainPicture() = default;
    PlainPicture(int width, int height, double density = 1.0)
        : m_width(width), m_height(height), m_density(density),
          m_points(static_cast<std::size_t>(edge(width)) * static_cast<std::size_t>(edge(height)),
                   toRgb(0)) {}

    [[nodiscard]] bool fits(int width, int height, double density) const {
        return width == m_width && height == m_height && density == m_density;
    }
    void clear() { std::fill(m_points.begin(), m_points.end(), toRgb(0)); }

    void point(int x, int y, quint32 colour) {
        if (x < 0 || x >= m_width || y < 0 || y >= m_height) {
            return;
        }
        for (int row = edge(y); row < edge(y + 1); ++row) {
            std::fill_n(deviceLine(row) + edge(x), edge(x + 1) - edge(x), toRgb(colour));
        }
    }
    void line(QPoint from, QPoint to, quint32 colour) {
        const QPoint step(qBound(-1, to.x() - from.x(), 1), qBound(-1, to.y() - from.y(), 1));
        for (QPoint at = from; at != to; at += step) {
            point(at.x(), at.y(), colour);
        }
    }
    // By the plan, whose lines and texts have tests of their own.
    void axes(const AxisPlan &plan, const PictureBox &box) {
        for (const PlannedLine &planned : plan.lines) {
            line(planned.from, planned.to, planned.colour);
        }
        PixelSurface surface(m_width, m_height, m_density);
        for (int row = 0; row < edge(m_height); ++row) {
            std::copy_n(deviceLine(row), edge(m_width), surface.deviceLine(row));
        }
        box.Print(surface, plan.texts);
        for (int row = 0; row < edge(m_height); ++row) {
            std::copy_n(surface.deviceLine(row), edge(m_width), deviceLine(row));
        }
    }
    void spread(const ChartLayout &l, const Trace &trace) {
        for (int x = l.plotLeft; x < l.plotRight; ++x) {
            const auto bin =
                static_cast<std::size_t>((x - l.plotLeft) * trace.cells / l.plotWidth());
            const auto limited = [&](int level) {
                return std::clamp(rowOf(level, l, trace.scale), l.plotTop, l.plotBottom);
            };
            column(l, x, limited(trace.levels[bin]));
            if (trace.peaks != nullptr) {
                point(x, limited((*trace.peaks)[bin]), ChartColours::kPeak);
            }
        }
    }
    void gather(const ChartLayout &l, const Trace &trace) {
        int bin = 0;
        for (int x = l.plotLeft; x < l.plotRight; ++x) {
            int highest = 0;
            int highestPeak = 0;
            while ((x + 1 - l.plotLeft) * trace.cells > bin * l.plotWidth()) {
                highest = std::max<int>(highest, trace.levels[static_cast<std::size_t>(bin)]);
                ++bin; // before the peak is read, on purpose
                if (trace.peaks != nullptr) {
                    highestPeak =
                        std::max<int>(highestPeak, (*trace.peaks)[static_cast<std::size_t>(bin)]);
                }
            }
            column(l, x, rowOf(highest, l, trace.scale));
            if (trace.peaks != nullptr) {
                point(x, rowOf(highestPeak, l, trace.scale), ChartColours::kPeak);
            }
        }
    }
    // By spread where there are more columns than cells.
    void trace(const ChartLayout &l, const Trace &trace) {
        if (l.plotWidth() > trace.cells) {
            spread(l, trace);
        } else {
            gather(l, trace);
        }
    }
    // Rows of the picture from 0, whatever row of the history is the first to be seen.
    void waterfall(const ChartLayout &l, int cells, const FallColour &colour) {
        for (int y = l.fallTop; y < l.fallBottom; ++y) {
            for (int x = l.plotLeft; x < l.plotRight; ++x) {
                point(x, y, colour((x - l.plotLeft) * cells / l.plotWidth(), y - l.fallTop));
            }
        }
    }

    /// Device pixels in which \a surface differs; -1 when it isn't even of the same size.
    [[nodiscard]] int differences(const PixelSurface &surface) const {
        if (surface.deviceWidth() != edge(m_width) || surface.deviceHeight() != edge(m_height)) {
            return -1;
        }
        int wrong = 0;
        for (int row = 0; row < surface.deviceHeight(); ++row) {
            const quint32 *expected = deviceLine(row);
            const quint32 *found = surface.deviceLine(row);
            if (!std::equal(found, found + surface.deviceWidth(), expected)) {
                for (int x = 0; x < surface.deviceWidth(); ++x) {
                    wrong += found[x] == expected[x] ? 0 : 1;
                }
            }
        }
        return wrong;
    }

private:
    [[nodiscard]] quint32 *deviceLine(int row) {
        return m_points.data() + qsizetype{row} * edge(m_width);
    }
    [[nodiscard]] const quint32 *deviceLine(int row) const {
        return m_points.data() + qsizetype{row} * edge(m_width);
    }
    // First device pixel of pixel \a i: halves go up.
    [[nodiscard]] int edge(int i) const {
        return static_cast<int>(std::floor(i * m_density + 0.5));
    }
    static int rowOf(int level, const ChartLayout &l, const LevelScale &scale) {
        const int rise = (level + scale.offset - scale.start) * (l.plotTop - l.plotBottom);
        return static_cast<int>(
            std::nearbyint(rise / static_cast<double>(scale.span) + l.plotBottom));
    }
    void column(const ChartLayout &l, int x, int y) {
        line({x, l.plotBottom}, {x, y}, ChartColours::kTrace);
        line({x, y}, {x, l.plotTop}, ChartColours::kBackground);
    }

    int m_width = 0;
    int m_height = 0;
    double m_density = 1.0;
    std::vector<quint32> m_points;
};

} // namespace veldron
