// SPDX-License-Identifier: MIT
#include "link/UnitSetting.h"

#include "common/LeadingNumber.h"
#include "common/Numbers.h"
#include "link/Wire.h"
#include "link/WireNumber.h"

#include <cmath>
#include <limits>

namespace veldron {

namespace {

constexpr double kPerKilohertz = Wire::kHertzPerKilohertz;
constexpr double kPerMegahertz = Wire::kHertzPerMegahertz;

// ---- codes and counts

std::optional<qint16> strictWhole(const QString &reply) {
    const std::optional<double> number = strictNumber(reply);
    return number ? Numbers::roundToExact<qint16>(*number) : std::nullopt;
}

template <typename Code>
QString codeText(const Code &code) {
    return wireNumber(static_cast<double>(static_cast<qint16>(code)));
}

template <typename Code>
std::optional<Code> strictCode(QString &reply) {
    const std::optional<qint16> number = strictWhole(reply);
    return number ? std::optional<Code>(static_cast<Code>(*number)) : std::nullopt;
}

template <typename Code>
std::optional<Code> leadingCode(QString &reply) {
    return static_cast<Code>(Numbers::roundTo<qint16>(leadingNumber(reply)));
}

template <typename Code>
constexpr SettingCodec<Code> kStrictCode{codeText<Code>, codeText<Code>, strictCode<Code>};
template <typename Code>
constexpr SettingCodec<Code> kLeadingCode{codeText<Code>, codeText<Code>, leadingCode<Code>};

// ---- the attenuator

QString switchText(const bool &on) {
    return codeText(on ? Wire::kSwitchOn : Wire::kSwitchOff);
}

std::optional<bool> switchValue(QString &reply) {
    const std::optional<qint16> number = strictWhole(reply);
    return number ? std::optional<bool>(*number == Wire::kSwitchOn) : std::nullopt;
}

constexpr SettingCodec<bool> kSwitch{switchText, switchText, switchValue};

// ---- the receiver's step, in kilohertz of single precision

QString kilohertzText(const qint32 &hertz) {
    return wireNumber(static_cast<float>(hertz / kPerKilohertz));
}

std::optional<qint32> kilohertzValue(QString &reply) {
    const std::optional<double> number = strictNumber(reply);
    if (!number || std::abs(*number) > double{std::numeric_limits<float>::max()}) {
        return std::nullopt;
    }
    const double kilohertz = static_cast<float>(*number);
    return Numbers::roundTo<qint32>(std::floor(kilohertz * kPerKilohertz + 0.5));
}

constexpr SettingCodec<qint32> kKilohertz{kilohertzText, kilohertzText, kilohertzValue};

// ---- frequencies, in megahertz of double precision

double hertzOf(const Hertz &value) {
    return value.toDouble();
}

double hertzOf(const qint32 &value) {
    return value;
}

template <typename T>
QString megahertzText(const T &value) {
    return wireNumber(hertzOf(value) / kPerMegahertz);
}

/// The report of a failed write shows less than was sent: whole megahertz, cut toward zero.
template <typename T>
QString cutMegahertzText(const T &value) {
    return wireNumber(std::trunc(hertzOf(value) / kPerMegahertz));
}

Hertz frequency(const QString &text, double hertzPerUnit) {
    return Hertz::fromDouble(leadingNumber(text) * hertzPerUnit);
}

std::optional<Hertz> centreValue(QString &reply) {
    return frequency(reply, kPerMegahertz);
}

std::optional<qint32> spanValue(QString &reply) {
    return Numbers::roundTo<qint32>(leadingNumber(reply) * kPerMegahertz);
}

constexpr SettingCodec<Hertz> kFrequency{megahertzText<Hertz>, cutMegahertzText<Hertz>,
                                         centreValue};
constexpr SettingCodec<qint32> kSpan{megahertzText<qint32>, cutMegahertzText<qint32>, spanValue};

// ---- channel data: megahertz, kilohertz, megahertz, with blanks between

QString channelText(const ChannelData &channels) {
    return wireNumber(channels[0].toDouble() / kPerMegahertz) + QLatin1Char(' ') +
           wireNumber(channels[1].toDouble() / kPerKilohertz) + QLatin1Char(' ') +
           wireNumber(channels[2].toDouble() / kPerMegahertz);
}

/// The field up to the first blank, removed from \a reply with the blank. Without a blank the field
/// is empty, which reads as 0, and the text stays for the next field.
QString takeField(QString &reply) {
    const qsizetype length = reply.indexOf(QLatin1Char(' ')) + 1;
    const QString field = reply.left(length);
    reply.remove(0, length);
    return field;
}

std::optional<ChannelData> channelValue(QString &reply) {
    const Hertz start = frequency(takeField(reply), kPerMegahertz);
    const Hertz step = frequency(takeField(reply), kPerKilohertz);
    return ChannelData{start, step, frequency(reply, kPerMegahertz)};
}

constexpr SettingCodec<ChannelData> kChannels{channelText, channelText, channelValue};
constexpr ChannelData kFailedChannels{kFailedFrequency, kFailedFrequency, kFailedFrequency};

} // namespace

UnitSettingRows unitSettingRows() {
    return {
        .RXMode = {{"WUMD", "RUMD"}, -1, kStrictCode<qint16>},
        // A failed write is reported with the letters of the read command; users know that text.
        .RXType = {{"WURX", "RURX", "RURX"}, -1, kStrictCode<qint16>},
        .RXStep = {{"WUST", "RUST"}, -1, kKilohertz},
        .RXAtten = {{"WUAT", "RUAT"}, false, kSwitch},
        .VDRAmp = {{"WSGN", "RSGN"}, -1, kLeadingCode<qint16>},
        .VDRRBW = {{"WSBW", "RSBW"}, -1, kLeadingCode<qint16>},
        .VDRDataMode = {{"WSDM", "RSDM"}, DataModeCode(-1), kLeadingCode<DataModeCode>},
        .VDRSamples = {kAverageSamples, -1, kLeadingCode<qint16>},
        .VDRMonitorMode = {{"WUOM", "RUOM"}, MonitorModeCode(-1), kLeadingCode<MonitorModeCode>},
        .VDRCentre = {{"WSCF", "RSCF"}, kFailedFrequency, kFrequency},
        .VDRSpan = {{"WSSP", "RSSP"}, -1, kSpan},
        // The blank is part of the write letters.
        .VDRChData = {{"WUCS ", "RUCS"}, kFailedChannels, kChannels},
        .VDRMarkerFreq = {{Wire::kStepMarker, Wire::kReadMarker}, kFailedFrequency, kFrequency},
    };
}

} // namespace veldron
