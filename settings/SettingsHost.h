// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace veldron {

/// What loading settings asks of the parts above it. In the program that is the mediation between
/// panels and unit.
class SettingsHost {
public:
    SettingsHost() = default;
    SettingsHost(const SettingsHost &) = delete;
    SettingsHost &operator=(const SettingsHost &) = delete;
    virtual ~SettingsHost() = default;

    /// Makes panels and chart show what the unit reports. Asks the unit for each setting, so it
    /// takes some tenths of a second. Called at the end of a block with the unit connected, since
    /// the unit may not have taken every value.
    virtual void ReadBackSettings() = 0;
    /// Copies panels and display settings into the chart. Called at the end of a block without the
    /// unit, and in playback.
    virtual void UpdateChartSettings() = 0;
    /// Interval of the poll timer in milliseconds; 0 stops its ticks.
    virtual void setPollInterval(qint32 milliseconds) = 0;
};

} // namespace veldron
