// SPDX-License-Identifier: MIT
#pragma once

#include "common/TextFile.h"
#include "format/ScanLine.h"
#include "format/SettingsBlock.h"
#include "settings/SettingsLine.h"

#include <QString>

#include <optional>

namespace veldron {

/// What a line told apart from settings.
struct LoadedLine {
    /// The scan of a scan line.
    std::optional<ScanLine> scan;
    /// The date text of a StartSettings line.
    std::optional<QString> date;
};

/// Saves and loads settings lines, those of settings files and those of recordings.
///
/// Saving reads dialogs and panels, never the unit. Loading takes one line at a time and, outside
/// playback, sends each value to the unit in the order of the lines, with a pause of one second
/// before the settings that a receiver needs time for; the thread stands still meanwhile.
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
    /// Applies \a line, and returns what is no setting in it. A line of an unknown key does
    /// nothing.
    LoadedLine LoadSettings(const QString &line);

private:
    /// What a row of the table says of loading, in its order.
    void apply(const SettingsLine &line, const QString &value);

    SettingHolders m_holders;
    const SessionState &m_session;
    SettingsHost &m_host;
    Clock &m_clock;
    const DateTimeText &m_texts;
    /// Lives from line to line, and from file to file, until a block begins.
    ChannelStore m_channels;
};

} // namespace veldron
