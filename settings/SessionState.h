// SPDX-License-Identifier: MIT
#pragma once

namespace veldron {

/// What recorder, playback and settings lines tell each other. Both are never true at once.
struct SessionState {
    /// A history file is being written; settings blocks have their short form.
    bool Recording = false;
    /// A history file drives the chart; loading settings then leaves unit and dialogs alone.
    bool InPlayback = false;
};

} // namespace veldron
