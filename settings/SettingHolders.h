// SPDX-License-Identifier: MIT
#pragma once

namespace veldron {

class frmVDR;
class ctlFrequency;
class ctlMonitorMode;
class ctlDataMode;
class ctlChartSpectrum;
class frmDisplaySettings;
class frmCommSettings;

/// Everything that holds a setting: the unit behind the link, the three panels, the chart and the
/// two dialogs. The form owns them all; they outlive whoever is given this. References alone, so it
/// is cheap to copy.
///
/// Of a setting that several of them hold, the unit's value counts; panels show it, the chart
/// follows the panels.
struct SettingHolders {
    frmVDR &vdr;
    ctlFrequency &ctlFrequency1;
    ctlMonitorMode &ctlMonitorMode1;
    ctlDataMode &ctlDataMode1;
    ctlChartSpectrum &ctlChartSpectrum1;
    frmDisplaySettings &displaySettings;
    frmCommSettings &commSettings;
};

} // namespace veldron
