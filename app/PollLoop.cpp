// SPDX-License-Identifier: MIT
#include "app/PollLoop.h"

#include "common/Numbers.h"
#include "utilities/GeneralUtilities.h"

#include <cmath>

namespace veldron {

PollLoop::PollLoop(PollHost &host, frmVDR &vdr, Clock &clock)
    : m_host(host), m_vdr(vdr), m_clock(clock) {}

int PollLoop::tickInterval(qint16 pollPeriod) {
    return pollPeriod <= 1000 ? Numbers::roundTo<int>(pollPeriod / 2.0) : 500;
}

void PollLoop::tick() {
    const float t = m_clock.timeOfDay();
    const float d = GeneralUtilities::TimeDifference(t, m_NextPoll);
    // Only a near future holds the poll off: any other difference means that the grid has moved.
    if (d >= 0.0F && d <= static_cast<float>(m_PollPeriod) / 1000.0F) {
        return;
    }
    if (m_NextPoll < m_PreviousPoll && m_vdr.Connected()) {
        m_host.readBackAtMidnight();
    }
    m_PreviousPoll = m_NextPoll;
    const double period = m_PollPeriod;
    m_NextPoll = static_cast<float>(
        std::floor((static_cast<double>(t) * 1000.0 + period) / period) * period / 1000.0);
    if (m_vdr.Connected()) {
        pollConnected();
    } else {
        reconnect();
    }
}

void PollLoop::pollConnected() {
    m_host.showActivity(ActivityImage::Busy);
    m_host.TakeScan();
    m_host.checkNextSetting();
    m_host.showActivity(ActivityImage::Idle);
}

void PollLoop::reconnect() {
    if (m_vdr.CommPort() <= 0) {
        m_host.showActivity(ActivityImage::Blank);
        return;
    }
    m_host.showActivity(ActivityImage::Idle);
    m_vdr.Connect();
    m_host.showLinkStatus();
    m_host.showActivity(ActivityImage::Blank);
}

} // namespace veldron
