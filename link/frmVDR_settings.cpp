// SPDX-License-Identifier: MIT
// The settings of the unit and of the receiver behind it.
#include "link/frmVDR.h"

#include "common/Numbers.h"
#include "link/WireNumber.h"
#include "utilities/GeneralUtilities.h"

#include <QtNumeric>

#include <cmath>

namespace veldron {

namespace {

constexpr qint64 kHertzPerKilohertz = 1000;
constexpr qint64 kHertzPerMegahertz = 1000000;
constexpr qint16 kAverageMode = 2;
constexpr qint16 kMedianMode = 4;
constexpr qint16 kChannelMode = 3;
/// Steps from one edge of the unit's screen to the other.
constexpr qint32 kScreenSteps = 320;
constexpr Hertz kFailedFrequency = Hertz::fromWhole(-1);

QString scaledText(Hertz value, qint64 hertzPerUnit) {
    return wireNumber(value.toDouble() / static_cast<double>(hertzPerUnit));
}

Hertz scaledNumber(const QString &text, qint64 hertzPerUnit) {
    return Hertz::fromDouble(GeneralUtilities::LeadingNumber(text) *
                             static_cast<double>(hertzPerUnit));
}

Hertz magnitude(Hertz value) {
    return value < Hertz() ? -value : value;
}

} // namespace

DeviceValue frmVDR::cached(CacheSlot slot) const {
    return m_cache.at(static_cast<std::size_t>(slot));
}

void frmVDR::send(const QString &command, const QString &report,
                  const std::function<void()> &accepted) {
    if (SendCommand(command)) {
        accepted();
    } else if (m_LastReply != QLatin1String("?")) {
        ReportCommsFailure(report);
    }
}

void frmVDR::writeSetting(const DeviceCommand &command, const DeviceValue &value) {
    send(writeText(command, value), reportText(command, value),
         [&] { m_cache.at(static_cast<std::size_t>(command.slot)) = value; });
}

const DeviceValue &frmVDR::readSetting(const DeviceCommand &command) {
    const bool positive = SendCommand(QLatin1String(command.readLetters));
    DeviceValue &slot = m_cache.at(static_cast<std::size_t>(command.slot));
    slot = positive ? parseReply(command, m_LastReply) : command.failure;
    return slot;
}

qint16 frmVDR::RXMode() {
    return std::get<qint16>(readSetting(deviceCommand(CacheSlot::Mode)));
}

void frmVDR::setRXMode(qint16 value) {
    writeSetting(deviceCommand(CacheSlot::Mode), value);
}

qint16 frmVDR::RXType() {
    return std::get<qint16>(readSetting(deviceCommand(CacheSlot::Receiver)));
}

void frmVDR::setRXType(qint16 value) {
    writeSetting(deviceCommand(CacheSlot::Receiver), value);
}

qint32 frmVDR::RXStep() {
    return std::get<qint32>(readSetting(deviceCommand(CacheSlot::Step)));
}

void frmVDR::setRXStep(qint32 value) {
    writeSetting(deviceCommand(CacheSlot::Step), value);
}

bool frmVDR::RXAtten() {
    return std::get<bool>(readSetting(deviceCommand(CacheSlot::Attenuator)));
}

void frmVDR::setRXAtten(bool value) {
    writeSetting(deviceCommand(CacheSlot::Attenuator), value);
}

qint16 frmVDR::VDRAmp() {
    return std::get<qint16>(readSetting(deviceCommand(CacheSlot::Amplitude)));
}

void frmVDR::setVDRAmp(qint16 value) {
    writeSetting(deviceCommand(CacheSlot::Amplitude), value);
}

qint16 frmVDR::VDRRBW() {
    return std::get<qint16>(readSetting(deviceCommand(CacheSlot::Bandwidth)));
}

void frmVDR::setVDRRBW(qint16 value) {
    writeSetting(deviceCommand(CacheSlot::Bandwidth), value);
}

qint16 frmVDR::VDRDataMode() {
    return std::get<qint16>(readSetting(deviceCommand(CacheSlot::DataMode)));
}

void frmVDR::setVDRDataMode(qint16 value) {
    writeSetting(deviceCommand(CacheSlot::DataMode), value);
}

const DeviceCommand *frmVDR::samplesCommand() const {
    const qint16 mode = std::get<qint16>(cached(CacheSlot::DataMode));
    if (mode == kAverageMode) {
        return &deviceCommand("RSAV");
    }
    return mode == kMedianMode ? &deviceCommand("RSME") : nullptr;
}

qint16 frmVDR::VDRSamples() {
    if (const DeviceCommand *command = samplesCommand()) {
        readSetting(*command);
    }
    return std::get<qint16>(cached(CacheSlot::Samples));
}

void frmVDR::setVDRSamples(qint16 value) {
    if (const DeviceCommand *command = samplesCommand()) {
        writeSetting(*command, value);
    }
}

qint16 frmVDR::VDRMonitorMode() {
    return std::get<qint16>(readSetting(deviceCommand(CacheSlot::MonitorMode)));
}

void frmVDR::setVDRMonitorMode(qint16 value) {
    writeSetting(deviceCommand(CacheSlot::MonitorMode), value);
}

Hertz frmVDR::VDRCentre() {
    return std::get<Hertz>(readSetting(deviceCommand(CacheSlot::Centre)));
}

void frmVDR::setVDRCentre(Hertz value) {
    writeSetting(deviceCommand(CacheSlot::Centre), value);
}

qint32 frmVDR::VDRSpan() {
    return std::get<qint32>(readSetting(deviceCommand(CacheSlot::Span)));
}

void frmVDR::setVDRSpan(qint32 value) {
    writeSetting(deviceCommand(CacheSlot::Span), value);
}

ChannelData frmVDR::VDRChData() {
    if (SendCommand(QStringLiteral("RUCS"))) {
        m_VDRChData[0] = takeChannelField(kHertzPerMegahertz);
        m_VDRChData[1] = takeChannelField(kHertzPerKilohertz);
        m_VDRChData[2] = scaledNumber(m_LastReply, kHertzPerMegahertz);
    } else {
        m_VDRChData.fill(kFailedFrequency);
    }
    return m_VDRChData;
}

Hertz frmVDR::takeChannelField(qint64 hertzPerUnit) {
    // Without a blank the field is empty, which reads as 0, and the text stays for the next one.
    const qsizetype length = m_LastReply.indexOf(QLatin1Char(' ')) + 1;
    const Hertz field = scaledNumber(m_LastReply.left(length), hertzPerUnit);
    m_LastReply.remove(0, length);
    return field;
}

void frmVDR::setVDRChData(const ChannelData &value) {
    const QString command = QStringLiteral("WUCS ") + scaledText(value[0], kHertzPerMegahertz) +
                            QLatin1Char(' ') + scaledText(value[1], kHertzPerKilohertz) +
                            QLatin1Char(' ') + scaledText(value[2], kHertzPerMegahertz);
    send(command, command, [&] { m_VDRChData = value; });
}

Hertz frmVDR::VDRMarkerFreq() {
    m_VDRMarkerFreq = SendCommand(QStringLiteral("RICD"))
                          ? scaledNumber(m_LastReply, kHertzPerMegahertz)
                          : kFailedFrequency;
    return m_VDRMarkerFreq;
}

qint32 frmVDR::markerStep() const {
    if (std::get<qint16>(cached(CacheSlot::MonitorMode)) == kChannelMode) {
        return m_VDRChData[1].roundedTo32();
    }
    const auto span = std::get<qint32>(cached(CacheSlot::Span));
    return Numbers::roundTo<qint32>(static_cast<double>(span) / kScreenSteps);
}

void frmVDR::setVDRMarkerFreq(Hertz value) {
    const Hertz step = magnitude(Hertz::fromWhole(markerStep()));
    qint64 units = 0;
    // A difference past the type's range is far more than a screen.
    if (step == Hertz() || qSubOverflow(value.units(), m_VDRMarkerFreq.units(), &units)) {
        return;
    }
    const Hertz delta = Hertz::fromUnits(units);
    const Hertz screen = step * kScreenSteps;
    if (delta == Hertz() || delta > screen || delta < -screen) {
        return;
    }
    const bool upward = delta > Hertz();
    const qint64 count = Numbers::divideHalfEven(magnitude(delta).units(), step.units());
    for (qint64 done = 0; done < count; ++done) {
        stepMarker(upward ? 1 : 2, upward ? step : -step);
    }
    send(QStringLiteral("WUMC"), QStringLiteral("WUDS"), [] {});
}

void frmVDR::stepMarker(int direction, Hertz step) {
    const QString command = QStringLiteral("WUDS") + QString::number(direction);
    send(command, command, [&] { m_VDRMarkerFreq += step; });
}

} // namespace veldron
