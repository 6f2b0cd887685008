// SPDX-License-Identifier: MIT
// The settings of the unit and of the receiver behind it, one typed row for each: the letters of
// its commands, what a failed read gives, how its value stands on the wire, and the cached value.
#pragma once

#include "common/Hertz.h"
#include "utilities/Codes.h"

#include <QString>
#include <QtGlobal>

#include <array>
#include <optional>

namespace veldron {

/// Channel data in hertz: element 0 the start, 1 the step, 2 the end.
using ChannelData = std::array<Hertz, 3>;

/// What the commands of a setting begin with.
struct SettingLetters {
    const char *write = nullptr;
    const char *read = nullptr;
    /// What the report of a failed write calls it.
    const char *report = write;
};

/// How a value of type T stands on the wire.
template <typename T>
struct SettingCodec {
    /// What follows the write letters.
    QString (*argument)(const T &value) = nullptr;
    /// What follows the letters in the report of a failed write.
    QString (*reportedArgument)(const T &value) = nullptr;
    /// The value in \a reply, the text after the echo; nothing where the text is no value and the
    /// setting is read strictly. Numbers past the type's range saturate. A codec of several fields
    /// removes from \a reply what it has read.
    std::optional<T> (*value)(QString &reply) = nullptr;
};

/// One setting. It sends nothing itself: frmVDR does. What is cached is the value last accepted or
/// read, or the failure value; nothing but another exchange changes it.
template <typename T>
struct UnitSetting {
    SettingLetters letters;
    T failure; ///< cached after a failed read
    SettingCodec<T> codec;
    T cached{};
};

/// What a failed read of a frequency gives; as a span it is the same number of hertz.
inline constexpr Hertz kFailedFrequency = Hertz::fromWhole(-1);

/// Letters of the sample count in the data mode Average.
inline constexpr SettingLetters kAverageSamples{"WSAV", "RSAV"};
/// Letters of the sample count in the data mode Median.
inline constexpr SettingLetters kMedianSamples{"WSME", "RSME"};

/// All rows, under the names of frmVDR's properties.
struct UnitSettingRows {
    UnitSetting<qint16> RXMode;
    UnitSetting<qint16> RXType;
    UnitSetting<qint32> RXStep;
    UnitSetting<bool> RXAtten;
    UnitSetting<qint16> VDRAmp;
    UnitSetting<qint16> VDRRBW;
    UnitSetting<DataModeCode> VDRDataMode;
    /// Its letters are those of the data mode in force.
    UnitSetting<qint16> VDRSamples;
    UnitSetting<MonitorModeCode> VDRMonitorMode;
    UnitSetting<Hertz> VDRCentre;
    UnitSetting<qint32> VDRSpan;
    UnitSetting<ChannelData> VDRChData;
    /// The one setting that is never written as a value: its write letters move it by a step.
    UnitSetting<Hertz> VDRMarkerFreq;
};

/// The rows with nothing cached yet: zeros.
[[nodiscard]] UnitSettingRows unitSettingRows();

} // namespace veldron
