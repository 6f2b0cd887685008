// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace veldron {

/// Plays \a bytes forward as a recording with the main program's readers, without its window, under
/// a locale with one decimal mark and then under one with the other. Ends the process where a
/// reader breaks a promise (see LiteralPlayback.h).
void readHistoryText(const std::uint8_t *bytes, std::size_t size);

} // namespace veldron
