// SPDX-License-Identifier: MIT
#include "recordings/WaterfallRaster.h"

#include "common/Numbers.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace veldron {

namespace {

std::uint8_t strongest(const std::vector<std::uint8_t> &levels, qsizetype first, qsizetype last) {
    return first < last ? *std::max_element(levels.begin() + first, levels.begin() + last) : 0;
}

/// In pieces of a fixed size, which the compiler turns into a few instructions each.
void keepStronger(std::uint8_t *merged, const std::uint8_t *levels, std::size_t count) {
    constexpr std::size_t kPiece = 32;
    std::size_t done = 0;
    for (; done + kPiece <= count; done += kPiece) {
        std::array<std::uint8_t, kPiece> ours{};
        std::array<std::uint8_t, kPiece> other{};
        std::memcpy(ours.data(), merged + done, kPiece);
        std::memcpy(other.data(), levels + done, kPiece);
        for (std::size_t i = 0; i < kPiece; ++i) {
            ours[i] = ours[i] < other[i] ? other[i] : ours[i];
        }
        std::memcpy(merged + done, ours.data(), kPiece);
    }
    for (; done < count; ++done) {
        merged[done] = std::max(merged[done], levels[done]);
    }
}

} // namespace

WaterfallRaster::WaterfallRaster(int width, int height, const Extent &extent)
    : m_width(width), m_height(height), m_extent(extent),
      m_raw(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

void WaterfallRaster::beginCounting() {
    m_isCounting = true;
    m_columnCounts.resize(static_cast<std::size_t>(m_width));
}

void WaterfallRaster::take(qint64 moment, qint64 interval, const FrequencyAxis &axis,
                           QByteArrayView levels) {
    if (!m_waiting.empty()) {
        const bool isNext = moment >= m_waitingSince && moment <= m_waitingSince + m_interval;
        const qint64 until = std::max(m_waitingSince + 1, isNext ? moment : 0);
        merge(rowsOf(m_waitingSince, until));
    }
    if (axis != m_axis || static_cast<std::size_t>(levels.size()) != m_waiting.size()) {
        useAxis(axis, levels.size());
    }
    m_waiting.resize(static_cast<std::size_t>(levels.size()));
    std::memcpy(m_waiting.data(), levels.data(), m_waiting.size());
    m_waitingSince = moment;
    m_interval = interval;
    if (m_isCounting) {
        countLevels(levels);
    }
}

void WaterfallRaster::finish() {
    if (!m_waiting.empty()) {
        merge(rowsOf(m_waitingSince, m_waitingSince + m_interval));
    }
    paintMerged();
    spreadCounts();
}

void WaterfallRaster::useAxis(const FrequencyAxis &axis, qsizetype levels) {
    paintMerged();
    spreadCounts();
    m_axis = axis;
    m_ranges.clear();
    for (int column = 0; column < m_width; ++column) {
        m_ranges.push_back(levelsOf(column, axis, levels));
    }
    m_levelCounts.assign(m_isCounting ? static_cast<std::size_t>(levels) : 0, {});
}

WaterfallRaster::LevelRange WaterfallRaster::levelsOf(int column, const FrequencyAxis &axis,
                                                      qsizetype levels) const {
    // In whole numbers: edges often meet levels exactly. "Place" is in steps times twice the width.
    const qint64 step = std::max(axis.step.units(), qint64{1}) * 2 * m_width;
    const auto placeOf = [&](qint64 halfColumns) {
        return (m_extent.low - axis.start).units() * 2 * m_width +
               (m_extent.high - m_extent.low).units() * halfColumns;
    };
    const auto levelAbove = [&](qint64 place) {
        return -Numbers::floorDivide(-place, step);
    };
    const qint64 left = placeOf(qint64{2} * column);
    const qint64 right = placeOf(qint64{2} * column + 2);
    const qint64 first = levelAbove(left);
    const qint64 last =
        column == m_width - 1 ? Numbers::floorDivide(right, step) + 1 : levelAbove(right);
    if (first < last) {
        return {std::clamp<qsizetype>(first, 0, levels), std::clamp<qsizetype>(last, 0, levels)};
    }
    const qint64 nearest = Numbers::divideHalfEven(placeOf(qint64{2} * column + 1), step);
    return nearest < 0 || nearest >= levels ? LevelRange{0, 0} : LevelRange{nearest, nearest + 1};
}

WaterfallRaster::RowRange WaterfallRaster::rowsOf(qint64 begin, qint64 end) const {
    // A recording that still grows may have scans that came after its extent was found.
    if (begin < m_extent.begin || begin >= m_extent.end) {
        return {0, -1};
    }
    const qint64 seconds = m_extent.end - m_extent.begin;
    const qint64 upTo = std::min(end, m_extent.end);
    const qint64 top = (m_extent.end - upTo) * m_height / seconds;
    // With several seconds a row each second is in one row; with several rows a second it is in all
    // of them.
    const qint64 bottom = m_height <= seconds ? (m_extent.end - begin - 1) * m_height / seconds
                                              : (m_extent.end - begin) * m_height / seconds - 1;
    return {static_cast<int>(top), static_cast<int>(std::max(bottom, top))};
}

void WaterfallRaster::merge(RowRange rows) {
    if (rows != m_mergedRows || m_merged.size() != m_waiting.size()) {
        paintMerged();
        m_merged.assign(m_waiting.size(), 0);
        m_mergedRows = rows;
    }
    keepStronger(m_merged.data(), m_waiting.data(), m_merged.size());
}

void WaterfallRaster::paintMerged() {
    for (int y = m_mergedRows.top; y <= m_mergedRows.bottom; ++y) {
        std::uint8_t *const row = m_raw.data() + static_cast<qsizetype>(y) * m_width;
        for (int column = 0; column < m_width; ++column) {
            const LevelRange range = m_ranges[static_cast<std::size_t>(column)];
            row[column] = std::max(row[column], strongest(m_merged, range.first, range.last));
        }
    }
    m_mergedRows = {0, -1};
}

void WaterfallRaster::countLevels(QByteArrayView levels) {
    for (std::size_t level = 0; level < m_levelCounts.size(); ++level) {
        ++m_levelCounts[level][static_cast<std::uint8_t>(levels[static_cast<qsizetype>(level)])];
    }
}

void WaterfallRaster::spreadCounts() {
    for (std::size_t column = 0; m_isCounting && column < m_ranges.size(); ++column) {
        for (qsizetype level = m_ranges[column].first; level < m_ranges[column].last; ++level) {
            const auto &counts = m_levelCounts[static_cast<std::size_t>(level)];
            for (std::size_t raw = 0; raw < counts.size(); ++raw) {
                m_columnCounts[column][raw] += counts[raw];
            }
        }
    }
    m_levelCounts.assign(m_levelCounts.size(), {});
}

} // namespace veldron
