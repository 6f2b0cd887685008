// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/LineTraffic.h"
#include "simulator/UnitTerminal.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace veldron {

/// The unit on a terminal. Runs no loop and no timer of its own: whoever drives it waits on the
/// descriptors and on nextDue(), then calls serve() with the time.
class UnitLine {
public:
    /// A program that takes nothing for so many seconds loses what was meant for it.
    static constexpr double kStall = 1.0;

    /// \a baud as for ReplyQueue. Unit and faults must outlive this object.
    UnitLine(Unit &unit, Faults &faults, const QString &linkPath, int baud);

    /// As UnitTerminal's; unplugging also drops what is on its way.
    bool plug() { return m_terminal.plug(); }
    void unplug();
    [[nodiscard]] bool isPlugged() const { return m_terminal.isPlugged(); }
    [[nodiscard]] const QString &error() const { return m_terminal.error(); }

    /// Takes in what has come, sends out what is due.
    void serve(double now);
    /// When serve() has to be called at the latest even if nothing comes.
    [[nodiscard]] std::optional<double> nextDue() const { return m_traffic.nextDue(); }
    /// True while the terminal is full: wait until the descriptor can be written.
    [[nodiscard]] bool isBlocked() const { return !m_backlog.isEmpty(); }
    [[nodiscard]] int descriptor() const { return m_terminal.descriptor(); }
    [[nodiscard]] int watchDescriptor() const { return m_terminal.watchDescriptor(); }

    [[nodiscard]] LineTraffic &traffic() { return m_traffic; }

private:
    LineTraffic m_traffic;
    UnitTerminal m_terminal;
    QByteArray m_backlog;
    double m_lastProgress = 0.0;
};

} // namespace veldron
