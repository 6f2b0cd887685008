// SPDX-License-Identifier: MIT
#pragma once

#include "common/LevelScan.h"

#include <QtGlobal>

#include <vector>

namespace veldron {

/// When and how held peaks age.
struct PeakLife {
    float time = 0.0F;     ///< seconds since midnight
    bool playback = false; ///< a jump back in time ages nothing
    qint32 timespan = 0;   ///< life of a peak in seconds; 0 and less is for ever
};

/// The scan in memory, its held peaks and their ages in seconds.
///
/// Each array has two elements more than there are bins, so that loops may run one past the last
/// bin. A new grid starts all of them from 0.
class ScanStore {
public:
    explicit ScanStore(qint32 binCount) { reset(binCount); }

    /// Zeros for \a binCount bins; the time of the last pass stays.
    void reset(qint32 binCount);

    /// False for a scan that is longer than the arrays.
    [[nodiscard]] bool accepts(const LevelScan &levels) const {
        return levels.size() <= m_current.size();
    }
    /// Stores an accepted scan; bins behind its end keep their values.
    void take(const LevelScan &levels);
    /// Sets one bin of the current scan, from 0 to the number of bins less 1.
    void setLevel(qint32 bin, quint8 level) { m_current[static_cast<std::size_t>(bin)] = level; }

    /// Forgets the peaks of all bins; the spare elements stay.
    void zeroPeaks();
    /// One pass over all bins. A peak stands for its whole life, counted from the moment it was
    /// last equalled or beaten, and then drops to the present level at once. Time 0 as the last
    /// pass's stands for no pass yet.
    void agePeaks(const PeakLife &life);

    [[nodiscard]] qint32 binCount() const { return m_binCount; }
    [[nodiscard]] const LevelScan &current() const { return m_current; }
    [[nodiscard]] const LevelScan &peaks() const { return m_peaks; }

private:
    /// Whole seconds since the last pass, across midnight too; notes this one as the last.
    [[nodiscard]] qint32 elapsedSince(const PeakLife &life);

    qint32 m_binCount = 0;
    LevelScan m_current;
    LevelScan m_peaks;
    std::vector<qint32> m_ages; ///< seconds since the peak was last reached
    float m_lastAgeTime = 0.0F;
};

} // namespace veldron
