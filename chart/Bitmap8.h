// SPDX-License-Identifier: MIT
#pragma once

#include "chart/PixelSurface.h"

#include <QRect>
#include <QtGlobal>

#include <array>
#include <vector>

namespace veldron {

/// A raster of bytes with a table of 256 colours: one byte a pixel, row 0 on top.
///
/// Byte (x, y) lies at stride x y + x. Addresses are flat: an x at or past the stride is a byte of
/// the next row, and readers rely on that. Reading outside of the raster gives 0, a write there is
/// dropped. Nothing in it fails but Palette: std::out_of_range for an index outside 0 to 255, and
/// std::overflow_error (reading only) for a green of 128 or more.
///
/// Order of calls: Create, then the rest, then Destroy. Before and after, the raster is empty.
class Bitmap8 {
public:
    /// Opaque; 0 is none.
    using Handle = quintptr;

    /// The raster's description; the height is negative because rows run from the top.
    struct Header {
        quint32 biSize = 0;
        qint32 biWidth = 0;
        qint32 biHeight = 0;
        quint16 biPlanes = 0;
        quint16 biBitCount = 0;
        quint32 biCompression = 0;
        quint32 biSizeImage = 0;
    };

    /// Makes a raster of zeros with a grey table, and returns its handle. Rows are padded to a
    /// multiple of 4 bytes.
    Handle Create(qint32 width, qint32 height);
    void Destroy();
    void Clear();
    /// Moves the content in place; what is uncovered keeps its old bytes. A negative amount names
    /// a source before the raster's edge, so it moves content the same way as a positive one.
    void Scroll(qint16 dx, qint16 dy);
    /// Stretched copy: rows and columns are picked, never blended. Does nothing without a target
    /// or when the source does not lie within the raster.
    void Render(PixelSurface *target, const QRect &destination, const QRect &source) const;
    /// Rescales the rows in place by \a factor, old row spacing over new, in steps of at most 8.
    /// Below 1 the part that is no longer covered is zeroed.
    void Resize(float factor);

    /// One byte, by the flat address.
    void setdata(qint32 x, qint32 y, quint8 value);
    [[nodiscard]] quint8 data(qint32 x, qint32 y) const;
    /// Stored only: the stretch mode that it asks for is overridden at once.
    void setGroup(qint16 group);
    [[nodiscard]] qint16 Group() const { return m_Group; }
    /// \a colour is 0x00BBGGRR.
    void setPalette(qint16 index, quint32 colour);
    [[nodiscard]] quint32 Palette(qint16 index) const;
    [[nodiscard]] Handle hDC() const { return m_hDC; }
    [[nodiscard]] Handle hBitmap() const { return m_hBitmap; }

    [[nodiscard]] const Header &header() const { return m_header; }
    [[nodiscard]] qint32 stride() const { return m_stride; }
    [[nodiscard]] qint32 stretchMode() const { return m_stretchMode; }

private:
    struct Entry {
        quint8 blue;
        quint8 green;
        quint8 red;
        quint8 spare;
    };

    [[nodiscard]] static qint32 roundUpToFour(qint32 value) { return (value + 3) & ~3; }
    [[nodiscard]] qint32 rows() const { return qAbs(m_header.biHeight); }
    /// Rows from the top that may hold something but zeros.
    [[nodiscard]] qint32 usedRows() const;
    /// Brings \a count entries into the table that Render() reads.
    void passTable(int first, int count);
    /// Copies within the raster what of both areas lies in it; source and destination may overlap.
    void move(const QRect &destination, QPoint source);
    /// The first \a sourceHeight rows onto the first \a destinationHeight, each picked or repeated.
    void stretchRows(qint32 sourceHeight, qint32 destinationHeight);
    void zero(qint64 offset, qint64 count);
    [[nodiscard]] bool holds(const QRect &source) const;

    Handle m_hDC = 0;
    Handle m_hBitmap = 0;
    Header m_header;
    std::array<Entry, 256> m_table{};
    /// The bytes, row by row. Scrolling moves them as a block, once a row of the waterfall.
    std::vector<quint8> m_pixels;
    /// From here on all bytes are 0. Scrolling leaves them alone: most rasters are nearly empty.
    qint64 m_usedEnd = 0;
    Handle m_previousBitmap = 0;
    qint32 m_stride = 0;
    qint32 m_stretchMode = 0;
    qint16 m_Group = 0;
    /// What has been passed on of the table, as device pixels.
    std::array<quint32, 256> m_passed{};
};

} // namespace veldron
