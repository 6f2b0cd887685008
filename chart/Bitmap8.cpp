// SPDX-License-Identifier: MIT
#include "chart/Bitmap8.h"

#include "common/Numbers.h"
#include "utilities/Colour.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace veldron {

namespace {

constexpr Bitmap8::Handle kContext = 1;
constexpr Bitmap8::Handle kRaster = 2;
constexpr Bitmap8::Handle kContextsOwnBitmap = 3;

constexpr qint32 kColourOnColour = 4;
// Entry 255 is passed on with the first write of a colour.
constexpr int kEntriesPassedByCreate = 255;
constexpr float kLargestStep = 8.0F;

std::size_t entryIndex(qint16 index) {
    if (index < 0 || index > 255) {
        throw std::out_of_range("a colour table has the entries 0 to 255");
    }
    return static_cast<std::size_t>(index);
}

// The device pixels of a line as runs, each of one source column.
class Runs {
public:
    Runs(const PixelSurface &surface, const QRect &destination, const QRect &inside,
         int sourceWidth) {
        const int left = surface.columnEdge(inside.left());
        for (int x = inside.left(); x <= inside.right(); ++x) {
            const int column = static_cast<int>(qint64{x - destination.left()} * sourceWidth /
                                                destination.width());
            if (m_runs.empty() || m_runs.back().column != column) {
                m_runs.push_back({column, surface.columnEdge(x) - left});
            }
        }
        m_width = surface.columnEdge(inside.left() + inside.width()) - left;
        m_runs.push_back({0, m_width});
        m_whole = m_runs.size() - 1;
        while (m_whole > 0 && end(m_whole - 1) > m_width) {
            --m_whole;
        }
    }

    [[nodiscard]] int width() const { return m_width; }

    // Each run is written four pixels at a time, up to three pixels too far: the next run
    // overwrites the excess. Runs so near the end that the excess would leave the line are written
    // pixel by pixel.
    void paint(quint32 *line, const quint8 *bytes, const quint32 *colours) const {
        for (std::size_t i = 0; i < m_whole; ++i) {
            const quint32 colour = colours[bytes[m_runs[i].column]];
            quint32 *pixel = line + m_runs[i].start;
            const quint32 *stop = line + m_runs[i + 1].start;
            do {
                pixel[0] = colour;
                pixel[1] = colour;
                pixel[2] = colour;
                pixel[3] = colour;
                pixel += 4;
            } while (pixel < stop);
        }
        for (std::size_t i = m_whole; i + 1 < m_runs.size(); ++i) {
            std::fill(line + m_runs[i].start, line + m_runs[i + 1].start,
                      colours[bytes[m_runs[i].column]]);
        }
    }

private:
    struct Run {
        int column;
        int start;
    };

    // First device column that writing run \a i by fours leaves alone.
    [[nodiscard]] int end(std::size_t i) const {
        const int length = m_runs[i + 1].start - m_runs[i].start;
        return m_runs[i].start + (length + 3) / 4 * 4;
    }

    std::vector<Run> m_runs;
    std::size_t m_whole = 0;
    int m_width = 0;
};

} // namespace

Bitmap8::Handle Bitmap8::Create(qint32 width, qint32 height) {
    m_hDC = kContext;
    m_stride = roundUpToFour(width);
    m_header = {40,
                width,
                -height,
                1,
                8,
                0,
                static_cast<quint32>(std::abs(height)) * static_cast<quint32>(m_stride)};
    for (std::size_t i = 0; i < m_table.size(); ++i) {
        const auto grey = static_cast<quint8>(i);
        m_table.at(i) = {grey, grey, grey, 0};
    }
    m_pixels.assign(m_header.biSizeImage, 0);
    m_usedEnd = 0;
    passTable(0, static_cast<int>(m_table.size()));
    m_hBitmap = kRaster;
    m_previousBitmap = kContextsOwnBitmap;
    passTable(0, kEntriesPassedByCreate);
    m_stretchMode = kColourOnColour;
    return m_hBitmap;
}

