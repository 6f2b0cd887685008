// SPDX-License-Identifier: MIT
// The parts of the program behind its window; included by the form's sources alone.
#pragma once

#include "app/LinkScreen.h"
#include "app/PanelMediation.h"
#include "app/PollLoop.h"
#include "app/RoundRobin.h"
#include "app/ScanPipeline.h"
#include "app/frmDisplay.h"
#include "history/PlaybackEngine.h"
#include "history/Recorder.h"
#include "link/frmVDR.h"
#include "settings/SettingsFiles.h"
#include "settings/SettingsLines.h"
#include "settings/frmCommSettings.h"
#include "settings/frmDisplaySettings.h"

namespace veldron {

/// Values in the order in which they stand on each other: each is given those above it, and they go
/// in the opposite order.
///
/// There is one knot. Reading everything back ends with a block in the recording, which the
/// recorder writes through the settings lines, which reads everything back at the end of a file.
/// So the mediation is given the recorder below it, and uses it only once all parts stand.
struct frmDisplay::Parts {
    explicit Parts(frmDisplay &form);

    LinkScreen linkScreen;
    frmVDR vdr;
    frmCommSettings commSettings;
    frmDisplaySettings displaySettings;
    SettingHolders instruments;
    PanelMediation mediation;
    SettingsLines settingsLines;
    SettingsFiles settingsFiles;
    Recorder recorder;
    PlaybackEngine playback;
    RoundRobin roundRobin;
    ScanPipeline scans;
    PollLoop pollLoop;
};

} // namespace veldron
