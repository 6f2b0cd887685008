// SPDX-License-Identifier: MIT
#include "settings/ChartUpdate.h"

#include "chart/ctlChartSpectrum.h"
#include "panels/ctlFrequency.h"
#include "panels/ctlMonitorMode.h"
#include "settings/frmDisplaySettings.h"
#include "utilities/Codes.h"

namespace veldron {

void updateChartFrequencies(const SettingHolders &holders) {
    const ctlMonitorMode &panel = holders.ctlMonitorMode1;
    ctlChartSpectrum &chart = holders.ctlChartSpectrum1;
    const bool channels = panel.MonitorMode() == MonitorModeCode::Channel;
    // The marker stands on a bin of the new scale, so the scale comes first.
    chart.setDataResolution(panel.fStep());
    chart.setScanStart(panel.fStart());
    chart.setScanStop(panel.fEnd());
    // In channel mode the panel's centre holds the channel step.
    chart.setRXFreq(channels ? holders.ctlFrequency1.Frequency() : panel.fCentre());
}

void updateChartDisplay(const SettingHolders &holders) {
    holders.displaySettings.values().applyTo(holders.ctlChartSpectrum1);
    // Last: the axes show the scale, the kind of display and the update rate set above.
    holders.ctlChartSpectrum1.DrawAxes();
}

} // namespace veldron
