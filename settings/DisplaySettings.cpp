// SPDX-License-Identifier: MIT
#include "settings/DisplaySettings.h"

namespace veldron {

void DisplaySettings::applyTo(ctlChartSpectrum &chart, DisplayChanges changes) const {
    for (const DisplaySetting &setting : kDisplaySettings) {
        if (changes.testFlag(setting.change)) {
            setting.applyTo(*this, chart);
        }
    }
}

} // namespace veldron