void Bitmap8::Destroy() {
    m_previousBitmap = 0;
    m_pixels = {};
    m_hDC = 0;
    m_hBitmap = 0;
}

void Bitmap8::Clear() {
    std::fill(m_pixels.begin(), m_pixels.end(), quint8{0});
    m_usedEnd = 0;
}

void Bitmap8::Scroll(qint16 dx, qint16 dy) {
    const qint32 width = m_header.biWidth;
    // Only rows that move down keep an end of what is used; any other move gives it up.
    if (dx != 0 || dy < 0) {
        m_usedEnd = static_cast<qint64>(m_pixels.size());
    }
    if (dx > 0) {
        move({dx, 0, width - dx, rows()}, {0, 0});
    }
    if (dx < 0) {
        move({0, 0, width - dx, rows()}, {dx, 0});
    }
    if (dy > 0) {
        // Rows of zeros moved onto rows of zeros change nothing.
        move({0, dy, width, std::min(rows() - dy, usedRows())}, {0, 0});
        m_usedEnd += qint64{dy} * m_stride;
    }
    if (dy < 0) {
        move({0, 0, width, rows() - dy}, {0, dy});
    }
}

void Bitmap8::move(const QRect &destination, QPoint source) {
    const QPoint shift = source - destination.topLeft();
    const QRect raster(0, 0, m_header.biWidth, rows());
    const QRect target = destination & raster & raster.translated(-shift);
    if (target.isEmpty() || m_pixels.empty()) {
        return;
    }
    const auto address = [this](int x, int y) {
        return m_pixels.data() + qsizetype{y} * m_stride + x;
    };
    const auto length = static_cast<std::size_t>(target.width());
    if (target.width() == m_stride) {
        std::memmove(address(0, target.top()), address(0, target.top() + shift.y()),
                     length * static_cast<std::size_t>(target.height()));
        return;
    }
    // Rows move down or stay, so that going upwards reads each before it is written.
    for (int y = target.bottom(); y >= target.top(); --y) {
        std::memmove(address(target.left(), y), address(target.left() + shift.x(), y + shift.y()),
                     length);
    }
}

qint32 Bitmap8::usedRows() const {
    const qint64 used = m_stride > 0 ? (m_usedEnd + m_stride - 1) / m_stride : 0;
    return static_cast<qint32>(std::min<qint64>(used, rows()));
}

bool Bitmap8::holds(const QRect &source) const {
    return source.x() >= 0 && source.x() <= m_header.biWidth && source.y() >= 0 &&
           source.y() <= rows() && source.width() > 0 &&
           source.width() <= m_header.biWidth - source.x() && source.height() >= 1 &&
           source.height() <= rows() - source.y();
}

void Bitmap8::Render(PixelSurface *target, const QRect &destination, const QRect &source) const {
    if (target == nullptr || m_pixels.empty() || !holds(source)) {
        return;
    }
    const QRect inside = destination & target->bounds();
    if (inside.isEmpty()) {
        return;
    }
    const Runs runs(*target, destination, inside, source.width());
    const int left = target->columnEdge(inside.left());
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        const qint64 row =
            source.y() + qint64{y - destination.top()} * source.height() / destination.height();
        quint32 *line = target->deviceLine(target->rowEdge(y)) + left;
        runs.paint(line, m_pixels.data() + row * m_stride + source.x(), m_passed.data());
        // The other device lines of the same row are copies.
        for (int copy = target->rowEdge(y) + 1; copy < target->rowEdge(y + 1); ++copy) {
            std::copy_n(line, runs.width(), target->deviceLine(copy) + left);
        }
    }
    target->noteChange(inside);
}

