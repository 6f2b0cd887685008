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
    /// What comes before the write to the unit, outside playback.
    enum class Pause {
        None,
        Receiver, ///< one second: the unit drops what comes sooner behind a write to its receiver
    };

    SettingsKey key = SettingsKey::StartSettings;
    /// Whether a block that is saved now has the line.
    bool (*isWritten)(const LineSource &from) = nullptr;
    /// The text of the value, read from a panel or a dialog, never from the unit.
    QString (*source)(const LineSource &from) = nullptr;
    /// Ahead of toUnit.
    Pause pause = Pause::None;
    void (*toUnit)(const LineTarget &to) = nullptr;
    void (*toDialog)(const LineTarget &to) = nullptr;
    /// Panels and chart.
    void (*toPanel)(const LineTarget &to) = nullptr;
};

/// All lines in the order in which they are written.
[[nodiscard]] std::span<const SettingsLine> settingsLines();

/// How long the unit is given after a write to its receiver, in seconds.
inline constexpr float kReceiverPause = 1.0F;

} // namespace veldron
