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

/// Values in the order in which they are made: each is given references to those above it. They are
/// destroyed in the opposite order.
///
/// One cycle breaks this order. PanelMediation::ReadBackSettings writes a block into the recording,
/// and has the last session remember the settings. Recorder and LastSession take the block from
/// SettingsLines, and SettingsLines calls ReadBackSettings at the end of a block that it loads. So
/// the mediation is given references to recorder and lastSession, which are made after it; it uses
/// neither before the constructor has ended.
struct frmDisplay::Parts {
    explicit Parts(frmDisplay &form);

    // The unit behind the link, and the two dialogs that hold settings.
    LinkScreen linkScreen;
    frmVDR vdr;
    frmCommSettings commSettings;
    frmDisplaySettings displaySettings;
    // What carries settings between panels, chart, unit and files.
    SettingHolders holders;
    PanelMediation mediation;
    SettingsLines settingsLines;
    SettingsFiles settingsFiles;
    LastSession lastSession;
    // The history.
    Recorder recorder;
    PlaybackEngine playback;
    // The poll, from its parts to the whole.
    RoundRobin roundRobin;
    ScanPipeline scans;
    PollLoop pollLoop;
};

} // namespace veldron
