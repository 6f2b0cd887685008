// SPDX-License-Identifier: MIT
#pragma once

#include "common/Hertz.h"
#include "settings/SettingHolders.h"

#include <cstddef>

namespace veldron {

class PanelMediation;

/// Reads one setting of the unit at each poll and compares it with the panel that shows it. Any
/// difference is resolved in the unit's favour by reading everything back; nothing is ever written
/// to the unit from here. The full cycle is 11 polls, the last of them without a check.
class RoundRobin {
public:
    /// \a mediation outlives the object.
    RoundRobin(const SettingHolders &holders, PanelMediation &mediation)
        : m_holders(holders), m_mediation(mediation) {}

    /// The check that is due: one exchange at most, two for the frequencies; a difference adds
    /// those of reading everything back. With a link that is down each read fails at once.
    void step();

private:
    void checkFrequencies();
    void checkSpanAndCentre();
    void checkChannels();
    /// What the marker of the unit is compared with in Channel mode.
    [[nodiscard]] Hertz shownMarker() const;
    void followUnitIf(bool different);

    SettingHolders m_holders;
    PanelMediation &m_mediation;
    /// Position in the cycle, from 0 to 10: the check that the next poll makes.
    std::size_t m_ReadBackStep = 0;
};

} // namespace veldron
