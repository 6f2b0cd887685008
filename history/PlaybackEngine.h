// SPDX-License-Identifier: MIT
#pragma once

#include "common/DateTimeText.h"
#include "common/TextFile.h"
#include "common/UntrappedError.h"
#include "history/HistoryHost.h"
#include "settings/FileDialogs.h"
#include "settings/SettingHolders.h"
#include "settings/SettingsLines.h"

#include <QDateTime>
#include <QString>
#include <QTimeZone>

#include <memory>

namespace veldron {

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
        SettingsLines &stream;
        HistoryHost &host;
        FileDialogs &dialogs;
        const DateTimeText &texts;
        QString folder;
    };
    explicit PlaybackEngine(const Dependencies &needs);

    /// Asks for a file and shows its first scan. A file that ends before a data line is followed by
    /// any further line leaves the transport standing over the live poll until Quit.
    void mnuFilePlayback();
    /// \a Direction below 1 steps back, 1 or more forward. Over a stranded transport this moves the
    /// live chart. Without an open file, and during a recording, it only pauses the transport.
    void Step(qint16 Direction);
    /// Leaves playback: the panels return to the unit's settings.
    void Quit();
    /// Closes the file; harmless when none is open.
    void closeStream();

    /// Bytes of the file used up so far, each line end counted as two.
    [[nodiscard]] qint64 HistoryPosition() const { return m_HistoryPosition; }
    [[nodiscard]] qint64 HistoryFileSize() const { return m_HistoryFileSize; }
    /// How many scans the display stands behind the last one read: 0 or negative.
    [[nodiscard]] qint32 RewindOffset() const { return m_RewindOffset; }

private:
    void open(const QString &path);
    void startShowing();
    bool readToNextScan();
    [[nodiscard]] QString readLine();
    void applyLine(const QString &line, bool &found);
    void feedChart();
    void showPlace();
    [[nodiscard]] QDateTime scanMoment() const;
    [[nodiscard]] double shareRead() const;
    [[noreturn]] void failForDate() const;
    [[noreturn]] void failForTime() const;
    [[noreturn]] void fail(UntrappedError::Kind kind, const QString &message) const;

    Dependencies m_needs;
    std::unique_ptr<TextFileReader> m_HistoryStream;
    QString m_HistoryFileName;
    qint64 m_HistoryFileSize = 0;
    qint64 m_HistoryPosition = 0;
    qint32 m_RewindOffset = 0;
    /// Number of the line that ScanDate is from, 0 while there is none.
    qint64 m_dateLine = 0;
    /// Before the first playback, the day from which dates are counted.
    QDateTime m_PlaybackStart{QDate(1899, 12, 30), QTime(0, 0), QTimeZone::utc()};
};

} // namespace veldron
