// SPDX-License-Identifier: MIT
#pragma once

#include "settings/SettingHolders.h"

namespace veldron {

/// Copies the frequencies of the panels into the chart: resolution, ends of the scan, marker.
void updateChartFrequencies(const SettingHolders &holders);

/// Copies the display settings into the chart, and lays its axes out anew. Goes after the
/// frequencies, so that the axes are those of the new scan.
void updateChartDisplay(const SettingHolders &holders);

} // namespace veldron
