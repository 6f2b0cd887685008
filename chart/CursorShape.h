// SPDX-License-Identifier: MIT
#pragma once

namespace veldron {

/// Shapes of the mouse cursor, by the program's numbers for them.
enum class CursorShape {
    Default = 0,
    NorthSouth = 7,
    EastWest = 9,
    Hourglass = 11,
};

} // namespace veldron
