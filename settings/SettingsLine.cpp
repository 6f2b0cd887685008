// SPDX-License-Identifier: MIT
#include "settings/SettingsLine.h"

#include "chart/ctlChartSpectrum.h"
#include "format/FileErrors.h"
#include "format/SettingsValue.h"
#include "link/frmVDR.h"
#include "panels/ctlDataMode.h"
#include "panels/ctlFrequency.h"
#include "panels/ctlMonitorMode.h"
#include "settings/DisplaySettings.h"
#include "settings/frmCommSettings.h"
#include "settings/frmDisplaySettings.h"
#include "utilities/Codes.h"
#include "utilities/Receivers.h"
#include "utilities/TimesOfDay.h"

#include <algorithm>
#include <array>
#include <limits>
#include <type_traits>
#include <utility>

namespace veldron {

namespace {

using Source = const LineSource &;
using Target = const LineTarget &;
using Key = SettingsKey;
using Pause = SettingsLine::Pause;

/// The longest interval that a poll timer takes, in milliseconds.
constexpr qint32 kLongestInterval = 65535;

// ---- when a line is written

bool always(Source) {
    return true;
}
bool notRecording(Source from) {
    return !from.session.Recording;
}
bool inChannelMode(Source from) {
    return from.holders.ctlMonitorMode1.MonitorMode() == MonitorModeCode::Channel;
}
bool outsideChannelMode(Source from) {
    return !inChannelMode(from);
}
bool withOwnReceiver(Source from) {
    return GeneralUtilities::isTunable(from.holders.ctlFrequency1.RX());
}
bool withSamples(Source from) {
    return hasSamples(from.holders.ctlDataMode1.DataMode());
}

// ---- values to texts and back, by their types

template <typename T>
QString textOfValue(T value) {
    if constexpr (std::is_same_v<T, bool>) {
        return SettingsValue::ofFlag(value);
    } else {
        return SettingsValue::ofWhole(static_cast<qint64>(value));
    }
}

template <typename T>
T valueOf(const QString &text) {
    if constexpr (std::is_same_v<T, bool>) {
        return SettingsValue::flag(text);
    } else if constexpr (std::is_enum_v<T>) {
        return static_cast<T>(SettingsValue::whole<std::underlying_type_t<T>>(text));
    } else {
        return SettingsValue::whole<T>(text);
    }
}

/// Gives the text of the line, as a value of the setter's own type, to \a set of \a object.
template <typename Object, typename T>
void write(Object &object, void (Object::*set)(T), const QString &text) {
    auto value = valueOf<std::remove_cvref_t<T>>(text);
    (object.*set)(value);
}

QString textOfFrequency(Source from, Hertz value) {
    return SettingsValue::ofFrequency(value, from.texts.decimalMark());
}

Hertz frequencyOf(Target to) {
    return SettingsValue::frequency(to.value, to.texts.decimalMark());
}

// ---- the rows that follow one pattern

/// The panel that a member function belongs to.
ctlFrequency &panelOf(const SettingHolders &holders, const ctlFrequency * /*type*/) {
    return holders.ctlFrequency1;
}
ctlMonitorMode &panelOf(const SettingHolders &holders, const ctlMonitorMode * /*type*/) {
    return holders.ctlMonitorMode1;
}
ctlDataMode &panelOf(const SettingHolders &holders, const ctlDataMode * /*type*/) {
    return holders.ctlDataMode1;
}

template <typename Panel, typename T>
Panel ownerOf(T (Panel::*)() const);

/// A number or a flag that is written as \a Get of a panel has it, and loaded into the unit by
/// \a SetUnit and into the panel by \a SetPanel, both without a conversion.
template <auto Get, auto SetUnit, auto SetPanel>
constexpr SettingsLine unitAndPanel(Key key, bool (*isWritten)(Source), Pause pause) {
    using Panel = decltype(ownerOf(Get));
    constexpr const Panel *kType = nullptr;
    return {key,
            isWritten,
            [](Source from) { return textOfValue((panelOf(from.holders, kType).*Get)()); },
            pause,
            [](Target to) { write(to.holders.vdr, SetUnit, to.value); },
            nullptr,
            [](Target to) {
                write(panelOf(to.holders, kType), SetPanel, to.value);
            }};
}

DisplaySettings withField(const DisplaySetting &setting, DisplaySettings settings,
                          const QString &text) {
    std::visit(
        [&](auto field) {
            settings.*field = valueOf<std::remove_reference_t<decltype(settings.*field)>>(text);
        },
        setting.field);
    return settings;
}

/// A display setting, for the dialog and the chart. In playback the chart takes over what is a
/// flag, and keeps it up to the end of the block; numbers are left alone.
template <std::size_t Number>
constexpr SettingsLine displayLine() {
    constexpr const DisplaySetting &kSetting = kDisplaySettings.at(Number);
    constexpr bool kIsFlag = std::holds_alternative<bool DisplaySettings::*>(kSetting.field);
    const auto toChart = [](Target to) {
        kSetting.applyTo(withField(kSetting, to.holders.displaySettings.values(), to.value),
                         to.holders.ctlChartSpectrum1);
    };
    return {kSetting.key,
            notRecording,
            [](Source from) {
                return std::visit(
                    [&](auto field) {
                        return textOfValue(from.holders.displaySettings.values().*field);
                    },
                    kSetting.field);
            },
            Pause::None,
            nullptr,
            [](Target to) {
                frmDisplaySettings &dialog = to.holders.displaySettings;
                const DisplaySettings values = withField(kSetting, dialog.values(), to.value);
                dialog.setValues(values);
                if (!kIsFlag) {
                    kSetting.applyTo(values, to.holders.ctlChartSpectrum1);
                }
            },
            kIsFlag ? +toChart : nullptr};
}

// ---- the rows that have a way of their own

/// The timer takes the value itself as its interval, while a rate that is chosen in the dialog
/// gives it half of that, 500 ms at most.
void setPollInDialog(Target to) {
    const auto milliseconds = valueOf<qint32>(to.value);
    // Two limits: the dialog drops a rate that it has no row for, while one that no timer takes is
    // an error.
    to.holders.commSettings.setPoll(milliseconds);
    if (milliseconds < 0 || milliseconds > kLongestInterval) {
        throw FileErrors::notAPollRate(to.value);
    }
    to.host.setPollInterval(milliseconds);
}

void storeChannel(Target to, Hertz ChannelStore::*field, Hertz value) {
    if (to.channels.Count == std::numeric_limits<qint16>::max()) {
        throw FileErrors::tooManyChannelLines();
    }
    to.channels.*field = value;
    ++to.channels.Count;
}

constexpr qint16 kChannelLines = 3;

/// The channels before the marker: it lies among them, and is moved in their steps.
void sendChannels(Target to) {
    const ChannelStore &channels = to.channels;
    if (channels.Count == kChannelLines) {
        to.holders.vdr.setVDRChData({channels.Start, channels.Step, channels.End});
        // The unit passes the channels on to its receiver.
        GeneralUtilities::WaitSeconds(to.clock, kReceiverPause);
        to.holders.vdr.setVDRMarkerFreq(to.holders.ctlChartSpectrum1.RXFreq());
    }
}

void showChannels(Target to) {
    const ChannelStore &channels = to.channels;
    if (channels.Count == kChannelLines) {
        ctlMonitorMode &panel = to.holders.ctlMonitorMode1;
        panel.setfStart(channels.Start);
        panel.setfCentre(channels.Step); // in channel mode this field holds the channel step
        panel.setfEnd(channels.End);
        // Span and step behind the others, as when they are read back from the unit.
        panel.setfSpan(channels.End - channels.Start);
        panel.setfStep(channels.Step);
    }
}

/// The panel first: without the unit the chart's update is made of its numbers.
void endBlock(Target to) {
    showChannels(to);
    if (to.holders.vdr.Connected() && !to.session.InPlayback) {
        to.host.ReadBackSettings(); // what the unit has made of the values is what counts
    } else {
        to.host.UpdateChartSettings();
    }
}

/// All but the display settings, which have a table of their own.
constexpr std::array kOtherLines{
    SettingsLine{.key = Key::StartSettings,
                 .isWritten = always,
                 .source = [](Source from) { return from.texts.dateText(from.clock.now().date()); },
                 .toPanel =
                     [](Target to) {
                         to.channels = {};
                     }},
    SettingsLine{
        .key = Key::Poll,
        .isWritten = always,
        .source = [](Source from) { return textOfValue(from.holders.commSettings.Poll()); },
        .toDialog = setPollInDialog,
        .toPanel =
            [](Target to) {
                write(to.holders.ctlChartSpectrum1, &ctlChartSpectrum::setPoll, to.value);
            }},
    unitAndPanel<&ctlMonitorMode::MonitorMode, &frmVDR::setVDRMonitorMode,
                 &ctlMonitorMode::setMonitorMode>(Key::MonitorMode, always, Pause::Receiver),
    SettingsLine{
        .key = Key::Span,
        .isWritten = outsideChannelMode,
        .source =
            [](Source from) { return textOfFrequency(from, from.holders.ctlMonitorMode1.fSpan()); },
        .toUnit = [](Target to) { write(to.holders.vdr, &frmVDR::setVDRSpan, to.value); },
        .toPanel =
            [](Target to) {
                to.holders.ctlMonitorMode1.setfSpan(SettingsValue::numberOfHertz(to.value));
            }},
    SettingsLine{.key = Key::Centre,
                 .isWritten = outsideChannelMode,
                 .source =
                     [](Source from) {
                         return textOfFrequency(from, from.holders.ctlMonitorMode1.fCentre());
                     },
                 .pause = Pause::Receiver,
                 .toUnit = [](Target to) { to.holders.vdr.setVDRCentre(frequencyOf(to)); },
                 .toPanel =
                     [](Target to) {
                         to.holders.ctlMonitorMode1.setfCentre(frequencyOf(to));
                         to.holders.ctlFrequency1.setFrequency(frequencyOf(to));
                     }},
    SettingsLine{.key = Key::Start,
                 .isWritten = inChannelMode,
                 .source =
                     [](Source from) {
                         return textOfFrequency(from, from.holders.ctlMonitorMode1.fStart());
                     },
                 .toPanel =
                     [](Target to) {
                         storeChannel(to, &ChannelStore::Start, frequencyOf(to));
                     }},
    // The one channel line that takes the point for its decimal mark whatever the locale.
    SettingsLine{
        .key = Key::Step,
        .isWritten = inChannelMode,
        .source =
            [](Source from) { return textOfFrequency(from, from.holders.ctlMonitorMode1.fStep()); },
        .toPanel =
            [](Target to) {
                storeChannel(to, &ChannelStore::Step, SettingsValue::numberOfHertz(to.value));
            }},
    SettingsLine{
        .key = Key::End,
        .isWritten = inChannelMode,
        .source =
            [](Source from) { return textOfFrequency(from, from.holders.ctlMonitorMode1.fEnd()); },
        .toPanel =
            [](Target to) {
                storeChannel(to, &ChannelStore::End, frequencyOf(to));
            }},
    // Sent to the unit at the end of the block, after the channels that it lies in.
    SettingsLine{
        .key = Key::MarkerFrequency,
        .isWritten = inChannelMode,
        .source =
            [](Source from) {
                return textOfFrequency(from, from.holders.ctlChartSpectrum1.RXFreq());
            },
        .toPanel =
            [](Target to) {
                to.holders.ctlChartSpectrum1.setRXFreq(SettingsValue::numberOfHertz(to.value));
                to.holders.ctlFrequency1.setFrequency(SettingsValue::numberOfHertz(to.value));
            }},
    SettingsLine{
        .key = Key::Receiver,
        .isWritten = always,
        .source =
            [](Source from) {
                return GeneralUtilities::ReceiverName(from.holders.ctlFrequency1.RX());
            },
        .toUnit =
            [](Target to) { to.holders.vdr.setRXType(GeneralUtilities::ReceiverCode(to.value)); },
        .toPanel =
            [](Target to) {
                to.holders.ctlFrequency1.setRX(GeneralUtilities::ReceiverCode(to.value));
            }},
    SettingsLine{
        .key = Key::RXMode,
        .isWritten = withOwnReceiver,
        .source =
            [](Source from) {
                return GeneralUtilities::ModeName(from.holders.ctlFrequency1.Mode());
            },
        .pause = Pause::Receiver,
        .toUnit = [](Target to) { to.holders.vdr.setRXMode(GeneralUtilities::ModeCode(to.value)); },
        .toPanel =
            [](Target to) {
                to.holders.ctlFrequency1.setMode(GeneralUtilities::ModeCode(to.value));
            }},
    unitAndPanel<&ctlFrequency::Step, &frmVDR::setRXStep, &ctlFrequency::setStep>(
        Key::RXStep, withOwnReceiver, Pause::Receiver),
    unitAndPanel<&ctlFrequency::Atten, &frmVDR::setRXAtten, &ctlFrequency::setAtten>(
        Key::RXAtten, withOwnReceiver, Pause::Receiver),
    unitAndPanel<&ctlDataMode::RBW, &frmVDR::setVDRRBW, &ctlDataMode::setRBW>(Key::RBW, always,
                                                                              Pause::None),
    unitAndPanel<&ctlDataMode::Amp, &frmVDR::setVDRAmp, &ctlDataMode::setAmp>(Key::Amp, always,
                                                                              Pause::None),
    unitAndPanel<&ctlDataMode::DataMode, &frmVDR::setVDRDataMode, &ctlDataMode::setDataMode>(
        Key::DataMode, always, Pause::None),
    unitAndPanel<&ctlDataMode::Samples, &frmVDR::setVDRSamples, &ctlDataMode::setSamples>(
        Key::Samples, withSamples, Pause::None),
    SettingsLine{.key = Key::EndSettings,
                 .isWritten = always,
                 .source = [](Source /*from*/) { return QString(); },
                 .toUnit = sendChannels,
                 .toPanel = endBlock},
};

using Lines = std::array<SettingsLine, kSettingsKeys.size()>;

/// The rows of both tables, each at the place of its key.
template <std::size_t... Number>
constexpr Lines allLines(std::index_sequence<Number...> /*displaySettings*/) {
    Lines lines{};
    for (const SettingsLine &line : kOtherLines) {
        lines.at(static_cast<std::size_t>(line.key)) = line;
    }
    ((lines.at(static_cast<std::size_t>(kDisplaySettings.at(Number).key)) = displayLine<Number>()),
     ...);
    return lines;
}

constexpr Lines kLines = allLines(std::make_index_sequence<kDisplaySettings.size()>());

/// Whether each place of the table is filled, and with the line of its key. A key that is there
/// twice leaves the place of another one empty.
constexpr bool everyLineIsAtItsKey() {
    for (std::size_t number = 0; number < kLines.size(); ++number) {
        const SettingsLine &line = kLines.at(number);
        if (line.key != static_cast<Key>(number) || line.isWritten == nullptr) {
            return false;
        }
    }
    return true;
}

static_assert(kOtherLines.size() + kDisplaySettings.size() == kSettingsKeys.size());
static_assert(everyLineIsAtItsKey());

} // namespace

std::span<const SettingsLine> settingsLines() {
    return kLines;
}

} // namespace veldron
