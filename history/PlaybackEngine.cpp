// SPDX-License-Identifier: MIT
#include "history/PlaybackEngine.h"

#include "chart/ctlChartSpectrum.h"
#include "common/Numbers.h"
#include "common/ReportText.h"
#include "link/frmVDR.h"
#include "settings/SettingsFiles.h"
#include "settings/frmCommSettings.h"
#include "utilities/GeneralUtilities.h"

namespace veldron {

namespace {

using Kind = UntrappedError::Kind;

bool hasKey(const QString &line, QLatin1String key) {
    return line.startsWith(key) && (line.size() == key.size() || line[key.size()] == u' ');
}

} // namespace

PlaybackEngine::PlaybackEngine(const Dependencies &needs) : m_needs(needs) {}

void PlaybackEngine::mnuFilePlayback() {
    const auto path = m_needs.dialogs.openFile({QStringLiteral("History playback"),
                                                QStringLiteral("VELDRON History (*.rec)"),
                                                m_needs.folder, QStringLiteral("rec")});
    // Polls go on while the dialog is up, so the state is looked at again behind it.
    if (!path || m_needs.session.Recording || m_needs.session.InPlayback) {
        return;
    }
    open(*path);
    m_needs.host.showTransport(true);
    m_needs.host.SetControlsEnabled(false);
    if (!m_HistoryStream) {
        return; // an error while the form was laid out anew has ended the program
    }
    (void)readToNextScan();
    if (m_HistoryStream->atEnd()) {
        // Stranded on purpose: the transport stays up over the live poll until the user closes it.
        m_needs.session.InPlayback = false;
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
    m_needs.session.InPlayback = true;
    // A date left over from an earlier file must not stand in for one that this file lacks.
    m_needs.session.ScanDate.clear();
    m_dateLine = 0;
    (void)readLine(); // any text is taken for the header line
}

void PlaybackEngine::startShowing() {
    ctlChartSpectrum &chart = m_needs.holders.ctlChartSpectrum1;
    m_needs.host.setPollTimerEnabled(false);
    m_needs.host.setRecordEnabled(false);
    m_PlaybackStart = scanMoment();
    chart.setPlayback(true);
    feedChart();
    m_needs.host.showStatus(QStringLiteral("Playback from ") + m_HistoryFileName +
                            GeneralUtilities::FormatFileSize(m_HistoryFileSize));
    m_needs.host.hideClockAndActivity();
    m_needs.host.showPlaybackPlace(m_needs.session.ScanDate + QLatin1Char(' ') +
                                       m_needs.session.ScanTime,
                                   m_needs.texts.percentText(shareRead()));
}

QString PlaybackEngine::readLine() {
    QString line = m_HistoryStream->readLine();
    m_HistoryPosition += m_HistoryStream->lastLineLength() + 2;
    return line;
}

/// Applies lines up to and with the next data line; false when the file ends before one.
bool PlaybackEngine::readToNextScan() {
    bool found = false;
    while (!found && !m_HistoryStream->atEnd()) {
        applyLine(readLine(), found);
    }
    return found;
}

void PlaybackEngine::applyLine(const QString &line, bool &found) {
    if (hasKey(line, QLatin1String("StartSettings"))) {
        m_dateLine = m_HistoryStream->lineNumber();
    }
    try {
        m_needs.stream.LoadSettings(line, found);
    } catch (const UntrappedError &error) {
        QString what = error.message();
        if (hasKey(line, QLatin1String("Data"))) {
            what += QStringLiteral(" (a level of 10, 13 or 32 in a recording does this)");
        }
        fail(error.kind(), what);
    }
}

void PlaybackEngine::Step(qint16 Direction) {
    ctlChartSpectrum &chart = m_needs.holders.ctlChartSpectrum1;
    // A recording that was started over a stranded transport has the file's place.
    if (!m_HistoryStream || m_needs.session.Recording) {
        m_needs.host.stopTransport();
        return;
    }
    if (chart.Rewind(Direction)) {
        m_RewindOffset += Direction;
    } else if (Direction >= 1) {
        m_RewindOffset = 0;
        if (!readToNextScan()) {
            m_needs.host.stopTransport();
            return;
        }
        feedChart();
    }
    showPlace();
}

/// A scan that is too long for the chart's present span is dropped.
void PlaybackEngine::feedChart() {
    ctlChartSpectrum &chart = m_needs.holders.ctlChartSpectrum1;
    const LevelScan &scan = m_needs.session.ScanData;
    try {
        chart.SetPlaybackTime(m_needs.session.ScanTime);
    } catch (const UntrappedError &error) {
        if (error.kind() == Kind::BadValue) {
            failForTime();
        }
        throw atLineOf(*m_HistoryStream, error);
    }
    const double expected =
        (chart.ScanStop() - chart.ScanStart()).toDouble() / chart.DataResolution().toDouble() + 1.0;
    if (expected >= static_cast<double>(scan.size()) - 1.0) {
        chart.SetData(scan);
    }
    chart.Refresh();
}

/// Date and time of the last scan read. Dates and times are taken as they were written, without a
/// zone, so that no hour is ever missing or doubled.
QDateTime PlaybackEngine::scanMoment() const {
    const auto date = m_needs.texts.readDate(m_needs.session.ScanDate);
    if (!date) {
        failForDate();
    }
    const auto time = m_needs.texts.readTime(m_needs.session.ScanTime);
    if (!time) {
        failForTime();
    }
    return QDateTime(*date, *time, QTimeZone::utc());
}

/// The date may stand far above the scan that wants it.
void PlaybackEngine::failForDate() const {
    const QString &date = m_needs.session.ScanDate;
    if (m_dateLine == 0) {
        fail(Kind::BadValue, QStringLiteral("there is no StartSettings line with a date"));
    }
    const QString what = date.isEmpty() ? QStringLiteral("the StartSettings line has no date")
                                        : quotedForReport(date) + QStringLiteral(" is not a date");
    throw atLineOf(*m_HistoryStream, m_dateLine, UntrappedError(Kind::BadValue, what));
}

void PlaybackEngine::failForTime() const {
    const QString &time = m_needs.session.ScanTime;
    fail(Kind::BadValue,
         time.isEmpty() ? QStringLiteral("no time of day stands behind the scan")
                        : QStringLiteral("no time of day stands behind the scan but %1 (a level of "
                                         "10, 13 or 32 in a recording does this, and so do more "
                                         "than 323 levels)")
                              .arg(quotedForReport(time)));
}

double PlaybackEngine::shareRead() const {
    if (m_HistoryFileSize == 0) {
        fail(Kind::DivideByZero, QStringLiteral("the file had no size when it was opened"));
    }
    return static_cast<double>(m_HistoryPosition) / static_cast<double>(m_HistoryFileSize);
}

/// The time of a scan that is shown again is worked out from the present poll rate, whatever rate
/// it was recorded at.
void PlaybackEngine::showPlace() {
    const QDateTime t0 = scanMoment();
    const qint64 offset = qint64{m_RewindOffset} * m_needs.host.PollPeriod();
    if (offset != static_cast<qint32>(offset)) {
        fail(Kind::Overflow, QStringLiteral("the display stands too far from the last scan"));
    }
    const qint64 elapsed = m_PlaybackStart.msecsTo(t0);
    if (elapsed == 0) {
        fail(Kind::DivideByZero,
             QStringLiteral("the scan has the same time as the first one of the file, so there is "
                            "no telling how far the playback has come"));
    }
    const QDateTime t = t0.addMSecs(Numbers::divideHalfEven(offset, 1000) * 1000);
    const double share =
        (1.0 + static_cast<double>(offset) / static_cast<double>(elapsed)) * shareRead();
    m_needs.host.showPlaybackPlace(m_needs.texts.dateText(t.date()) + QLatin1Char(' ') +
                                       m_needs.texts.timeText(t.time()),
                                   m_needs.texts.percentText(share));
}

void PlaybackEngine::Quit() {
    ctlChartSpectrum &chart = m_needs.holders.ctlChartSpectrum1;
    HistoryHost &host = m_needs.host;
    host.setPollTimerEnabled(true);
    // A recording that was started over a stranded transport goes on, and keeps its hold.
    host.SetControlsEnabled(!m_needs.session.Recording);
    host.setRecordEnabled(true);
    m_needs.session.InPlayback = false;
    host.showTransport(false);
    closeStream();
    chart.setPlayback(false);
    chart.setPoll(Numbers::roundTo<qint16>(m_needs.holders.commSettings.Poll()));
    if (m_needs.holders.vdr.Connected()) {
        host.ReadBackSettings();
    }
    host.showStatus(m_needs.holders.vdr.Status());
    host.showClockAndActivity();
}

void PlaybackEngine::closeStream() {
    m_HistoryStream.reset();
}

void PlaybackEngine::fail(Kind kind, const QString &message) const {
    throw atLineOf(*m_HistoryStream, UntrappedError(kind, message));
}

} // namespace veldron
