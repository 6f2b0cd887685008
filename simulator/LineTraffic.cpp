// SPDX-License-Identifier: MIT
#include "simulator/LineTraffic.h"

#include <utility>

namespace veldron {

namespace {

/// \a reply with what faults of kind \a kind bring in from its own command or the reply before.
UnitReply amongOthers(UnitReply reply, const QByteArray &command, const QByteArray &previous,
                      Fault::Kind kind) {
    if (kind == Fault::Kind::Previous && !previous.isEmpty()) {
        reply.text = previous;
    }
    if (kind == Fault::Kind::LocalEcho) {
        reply.text.prepend(command);
    }
    return reply;
}

} // namespace

LineTraffic::LineTraffic(Unit &unit, Faults &faults, int baud, int bunch)
    : m_unit(unit), m_faults(faults), m_queue(baud, bunch) {}

void LineTraffic::receive(const QByteArray &bytes, double now) {
    for (const char c : bytes) {
        m_line += c;
        if (m_line.endsWith("\r\n")) {
            const QByteArray line = m_line;
            m_line.clear();
            takeLine(line, now);
            m_tooLong = false;
        } else if (m_line.size() > kLongestLine) {
            m_tooLong = true;
            // The last byte stays, because it may be the CR of the line end.
            m_line = m_line.right(1);
        }
    }
}

QByteArray LineTraffic::takeDue(double now) {
    if (m_faults.isSilent(now)) {
        m_queue.clear();
    }
    return m_queue.takeDue(now);
}

void LineTraffic::reset() {
    m_line.clear();
    m_tooLong = false;
    m_held.clear();
    m_queue.clear();
}

void LineTraffic::takeLine(const QByteArray &line, double now) {
    m_log.heard(line);
    if (m_faults.isSilent(now)) {
        m_log.noted("silent");
        return;
    }
    // Before the reply: a scan is of the moment at which its command was complete.
    m_unit.setTime(now);
    const std::optional<Fault> fault = m_faults.take(line.chopped(2));
    UnitReply reply = replyTo(line, fault);
    // Ahead of this reply, also when it is held itself: none is ever overtaken.
    reply.text.prepend(std::exchange(m_held, {}));
    if (fault && fault->kind == Fault::Kind::Hold) {
        m_held = reply.text + reply.samples + reply.terminator;
        reply = {};
    }
    m_log.said(reply);
    for (const Portion &portion : Faults::portions(reply, fault)) {
        m_queue.add(portion, now);
    }
}

UnitReply LineTraffic::replyTo(const QByteArray &line, const std::optional<Fault> &fault) {
    if (m_tooLong || (fault && fault->kind == Fault::Kind::Refuse)) {
        return {Unit::refusal(), {}, {}, {}};
    }
    const UnitReply reply = m_unit.reply(line);
    const QByteArray previous = std::exchange(m_previous, reply.text);
    if (!fault) {
        return reply;
    }
    m_log.noted(Faults::name(fault->kind));
    return Faults::spoil(amongOthers(reply, line, previous, fault->kind), *fault);
}

} // namespace veldron
