// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace veldron {

/// The times at which polls are due: whole multiples of the poll period, counted from midnight, so
/// that the scans of several runs of the program fall on the same grid.
///
/// Times of day are seconds since midnight in single precision, periods milliseconds.
class PollGrid {
public:
    /// Whether a poll is due at \a timeOfDay. Only a next poll that lies between now and one period
    /// ahead holds the poll off: any other distance means that the clock was set, that ticks were
    /// lost, or that this is the first tick.
    [[nodiscard]] bool isDue(float timeOfDay, qint16 period) const;
    /// The next poll is the first multiple of \a period after \a timeOfDay; at the end of the day
    /// that is 86400.
    void moveBeyond(float timeOfDay, qint16 period);
    /// The latest move has taken the grid from one day into the next.
    [[nodiscard]] bool hasPassedMidnight() const { return m_NextPoll < m_PreviousPoll; }

private:
    float m_NextPoll = 0.0F;
    /// What m_NextPoll was before the latest move.
    float m_PreviousPoll = 0.0F;
};

} // namespace veldron