void Bitmap8::Resize(float factor) {
    if (!std::isfinite(factor) || factor <= 0.0F) {
        return;
    }
    if (factor > 1.0F && m_usedEnd > 0) {
        m_usedEnd = static_cast<qint64>(m_pixels.size()); // rows move down, and zeros stay zeros
    }
    const auto height = static_cast<double>(rows());
    const auto eighth = Numbers::roundTo<qint32>(height / 8.0);
    if (factor >= 1.0F) {
        while (factor > kLargestStep) {
            stretchRows(eighth, rows());
            factor /= kLargestStep;
        }
        stretchRows(Numbers::roundTo<qint32>(height / static_cast<double>(factor)), rows());
        return;
    }
    while (factor < 1.0F / kLargestStep) {
        stretchRows(rows(), eighth);
        factor *= kLargestStep;
    }
    // The rest of the factor decides what is zeroed, not the factor that came in.
    const double covered = static_cast<double>(factor) * height;
    stretchRows(rows(), Numbers::roundTo<qint32>(std::floor(covered)));
    const double size = m_header.biSizeImage;
    zero(Numbers::roundTo<qint64>(covered * m_stride),
         Numbers::roundTo<qint64>(size - covered * m_stride));
}

void Bitmap8::stretchRows(qint32 sourceHeight, qint32 destinationHeight) {
    if (m_pixels.empty() || sourceHeight < 1) {
        return;
    }
    // In place, from the end that the copies move towards: no row is written before it was read.
    const bool grows = destinationHeight > sourceHeight;
    const auto length = static_cast<std::size_t>(m_header.biWidth);
    for (qint64 i = 0; i < destinationHeight; ++i) {
        const qint64 row = grows ? destinationHeight - 1 - i : i;
        const qint64 source = row * sourceHeight / destinationHeight;
        if (source != row) {
            std::memcpy(m_pixels.data() + row * m_stride, m_pixels.data() + source * m_stride,
                        length);
        }
    }
}

void Bitmap8::zero(qint64 offset, qint64 count) {
    const auto size = static_cast<qint64>(m_pixels.size());
    const qint64 first = std::clamp<qint64>(offset, 0, size);
    const qint64 end = std::clamp<qint64>(offset + count, first, size);
    std::fill(m_pixels.begin() + first, m_pixels.begin() + end, quint8{0});
}

void Bitmap8::setdata(qint32 x, qint32 y, quint8 value) {
    const qint64 address = qint64{m_stride} * y + x;
    if (address >= 0 && address < static_cast<qint64>(m_pixels.size())) {
        m_pixels[static_cast<std::size_t>(address)] = value;
        m_usedEnd = std::max(m_usedEnd, value != 0 ? address + 1 : 0);
    }
}

quint8 Bitmap8::data(qint32 x, qint32 y) const {
    const qint64 address = qint64{m_stride} * y + x;
    return address >= 0 && address < static_cast<qint64>(m_pixels.size())
               ? m_pixels[static_cast<std::size_t>(address)]
               : quint8{0};
}

void Bitmap8::setGroup(qint16 group) {
    m_Group = group;
    if (group == 1) {
        m_stretchMode = 1;
    } else {
        m_stretchMode = group == 2 ? 4 : 2;
    }
    // Whatever was asked for, rows are picked and never blended.
    m_stretchMode = kColourOnColour;
}

void Bitmap8::setPalette(qint16 index, quint32 colour) {
    Entry &entry = m_table.at(entryIndex(index));
    entry.blue = static_cast<quint8>((colour >> 16U) & 0xFFU);
    entry.green = static_cast<quint8>((colour >> 8U) & 0xFFU);
    entry.red = static_cast<quint8>(colour & 0xFFU);
    passTable(index, 1);
}

quint32 Bitmap8::Palette(qint16 index) const {
    const Entry &entry = m_table.at(entryIndex(index));
    const int low = entry.green * 256 + entry.red;
    if (low > std::numeric_limits<qint16>::max()) {
        throw std::overflow_error("a green of 128 or more can't be read back");
    }
    return static_cast<quint32>(low) + entry.blue * 65536U;
}

void Bitmap8::passTable(int first, int count) {
    for (int i = first; i < first + count; ++i) {
        const auto index = static_cast<std::size_t>(i);
        const Entry &entry = m_table.at(index);
        m_passed.at(index) = toRgb(static_cast<quint32>(entry.blue) << 16U |
                                   static_cast<quint32>(entry.green) << 8U | entry.red);
    }
}

} // namespace veldron
