// SPDX-License-Identifier: MIT
#include "history/Recorder.h"

#include "common/UntrappedError.h"
#include "format/FileKind.h"
#include "format/ScanLine.h"
#include "utilities/NumberTexts.h"

#include <QFile>

namespace veldron {

Recorder::Recorder(const Dependencies &needs) : m_needs(needs) {}

void Recorder::mnuFileRecord() {
    if (m_needs.session.Recording) {
        stop();
    } else {
        start();
    }
}

void Recorder::start() {
    const auto path = m_needs.dialogs.saveFile({QStringLiteral("Record to file"),
                                                QLatin1String(kHistoryFile.filter), m_needs.folder,
                                                QLatin1String(kHistoryFile.suffix)});
    // The poll timer runs while the dialog is up, so the state may have changed.
    if (!path || m_needs.session.Recording || m_needs.session.InPlayback) {
        return;
    }
    m_HistoryFileName = *path;
    m_HistoryFileSize = 0;
    m_HistoryStream = std::make_unique<TextFileWriter>(*path, m_needs.disk);
    m_HistoryStream->writeLine(QLatin1String(kHistoryFile.firstLine));
    writeBlock();
    m_needs.session.Recording = true;
    m_needs.host.setRecordCaption(QStringLiteral("Stop recording"));
    m_needs.host.SetControlsEnabled(false);
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
    m_needs.session.Recording = false;
    m_needs.host.setRecordCaption(QStringLiteral("Record"));
    m_needs.host.SetControlsEnabled(true);
}

void Recorder::writeBlock() {
    m_needs.lines.SaveSettings(*m_HistoryStream);
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
            ScanLine::lineFor(scan, m_needs.clock.now().time(), m_needs.texts));
        m_HistoryStream->sync();
        learnSize();
    } catch (const UntrappedError &) {
        // Trapped: the scans written so far stay in the file.
        stop();
        return;
    }
    m_needs.host.showStatus(QStringLiteral("Recording to file ") + m_HistoryFileName +
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
    if (!m_needs.session.Recording || !m_HistoryStream) {
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
