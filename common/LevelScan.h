// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

namespace veldron {

/// Steps from the first bin of a full scan to its last, and from one edge of the unit's screen to
/// the other. A full scan so has one bin more.
inline constexpr int kScanSteps = 320;

/// Raw levels in ascending frequency, one byte a bin, from index 0; a full scan holds 321.
/// The level in dB is the raw value less 132.
using LevelScan = std::vector<std::uint8_t>;

} // namespace veldron
