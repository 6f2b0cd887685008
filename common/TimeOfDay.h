// SPDX-License-Identifier: MIT
#pragma once

namespace veldron {

/// The length of a day in seconds. Times of day run from 0 up to it, and differences of two times
/// of day are taken modulo it.
inline constexpr int kSecondsPerDay = 86'400;

} // namespace veldron
