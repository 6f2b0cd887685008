// SPDX-License-Identifier: MIT
#include "simulator/UnitLine.h"

namespace veldron {

UnitLine::UnitLine(Unit &unit, Faults &faults, const QString &linkPath, int baud, int bunch)
    : m_traffic(unit, faults, baud, bunch), m_terminal(linkPath) {}

void UnitLine::unplug() {
    m_terminal.unplug();
    m_traffic.reset();
    m_backlog.clear();
}

void UnitLine::serve(double now) {
    // Before anything is written: it drops what a program that has closed left unread.
    m_terminal.noticeOthers();
    m_traffic.receive(m_terminal.read(), now);
    if (m_backlog.isEmpty()) {
        m_lastProgress = now;
    }
    m_backlog += m_traffic.takeDue(now);
    const qsizetype written = m_terminal.write(m_backlog);
    m_backlog.remove(0, written);
    if (written > 0) {
        m_lastProgress = now;
    } else if (now - m_lastProgress > kStall) {
        m_backlog.clear();
    }
}

} // namespace veldron
