// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/LineTraffic.h"
#include "simulator/UnitTerminal.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace veldron {

/// The unit on a terminal. It has no loop and no timer: the caller waits for the descriptors and
/// for nextDue(), then calls serve() with the time.
class UnitLine {
public:
    /// When the program has read nothing for so many seconds, what it was to get is dropped.
    static constexpr double kStall = 1.0;

    /// \a baud and \a bunch as for ReplyQueue. Unit and faults must outlive this object.
    UnitLine(Unit &unit, Faults &faults, const QString &linkPath, int baud, int bunch = 1);

    /// As those of UnitTerminal; unplugging also drops what waits to be sent.
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
    /// Due bytes that the terminal has not taken yet.
    QByteArray m_backlog;
    double m_lastProgress = 0.0;
};

} // namespace veldron
