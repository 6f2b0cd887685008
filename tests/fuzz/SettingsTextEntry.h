// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace veldron {

/// Reads \a bytes as a settings file as far as that goes without a window: lines, keys, values by
/// the form that each key has, the block. Ends the process where a value isn't the one that a plain
/// reading of the text gives, or an error isn't told in one short line with its place, or the block
/// doesn't survive being written and read again.
void readSettingsText(const std::uint8_t *bytes, std::size_t size);

} // namespace veldron
