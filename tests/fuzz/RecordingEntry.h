// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace veldron {

/// Reads \a bytes as a recording without loss, and judges and sums it up. Ends the process where a
/// promise is broken: a byte that is delivered twice, out of order or not at all, and in no stretch
/// that is told as skipped; a scan whose parts aren't those of its line; a judgement that isn't
/// what the main program's own readers come to (see LiteralPlayback.h).
void readRecordingBytes(const std::uint8_t *bytes, std::size_t size);

/// Repairs \a bytes as a recording. Ends the process where a copy with scans isn't playable, or
/// is called so and isn't, or isn't left as it is by a second repair, or where the summary's JSON
/// is none.
void repairRecordingBytes(const std::uint8_t *bytes, std::size_t size);

} // namespace veldron
