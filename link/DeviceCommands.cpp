// SPDX-License-Identifier: MIT
#include "link/DeviceCommands.h"

#include "common/Numbers.h"
#include "link/WireNumber.h"
#include "utilities/GeneralUtilities.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>

namespace veldron {

namespace {

constexpr double kHertzPerKilohertz = 1000.0;
constexpr double kHertzPerMegahertz = 1000000.0;
constexpr qint16 kSwitchOn = 1;
constexpr qint16 kSwitchOff = 2;

constexpr DeviceValue kFailedCode = qint16{-1};
constexpr DeviceValue kFailedHertz32 = qint32{-1};
constexpr DeviceValue kFailedSwitch = false;
constexpr DeviceValue kFailedFrequency = Hertz::fromWhole(-1);

struct ToDouble {
    double operator()(qint16 value) const { return value; }
    double operator()(qint32 value) const { return value; }
    double operator()(bool value) const { return value ? kSwitchOn : kSwitchOff; }
    double operator()(Hertz value) const { return value.toDouble(); }
};

double number(const DeviceValue &value) {
    return std::visit(ToDouble{}, value);
}

QString argumentText(WireUnit unit, const DeviceValue &value) {
    const double hertz = number(value);
    if (unit == WireUnit::Kilohertz) {
        return wireNumber(static_cast<float>(hertz / kHertzPerKilohertz));
    }
    if (unit == WireUnit::Megahertz) {
        return wireNumber(hertz / kHertzPerMegahertz);
    }
    return wireNumber(hertz);
}

/// The number of a reply in the unit of the wire, or nothing where a strict read can't take it.
std::optional<double> wireValue(const DeviceCommand &command, const QString &reply) {
    if (command.parse == ReplyParse::Leading) {
        return GeneralUtilities::LeadingNumber(reply);
    }
    const std::optional<double> value = strictNumber(reply);
    if (!value) {
        return std::nullopt;
    }
    if (command.unit == WireUnit::Kilohertz) {
        const bool fits = std::abs(*value) <= double{std::numeric_limits<float>::max()};
        return fits ? std::optional<double>(double{static_cast<float>(*value)}) : std::nullopt;
    }
    const std::optional<qint16> whole = Numbers::roundToExact<qint16>(*value);
    return whole ? std::optional<double>(*whole) : std::nullopt;
}

double toHertz(WireUnit unit, double value) {
    if (unit == WireUnit::Kilohertz) {
        return std::floor(value * kHertzPerKilohertz + 0.5);
    }
    return unit == WireUnit::Megahertz ? value * kHertzPerMegahertz : value;
}

struct SameTypeFrom {
    double value;
    DeviceValue operator()(qint16 /*type*/) const { return Numbers::roundTo<qint16>(value); }
    DeviceValue operator()(qint32 /*type*/) const { return Numbers::roundTo<qint32>(value); }
    DeviceValue operator()(bool /*type*/) const { return value == kSwitchOn; }
    DeviceValue operator()(Hertz /*type*/) const { return Hertz::fromDouble(value); }
};

} // namespace

const DeviceCommandTable &deviceCommands() {
    using S = CacheSlot;
    using U = WireUnit;
    using P = ReplyParse;
    using R = FailureReport;
    static constexpr DeviceCommandTable kTable{{
        {"WUMD", "RUMD", S::Mode, kFailedCode, U::Whole, P::Strict, R::SentText},
        // A failed write is called by the letters of the read command; users know that text.
        {"WURX", "RURX", S::Receiver, kFailedCode, U::Whole, P::Strict, R::ReadLetters},
        {"WUST", "RUST", S::Step, kFailedHertz32, U::Kilohertz, P::Strict, R::SentText},
        {"WUAT", "RUAT", S::Attenuator, kFailedSwitch, U::Switch, P::Strict, R::SentText},
        {"WSGN", "RSGN", S::Amplitude, kFailedCode, U::Whole, P::Leading, R::SentText},
        {"WSBW", "RSBW", S::Bandwidth, kFailedCode, U::Whole, P::Leading, R::SentText},
        {"WSDM", "RSDM", S::DataMode, kFailedCode, U::Whole, P::Leading, R::SentText},
        {"WSAV", "RSAV", S::Samples, kFailedCode, U::Whole, P::Leading, R::SentText},
        {"WSME", "RSME", S::Samples, kFailedCode, U::Whole, P::Leading, R::SentText},
        {"WUOM", "RUOM", S::MonitorMode, kFailedCode, U::Whole, P::Leading, R::SentText},
        // Centre and span show less in the failure than was sent.
        {"WSCF", "RSCF", S::Centre, kFailedFrequency, U::Megahertz, P::Leading, R::CutMegahertz},
        {"WSSP", "RSSP", S::Span, kFailedHertz32, U::Megahertz, P::Leading, R::CutMegahertz},
    }};
    return kTable;
}

const DeviceCommand &deviceCommand(CacheSlot slot) {
    return *std::find_if(deviceCommands().begin(), deviceCommands().end(),
                         [slot](const DeviceCommand &command) { return command.slot == slot; });
}

const DeviceCommand &deviceCommand(const char *readLetters) {
    return *std::find_if(deviceCommands().begin(), deviceCommands().end(),
                         [readLetters](const DeviceCommand &command) {
                             return std::strcmp(command.readLetters, readLetters) == 0;
                         });
}

DeviceCache emptyDeviceCache() {
    DeviceCache cache;
    for (const DeviceCommand &command : deviceCommands()) {
        cache.at(static_cast<std::size_t>(command.slot)) =
            std::visit(SameTypeFrom{0.0}, command.failure);
    }
    return cache;
}

QString writeText(const DeviceCommand &command, const DeviceValue &value) {
    return QLatin1String(command.writeLetters) + argumentText(command.unit, value);
}

QString reportText(const DeviceCommand &command, const DeviceValue &value) {
    if (command.report == FailureReport::ReadLetters) {
        return QLatin1String(command.readLetters) + argumentText(command.unit, value);
    }
    if (command.report == FailureReport::CutMegahertz) {
        return QLatin1String(command.writeLetters) +
               wireNumber(std::trunc(number(value) / kHertzPerMegahertz));
    }
    return writeText(command, value);
}

DeviceValue parseReply(const DeviceCommand &command, const QString &reply) {
    const std::optional<double> value = wireValue(command, reply);
    if (!value) {
        return command.failure;
    }
    return std::visit(SameTypeFrom{toHertz(command.unit, *value)}, command.failure);
}

} // namespace veldron
