// SPDX-License-Identifier: MIT
#pragma once

#include "common/DateTimeText.h"
#include "common/TextFile.h"
#include "common/UntrappedError.h"
#include "format/ScanLine.h"
#include "history/HistoryHost.h"
#include "settings/FileDialogs.h"
#include "settings/SessionState.h"
#include "settings/SettingHolders.h"
#include "settings/SettingsHost.h"
#include "settings/SettingsLines.h"

#include <QDateTime>
#include <QString>
#include <QTimeZone>

#include <memory>
#include <optional>

namespace veldron {

class ctlPlayback;

/// Shows a history file on the chart, scan by scan.
///
/// The file is read strictly forward: no index, no seek. Stepping back moves within the rows that
/// the chart holds. Whatever is wrong with the file beyond an unknown line is an UntrappedError
/// that names file and line.
class PlaybackEngine {
public:
    /// \a folder is where the dialog starts. All references outlive the engine.
    struct Dependencies {
        SettingHolders holders;
        SessionState &session;
        SettingsLines &lines;
        HistoryHost &host;
        /// Shows the unit's settings again when playback ends.
        SettingsHost &panels;
        /// Paused at the end of the file.
        ctlPlayback &transport;
        FileDialogs &dialogs;
        const DateTimeText &texts;
        QString folder;
    };
    explicit PlaybackEngine(const Dependencies &dependencies);

    /// Asks for a file and shows its first scan. A file without a scan, and one whose only scan is
    /// its last line, is stranded: the transport stays visible over the live picture until Quit.
    void mnuFilePlayback();
    /// \a Direction below 1 steps back, 1 or more forward. With a stranded file this moves within
    /// the live chart. Without an open file, and during a recording, it only pauses the transport.
    void Step(qint16 Direction);
    /// Leaves playback: the panels return to the unit's settings.
    void Quit();
    /// Closes the file; harmless when none is open.
    void closeStream();

private:
    /// The last StartSettings line that was read.
    struct BlockDate {
        QString text;
        std::optional<QDate> date;
        qint64 line;
    };

    void open(const QString &path);
    /// From the first scan on: the chart is in playback and the poll rests.
    void startShowing();
    /// The next line of the file, which there must be; counts its bytes.
    [[nodiscard]] QString nextLine();
    // These change panels and chart: an error in a slot below them ends the program and closes the
    // file, so look at m_HistoryStream behind each call.
    bool readToNextScan();
    /// Reads a line and applies it; what is wrong with it is told with file and line.
    LoadedLine loadLine();
    /// Gives the last scan read to the chart, at its time.
    void feedChart();
    /// Shows time and share of what the chart shows now.
    void showPlace();
    // Each throws an UntrappedError where the file lacks what it takes.
    [[nodiscard]] QDateTime scanMoment() const;
    [[nodiscard]] QTime scanTime() const;
    [[nodiscard]] double shareRead() const;
    /// \a error as it is where the file has been closed meanwhile.
    [[nodiscard]] UntrappedError atLastLine(const UntrappedError &error) const;

    Dependencies m_dependencies;
    std::unique_ptr<TextFileReader> m_HistoryStream;
    QString m_HistoryFileName;
    qint64 m_HistoryFileSize = 0; ///< in bytes, when it was opened
    qint64 m_HistoryPosition = 0; ///< bytes read so far, each line end counted as two
    /// The place of the display relative to the last scan read, in scans: 0 or negative. A step
    /// forward by more scans than the chart holds leaves it above 0 until the next scan is read.
    qint32 m_RewindOffset = 0;
    QString m_line; ///< the last line that was read
    std::optional<BlockDate> m_ScanDate;
    /// The last scan that was read; nothing where the file has had none so far.
    std::optional<ScanLine> m_Scan;
    /// Date and time of the first scan shown. A stranded file keeps that of the playback before it.
    QDateTime m_PlaybackStart{QDate(1899, 12, 30), QTime(0, 0), QTimeZone::utc()};
};

} // namespace veldron
