// SPDX-License-Identifier: MIT
// The table of settings lines: one row a line, with all that saving and loading know of it.
#pragma once

#include "common/Clock.h"
#include "common/DateTimeText.h"
#include "common/Hertz.h"
#include "format/SettingsKeys.h"
#include "settings/SessionState.h"
#include "settings/SettingHolders.h"
#include "settings/SettingsHost.h"

#include <QString>

#include <span>

namespace veldron {

/// The channel lines of a block, which take effect together at its end if there are exactly three.
struct ChannelStore {
    Hertz Start;
    Hertz Step;
    Hertz End;
    qint16 Count = 0;
};

/// What saving a line reads. All references outlive the call.
struct LineSource {
    const SettingHolders &holders;
    const SessionState &session;
    Clock &clock;
    const DateTimeText &texts;
};

/// What loading a line writes. \a value is the text behind the key.
struct LineTarget {
    const SettingHolders &holders;
    const SessionState &session;
    SettingsHost &host;
    Clock &clock;
    const DateTimeText &texts;
    ChannelStore &channels;
    const QString &value;
};

/// One line of the settings block.
///
/// Saving: where isWritten says so, the line is the key and the text of source.
///
/// Loading: toUnit, toDialog and toPanel run in this order, where they are there. Unit and dialog
/// are left alone in playback. An UntrappedError for a value that one of them can't take leaves the
/// later ones undone.
struct SettingsLine {
    /// How long loading waits before it writes to the unit; in playback nothing is written.
    enum class Pause {
        None,
        Receiver, ///< kReceiverPause, for a setting that the unit passes on to its receiver
    };

    SettingsKey key = SettingsKey::StartSettings;
    /// Whether a block that is saved now has the line.
    bool (*isWritten)(const LineSource &from) = nullptr;
    /// The text of the value, read from a panel or a dialog, never from the unit.
    QString (*source)(const LineSource &from) = nullptr;
    /// The wait before toUnit.
    Pause pause = Pause::None;
    void (*toUnit)(const LineTarget &to) = nullptr;
    void (*toDialog)(const LineTarget &to) = nullptr;
    /// Panels and chart.
    void (*toPanel)(const LineTarget &to) = nullptr;
};

/// All lines in the order in which they are written.
[[nodiscard]] std::span<const SettingsLine> settingsLines();

/// Seconds that the unit is busy with its receiver after a write to it. A command that comes sooner
/// is lost, so each such write is preceded by this pause.
inline constexpr float kReceiverPause = 1.0F;

} // namespace veldron
