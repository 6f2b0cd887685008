// SPDX-License-Identifier: MIT
// The one exchange: a line out, a line back, and what it says about the link.
#include "link/frmVDR.h"

namespace veldron {

namespace {

constexpr float kReplyLimitSeconds = 1.0F;
constexpr int kParkMilliseconds = 5;
constexpr qsizetype kEchoLength = 3;
/// Behind the value stand one character that means nothing and the line end.
constexpr qsizetype kReplyTail = 3;

const QString kLineEnd = QStringLiteral("\r\n");

QString withoutLineEnd(const QString &reply) {
    return reply.chopped(kLineEnd.size());
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
    m_Connected = line.endsWith("\r\n");
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
    // Stale bytes go now, so that none can pass for the reply.
    static_cast<void>(m_control.Input());
    // Byte by byte, so that what follows the line stays in the control for the downloads.
    m_control.setInputLen(1);
    const float start = m_clock.timeOfDay();
    QByteArray reply;
    m_control.setOutput((command + kLineEnd).toLatin1());
    while (elapsedSince(start) < kReplyLimitSeconds && !reply.endsWith("\r\n")) {
        if (m_control.InBufferCount() >= 1) {
            reply += m_control.Input();
        } else {
            park();
        }
    }
    m_control.setInputLen(0);
    return reply;
}

float frmVDR::elapsedSince(float start) {
    // A plain difference: over midnight it goes negative, and a wait then lasts until bytes come.
    return m_clock.timeOfDay() - start;
}

void frmVDR::park() {
    if (!m_control.waitForInput(kParkMilliseconds)) {
        m_clock.rest(kParkMilliseconds);
    }
}

bool frmVDR::classifyReply(const QString &command, const QString &reply) {
    if (command.startsWith(QLatin1Char('W'))) {
        const bool positive = reply.startsWith(QLatin1Char(' '));
        m_LastReply = positive ? QStringLiteral(" ") : withoutLineEnd(reply);
        return positive;
    }
    if (command.startsWith(QLatin1String("RICD"))) {
        // This reply alone keeps its line end, positive or not.
        const bool positive = reply.startsWith(QLatin1Char('f'));
        m_LastReply = positive ? reply.mid(1) : reply;
        return positive;
    }
    return command.startsWith(QLatin1Char('R')) && classifyRead(command, reply);
}

bool frmVDR::classifyRead(const QString &command, const QString &reply) {
    if (reply.left(kEchoLength) != command.right(kEchoLength)) {
        m_LastReply = withoutLineEnd(reply);
        return false;
    }
    // A line too short to hold a value is an echo with an empty one.
    const QString afterEcho = reply.mid(kEchoLength);
    m_LastReply = afterEcho.left(qMax(qsizetype{0}, afterEcho.size() - kReplyTail));
    return true;
}

void frmVDR::ReportCommsFailure(const QString &command) {
    m_Status = QStringLiteral("Comms failure with command ") + command + m_LastReply;
}

} // namespace veldron
