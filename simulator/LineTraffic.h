// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/Faults.h"
#include "simulator/ReplyQueue.h"
#include "simulator/TrafficLog.h"
#include "simulator/Unit.h"

#include <QByteArray>

#include <optional>

namespace veldron {

/// Splits incoming bytes into lines, has the unit answer each, applies the faults, and gives the
/// replies back byte by byte at the speed of the line. It has no terminal of its own.
///
/// A line ends with CR LF. All times are seconds from outside that never go back; the unit's scene
/// runs on the same time. Commands may come faster than replies leave: each is carried out when its
/// line is complete, and the replies queue up.
class LineTraffic {
public:
    /// A line longer than this is refused, whatever it says.
    static constexpr qsizetype kLongestLine = 256;

    /// \a baud and \a bunch as for ReplyQueue. Both objects must outlive this one.
    LineTraffic(Unit &unit, Faults &faults, int baud, int bunch = 1);

    void setLog(const TrafficLog &log) { m_log = log; }
    [[nodiscard]] const TrafficLog &log() const { return m_log; }

    /// Any part of a line, or several lines.
    void receive(const QByteArray &bytes, double now);
    /// What the line has carried by \a now. A silence drops what still waits.
    [[nodiscard]] QByteArray takeDue(double now);
    /// When takeDue will have something; nothing while no reply is on its way.
    [[nodiscard]] std::optional<double> nextDue() const { return m_queue.nextDue(); }
    /// Drops half a line that came in and whatever is on its way out.
    void reset();

private:
    void takeLine(const QByteArray &line, double now);
    /// What the unit says to \a line, spoilt by \a fault. A refused line never reaches the unit.
    [[nodiscard]] UnitReply replyTo(const QByteArray &line, const std::optional<Fault> &fault);

    Unit &m_unit;
    Faults &m_faults;
    ReplyQueue m_queue;
    TrafficLog m_log;
    QByteArray m_line;
    bool m_tooLong = false;
    QByteArray m_previous; ///< text of the unit's reply to the command before
    QByteArray m_held;     ///< reply that waits for the next one
};

} // namespace veldron
