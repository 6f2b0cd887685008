// SPDX-License-Identifier: MIT
#pragma once

#include "common/Clock.h"
#include "common/DateTimeText.h"
#include "common/LevelScan.h"
#include "common/TextFile.h"
#include "history/HistoryHost.h"
#include "settings/FileDialogs.h"
#include "settings/SettingsLines.h"

#include <QString>

#include <memory>

namespace veldron {

/// Writes history files (.rec): a header line, a settings block in full form, then one data line a
/// scan, with further blocks in short form wherever the unit's settings changed.
///
/// A data line is "Data ", one Latin-1 character a level, a blank and the time. Nothing is escaped:
/// a level of 10, 13 or 32 breaks its own line for the reader. Each line is one write, and each
/// scan and each block is forced onto the disk before anything else happens, so that neither a
/// killed program nor a power cut loses more than what is being written.
class Recorder {
public:
    /// \a folder is where the dialog starts. All references outlive the recorder.
    struct Dependencies {
        SessionState &session;
        SettingsLines &lines;
        HistoryHost &host;
        FileDialogs &dialogs;
        Clock &clock;
        const DateTimeText &texts;
        QString folder;
        Disk &disk = systemDisk();
    };
    explicit Recorder(const Dependencies &needs);

    /// Starts a recording, or stops the running one. A failure to make the file or to write its
    /// head is an UntrappedError.
    void mnuFileRecord();
    /// One data line, and the file's name and size on panel 1. Any failure stops the recording.
    void writeScan(const LevelScan &scan);
    /// A settings block, while recording. A failure stops the recording.
    void writeSettings();
    /// Closes the file and leaves Recording as it is; harmless when nothing is open.
    void closeStream();
    [[nodiscard]] QString HistoryFileName() const { return m_HistoryFileName; }
    /// Length of the file in bytes after the last data line.
    [[nodiscard]] qint64 HistoryFileSize() const { return m_HistoryFileSize; }

private:
    void start();
    void stop();
    void writeBlock();
    void learnSize();

    Dependencies m_needs;
    std::unique_ptr<TextFileWriter> m_HistoryStream;
    QString m_HistoryFileName;
    qint64 m_HistoryFileSize = 0;
};

} // namespace veldron
