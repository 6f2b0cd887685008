// SPDX-License-Identifier: MIT
// The receivers that the unit can stand beside, and what it can ask of each.
#pragma once

#include <string_view>
#include <vector>

namespace veldron::UnitReceivers {

/// A type of receiver, as the unit knows it.
struct Receiver {
    std::string_view name;
    /// Codes of the demodulation modes that it has, its default first. None: the unit only uses its
    /// intermediate frequency and can't command it.
    std::vector<int> modes;
    bool attenuator = false;
};

/// Codes run from 1 to the number of receivers, 11.
inline constexpr int kFirst = 1;
[[nodiscard]] int last();

/// \a code must be from kFirst to last().
[[nodiscard]] const Receiver &at(int code);

/// True for a receiver that takes commands at all: step, mode and, if it has one, attenuator.
[[nodiscard]] bool takesCommands(int code);
[[nodiscard]] bool hasMode(int code, int mode);

} // namespace veldron::UnitReceivers
