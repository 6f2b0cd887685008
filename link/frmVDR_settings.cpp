// SPDX-License-Identifier: MIT
// The settings of the unit and of the receiver behind it.
#include "link/frmVDR.h"

#include "common/LevelScan.h"
#include "common/Numbers.h"
#include "link/Wire.h"

#include <QtNumeric>

#include <optional>

namespace veldron {

namespace {

Hertz magnitude(Hertz value) {
    return value < Hertz() ? -value : value;
}

} // namespace

/// True: the unit took \a command. A refusal is silent; anything else is reported as \a report.
bool frmVDR::sendWrite(const QString &command, const QString &report) {
    const bool accepted = SendCommand(command);
    if (!accepted && m_LastReply != QLatin1String(Wire::kRefusal)) {
        ReportCommsFailure(report);
    }
    return accepted;
}

template <typename T>
void frmVDR::write(UnitSetting<T> &setting, const SettingLetters &letters, const T &value) {
    const QString command = QLatin1String(letters.write) + setting.codec.argument(value);
    const QString report = QLatin1String(letters.report) + setting.codec.reportedArgument(value);
    if (sendWrite(command, report)) {
        setting.cached = value;
    }
}

template <typename T>
void frmVDR::write(UnitSetting<T> &setting, const T &value) {
    write(setting, setting.letters, value);
}

template <typename T>
T frmVDR::read(UnitSetting<T> &setting, const SettingLetters &letters) {
    std::optional<T> value;
    if (SendCommand(QLatin1String(letters.read))) {
        value = setting.codec.value(m_LastReply);
    }
    m_readFailed = !value.has_value();
    setting.cached = value.value_or(setting.failure);
    return setting.cached;
}

template <typename T>
T frmVDR::read(UnitSetting<T> &setting) {
    return read(setting, setting.letters);
}

qint16 frmVDR::RXMode() {
    return read(m_settings.RXMode);
}

void frmVDR::setRXMode(qint16 value) {
    write(m_settings.RXMode, value);
}

qint16 frmVDR::RXType() {
    return read(m_settings.RXType);
}

void frmVDR::setRXType(qint16 value) {
    write(m_settings.RXType, value);
}

qint32 frmVDR::RXStep() {
    return read(m_settings.RXStep);
}

void frmVDR::setRXStep(qint32 value) {
    write(m_settings.RXStep, value);
}

bool frmVDR::RXAtten() {
    return read(m_settings.RXAtten);
}

void frmVDR::setRXAtten(bool value) {
    write(m_settings.RXAtten, value);
}

qint16 frmVDR::VDRAmp() {
    return read(m_settings.VDRAmp);
}

void frmVDR::setVDRAmp(qint16 value) {
    write(m_settings.VDRAmp, value);
}

qint16 frmVDR::VDRRBW() {
    return read(m_settings.VDRRBW);
}

void frmVDR::setVDRRBW(qint16 value) {
    write(m_settings.VDRRBW, value);
}

DataModeCode frmVDR::VDRDataMode() {
    return read(m_settings.VDRDataMode);
}

void frmVDR::setVDRDataMode(DataModeCode value) {
    write(m_settings.VDRDataMode, value);
}

const SettingLetters *frmVDR::samplesLetters() const {
    const DataModeCode mode = m_settings.VDRDataMode.cached;
    if (!hasSamples(mode)) {
        return nullptr;
    }
    return mode == DataModeCode::Median ? &kMedianSamples : &kAverageSamples;
}

qint16 frmVDR::VDRSamples() {
    const SettingLetters *const letters = samplesLetters();
    return letters != nullptr ? read(m_settings.VDRSamples, *letters)
                              : m_settings.VDRSamples.cached;
}

void frmVDR::setVDRSamples(qint16 value) {
    if (const SettingLetters *const letters = samplesLetters()) {
        write(m_settings.VDRSamples, *letters, value);
    }
}

MonitorModeCode frmVDR::VDRMonitorMode() {
    return read(m_settings.VDRMonitorMode);
}

void frmVDR::setVDRMonitorMode(MonitorModeCode value) {
    write(m_settings.VDRMonitorMode, value);
}

Hertz frmVDR::VDRCentre() {
    return read(m_settings.VDRCentre);
}

void frmVDR::setVDRCentre(Hertz value) {
    write(m_settings.VDRCentre, value);
}

qint32 frmVDR::VDRSpan() {
    return read(m_settings.VDRSpan);
}

void frmVDR::setVDRSpan(qint32 value) {
    write(m_settings.VDRSpan, value);
}

ChannelData frmVDR::VDRChData() {
    return read(m_settings.VDRChData);
}

void frmVDR::setVDRChData(const ChannelData &value) {
    write(m_settings.VDRChData, value);
}

Hertz frmVDR::VDRMarkerFreq() {
    return read(m_settings.VDRMarkerFreq);
}

qint32 frmVDR::markerStep() const {
    if (m_settings.VDRMonitorMode.cached == MonitorModeCode::Channel) {
        return m_settings.VDRChData.cached[1].roundedTo32();
    }
    return Numbers::roundTo<qint32>(static_cast<double>(m_settings.VDRSpan.cached) / kScanSteps);
}

void frmVDR::setVDRMarkerFreq(Hertz value) {
    const Hertz step = magnitude(Hertz::fromWhole(markerStep()));
    qint64 units = 0;
    // A difference past the type's range is far more than a screen.
    if (step == Hertz() ||
        qSubOverflow(value.units(), m_settings.VDRMarkerFreq.cached.units(), &units)) {
        return;
    }
    const Hertz delta = Hertz::fromUnits(units);
    const Hertz screen = step * kScanSteps;
    if (delta == Hertz() || delta > screen || delta < -screen) {
        return;
    }
    const bool upward = delta > Hertz();
    const qint64 count = Numbers::divideHalfEven(magnitude(delta).units(), step.units());
    for (qint64 done = 0; done < count; ++done) {
        stepMarker(upward ? Wire::kMarkerUp : Wire::kMarkerDown, upward ? step : -step);
    }
    // Whether the unit took the end of the steps changes nothing here.
    static_cast<void>(sendWrite(QLatin1String(Wire::kEndMarkerSteps),
                                QLatin1String(m_settings.VDRMarkerFreq.letters.report)));
}

void frmVDR::stepMarker(int direction, Hertz step) {
    UnitSetting<Hertz> &marker = m_settings.VDRMarkerFreq;
    const QString command = QLatin1String(marker.letters.write) + QString::number(direction);
    if (sendWrite(command, command)) {
        marker.cached += step;
    }
}

} // namespace veldron
