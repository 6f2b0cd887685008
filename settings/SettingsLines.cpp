// SPDX-License-Identifier: MIT
#include "settings/SettingsLines.h"

#include "chart/ctlChartSpectrum.h"
#include "common/UntrappedError.h"
#include "panels/ctlDataMode.h"
#include "panels/ctlFrequency.h"
#include "panels/ctlMonitorMode.h"
#include "settings/frmCommSettings.h"
#include "settings/frmDisplaySettings.h"
#include "utilities/GeneralUtilities.h"

#include <array>

namespace veldron {

namespace {

/// Receivers up to this code take no settings of their own.
constexpr qint16 kLastPlainReceiver = 2;

QString flagText(bool flag) {
    return flag ? QStringLiteral("True") : QStringLiteral("False");
}

QString noValue(const SettingsLines &) {
    return {};
}

} // namespace

/// What the lines are written from; nested for the sake of access.
struct SettingsLines::Sources {
    using S = const SettingsLines &;

    static bool written(S) { return true; }
    static bool notRecording(S s) { return !s.m_session.Recording; }
    static bool channels(S s) {
        return s.m_holders.ctlMonitorMode1.MonitorMode() == MonitorModeCode::Channel;
    }
    static bool noChannels(S s) { return !channels(s); }
    static bool ownReceiver(S s) { return s.m_holders.ctlFrequency1.RX() > kLastPlainReceiver; }
    static bool sampled(S s) { return hasSamples(s.m_holders.ctlDataMode1.DataMode()); }

    static QString frequency(S s, Hertz value) { return value.toText(s.m_texts.decimalMark()); }
    static QString date(S s) { return s.m_texts.dateText(s.m_clock.now().date()); }
    static QString PersistenceOn(S s) {
        return flagText(s.m_holders.displaySettings.PersistenceEnable());
    }
    static QString Persistence(S s) {
        return QString::number(s.m_holders.displaySettings.Persistence());
    }
    static QString WaterfallOn(S s) {
        return flagText(s.m_holders.displaySettings.WaterfallEnable());
    }
    static QString Palette(S s) {
        return QString::number(s.m_holders.displaySettings.PaletteIndex());
    }
    static QString Update(S s) { return QString::number(s.m_holders.displaySettings.Update()); }
    static QString MarkerOn(S s) { return flagText(s.m_holders.displaySettings.MarkerEnable()); }
    static QString Poll(S s) { return QString::number(s.m_holders.commSettings.Poll()); }
    static QString MonitorMode(S s) {
        return QString::number(static_cast<qint16>(s.m_holders.ctlMonitorMode1.MonitorMode()));
    }
    static QString Span(S s) { return frequency(s, s.m_holders.ctlMonitorMode1.fSpan()); }
    static QString Centre(S s) { return frequency(s, s.m_holders.ctlMonitorMode1.fCentre()); }
    static QString Start(S s) { return frequency(s, s.m_holders.ctlMonitorMode1.fStart()); }
    static QString Step(S s) { return frequency(s, s.m_holders.ctlMonitorMode1.fStep()); }
    static QString End(S s) { return frequency(s, s.m_holders.ctlMonitorMode1.fEnd()); }
    static QString MarkerFrequency(S s) {
        return frequency(s, s.m_holders.ctlChartSpectrum1.RXFreq());
    }
    static QString Receiver(S s) {
        return GeneralUtilities::ReceiverName(s.m_holders.ctlFrequency1.RX());
    }
    static QString RXMode(S s) {
        return GeneralUtilities::ModeName(s.m_holders.ctlFrequency1.Mode());
    }
    static QString RXStep(S s) { return QString::number(s.m_holders.ctlFrequency1.Step()); }
    static QString RXAtten(S s) { return flagText(s.m_holders.ctlFrequency1.Atten()); }
    static QString RBW(S s) { return QString::number(s.m_holders.ctlDataMode1.RBW()); }
    static QString Amp(S s) { return QString::number(s.m_holders.ctlDataMode1.Amp()); }
    static QString DataMode(S s) {
        return QString::number(static_cast<qint16>(s.m_holders.ctlDataMode1.DataMode()));
    }
    static QString Samples(S s) { return QString::number(s.m_holders.ctlDataMode1.Samples()); }

