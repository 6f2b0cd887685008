// SPDX-License-Identifier: MIT
#pragma once

#include "settings/SettingHolders.h"
#include "settings/SettingsHost.h"

#include <QtGlobal>

namespace veldron {

/// Reads one setting of the unit at each poll and compares it with the panel that shows it. Any
/// difference is resolved in the unit's favour by reading everything back; nothing is ever written
/// to the unit from here. The full cycle is 11 polls, the last of them without a check.
class RoundRobin {
public:
    RoundRobin(const SettingHolders &instruments, SettingsHost &host);

    /// The check that is due.
    void step();
    /// Position in the cycle, from 0 to 10 between two polls.
    [[nodiscard]] qint16 ReadBackStep() const { return m_ReadBackStep; }

private:
    [[nodiscard]] bool differs(qint16 step);
    void checkFrequencies();
    void checkSpanAndCentre();
    void checkChannels();
    void followUnitIf(bool different);

    SettingHolders m_instruments;
    SettingsHost &m_host;
    qint16 m_ReadBackStep = 0;
};

} // namespace veldron
