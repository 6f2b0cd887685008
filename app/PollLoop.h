// SPDX-License-Identifier: MIT
#pragma once

#include "app/ActivityImage.h"
#include "common/Clock.h"
#include "link/frmVDR.h"

#include <QtGlobal>

namespace veldron {

/// What the poll asks of the form.
class PollHost {
public:
    PollHost() = default;
    PollHost(const PollHost &) = delete;
    PollHost &operator=(const PollHost &) = delete;
    virtual ~PollHost() = default;

    /// Shows \a image at once, without turning the event loop.
    virtual void showActivity(ActivityImage image) = 0;
    /// Copies the link's Status to panel 1.
    virtual void showLinkStatus() = 0;
    /// One scan from the unit to the chart.
    virtual void TakeScan() = 0;
    /// One setting of the unit compared with its panel.
    virtual void checkNextSetting() = 0;
    /// All settings read back, once a day.
    virtual void readBackAtMidnight() = 0;
};

/// The heartbeat: decides at each tick of the timer whether a poll is due on the time-of-day grid
/// of whole multiples of the poll period, and then polls the unit or tries to bring the link back.
class PollLoop {
public:
    PollLoop(PollHost &host, frmVDR &vdr, Clock &clock);

    /// The tick of the poll timer.
    void tick();
    /// Milliseconds from one poll to the next, from 250 to 10000.
    [[nodiscard]] qint16 PollPeriod() const { return m_PollPeriod; }
    void setPollPeriod(qint16 milliseconds) { m_PollPeriod = milliseconds; }
    /// The next instant of the grid, in seconds since midnight; 86400 at the end of the day.
    [[nodiscard]] float NextPoll() const { return m_NextPoll; }
    /// What NextPoll was before the latest poll.
    [[nodiscard]] float PreviousPoll() const { return m_PreviousPoll; }
    /// Interval of the poll timer for a poll period, both in milliseconds: half of it, 500 at most.
    [[nodiscard]] static int tickInterval(qint16 pollPeriod);

private:
    void pollConnected();
    void reconnect();

    PollHost &m_host;
    frmVDR &m_vdr;
    Clock &m_clock;
    qint16 m_PollPeriod = 1000;
    float m_NextPoll = 0.0F;
    float m_PreviousPoll = 0.0F;
};

} // namespace veldron
