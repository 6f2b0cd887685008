// SPDX-License-Identifier: MIT
#pragma once

namespace veldron {

/// The three pictures of the status bar's activity panel.
enum class ActivityImage {
    Blank = 1, ///< no link
    Idle = 2,  ///< between polls, or trying to connect
    Busy = 3,  ///< a poll is running
};

} // namespace veldron
