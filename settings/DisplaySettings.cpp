// SPDX-License-Identifier: MIT
#include "settings/DisplaySettings.h"

#include <algorithm>

namespace veldron {

namespace {

using Key = SettingsKey;

/// All settings together are written in an order of their own: numbers before flags, and the kind
/// of display, which redraws at once, behind all others.
constexpr std::array kOrderOfAll{Key::Palette,  Key::Persistence,   Key::Update,
                                 Key::MarkerOn, Key::PersistenceOn, Key::WaterfallOn};

static_assert(kOrderOfAll.size() == kDisplaySettings.size());
static_assert(std::all_of(kDisplaySettings.begin(), kDisplaySettings.end(),
                          [](const DisplaySetting &setting) {
                              return std::count(kOrderOfAll.begin(), kOrderOfAll.end(),
                                                setting.key) == 1;
                          }));

} // namespace

void DisplaySettings::applyTo(ctlChartSpectrum &chart) const {
    for (const Key key : kOrderOfAll) {
        std::find_if(kDisplaySettings.begin(), kDisplaySettings.end(),
                     [key](const DisplaySetting &setting) { return setting.key == key; })
            ->applyTo(*this, chart);
    }
}

void DisplaySettings::applyChangesTo(ctlChartSpectrum &chart, DisplayChanges changes) const {
    for (const DisplaySetting &setting : kDisplaySettings) {
        if (changes.testFlag(setting.change)) {
            setting.applyTo(*this, chart);
        }
    }
}

} // namespace veldron
