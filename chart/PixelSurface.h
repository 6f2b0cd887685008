// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QRect>
#include <QtGlobal>

#include <vector>

namespace veldron {

/// A picture as numbers: what is drawn, pixel for pixel, with no painter behind it.
///
/// Coordinates are pixels of the control. On a dense screen each of them is a block of device
/// pixels, so lines stay sharp; device pixels are 0xFFRRGGBB words, lines of them stride() apart.
/// Colours going in and out are 0x00BBGGRR. Whatever falls outside is clipped. The surface keeps
/// the bounds of what changed.
class PixelSurface {
public:
    PixelSurface() = default;
    /// Black. \a scale is device pixels a pixel, 1 or more, whole or not.
    PixelSurface(int width, int height, double scale = 1.0);

    [[nodiscard]] int width() const { return m_width; }
    [[nodiscard]] int height() const { return m_height; }
    [[nodiscard]] double scale() const { return m_scale; }
    [[nodiscard]] int deviceWidth() const {
        return m_columnEdges.empty() ? 0 : m_columnEdges.back();
    }
    [[nodiscard]] int deviceHeight() const { return m_rowEdges.empty() ? 0 : m_rowEdges.back(); }
    /// Device pixels from one device line to the next.
    [[nodiscard]] qsizetype stride() const { return m_stride; }
    [[nodiscard]] quint32 *deviceLine(int row) { return m_pixels.data() + row * m_stride; }
    [[nodiscard]] const quint32 *deviceLine(int row) const {
        return m_pixels.data() + row * m_stride;
    }
    /// First device column of column \a x, from 0 to width().
    [[nodiscard]] int columnEdge(int x) const { return m_columnEdges[static_cast<std::size_t>(x)]; }
    /// First device line of row \a y, from 0 to height().
    [[nodiscard]] int rowEdge(int y) const { return m_rowEdges[static_cast<std::size_t>(y)]; }
    [[nodiscard]] QRect bounds() const { return {0, 0, m_width, m_height}; }

    /// Everything black.
    void clear();
    /// Everything black but \a kept, which the caller is about to paint over.
    void clearAround(const QRect &kept);
    void fill(const QRect &area, quint32 colour);
    /// A horizontal or vertical line; its end point is not painted.
    void line(QPoint from, QPoint to, quint32 colour);
    void pset(QPoint at, quint32 colour);
    /// Colour at (x, y), 0 outside.
    [[nodiscard]] quint32 pixel(int x, int y) const;

    /// Adds \a area to what changed; for those who write through deviceLine().
    void noteChange(const QRect &area);
    /// A rectangle around all that changed since the last call.
    QRect takeChange();

    /// The word of a device pixel for a colour.
    [[nodiscard]] static constexpr quint32 toDevice(quint32 colour) {
        return 0xFF000000U | (colour & 0x0000FF00U) | ((colour & 0xFFU) << 16U) |
               ((colour >> 16U) & 0xFFU);
    }

private:
    int m_width = 0;
    int m_height = 0;
    double m_scale = 1.0;
    qsizetype m_stride = 0;
    std::vector<int> m_columnEdges;
    std::vector<int> m_rowEdges;
    std::vector<quint32> m_pixels;
    // Of what changed: first and last column and row.
    int m_left = 0;
    int m_top = 0;
    int m_right = -1;
    int m_bottom = -1;
};

} // namespace veldron
