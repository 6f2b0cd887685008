// SPDX-License-Identifier: MIT
#include "history/PlaybackEngine.h"

#include "chart/ctlChartSpectrum.h"
#include "common/Numbers.h"
#include "format/FileErrors.h"
#include "format/FileKind.h"
#include "history/ctlPlayback.h"
#include "link/frmVDR.h"
#include "settings/frmCommSettings.h"
#include "utilities/NumberTexts.h"

namespace veldron {

PlaybackEngine::PlaybackEngine(const Dependencies &dependencies) : m_dependencies(dependencies) {}

void PlaybackEngine::mnuFilePlayback() {
    const auto path = m_dependencies.dialogs.openFile(
        {QStringLiteral("History playback"), QLatin1String(kHistoryFile.filter),
         m_dependencies.folder, QLatin1String(kHistoryFile.suffix)});
    // The poll timer runs while the dialog is up, so the state may have changed.
    if (!path || m_dependencies.session.Recording || m_dependencies.session.InPlayback) {
        return;
    }
    open(*path);
    m_dependencies.host.showTransport(true);
    m_dependencies.host.SetControlsEnabled(false);
    if (!m_HistoryStream) {
        return; // an error while the form was laid out anew has ended the program
    }
    (void)readToNextScan();
    if (!m_HistoryStream) {
        return;
    }
    if (m_HistoryStream->atEnd()) {
        // Stranded on purpose: the transport stays up over the live poll until the user closes it.
        m_dependencies.session.InPlayback = false;
        return;
    }
    startShowing();
}

void PlaybackEngine::open(const QString &path) {
    m_HistoryStream = std::make_unique<TextFileReader>(path);
    m_HistoryFileName = path;
    m_HistoryFileSize = m_HistoryStream->size();
    m_HistoryPosition = 0;
    m_RewindOffset = 0;
    m_dependencies.session.InPlayback = true;
    // Nothing of an earlier file is used for this one.
    m_ScanDate.reset();
    m_Scan.reset();
    (void)nextLine(); // any text is taken for the header line
}

void PlaybackEngine::startShowing() {
    ctlChartSpectrum &chart = m_dependencies.holders.ctlChartSpectrum1;
    // First of all: a poll would draw its scan among those of the file.
    m_dependencies.host.setPollTimerEnabled(false);
    m_dependencies.host.setRecordEnabled(false);
    m_PlaybackStart = scanMoment();
    chart.setPlayback(true);
    feedChart();
    if (!m_HistoryStream) {
        return;
    }
    m_dependencies.host.showStatus(QStringLiteral("Playback from ") + m_HistoryFileName +
                                   GeneralUtilities::FormatFileSize(m_HistoryFileSize));
    m_dependencies.host.hideClockAndActivity();
    m_dependencies.host.showPlaybackPlace(m_ScanDate->text + QLatin1Char(' ') + m_Scan->timeText,
                                          m_dependencies.texts.percentText(shareRead()));
}

QString PlaybackEngine::nextLine() {
    QString line = m_HistoryStream->readLine();
    m_HistoryPosition += m_HistoryStream->lastLineLength() + 2;
    return line;
}

/// Applies lines up to and with the next scan line; false when the file ends before one, or is
/// closed by an error in a slot.
bool PlaybackEngine::readToNextScan() {
    while (!m_HistoryStream->atEnd()) {
        LoadedLine loaded = loadLine();
        if (!m_HistoryStream) {
            return false;
        }
        if (loaded.date) {
            m_ScanDate = BlockDate{*loaded.date, m_dependencies.texts.readDate(*loaded.date),
                                   m_HistoryStream->lineNumber()};
        }
        if (loaded.scan) {
            m_Scan = std::move(loaded.scan);
            return true;
        }
    }
    return false;
}

LoadedLine PlaybackEngine::loadLine() {
    m_line = nextLine();
    try {
        return m_dependencies.lines.LoadSettings(m_line);
    } catch (const UntrappedError &error) {
        throw m_HistoryStream ? FileErrors::inLastLine(*m_HistoryStream, m_line, error) : error;
    }
}

void PlaybackEngine::Step(qint16 Direction) {
    ctlChartSpectrum &chart = m_dependencies.holders.ctlChartSpectrum1;
    // A recording may be started over a stranded file; the file is not stepped through meanwhile.
    if (!m_HistoryStream || m_dependencies.session.Recording) {
        m_dependencies.transport.StopPlay();
        return;
    }
    if (chart.Rewind(Direction)) {
        m_RewindOffset += Direction;
    } else if (Direction >= 1) {
        m_RewindOffset = 0;
        if (!readToNextScan()) {
            m_dependencies.transport.StopPlay();
            return;
        }
        feedChart();
    }
    if (m_HistoryStream) {
        showPlace();
    }
}

/// A scan that is too long for the chart's present span is dropped.
void PlaybackEngine::feedChart() {
    ctlChartSpectrum &chart = m_dependencies.holders.ctlChartSpectrum1;
    // Before the scan, which goes into the row that is open at its time.
    chart.SetPlaybackTime(m_Scan->timeText, scanTime());
    const double expected =
        (chart.ScanStop() - chart.ScanStart()).toDouble() / chart.DataResolution().toDouble() + 1.0;
    if (expected >= static_cast<double>(m_Scan->levels.size()) - 1.0) {
        chart.SetData(m_Scan->levels);
    }
    chart.Refresh();
}

/// Date and time of the last scan read. Dates and times are taken as they were written, without a
/// zone, so that no hour is ever missing or doubled.
QDateTime PlaybackEngine::scanMoment() const {
    if (!m_Scan) {
        throw atLastLine(FileErrors::noScan());
    }
    if (!m_ScanDate) {
        throw atLastLine(FileErrors::noDate());
    }
    if (!m_ScanDate->date) {
        // The line with the date may stand far above the scan that wants it.
        throw FileErrors::at(m_HistoryFileName, m_ScanDate->line,
                             FileErrors::notADate(m_ScanDate->text));
    }
    return QDateTime(*m_ScanDate->date, scanTime(), QTimeZone::utc());
}

QTime PlaybackEngine::scanTime() const {
    if (!m_Scan->time) {
        throw FileErrors::inLastLine(*m_HistoryStream, m_line,
                                     FileErrors::notATimeOfScan(m_Scan->timeText));
    }
    return *m_Scan->time;
}

double PlaybackEngine::shareRead() const {
    if (m_HistoryFileSize == 0) {
        throw atLastLine(FileErrors::noSize());
    }
    return static_cast<double>(m_HistoryPosition) / static_cast<double>(m_HistoryFileSize);
}

/// Behind the last scan read, the time is computed from the present poll rate, whatever rate the
/// file was recorded at.
void PlaybackEngine::showPlace() {
    const QDateTime t0 = scanMoment();
    const qint64 offset = qint64{m_RewindOffset} * m_dependencies.host.PollPeriod();
    if (offset != static_cast<qint32>(offset)) {
        throw atLastLine(FileErrors::tooFarBack());
    }
    const qint64 elapsed = m_PlaybackStart.msecsTo(t0);
    if (elapsed == 0) {
        throw atLastLine(FileErrors::noTimePassed());
    }
    const QDateTime t = t0.addMSecs(Numbers::divideHalfEven(offset, 1000) * 1000);
    const double share =
        (1.0 + static_cast<double>(offset) / static_cast<double>(elapsed)) * shareRead();
    m_dependencies.host.showPlaybackPlace(m_dependencies.texts.dateText(t.date()) +
                                              QLatin1Char(' ') +
                                              m_dependencies.texts.timeText(t.time()),
                                          m_dependencies.texts.percentText(share));
}

void PlaybackEngine::Quit() {
    ctlChartSpectrum &chart = m_dependencies.holders.ctlChartSpectrum1;
    HistoryHost &host = m_dependencies.host;
    host.setPollTimerEnabled(true);
    // A recording that was started over a stranded file goes on with the controls disabled.
    host.SetControlsEnabled(!m_dependencies.session.Recording);
    host.setRecordEnabled(true);
    m_dependencies.session.InPlayback = false;
    host.showTransport(false);
    closeStream();
    chart.setPlayback(false);
    chart.setPoll(Numbers::roundTo<qint16>(m_dependencies.holders.commSettings.Poll()));
    // With session and chart out of playback: only then does a scale have to come from good reads,
    // and the rows of the file are gone.
    if (m_dependencies.holders.vdr.Connected()) {
        m_dependencies.panels.ReadBackSettings();
    }
    host.showStatus(m_dependencies.holders.vdr.Status());
    host.showClockAndActivity();
}

void PlaybackEngine::closeStream() {
    m_HistoryStream.reset();
}

UntrappedError PlaybackEngine::atLastLine(const UntrappedError &error) const {
    return m_HistoryStream ? FileErrors::at(m_HistoryFileName, m_HistoryStream->lineNumber(), error)
                           : error;
}

} // namespace veldron
