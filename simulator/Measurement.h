// SPDX-License-Identifier: MIT
#pragma once

#include "common/LevelScan.h"

#include <cstddef>
#include <deque>

namespace veldron {

/// The results over several scans: average, held maximum, median.
///
/// Levels are raw bytes, so averages are of decibels, rounded with ties to even. A median of an
/// even number of scans is the mean of the middle two. While fewer scans than asked for have been
/// taken, the result is over those.
class Measurement {
public:
    /// The most scans that an average runs over.
    static constexpr std::size_t kMostScans = 31;

    /// Forgets all past scans; the next result is over one scan.
    void restart();
    /// Takes \a scan into account and returns what is to be shown in \a dataMode (1 Normal, 2 Avg,
    /// 3 Max, 4 Med) over the last \a count scans. A scan of another length restarts.
    [[nodiscard]] LevelScan take(const LevelScan &scan, int dataMode, int count);

private:
    [[nodiscard]] LevelScan average(std::size_t count) const;
    [[nodiscard]] LevelScan median(std::size_t count) const;

    std::deque<LevelScan> m_past; ///< the newest last
    LevelScan m_held;
};

} // namespace veldron
