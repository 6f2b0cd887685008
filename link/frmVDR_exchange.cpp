// SPDX-License-Identifier: MIT
// The exchange: a command out, a reply line back, and whether the link is up.
#include "link/frmVDR.h"

#include "common/WaitLimit.h"
#include "link/Wire.h"

namespace veldron {

namespace {

/// How long the thread sleeps in the kernel before the time of day is read again.
constexpr int kParkMilliseconds = 5;
/// Two bytes follow each other within 1.2 ms at 9600 baud.
constexpr int kStaleQuietMilliseconds = 2;
constexpr qint64 kStaleLimitMilliseconds = 50;

QString withoutLineEnd(const QString &reply) {
    return reply.chopped(QLatin1String(Wire::kLineEnd).size());
}

} // namespace

bool frmVDR::SendCommand(const QString &command) {
    if (!m_control.PortOpen()) {
        m_Connected = false;
        m_LastReply.clear();
        m_Status = QStringLiteral("No serial port open");
        return false;
    }
    if (!m_Connected) {
        return false;
    }
    m_Active = true;
    const QByteArray line = exchangeLine(command);
    m_Connected = line.endsWith(Wire::kLineEnd);
    bool positive = false;
    if (m_Connected) {
        positive = classifyReply(command, QString::fromLatin1(line));
    } else {
        m_LastReply.clear();
    }
    m_Active = false;
    return positive;
}

QByteArray frmVDR::exchangeLine(const QString &command) {
    // Before InputLen changes, so that the stale bytes come in large blocks.
    dropStaleBytes();
    // Byte by byte, so that what follows the line stays in the control for the downloads.
    m_control.setInputLen(1);
    // Before the write: the time that it takes counts too.
    const float start = m_clock.timeOfDay();
    const WaitLimit longest(m_clock);
    QByteArray reply;
    noteReopening(m_control.setOutput(command.toLatin1() + Wire::kLineEnd));
    while (elapsedSince(start) < Wire::kReplyLimitSeconds && !longest.isReached() &&
           !reply.endsWith(Wire::kLineEnd)) {
        if (m_control.InBufferCount() >= 1) {
            reply += m_control.Input();
        } else {
            park();
        }
    }
    m_control.setInputLen(0);
    return reply;
}

/// Takes what is left of an earlier reply, so that none of it can be taken for the next one: until
/// nothing has come for a moment, because the line may still be delivering it.
void frmVDR::dropStaleBytes() {
    const qint64 start = m_clock.steadyMilliseconds();
    do {
        static_cast<void>(m_control.Input());
    } while (m_control.waitForInput(kStaleQuietMilliseconds) && m_control.InBufferCount() > 0 &&
             m_clock.steadyMilliseconds() - start < kStaleLimitMilliseconds);
}

float frmVDR::elapsedSince(float start) {
    // A plain difference on purpose: after midnight it is negative, and WaitLimit ends the wait.
    return m_clock.timeOfDay() - start;
}

void frmVDR::park() {
    if (!m_control.waitForInput(kParkMilliseconds)) {
        m_clock.rest(kParkMilliseconds);
    }
}

bool frmVDR::classifyReply(const QString &command, const QString &reply) {
    if (command.startsWith(QLatin1Char(Wire::kWrite))) {
        const bool positive = reply.startsWith(QLatin1Char(Wire::kAccepted));
        m_LastReply = positive ? QString(QLatin1Char(Wire::kAccepted)) : withoutLineEnd(reply);
        return positive;
    }
    if (command.startsWith(QLatin1String(Wire::kReadMarker))) {
        // The only reply that keeps its line end, whether positive or not.
        const bool positive = reply.startsWith(QLatin1Char(Wire::kMarkerReply));
        m_LastReply = positive ? reply.mid(1) : reply;
        return positive;
    }
    return command.startsWith(QLatin1Char(Wire::kRead)) && classifyRead(command, reply);
}

bool frmVDR::classifyRead(const QString &command, const QString &reply) {
    if (reply.left(Wire::kEchoLength) != command.right(Wire::kEchoLength)) {
        m_LastReply = withoutLineEnd(reply);
        return false;
    }
    // A line that is too short to hold a value reads as an empty value.
    const QString afterEcho = reply.mid(Wire::kEchoLength);
    m_LastReply = afterEcho.left(qMax(qsizetype{0}, afterEcho.size() - Wire::kReplyTail));
    return true;
}

void frmVDR::ReportCommsFailure(const QString &command) {
    m_Status = QStringLiteral("Comms failure with command ") + command + m_LastReply;
}

} // namespace veldron
