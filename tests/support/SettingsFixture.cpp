// SPDX-License-Identifier: MIT
#include "tests/support/SettingsFixture.h"

#include "settings/ChartUpdate.h"

namespace veldron {

namespace {

QString text(bool value) {
    return value ? QStringLiteral("True") : QStringLiteral("False");
}
QString text(Hertz value) {
    return value.toText();
}
QString text(qint32 value) {
    return QString::number(value);
}

template <typename Value>
QString entry(const char *name, Value value) {
    return QLatin1String(name) + QLatin1Char(' ') + text(value);
}

} // namespace

SettingsFixture::SettingsFixture(const QLocale &locale) : texts(locale) {
    ctlChartSpectrum1.resize(400, 300);
    line.setUnit(true);
    line.setCommandHook([this](const QString &command) { note(command); });
    setUp();
}

void SettingsFixture::setUp() {
    displaySettings.setValues({.Persistence = 5, .PaletteIndex = 0, .Update = 10});
    commSettings.setPoll(1000);
    ctlMonitorMode1.setMonitorMode(MonitorModeCode::Spectrum);
    ctlMonitorMode1.setfCentre(Hertz::fromWhole(145500000));
    ctlMonitorMode1.setfSpan(Hertz::fromWhole(10000000));
    ctlFrequency1.setFrequency(Hertz::fromWhole(145500000));
    ctlFrequency1.setRX(5);
    ctlFrequency1.setMode(2);
    ctlFrequency1.setStep(25000);
    ctlDataMode1.setRBW(1);
    ctlDataMode1.setAmp(0);
    DataModeCode mode = DataModeCode::Normal;
    ctlDataMode1.setDataMode(mode);
    ctlDataMode1.setSamples(3);
    ctlChartSpectrum1.setPoll(1000);
    updateChartFrequencies(holders);
    updateChartDisplay(holders);
    scanDate.clear();
    scan.reset();
    log.clear();
}

void SettingsFixture::connectUnit() {
    vdr.setCommPort(1);
    vdr.Connect();
    log.clear();
    m_lastEvent = clock.seconds();
}

bool SettingsFixture::load(const QString &textLine) {
    const LoadedLine loaded = lines.LoadSettings(textLine);
    noteWait();
    if (loaded.date) {
        scanDate = *loaded.date;
    }
    if (loaded.scan) {
        scan = loaded.scan;
    }
    return loaded.scan.has_value();
}

void SettingsFixture::loadAll(const QStringList &textLines) {
    for (const QString &textLine : textLines) {
        load(textLine);
    }
}

QStringList SettingsFixture::saved() const {
    LineList sink;
    lines.SaveSettings(sink);
    return sink.lines();
}

QStringList SettingsFixture::changesOf(const QString &textLine) {
    const QStringList before = state();
    load(textLine);
    QStringList changed;
    for (const QString &item : state()) {
        if (!before.contains(item)) {
            changed.append(item);
        }
    }
    return changed;
}

void SettingsFixture::UpdateChartSettings() {
    note(QStringLiteral("UpdateChartSettings"));
    updateChartFrequencies(holders);
    updateChartDisplay(holders);
}

void SettingsFixture::noteWait() {
    const double passed = clock.seconds() - m_lastEvent;
    m_lastEvent = clock.seconds();
    // The stale read ahead of a command takes some milliseconds and is no wait of the load.
    constexpr double kShortestWait = 0.06;
    if (passed >= kShortestWait) {
        log.append(QStringLiteral("wait %1").arg(passed, 0, 'f', 1));
    }
}

void SettingsFixture::note(const QString &entry) {
    noteWait();
    log.append(entry);
}

QStringList SettingsFixture::chartState() const {
    const ctlChartSpectrum &chart = ctlChartSpectrum1;
    return {entry("chart Peak", chart.Peak()),
            entry("chart Timespan", chart.Timespan()),
            entry("chart DisplayType", static_cast<qint32>(chart.DisplayType())),
            entry("chart Palette", qint32{chart.Palette()}),
            entry("chart Update", chart.Update()),
            entry("chart MarkerEn", chart.MarkerEn()),
            entry("chart Poll", qint32{chart.Poll()}),
            entry("chart RXFreq", chart.RXFreq())};
}

QStringList SettingsFixture::panelState() const {
    return {entry("receiver RX", qint32{ctlFrequency1.RX()}),
            entry("receiver Frequency", ctlFrequency1.Frequency()),
            entry("receiver Mode", qint32{ctlFrequency1.Mode()}),
            entry("receiver Step", ctlFrequency1.Step()),
            entry("receiver Atten", ctlFrequency1.Atten()),
            entry("monitor MonitorMode", static_cast<qint32>(ctlMonitorMode1.MonitorMode())),
            entry("monitor fSpan", ctlMonitorMode1.fSpan()),
            entry("monitor fStep", ctlMonitorMode1.fStep()),
            entry("monitor fStart", ctlMonitorMode1.fStart()),
            entry("monitor fCentre", ctlMonitorMode1.fCentre()),
            entry("monitor fEnd", ctlMonitorMode1.fEnd()),
            entry("data RBW", qint32{ctlDataMode1.RBW()}),
            entry("data Amp", qint32{ctlDataMode1.Amp()}),
            entry("data DataMode", static_cast<qint32>(ctlDataMode1.DataMode())),
            entry("data Samples", qint32{ctlDataMode1.Samples()})};
}

QStringList SettingsFixture::state() const {
    const QStringList dialogs = {
        entry("dialog PersistenceEnable", displaySettings.values().PersistenceEnable),
        entry("dialog Persistence", displaySettings.values().Persistence),
        entry("dialog WaterfallEnable", displaySettings.values().WaterfallEnable),
        entry("dialog PaletteIndex", qint32{displaySettings.values().PaletteIndex}),
        entry("dialog Update", displaySettings.values().Update),
        entry("dialog MarkerEnable", displaySettings.values().MarkerEnable),
        entry("dialog Poll", commSettings.Poll())};
    return QStringList{QStringLiteral("session ScanDate ") + scanDate} + dialogs + chartState() +
           panelState();
}

} // namespace veldron
