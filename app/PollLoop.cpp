// SPDX-License-Identifier: MIT
#include "app/PollLoop.h"

#include "app/LastSession.h"
#include "app/PanelMediation.h"
#include "app/RoundRobin.h"
#include "app/ScanPipeline.h"
#include "app/StatusPanels.h"
#include "common/Numbers.h"
#include "link/frmVDR.h"

namespace veldron {

int PollLoop::tickInterval(qint16 pollPeriod) {
    return pollPeriod <= 1000 ? Numbers::roundTo<int>(pollPeriod / 2.0) : 500;
}

void PollLoop::tick() {
    const float now = m_dependencies.clock.timeOfDay();
    if (!m_grid.isDue(now, m_PollPeriod)) {
        return;
    }
    // Before the poll and before the grid moves on: while a recording runs, reading everything back
    // writes the new date into the file, and the scan of this poll must stand behind it.
    if (m_grid.hasPassedMidnight() && m_dependencies.vdr.Connected()) {
        m_dependencies.mediation.ReadBackSettings();
    }
    m_grid.moveBeyond(now, m_PollPeriod);
    if (m_dependencies.vdr.Connected()) {
        pollConnected();
    } else {
        reconnect();
    }
}

/// The scan comes first: when the unit has gone silent it is the one exchange that waits, and all
/// reads behind it fail at once.
void PollLoop::pollConnected() {
    m_dependencies.statusBar.showActivity(ActivityImage::Busy);
    m_dependencies.scans.TakeScan();
    // Before the check behind it can bring failure values into the panels.
    m_dependencies.lastSession.noteExchange();
    m_dependencies.roundRobin.step();
    m_dependencies.statusBar.showActivity(ActivityImage::Idle);
}

/// The link counts as connected afterwards, whether the unit answered or not, so the next poll that
/// is due asks for a scan: attempts and failed polls alternate while the unit is silent.
void PollLoop::reconnect() {
    if (m_dependencies.vdr.CommPort() <= 0) {
        m_dependencies.statusBar.showActivity(ActivityImage::Blank);
        return;
    }
    m_dependencies.statusBar.showActivity(ActivityImage::Idle);
    m_dependencies.vdr.Connect();
    m_dependencies.statusBar.setStatusText(m_dependencies.vdr.Status());
    m_dependencies.statusBar.showActivity(ActivityImage::Blank);
}

} // namespace veldron
