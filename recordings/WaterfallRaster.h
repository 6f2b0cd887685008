// SPDX-License-Identifier: MIT
#pragma once

#include "common/Hertz.h"
#include "recordings/SettingsInForce.h"

#include <QByteArrayView>
#include <QtGlobal>

#include <array>
#include <cstdint>
#include <vector>

namespace veldron {

/// A waterfall of raw levels to scale: time runs from the lower edge up, frequency to the right.
///
/// Where several scans or several levels fall into one pixel it keeps the strongest. A level fills
/// the columns that it is the nearest one to; a scan fills the rows up to the next scan, as long as
/// that comes within its poll interval. What nothing was measured for is 0.
class WaterfallRaster {
public:
    /// What it shows. Frequencies run from the left edge to the right edge of the raster.
    struct Extent {
        qint64 begin; ///< seconds, as of momentOf()
        qint64 end;
        Hertz low;
        Hertz high;
    };

    /// \a width and \a height are pixels above 0, and \a extent ends behind its begin. Order of
    /// calls: beginCounting() if counts are wanted, take() for each scan in the order of the file,
    /// finish(), then rows and counts.
    WaterfallRaster(int width, int height, const Extent &extent);

    /// Takes a scan at \a moment, whose next one is due \a interval seconds later.
    void take(qint64 moment, qint64 interval, const FrequencyAxis &axis, QByteArrayView levels);
    /// Puts in what the last scans left to be done.
    void finish();

    [[nodiscard]] int width() const { return m_width; }
    [[nodiscard]] int height() const { return m_height; }
    /// Row 0 is the upper one.
    [[nodiscard]] const std::uint8_t *row(int y) const {
        return m_raw.data() + static_cast<qsizetype>(y) * m_width;
    }

    /// How often each raw level was measured at the frequencies of a column. After finish().
    using Counts = std::array<quint64, 256>;
    [[nodiscard]] const Counts &counts(int column) const {
        return m_columnCounts[static_cast<std::size_t>(column)];
    }
    /// Has the levels counted, which takes longer. Before the first scan.
    void beginCounting();

private:
    /// Levels from first up to and without last fall into a column.
    struct LevelRange {
        qsizetype first;
        qsizetype last;
    };
    /// Rows from top to bottom, both included; none if bottom is above top.
    struct RowRange {
        int top;
        int bottom;
        bool operator==(const RowRange &) const = default;
    };

    /// Settles what stands by the old axis, and works the columns out for the new one.
    void useAxis(const FrequencyAxis &axis, qsizetype levels);
    [[nodiscard]] LevelRange levelsOf(int column, const FrequencyAxis &axis,
                                      qsizetype levels) const;
    /// The rows of the seconds from \a begin to \a end, not included, cut to the extent.
    [[nodiscard]] RowRange rowsOf(qint64 begin, qint64 end) const;
    /// Adds the waiting scan to those that fall into the same rows.
    void merge(RowRange rows);
    /// Writes the merged levels into their rows: once for all scans of a row, which saves most of
    /// the work where many share one.
    void paintMerged();
    void countLevels(QByteArrayView levels);
    /// From counts by level to counts by column, while the columns of the axis are known.
    void spreadCounts();

    int m_width;
    int m_height;
    Extent m_extent;
    std::vector<std::uint8_t> m_raw;

    FrequencyAxis m_axis;
    std::vector<LevelRange> m_ranges; ///< by column
    /// The scan that waits for the next one to tell how far up it goes.
    std::vector<std::uint8_t> m_waiting;
    qint64 m_waitingSince = 0;
    qint64 m_interval = 1;
    /// The strongest levels of the scans that fall into the same rows.
    std::vector<std::uint8_t> m_merged;
    RowRange m_mergedRows{0, -1};

    bool m_isCounting = false;
    std::vector<std::array<quint32, 256>> m_levelCounts; ///< by level, of the present axis
    std::vector<Counts> m_columnCounts;
};

} // namespace veldron
