// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QRect>
#include <QtGlobal>

#include <vector>

namespace veldron {

/// A picture in memory, drawn without a painter.
///
/// Coordinates are pixels of the control. On a dense screen each of them is a block of device
/// pixels, so lines stay sharp; device pixels are QRgb words, lines of them stride() apart.
/// Colours going in and out are 0x00BBGGRR. Whatever falls outside is clipped. The surface keeps
/// the bounds of what changed, and counts its wipes.
class PixelSurface {
public:
    PixelSurface() = default;
    /// Black. \a scale is device pixels a pixel, 1 or more, whole or not.
    PixelSurface(int width, int height, double scale = 1.0);

    /// Takes another size. The content is undefined until it is cleared or painted over. Memory is
    /// kept, and grows in steps, because fresh pages cost more than the drawing.
    void resize(int width, int height, double scale);
    /// Another number after each wipe and change of size: a cache of what stands in the picture
    /// holds while the number is the one that it was filled under.
    [[nodiscard]] quint64 generation() const { return m_generation; }

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
    /// Everything black but \a kept, which the caller is about to paint over. Of several areas the
    /// upper ones come first, and no two share a row.
    void clearAround(const std::vector<QRect> &kept);
    /// Moves the rows of \a area down by \a rows, up if negative; rows that nothing moves onto
    /// keep their pixels. Each pixel row of the area has to be drawn in whole pixels.
    void scroll(const QRect &area, int rows);
    void fill(const QRect &area, quint32 colour);
    /// A horizontal or vertical line; its end point is not painted.
    void line(QPoint from, QPoint to, quint32 colour);
    void pset(QPoint at, quint32 colour);
    /// Colour at (x, y), 0 outside.
    [[nodiscard]] quint32 pixel(int x, int y) const;

    /// Adds \a area to what changed; for those who write through deviceLine().
    void noteChange(const QRect &area);
    /// A rectangle around all that was painted since the last call; scrolling isn't in it.
    QRect takeChange();
    /// The pixels of line() between two points.
    [[nodiscard]] static QRect lineArea(QPoint from, QPoint to);

private:
    int m_width = 0;
    int m_height = 0;
    double m_scale = 1.0;
    qsizetype m_stride = 0;
    std::vector<int> m_columnEdges;
    std::vector<int> m_rowEdges;
    std::vector<quint32> m_pixels;
    quint64 m_generation = 0;
    // Of what changed: first and last column and row.
    int m_left = 0;
    int m_top = 0;
    int m_right = -1;
    int m_bottom = -1;
};

} // namespace veldron
