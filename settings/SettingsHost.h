// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace veldron {

/// What loading settings asks of the form.
class SettingsHost {
public:
    SettingsHost() = default;
    SettingsHost(const SettingsHost &) = delete;
    SettingsHost &operator=(const SettingsHost &) = delete;
    virtual ~SettingsHost() = default;

    /// Brings panels and chart into line with the unit, setting by setting.
    virtual void ReadBackSettings() = 0;
    /// Copies panels and display settings into the chart.
    virtual void UpdateChartSettings() = 0;
    /// Interval of the poll timer in milliseconds; 0 stops its ticks.
    virtual void setPollInterval(qint32 milliseconds) = 0;
};

} // namespace veldron
