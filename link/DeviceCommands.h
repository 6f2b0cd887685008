// SPDX-License-Identifier: MIT
// The unit's settings as one table: which letters write and read each of them, where its value is
// kept, how it looks on the wire, how a reply is read, and what a failed write is called.
//
// Channel data and marker frequency have shapes of their own and stand in frmVDR.
#pragma once

#include "common/Hertz.h"

#include <QString>
#include <QtGlobal>

#include <array>
#include <cstddef>
#include <variant>

namespace veldron {

/// A setting's value: a code or count, whole hertz, a switch, or a frequency.
using DeviceValue = std::variant<qint16, qint32, bool, Hertz>;

/// Where a value is cached.
enum class CacheSlot : std::size_t {
    Mode,
    Receiver,
    Step,
    Attenuator,
    Amplitude,
    Bandwidth,
    DataMode,
    Samples,
    MonitorMode,
    Centre,
    Span,
};
inline constexpr std::size_t kCacheSlots = 11;
using DeviceCache = std::array<DeviceValue, kCacheSlots>;

enum class WireUnit {
    Whole,     ///< the number itself
    Switch,    ///< 1 on, 2 off
    Kilohertz, ///< hertz / 1000 in single precision
    Megahertz, ///< hertz / 1000000 in double precision
};

enum class ReplyParse {
    Strict,  ///< the whole text is the number, else the read has failed
    Leading, ///< the number that the text begins with, else 0
};

enum class FailureReport {
    SentText,     ///< the command as it was sent
    ReadLetters,  ///< the letters of the read command and the value
    CutMegahertz, ///< the write letters and the whole megahertz, cut toward zero
};

struct DeviceCommand {
    const char *writeLetters; ///< what a write begins with, four letters
    const char *readLetters;  ///< the read command, four letters
    CacheSlot slot;
    DeviceValue failure; ///< cached after a failed read; its type is the setting's
    WireUnit unit;
    ReplyParse parse;
    FailureReport report;
};

/// The rows in the order of the properties; sample counts have one for each of their data modes.
inline constexpr std::size_t kDeviceCommands = 12;
using DeviceCommandTable = std::array<DeviceCommand, kDeviceCommands>;
[[nodiscard]] const DeviceCommandTable &deviceCommands();
/// The first row for \a slot.
[[nodiscard]] const DeviceCommand &deviceCommand(CacheSlot slot);
/// The row that reads with \a readLetters, which is one of the table's.
[[nodiscard]] const DeviceCommand &deviceCommand(const char *readLetters);

/// A cache of zeros, each of its setting's type.
[[nodiscard]] DeviceCache emptyDeviceCache();

/// The command line that writes \a value, without line end.
[[nodiscard]] QString writeText(const DeviceCommand &command, const DeviceValue &value);
/// What a failure to write \a value is called.
[[nodiscard]] QString reportText(const DeviceCommand &command, const DeviceValue &value);
/// The value in \a reply, the text after the echo. Text that a strict read can't take gives the
/// failure value; rounding past the type's range saturates.
[[nodiscard]] DeviceValue parseReply(const DeviceCommand &command, const QString &reply);

} // namespace veldron
