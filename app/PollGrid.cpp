// SPDX-License-Identifier: MIT
#include "app/PollGrid.h"

#include "utilities/TimesOfDay.h"

#include <cmath>

namespace veldron {

bool PollGrid::isDue(float timeOfDay, qint16 period) const {
    const float ahead = GeneralUtilities::TimeDifference(timeOfDay, m_NextPoll);
    return ahead < 0.0F || ahead > static_cast<float>(period) / 1000.0F;
}

void PollGrid::moveBeyond(float timeOfDay, qint16 period) {
    m_PreviousPoll = m_NextPoll;
    const double wide = period;
    m_NextPoll = static_cast<float>(
        std::floor((static_cast<double>(timeOfDay) * 1000.0 + wide) / wide) * wide / 1000.0);
}

} // namespace veldron
