// SPDX-License-Identifier: MIT
#pragma once

#include "settings/SettingHolders.h"

namespace veldron {

/// Copies the frequencies of the panels, then the display settings, into the chart, and draws it
/// anew.
void updateChart(const SettingHolders &holders);

/// The first part of it: resolution, ends of the scan, marker.
void updateChartFrequencies(const SettingHolders &holders);

/// The second part: the display settings, and the axes.
void updateChartDisplay(const SettingHolders &holders);

} // namespace veldron
