// SPDX-License-Identifier: MIT
#pragma once

#include "chart/ChartLayout.h"
#include "common/Hertz.h"

#include <QtGlobal>

namespace veldron {

/// Which frequencies a scan's bins stand for, and where they stand across the plot.
///
/// Bin i is at scanStart + i x dataResolution, the last one at scanStop. Plots are mapped by cells:
/// with more than 320 bins the cells lie between the bins and the last bin has none; otherwise
/// each bin is the middle of a cell of its own. Writes outside their range are dropped, which the
/// result tells.
class BinGrid {
public:
    /// Range of start and stop.
    static constexpr Hertz kLowest = Hertz::fromWhole(-5000000);
    static constexpr Hertz kHighest = Hertz::fromWhole(3500000000);
    /// Lowest resolution.
    static constexpr Hertz kFinest = Hertz::fromWhole(500);

    /// A full scan: 321 bins from 0 to 10 MHz, 31.25 kHz apart.
    BinGrid() { recalculate(); }

    [[nodiscard]] Hertz scanStart() const { return m_scanStart; }
    [[nodiscard]] Hertz scanStop() const { return m_scanStop; }
    [[nodiscard]] Hertz dataResolution() const { return m_dataResolution; }
    /// Bins in a scan, 1 or more: (span + resolution) / resolution, rounded half to even.
    [[nodiscard]] qint32 binCount() const { return m_binCount; }
    /// 1 when a bin is a cell's middle, 0 when it is a cell's edge.
    [[nodiscard]] qint32 binCentred() const { return m_binCentred; }
    /// Cells across the plot, 1 or more.
    [[nodiscard]] qint32 cellCount() const { return m_cellCount; }

    /// False when nothing was written: out of range or, for start and stop, what is there already.
    /// Start and stop keep a distance of one bin as far as the range allows: a write of one moves
    /// the other where it must.
    bool setScanStart(Hertz start);
    bool setScanStop(Hertz stop);
    bool setDataResolution(Hertz resolution);

    /// Hertz a pixel of a plot \a plotWidth wide; 0 if it has no width.
    [[nodiscard]] Hertz screenResolution(int plotWidth) const;
    /// Column of the middle of the first cell.
    [[nodiscard]] int firstCentre(const ChartLayout &layout) const;
    /// Column of a frequency, inside or outside of the plot; halves go to the right. Limited to 1e8
    /// on either side.
    [[nodiscard]] int columnOf(Hertz frequency, const ChartLayout &layout) const;
    /// Cell under column \a x; at the plot's right edge that is one past the last.
    [[nodiscard]] qint32 cellAt(int x, const ChartLayout &layout) const;
    /// Frequency of the bin under column \a x.
    [[nodiscard]] Hertz frequencyAt(int x, const ChartLayout &layout) const;
    /// Bin nearest to a frequency, inside or outside of the scan; ties to even.
    [[nodiscard]] qint32 binOf(Hertz frequency) const;

private:
    /// Bins and cells from start, stop and resolution; they change nowhere else.
    void recalculate();

    Hertz m_scanStart;
    Hertz m_scanStop = Hertz::fromWhole(10000000);
    Hertz m_dataResolution = Hertz::fromWhole(31250);
    qint32 m_binCount = 0;
    qint32 m_binCentred = 0;
    qint32 m_cellCount = 0;
};

} // namespace veldron
