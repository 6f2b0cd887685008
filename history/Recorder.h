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

/// Writes history files (.rec): the first line, a settings block in full form, then one line a
/// scan, with further blocks in short form wherever the unit's settings changed. format/ScanLine.h
/// describes the line of a scan.
///
/// Each line is one write, and each scan and each block is flushed to the disk before the function
/// returns, so that neither a killed program nor a power cut loses more than what is being written.
/// That takes some milliseconds a scan, tens on a slow disk.
///
/// Only mnuFileRecord() lets an error out: a recording that was running stops by itself instead,
/// and what was written stays.
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
    explicit Recorder(const Dependencies &dependencies);

    /// Starts a recording, or stops the running one. A failure to make the file or to write its
    /// head is an UntrappedError.
    void mnuFileRecord();
    /// Writes a scan, and the file's name and size into panel 1. A failure stops the recording.
    void writeScan(const LevelScan &scan);
    /// Writes a settings block, while recording. A failure stops the recording.
    void writeSettings();
    /// Closes the file and leaves Recording as it is; harmless when nothing is open.
    void closeStream();

private:
    /// Asks for the name. Recording and the locked controls begin only when the head is on the
    /// disk.
    void start();
    /// Closes the file first; one that can't be closed leaves everything as it is.
    void stop();
    /// One settings block, flushed to the disk.
    void writeBlock();
    /// An error where the file is no longer under its name.
    void learnSize();

    Dependencies m_dependencies;
    std::unique_ptr<TextFileWriter> m_HistoryStream;
    QString m_HistoryFileName;    ///< of the running recording, or of the last one
    qint64 m_HistoryFileSize = 0; ///< in bytes, after the last data line
};

} // namespace veldron
