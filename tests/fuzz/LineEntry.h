// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace veldron {

/// Reads \a bytes as a text file, line by line, and each line's value as a number and a frequency.
/// Ends the process where a line or a number isn't the one that a plain reading gives, or a
/// frequency doesn't survive its own text.
void readLinesOf(const std::uint8_t *bytes, std::size_t size);

/// Reads each line's value as a date and a time. Ends the process where one that is taken doesn't
/// survive its own text.
void readTimesOf(const std::uint8_t *bytes, std::size_t size);

} // namespace veldron
