// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <array>
#include <optional>

namespace veldron {

/// The lines of a settings block, in the order in which they are written. The comments tell the
/// value's form and when the line is written; SettingsValue.h tells the forms.
enum class SettingsKey {
    StartSettings,   ///< date of the block; always
    PersistenceOn,   ///< flag; the display lines, down to MarkerOn, only in the full form
    Persistence,     ///< whole number, 32 bits: seconds that peaks last, -1 for ever
    WaterfallOn,     ///< flag
    Palette,         ///< whole number, 16 bits: position in the list of palettes, from 0
    Update,          ///< whole number, 32 bits: seconds a waterfall row
    MarkerOn,        ///< flag
    Poll,            ///< whole number, 32 bits: milliseconds between two scans; always
    MonitorMode,     ///< whole number, 16 bits: 0 none, 1 spectrum, 2 step, 3 channel; always
    Span,            ///< number of hertz; outside channel mode
    Centre,          ///< frequency; outside channel mode
    Start,           ///< frequency; in channel mode
    Step,            ///< number of hertz; in channel mode
    End,             ///< frequency; in channel mode
    MarkerFrequency, ///< number of hertz; in channel mode
    Receiver,        ///< name of a receiver; always
    RXMode,          ///< name of a receiver's mode, which may begin with a blank; receivers that
                     ///< have settings of their own
    RXStep,          ///< whole number, 32 bits: hertz; likewise
    RXAtten,         ///< flag; likewise
    RBW,             ///< whole number, 16 bits: code of the bandwidth; always
    Amp,             ///< whole number, 16 bits: decibels; always
    DataMode,        ///< whole number, 16 bits: 1 normal, 2 average, 3 maximum, 4 median; always
    Samples,         ///< whole number, 16 bits; in the data modes 2 and 4
    EndSettings,     ///< nothing; always, and the last
};

/// The texts of the keys, in the order of the enumeration. They are the format: a text that is
/// changed here no longer reads the files of earlier versions.
inline constexpr std::array kSettingsKeys{
    "StartSettings", "PersistenceOn", "Persistence", "WaterfallOn", "Palette",
    "Update",        "MarkerOn",      "Poll",        "MonitorMode", "Span",
    "Centre",        "Start",         "Step",        "End",         "MarkerFrequency",
    "Receiver",      "RXMode",        "RXStep",      "RXAtten",     "RBW",
    "Amp",           "DataMode",      "Samples",     "EndSettings"};

/// The text of \a key in the file.
[[nodiscard]] QString textOf(SettingsKey key);
/// The key that \a text is, exactly and with its case; nothing for any other text.
[[nodiscard]] std::optional<SettingsKey> settingsKeyOf(const QString &text);

} // namespace veldron
