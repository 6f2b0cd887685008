// SPDX-License-Identifier: MIT
// What the fuzzers and the replay of their corpus have in common: each function reads the bytes of
// a file and catches the errors that a bad file gives. Needs a QApplication.
#pragma once

#include <cstddef>
#include <cstdint>

namespace veldron {

/// Loads the bytes as a settings file, line by line.
void loadSettingsBytes(const std::uint8_t *bytes, std::size_t size);

/// Plays the bytes as a history file, back and forth, to its end or for 12 steps.
void playHistoryBytes(const std::uint8_t *bytes, std::size_t size);

/// Plays the bytes as a history file, forward to its end. Ends the process where that doesn't come
/// to what the readers alone come to (see LiteralPlayback.h).
void playHistoryToItsEnd(const std::uint8_t *bytes, std::size_t size);

} // namespace veldron
