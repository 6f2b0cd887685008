// SPDX-License-Identifier: MIT
// The parts of the program behind its window; included by the form's sources alone.
#pragma once

#include "app/LastSession.h"
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
/// There is one cycle. Reading everything back writes settings: a block into the recording, and a
/// file when it finds the link lost. Both are written through the settings lines, which read
/// everything back at the end of a block. So the mediation is given two parts that stand below it,
/// and uses them only once all parts stand.
struct frmDisplay::Parts {
    explicit Parts(frmDisplay &form);

    LinkScreen linkScreen;
    frmVDR vdr;
    frmCommSettings commSettings;
    frmDisplaySettings displaySettings;
    SettingHolders holders;
    PanelMediation mediation;
    SettingsLines settingsLines;
    SettingsFiles settingsFiles;
    LastSession lastSession;
    Recorder recorder;
    PlaybackEngine playback;
    RoundRobin roundRobin;
    ScanPipeline scans;
    PollLoop pollLoop;
};

} // namespace veldron
