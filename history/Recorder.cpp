// SPDX-License-Identifier: MIT
#include "history/Recorder.h"

#include "common/UntrappedError.h"
#include "format/FileKind.h"
#include "format/ScanLine.h"
#include "utilities/NumberTexts.h"

#include <QFile>

namespace veldron {

Recorder::Recorder(const Dependencies &dependencies) : m_dependencies(dependencies) {}

void Recorder::mnuFileRecord() {
    if (m_dependencies.session.Recording) {
        stop();
    } else {
        start();
    }
}

void Recorder::start() {
    const auto path = m_dependencies.dialogs.saveFile(
        {QStringLiteral("Record to file"), QLatin1String(kHistoryFile.filter),
         m_dependencies.folder, QLatin1String(kHistoryFile.suffix)});
    // The poll timer runs while the dialog is up, so the state may have changed.
    if (!path || m_dependencies.session.Recording || m_dependencies.session.InPlayback) {
        return;
    }
    m_HistoryFileName = *path;
    m_HistoryFileSize = 0;
    m_HistoryStream = std::make_unique<TextFileWriter>(*path, m_dependencies.disk);
    m_HistoryStream->writeLine(QLatin1String(kHistoryFile.firstLine));
    writeBlock();
    // Behind the block: while Recording, blocks have their short form, and the first one is in
    // full.
    m_dependencies.session.Recording = true;
    m_dependencies.host.setRecordCaption(QStringLiteral("Stop recording"));
    m_dependencies.host.SetControlsEnabled(false);
}

void Recorder::stop() {
    try {
        if (m_HistoryStream) {
            m_HistoryStream->close();
        }
    } catch (const UntrappedError &) {
        return; // Trapped: the recording stands, and the next scan or click stops it.
    }
    closeStream();
    m_dependencies.session.Recording = false;
    m_dependencies.host.setRecordCaption(QStringLiteral("Record"));
    m_dependencies.host.SetControlsEnabled(true);
}

void Recorder::writeBlock() {
    m_dependencies.lines.SaveSettings(*m_HistoryStream);
    m_HistoryStream->sync();
}

void Recorder::closeStream() {
    m_HistoryStream.reset();
}

void Recorder::writeScan(const LevelScan &scan) {
    try {
        if (!m_HistoryStream) {
            throw UntrappedError(UntrappedError::Kind::File,
                                 QStringLiteral("The recording is closed"));
        }
        m_HistoryStream->writeLine(
            ScanLine::lineFor(scan, m_dependencies.clock.now().time(), m_dependencies.texts));
        m_HistoryStream->sync();
        // Behind the flush, so that the size shown is on the disk.
        learnSize();
    } catch (const UntrappedError &) {
        // Trapped: the scans written so far stay in the file.
        stop();
        return;
    }
    m_dependencies.host.showStatus(QStringLiteral("Recording to file ") + m_HistoryFileName +
                                   GeneralUtilities::FormatFileSize(m_HistoryFileSize));
}

/// Asks for the size by the name, not by the handle: so a file that was removed or moved meanwhile
/// is noticed.
void Recorder::learnSize() {
    QFile file(m_HistoryFileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        throw UntrappedError(UntrappedError::Kind::File, file.errorString());
    }
    m_HistoryFileSize = file.size();
}

void Recorder::writeSettings() {
    if (!m_dependencies.session.Recording || !m_HistoryStream) {
        return;
    }
    try {
        writeBlock();
    } catch (const UntrappedError &) {
        // Trapped like a scan that can't be written.
        stop();
    }
}

} // namespace veldron
