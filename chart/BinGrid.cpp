// SPDX-License-Identifier: MIT
#include "chart/BinGrid.h"

#include "common/LevelScan.h"
#include "common/Numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace veldron {

namespace {

// Up to here (7 GHz, twice the whole range) the integer products below keep within 64 bits for
// every picture that a screen can hold.
constexpr qint64 kExactUnits = qint64{1} << 46;

bool isInRange(Hertz frequency) {
    return frequency >= BinGrid::kLowest && frequency <= BinGrid::kHighest;
}

bool isExact(Hertz value) {
    // Both ways round, because the lowest number of 64 bits has no magnitude.
    return value.units() >= -kExactUnits && value.units() <= kExactUnits;
}

} // namespace

bool BinGrid::setScanStart(Hertz start) {
    if (start == m_scanStart || !isInRange(start)) {
        return false;
    }
    m_scanStart = start;
    m_scanStop = std::min(std::max(m_scanStop, start + m_dataResolution), kHighest);
    recalculate();
    return true;
}

bool BinGrid::setScanStop(Hertz stop) {
    if (stop == m_scanStop || !isInRange(stop)) {
        return false;
    }
    m_scanStop = stop;
    if (stop < m_scanStart + m_dataResolution) {
        m_scanStart = std::max(stop - m_dataResolution, kLowest);
    }
    recalculate();
    return true;
}

bool BinGrid::setDataResolution(Hertz resolution) {
    if (resolution < kFinest) {
        return false;
    }
    m_dataResolution = resolution;
    recalculate();
    return true;
}

void BinGrid::recalculate() {
    // Without the bound the additions below could overflow. Any resolution above it is wider than
    // the whole range and makes one bin, as the bound itself does.
    const qint64 resolution = std::min(m_dataResolution.units(), kExactUnits);
    const qint64 span = (m_scanStop - m_scanStart).units();
    m_binCount = static_cast<qint32>(Numbers::divideHalfEven(span + resolution, resolution));
    // A full scan has its bins on the edges of the cells, a shorter one in their middles.
    m_binCentred = m_binCount > kScanSteps ? 0 : 1;
    m_cellCount =
        static_cast<qint32>(Numbers::divideHalfEven(span + m_binCentred * resolution, resolution));
}

Hertz BinGrid::screenResolution(int plotWidth) const {
    if (plotWidth <= 0) {
        return {};
    }
    const Hertz resolution = std::min(m_dataResolution, Hertz::fromUnits(kExactUnits));
    return (m_scanStop - m_scanStart + resolution * m_binCentred).dividedBy(plotWidth);
}

int BinGrid::firstCentre(const ChartLayout &layout) const {
    const qint64 halfCells = 2 * qint64{m_cellCount};
    return static_cast<int>(Numbers::divideHalfEven(
        qint64{layout.plotWidth()} * m_binCentred + layout.plotLeft * halfCells, halfCells));
}

int BinGrid::columnOf(Hertz frequency, const ChartLayout &layout) const {
    const int centre = firstCentre(layout);
    const double offset = frequency.toDouble() - m_scanStart.toDouble();
    // Outside of every picture, where the products below could overflow, a double is exact enough.
    if (!isExact(frequency) || !isExact(m_dataResolution)) {
        const double column =
            offset / m_dataResolution.toDouble() * layout.plotWidth() / m_cellCount + centre + 0.5;
        return Numbers::roundTo<qint32>(std::floor(std::clamp(column, -1.0e8, 1.0e8)));
    }
    const qint64 whole = 2 * m_dataResolution.units() * m_cellCount;
    const qint64 part = 2 * (frequency - m_scanStart).units() * layout.plotWidth() + whole / 2;
    const qint64 column = Numbers::floorDivide(part, whole) + centre;
    return static_cast<int>(std::clamp<qint64>(column, -100000000, 100000000));
}

qint32 BinGrid::cellAt(int x, const ChartLayout &layout) const {
    return static_cast<qint32>(
        Numbers::floorDivide(qint64{x - layout.plotLeft} * m_cellCount, layout.plotWidth()));
}

Hertz BinGrid::frequencyAt(int x, const ChartLayout &layout) const {
    return m_scanStart + m_dataResolution * cellAt(x, layout);
}

qint32 BinGrid::binOf(Hertz frequency) const {
    const qint64 bin =
        Numbers::divideHalfEven((frequency - m_scanStart).units(), m_dataResolution.units());
    return static_cast<qint32>(std::clamp<qint64>(bin, std::numeric_limits<qint32>::min(),
                                                  std::numeric_limits<qint32>::max()));
}

} // namespace veldron
