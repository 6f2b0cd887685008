// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace veldron {

/// Reads \a bytes as a text file, line by line, and each line's value as a number, a frequency, a
/// date and a time. Ends the process where the reader's promises are broken: lines whose lengths
/// and ends don't add up to the file, or a frequency that doesn't survive its own text.
void readLinesOf(const std::uint8_t *bytes, std::size_t size);

} // namespace veldron
