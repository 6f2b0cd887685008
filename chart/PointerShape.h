// SPDX-License-Identifier: MIT
#pragma once

namespace veldron {

/// Shapes of the screen's pointer, by the numbers that the program has for them.
enum class PointerShape {
    Default = 0,
    NorthSouth = 7,
    EastWest = 9,
    Hourglass = 11,
};

} // namespace veldron
