// SPDX-License-Identifier: MIT
#pragma once

#include "app/PollGrid.h"
#include "common/Clock.h"

#include <QtGlobal>

namespace veldron {

class LastSession;
class PanelMediation;
class RoundRobin;
class ScanPipeline;
class StatusPanels;
class frmVDR;

/// What a tick of the poll timer does: nothing while no poll is due on the grid, else a poll of the
/// unit, or an attempt to bring a lost link back.
///
/// A poll holds the thread until the unit has answered or a second has passed, and never runs the
/// event loop, so that no tick and no user's act comes in between.
class PollLoop {
public:
    /// What a poll passes through; all of it outlives the loop.
    struct Dependencies {
        frmVDR &vdr;
        ScanPipeline &scans;
        RoundRobin &roundRobin;
        PanelMediation &mediation;
        LastSession &lastSession;
        StatusPanels &statusBar;
        Clock &clock;
    };
    explicit PollLoop(const Dependencies &dependencies) : m_dependencies(dependencies) {}

    /// The poll period of a program that has just started, in milliseconds.
    static constexpr qint16 kPeriodAtStart = 1000;

    /// One tick of the poll timer. Polls and exchanges happen inside of it: up to a second with a
    /// silent unit, some milliseconds without a port.
    void tick();
    /// Milliseconds from one poll to the next, from 250 to 10000.
    [[nodiscard]] qint16 PollPeriod() const { return m_PollPeriod; }
    /// Counts from the next tick on, and is not checked. The timer's interval is set apart from it.
    void setPollPeriod(qint16 milliseconds) { m_PollPeriod = milliseconds; }
    /// Interval of the poll timer for a poll period, both in milliseconds: half of it, 500 at most.
    [[nodiscard]] static int tickInterval(qint16 pollPeriod);

private:
    /// A scan, then one check of a setting.
    void pollConnected();
    /// One attempt to bring a lost link back: the unit is asked for its version.
    void reconnect();

    Dependencies m_dependencies;
    PollGrid m_grid;
    qint16 m_PollPeriod = kPeriodAtStart;
};

} // namespace veldron
