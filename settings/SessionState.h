// SPDX-License-Identifier: MIT
#pragma once

#include "common/LevelScan.h"

#include <QString>

namespace veldron {

/// What the form, the settings stream and the history share. Recording and InPlayback are never
/// both true.
struct SessionState {
    /// A history file is being written.
    bool Recording = false;
    /// A history file drives the chart; loading settings then leaves unit and dialogs alone.
    bool InPlayback = false;
    /// Date text of the last "StartSettings " line.
    QString ScanDate;
    /// Time text of the last data line.
    QString ScanTime;
    /// Levels of the last data line.
    LevelScan ScanData;
};

} // namespace veldron
