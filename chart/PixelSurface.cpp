// SPDX-License-Identifier: MIT
#include "chart/PixelSurface.h"

#include "utilities/Colour.h"

#include <algorithm>
#include <cmath>

namespace veldron {

namespace {

constexpr qsizetype kPixelsPerCacheLine = 16;
// One part in this many is allocated beyond what a size needs, for the sizes to come.
constexpr std::size_t kSpareShare = 8;

std::vector<int> edges(int count, double scale) {
    std::vector<int> result(static_cast<std::size_t>(count) + 1);
    for (std::size_t i = 0; i < result.size(); ++i) {
        result[i] = static_cast<int>(std::floor(static_cast<double>(i) * scale + 0.5));
    }
    return result;
}

// An odd number of cache lines from one line to the next: tall, narrow columns, which is what a
// trace is made of, would otherwise crowd a few sets of the cache.
qsizetype strideFor(int deviceWidth) {
    const qsizetype lines = (deviceWidth + kPixelsPerCacheLine - 1) / kPixelsPerCacheLine;
    return (lines | 1) * kPixelsPerCacheLine;
}

// The columns of a trace: tall, and as narrow as a bin.
template <int Count>
void fillNarrow(quint32 *target, int rows, qsizetype stride, quint32 word) {
    for (int row = 0; row < rows; ++row, target += stride) {
        for (int i = 0; i < Count; ++i) {
            target[i] = word;
        }
    }
}

// Wide areas: one row is filled and then copied, which is far quicker than to fill each.
void fillWide(quint32 *target, int count, int rows, qsizetype stride, quint32 word) {
    std::fill_n(target, count, word);
    for (int row = 1; row < rows; ++row) {
        std::copy_n(target, count, target + row * stride);
    }
}

} // namespace

PixelSurface::PixelSurface(int width, int height, double scale) {
    resize(width, height, scale);
    clear();
}

void PixelSurface::resize(int width, int height, double scale) {
    m_width = std::max(width, 0);
    m_height = std::max(height, 0);
    m_scale = std::max(scale, 1.0);
    m_columnEdges = edges(m_width, m_scale);
    m_rowEdges = edges(m_height, m_scale);
    m_stride = strideFor(deviceWidth());
    const auto needed = static_cast<std::size_t>(m_stride * deviceHeight());
    if (needed > m_pixels.size()) {
        // The old pixels go first, so that both sizes are never held at once.
        m_pixels = {};
        m_pixels.resize(needed + needed / kSpareShare);
    }
    ++m_generation;
    takeChange(); // of the old size
    noteChange(bounds());
}

void PixelSurface::clear() {
    clearAround({});
}

void PixelSurface::clearAround(const std::vector<QRect> &kept) {
    int top = 0;
    for (const QRect &area : kept) {
        const QRect inside = area & bounds();
        if (inside.isEmpty()) {
            continue;
        }
        const int right = inside.left() + inside.width();
        fill({0, top, m_width, inside.top() - top}, 0);
        fill({0, inside.top(), inside.left(), inside.height()}, 0);
        fill({right, inside.top(), m_width - right, inside.height()}, 0);
        top = inside.top() + inside.height();
    }
    fill({0, top, m_width, m_height - top}, 0);
    ++m_generation;
    noteChange(bounds());
}

void PixelSurface::scroll(const QRect &area, int rows) {
    const QRect inside = area & bounds();
    if (rows == 0 || std::abs(rows) >= inside.height()) {
        return;
    }
    const int left = columnEdge(inside.left());
    const int count = columnEdge(inside.left() + inside.width()) - left;
    // By rows, because at a broken scale neighbouring rows have different numbers of lines.
    const auto copyRow = [&](int to) {
        const quint32 *source = deviceLine(rowEdge(to - rows)) + left;
        for (int line = rowEdge(to); line < rowEdge(to + 1); ++line) {
            std::copy_n(source, count, deviceLine(line) + left);
        }
    };
    // Against the direction of the move, so that no row is overwritten before it has been copied.
    if (rows > 0) {
        for (int row = inside.bottom(); row >= inside.top() + rows; --row) {
            copyRow(row);
        }
    } else {
        for (int row = inside.top(); row <= inside.bottom() + rows; ++row) {
            copyRow(row);
        }
    }
}

void PixelSurface::fill(const QRect &area, quint32 colour) {
    // By hand, because a trace is thousands of these.
    const int right = std::min(area.x() + area.width(), m_width);
    const int bottom = std::min(area.y() + area.height(), m_height);
    const QRect inside(QPoint(std::max(area.x(), 0), std::max(area.y(), 0)),
                       QPoint(right - 1, bottom - 1));
    if (inside.left() >= right || inside.top() >= bottom) {
        return;
    }
    const quint32 word = toRgb(colour);
    const int left = columnEdge(inside.left());
    const int count = columnEdge(right) - left;
    const int first = rowEdge(inside.top());
    const int rows = rowEdge(bottom) - first;
    quint32 *target = deviceLine(first) + left;
    switch (count) {
    case 1:
        fillNarrow<1>(target, rows, m_stride, word);
        break;
    case 2:
        fillNarrow<2>(target, rows, m_stride, word);
        break;
    case 3:
        fillNarrow<3>(target, rows, m_stride, word);
        break;
    case 4:
        fillNarrow<4>(target, rows, m_stride, word);
        break;
    default:
        fillWide(target, count, rows, m_stride, word);
    }
    noteChange(inside);
}

void PixelSurface::line(QPoint from, QPoint to, quint32 colour) {
    fill(lineArea(from, to), colour);
}

QRect PixelSurface::lineArea(QPoint from, QPoint to) {
    if (from.y() == to.y()) {
        return {std::min(from.x(), to.x() + 1), from.y(), std::abs(to.x() - from.x()), 1};
    }
    if (from.x() == to.x()) {
        return {from.x(), std::min(from.y(), to.y() + 1), 1, std::abs(to.y() - from.y())};
    }
    return {};
}

void PixelSurface::pset(QPoint at, quint32 colour) {
    fill({at.x(), at.y(), 1, 1}, colour);
}

quint32 PixelSurface::pixel(int x, int y) const {
    if (!bounds().contains(x, y)) {
        return 0;
    }
    return fromRgb(deviceLine(rowEdge(y))[columnEdge(x)]);
}

void PixelSurface::noteChange(const QRect &area) {
    m_left = std::min(m_left, area.left());
    m_top = std::min(m_top, area.top());
    m_right = std::max(m_right, area.right());
    m_bottom = std::max(m_bottom, area.bottom());
}

QRect PixelSurface::takeChange() {
    const QRect changed(QPoint(m_left, m_top), QPoint(m_right, m_bottom));
    m_left = m_width;
    m_top = m_height;
    m_right = -1;
    m_bottom = -1;
    return changed;
}

} // namespace veldron
