// SPDX-License-Identifier: MIT
#pragma once

#include "common/Clock.h"
#include "common/DateTimeText.h"
#include "common/Hertz.h"
#include "common/TextFile.h"
#include "settings/SessionState.h"
#include "settings/SettingHolders.h"
#include "settings/SettingsHost.h"

#include <QString>

#include <span>

namespace veldron {

/// Writes and reads the settings block: one line a setting, "key value", from "StartSettings " to
/// "EndSettings ". Settings files and history files both hold such blocks.
///
/// Writing reads dialogs and panels, never the unit. Reading takes one line at a time and, outside
/// playback, sends each value to the unit in the order of the lines, with a wait of one second
/// before the settings that a receiver needs time for; the thread stands still meanwhile.
///
/// Errors: a value that can't be converted, an integer out of its range and a scan line without a
/// time are UntrappedErrors; the lines before stay applied.
class SettingsLines {
public:
    SettingsLines(const SettingHolders &holders, SessionState &session, SettingsHost &host,
                  Clock &clock, const DateTimeText &texts);

    /// Writes one block to \a stream: in short form (without the display lines) while Recording.
    void SaveSettings(LineSink &stream) const;
    /// Applies \a line. \a found comes back true for a scan line, which only fills ScanData and
    /// ScanTime. Unknown keys do nothing.
    void LoadSettings(const QString &line, bool &found);

    /// One line of the block.
    struct Row {
        const char *key;
        /// Whether the block holds the line as things stand.
        bool (*isWritten)(const SettingsLines &stream);
        /// The value's text.
        QString (*source)(const SettingsLines &stream);
        /// What a line of this key does.
        void (SettingsLines::*apply)(const QString &value);
    };
    /// All lines in the order in which they are written.
    [[nodiscard]] static std::span<const Row> rows();

private:
    struct Sources;

    void wait();
    void applyStartSettings(const QString &value);
    void applyPersistenceOn(const QString &value);
    void applyPersistence(const QString &value);
    void applyWaterfallOn(const QString &value);
    void applyPalette(const QString &value);
    void applyUpdate(const QString &value);
    void applyMarkerOn(const QString &value);
    void applyPoll(const QString &value);
    void applyMonitorMode(const QString &value);
    void applySpan(const QString &value);
    void applyCentre(const QString &value);
    void applyStart(const QString &value);
    void applyStep(const QString &value);
    void applyEnd(const QString &value);
    void applyMarkerFrequency(const QString &value);
    void applyReceiver(const QString &value);
    void applyRXMode(const QString &value);
    void applyRXStep(const QString &value);
    void applyRXAtten(const QString &value);
    void applyRBW(const QString &value);
    void applyAmp(const QString &value);
    void applyDataMode(const QString &value);
    void applySamples(const QString &value);
    void applyEndSettings(const QString &value);
    void countChannelLine();
    void applyChannels();
    void takeScan(const QString &value);
    [[nodiscard]] Hertz decimal(const QString &value) const;

    SettingHolders m_holders;
    SessionState &m_session;
    SettingsHost &m_host;
    Clock &m_clock;
    const DateTimeText &m_texts;
    Hertz m_ChannelStart;
    Hertz m_ChannelStep;
    Hertz m_ChannelEnd;
    qint16 m_ChannelCount = 0;
};

} // namespace veldron
