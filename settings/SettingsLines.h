// SPDX-License-Identifier: MIT
#pragma once

#include "common/TextFile.h"
#include "format/ScanLine.h"
#include "format/SettingsBlock.h"
#include "settings/SettingsLine.h"

#include <QString>

#include <optional>

namespace veldron {

/// What the caller gets from a line that was loaded: at most one of the two is there, and neither
/// for an ordinary settings line, which is applied and done with.
struct LoadedLine {
    /// The scan of a scan line; the caller shows it.
    std::optional<ScanLine> scan;
    /// The date text of a StartSettings line, as it stands in the file; not yet read as a date.
    std::optional<QString> date;
};

/// Saves and loads settings lines, those of settings files and those of recordings.
///
/// Saving reads dialogs and panels, never the unit. Loading takes one line at a time and, outside
/// playback, sends each value to the unit in the order of the lines, with a pause of one second
/// before the settings that a receiver needs time for, and one behind the channels; the thread
/// stands still meanwhile. A whole block so takes five seconds where the receiver has settings of
/// its own.
///
/// Errors: a value that can't be converted, an integer out of its range and a scan line without a
/// time are UntrappedErrors; the lines before stay applied.
class SettingsLines {
public:
    SettingsLines(const SettingHolders &holders, const SessionState &session, SettingsHost &host,
                  Clock &clock, const DateTimeText &texts);

    /// Writes one block: in short form (without the display lines) while Recording.
    void SaveSettings(LineSink &sink) const;
    /// What SaveSettings writes.
    [[nodiscard]] SettingsBlock block() const;
    /// Applies \a line. A scan line and a line of an unknown key apply nothing.
    LoadedLine LoadSettings(const QString &line);

private:
    /// Loads \a value by the row \a line of the table: pause, unit, dialog, panel.
    void apply(const SettingsLine &line, const QString &value);

    SettingHolders m_holders;
    const SessionState &m_session;
    SettingsHost &m_host;
    Clock &m_clock;
    const DateTimeText &m_texts;
    /// The channel lines since the last StartSettings line. They are kept beyond the end of a file,
    /// because a file need not begin with that line.
    ChannelStore m_channels;
};

} // namespace veldron
