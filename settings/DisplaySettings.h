// SPDX-License-Identifier: MIT
#pragma once

#include <QFlags>

#include "chart/ctlChartSpectrum.h"
#include "format/SettingsKeys.h"
#include "utilities/Palette.h"

#include <array>
#include <variant>

namespace veldron {

/// What of the display settings a user has changed; the bits of the mask Change of
/// frmDisplaySettings.
enum class DisplayChange : qint32 {
    Waterfall = 4,   ///< whether it is shown, and how fast it moves
    Persistence = 8, ///< whether peaks are held, and how long
    Palette = 16,
    Marker = 64,
};
Q_DECLARE_FLAGS(DisplayChanges, DisplayChange)
Q_DECLARE_OPERATORS_FOR_FLAGS(DisplayChanges)

/// All settings of the picture, as one value. The dialog holds one, settings files store it, and
/// the chart takes it over with applyTo().
///
/// A new setting is a member here, a row in kDisplaySettings, a place in the order that
/// DisplaySettings.cpp holds, a key in format/SettingsKeys.h, a control in frmDisplaySettings.cpp,
/// and whatever the chart does with it. settings/SettingsLine.cpp makes its line out of the row.
struct DisplaySettings {
    /// The trace holds its peaks.
    bool PersistenceEnable = false;
    /// Seconds that peaks last, from 5 to 3600, or -1 for ever.
    qint32 Persistence = 0;
    bool WaterfallEnable = false;
    /// The number of a PaletteCode.
    qint16 PaletteIndex = 0;
    /// Seconds a waterfall row: 1, 2, 5, 10, 30 or 60.
    qint32 Update = 0;
    bool MarkerEnable = false;

    /// What a program that has just started shows.
    [[nodiscard]] static constexpr DisplaySettings atStart() {
        return {.Persistence = 5,
                .PaletteIndex = static_cast<qint16>(PaletteCode::Rainbow),
                .Update = 1,
                .MarkerEnable = true};
    }

    /// Writes all settings into \a chart, which takes over what it is given, also a value that no
    /// list of the dialog has. The axes are left to the caller.
    void applyTo(ctlChartSpectrum &chart) const;
    /// Writes the settings of \a changes alone, in the order of kDisplaySettings. The picture is
    /// right afterwards, without another scan or row.
    void applyChangesTo(ctlChartSpectrum &chart, DisplayChanges changes) const;

    friend bool operator==(const DisplaySettings &a, const DisplaySettings &b) = default;
};

/// One of the settings: where it is stored, and how the chart takes it over. The type of its field
/// decides the form of its line in a file: a flag for bool, else a whole number.
struct DisplaySetting {
    /// Its line in settings files and recordings.
    SettingsKey key;
    /// The bit that is set when the user changes it; settings that are applied together share one.
    DisplayChange change;
    std::variant<bool DisplaySettings::*, qint16 DisplaySettings::*, qint32 DisplaySettings::*>
        field;
    void (*applyTo)(const DisplaySettings &settings, ctlChartSpectrum &chart);
};

/// All of them, in the order in which a change is written. What redraws by itself comes behind what
/// the picture is drawn from: the update rate lays the picture out anew, with the scroll bar of the
/// kind of display and with the peaks.
inline constexpr std::array kDisplaySettings{
    DisplaySetting{SettingsKey::Palette, DisplayChange::Palette, &DisplaySettings::PaletteIndex,
                   [](const DisplaySettings &from, ctlChartSpectrum &chart) {
                       chart.setPalette(from.PaletteIndex);
                   }},
    DisplaySetting{SettingsKey::PersistenceOn, DisplayChange::Persistence,
                   &DisplaySettings::PersistenceEnable,
                   [](const DisplaySettings &from, ctlChartSpectrum &chart) {
                       chart.setPeak(from.PersistenceEnable);
                   }},
    DisplaySetting{SettingsKey::Persistence, DisplayChange::Persistence,
                   &DisplaySettings::Persistence,
                   [](const DisplaySettings &from, ctlChartSpectrum &chart) {
                       chart.setTimespan(from.Persistence);
                   }},
    DisplaySetting{SettingsKey::WaterfallOn, DisplayChange::Waterfall,
                   &DisplaySettings::WaterfallEnable,
                   [](const DisplaySettings &from, ctlChartSpectrum &chart) {
                       chart.setDisplayType(displayTypeWith(from.WaterfallEnable));
                   }},
    DisplaySetting{SettingsKey::Update, DisplayChange::Waterfall, &DisplaySettings::Update,
                   [](const DisplaySettings &from, ctlChartSpectrum &chart) {
                       chart.setUpdate(from.Update);
                   }},
    DisplaySetting{SettingsKey::MarkerOn, DisplayChange::Marker, &DisplaySettings::MarkerEnable,
                   [](const DisplaySettings &from, ctlChartSpectrum &chart) {
                       chart.setMarkerEn(from.MarkerEnable);
                   }},
};

} // namespace veldron
