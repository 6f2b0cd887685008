// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

namespace veldron {

/// Raw levels in ascending frequency, one byte a bin, from index 0; a full scan holds 321.
/// The level in dB is the raw value less 132.
using LevelScan = std::vector<std::uint8_t>;

} // namespace veldron