    static constexpr std::array<Row, 24> kRows{{
        {"StartSettings", written, date, &SettingsLines::applyStartSettings},
        {"PersistenceOn", notRecording, PersistenceOn, &SettingsLines::applyPersistenceOn},
        {"Persistence", notRecording, Persistence, &SettingsLines::applyPersistence},
        {"WaterfallOn", notRecording, WaterfallOn, &SettingsLines::applyWaterfallOn},
        {"Palette", notRecording, Palette, &SettingsLines::applyPalette},
        {"Update", notRecording, Update, &SettingsLines::applyUpdate},
        {"MarkerOn", notRecording, MarkerOn, &SettingsLines::applyMarkerOn},
        {"Poll", written, Poll, &SettingsLines::applyPoll},
        {"MonitorMode", written, MonitorMode, &SettingsLines::applyMonitorMode},
        {"Span", noChannels, Span, &SettingsLines::applySpan},
        {"Centre", noChannels, Centre, &SettingsLines::applyCentre},
        {"Start", channels, Start, &SettingsLines::applyStart},
        {"Step", channels, Step, &SettingsLines::applyStep},
        {"End", channels, End, &SettingsLines::applyEnd},
        {"MarkerFrequency", channels, MarkerFrequency, &SettingsLines::applyMarkerFrequency},
        {"Receiver", written, Receiver, &SettingsLines::applyReceiver},
        {"RXMode", ownReceiver, RXMode, &SettingsLines::applyRXMode},
        {"RXStep", ownReceiver, RXStep, &SettingsLines::applyRXStep},
        {"RXAtten", ownReceiver, RXAtten, &SettingsLines::applyRXAtten},
        {"RBW", written, RBW, &SettingsLines::applyRBW},
        {"Amp", written, Amp, &SettingsLines::applyAmp},
        {"DataMode", written, DataMode, &SettingsLines::applyDataMode},
        {"Samples", sampled, Samples, &SettingsLines::applySamples},
        {"EndSettings", written, noValue, &SettingsLines::applyEndSettings},
    }};
};

SettingsLines::SettingsLines(const SettingHolders &holders, SessionState &session,
                             SettingsHost &host, Clock &clock, const DateTimeText &texts)
    : m_holders(holders), m_session(session), m_host(host), m_clock(clock), m_texts(texts) {}

std::span<const SettingsLines::Row> SettingsLines::rows() {
    return Sources::kRows;
}

void SettingsLines::SaveSettings(LineSink &stream) const {
    for (const Row &row : rows()) {
        if (row.isWritten(*this)) {
            stream.writeLine(QLatin1String(row.key) + QLatin1Char(' ') + row.source(*this));
        }
    }
}

void SettingsLines::LoadSettings(const QString &line, bool &found) {
    found = false;
    const qsizetype blank = line.indexOf(QLatin1Char(' '));
    const QString key = blank < 0 ? line : line.left(blank);
    const QString value = blank < 0 ? QString() : line.mid(blank + 1);
    if (key == QLatin1String("Data")) {
        takeScan(value);
        found = true;
        return;
    }
    for (const Row &row : rows()) {
        if (key == QLatin1String(row.key)) {
            (this->*row.apply)(value);
            return;
        }
    }
}

/// A scan ends at its first blank, and at 323 levels in any case; what follows is the time.
void SettingsLines::takeScan(const QString &value) {
    constexpr qsizetype kLastPlace = 324;
    // Places are counted from 1; 0 stands for no blank at all.
    const qsizetype place = qMin(value.indexOf(QLatin1Char(' ')) + 1, kLastPlace);
    if (place < 2) {
        throw UntrappedError(UntrappedError::Kind::OutOfRange,
                             place == 0 ? QStringLiteral("a scan line has no time behind its scan")
                                        : QStringLiteral("a scan line has no scan in it"));
    }
    LevelScan scan;
    scan.reserve(static_cast<std::size_t>(place - 1));
    for (const QChar level : value.left(place - 1)) {
        scan.push_back(static_cast<std::uint8_t>(level.unicode()));
    }
    m_session.ScanData = std::move(scan);
    m_session.ScanTime = value.mid(place);
}

} // namespace veldron
