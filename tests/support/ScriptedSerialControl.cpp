// SPDX-License-Identifier: MIT
#include "tests/support/ScriptedSerialControl.h"

#include <algorithm>

namespace veldron {

namespace {
constexpr qint16 kPorts = 16;
const QString kNoSuchPort = QStringLiteral("There is no such serial port");
} // namespace

void ScriptedSerialControl::setPorts(const std::vector<qint16> &ports) {
    for (qint16 port = 1; port <= kPorts; ++port) {
        const bool exists = std::find(ports.begin(), ports.end(), port) != ports.end();
        failOpen(port, exists ? 0 : SerialErrorCode::kNoSuchPort, kNoSuchPort);
    }
}

void ScriptedSerialControl::failOpen(qint16 port, int number, const QString &description) {
    m_openErrors[port] = {number, description};
}

void ScriptedSerialControl::failChoice(qint16 port, int number, const QString &description) {
    m_choiceErrors[port] = {number, description};
}

void ScriptedSerialControl::setReply(const QString &command, const QByteArray &reply) {
    setReply(command, ReplyScript{{reply, 0.0}});
}

void ScriptedSerialControl::setReply(const QString &command, const ReplyScript &reply) {
    m_replies[command] = reply;
}

void ScriptedSerialControl::queueReply(const QString &command, const QByteArray &reply) {
    queueReply(command, ReplyScript{{reply, 0.0}});
}

void ScriptedSerialControl::queueReply(const QString &command, const ReplyScript &reply) {
    m_queued[command].push_back(reply);
}

const QByteArray &ScriptedSerialControl::unread() {
    collect();
    return m_arrived;
}

void ScriptedSerialControl::raiseEvent(qint16 event) {
    m_CommEvent = event;
    if (m_commHandler) {
        m_commHandler();
    }
}

void ScriptedSerialControl::note(const char *property, const QString &value) {
    m_writes.append(QLatin1String(property) + QLatin1Char('=') + value);
}

void ScriptedSerialControl::note(const char *property, bool value) {
    note(property, QLatin1String(value ? "true" : "false"));
}

SerialControl::Result ScriptedSerialControl::setCommPort(qint16 port) {
    note("CommPort", port);
    if (m_PortOpen) {
        return SerialError{SerialErrorCode::kNotWhileOpen, QStringLiteral("A port is open")};
    }
    const auto failure = m_choiceErrors.find(port);
    if (failure != m_choiceErrors.end() && failure->second.number != 0) {
        return failure->second;
    }
    m_CommPort = port;
    return std::nullopt;
}

SerialControl::Result ScriptedSerialControl::setPortOpen(bool open) {
    note("PortOpen", open);
    if (open && m_PortOpen) {
        return SerialError{SerialErrorCode::kPortInUse, QStringLiteral("The port is open")};
    }
    m_arrived.clear();
    m_coming.clear();
    m_line.clear();
    m_PortOpen = false;
    if (!open) {
        return std::nullopt;
    }
    if (m_CommPort < 1 || m_CommPort > kPorts) {
        return SerialError{SerialErrorCode::kNoSuchPort, kNoSuchPort};
    }
    const auto failure = m_openErrors.find(m_CommPort);
    if (failure != m_openErrors.end() && failure->second.number != 0) {
        return failure->second;
    }
    m_PortOpen = true;
    return std::nullopt;
}

void ScriptedSerialControl::collect() {
    while (!m_coming.empty() && m_coming.front().time <= time()) {
        m_arrived += m_coming.front().bytes;
        m_coming.pop_front();
    }
}

QByteArray ScriptedSerialControl::Input() {
    collect();
    if (!m_PortOpen || m_lost) {
        return {};
    }
    const qsizetype count = m_InputLen == 0 ? m_arrived.size() : qsizetype{m_InputLen};
    const QByteArray taken = m_arrived.left(count);
    m_arrived.remove(0, count);
    return taken;
}

qint32 ScriptedSerialControl::InBufferCount() {
    collect();
    return m_PortOpen && !m_lost ? static_cast<qint32>(m_arrived.size()) : 0;
}

SerialControl::Result ScriptedSerialControl::setOutput(const QByteArray &bytes) {
    note("Output", QString::fromLatin1(bytes).remove(QStringLiteral("\r\n")));
    m_written += bytes;
    m_line += bytes;
    for (qsizetype end = m_line.indexOf("\r\n"); end >= 0; end = m_line.indexOf("\r\n")) {
        const QString command = QString::fromLatin1(m_line.left(end));
        m_line.remove(0, end + 2);
        takeCommand(command);
    }
    return m_reopening.number == 0 ? Result() : m_reopening;
}

void ScriptedSerialControl::takeCommand(const QString &command) {
    m_commands.append(command);
    if (m_hook) {
        m_hook(command);
    }
    const bool answers = m_unitPort == 0 || m_unitPort == m_CommPort;
    if (answers && !m_silent && !m_lost) {
        schedule(replyTo(command));
    }
}

ReplyScript ScriptedSerialControl::replyTo(const QString &command) {
    std::deque<ReplyScript> &queue = m_queued[command];
    if (!queue.empty()) {
        const ReplyScript reply = queue.front();
        queue.pop_front();
        return reply;
    }
    const auto fixed = m_replies.find(command);
    if (fixed != m_replies.end()) {
        return fixed->second;
    }
    return {{m_unit ? unitReply(command) : m_defaultReply, 0.0}};
}

QByteArray ScriptedSerialControl::unitReply(const QString &command) {
    const QString letters = command.mid(1, 3);
    if (command.startsWith(QLatin1Char('W'))) {
        // Channel data has a blank between letters and value.
        m_values[letters] = command.mid(4).trimmed();
        return " \r\n";
    }
    if (letters == QLatin1String("IVE")) {
        return "IVE " + m_version.toLatin1() + " \r\n";
    }
    if (letters == QLatin1String("IFD")) {
        return "IFD\r\n" + m_scan + " \r\n";
    }
    const auto value = m_values.find(letters);
    if (value == m_values.end()) {
        return "?\r\n";
    }
    if (letters == QLatin1String("ICD")) {
        return 'f' + value->second.toLatin1() + "\r\n";
    }
    return letters.toLatin1() + value->second.toLatin1() + " \r\n";
}

void ScriptedSerialControl::schedule(const ReplyScript &reply) {
    double arrival = time();
    for (const ReplyChunk &chunk : reply) {
        arrival += chunk.delay;
        if (!chunk.bytes.isEmpty()) {
            m_coming.push_back({arrival, chunk.bytes});
        }
    }
}

bool ScriptedSerialControl::waitForInput(int milliseconds) {
    m_waits.push_back(milliseconds);
    if (m_waitHook) {
        m_waitHook();
    }
    if (!m_PortOpen || m_lost) {
        return false;
    }
    collect();
    if (m_arrived.isEmpty()) {
        const double limit = milliseconds / 1000.0;
        const double arrival = m_coming.empty() ? limit : m_coming.front().time - time();
        m_clock.advance(std::min(limit, arrival));
    }
    return true;
}

QString ScriptedSerialControl::deviceName(qint16 port) const {
    const auto name = m_deviceNames.find(port);
    return name == m_deviceNames.end() ? QString() : name->second;
}

void ScriptedSerialControl::setInputLen(qint16 length) {
    note("InputLen", length);
    m_InputLen = length;
}

void ScriptedSerialControl::setSettings(const QString &settings) {
    note("Settings", settings);
}

void ScriptedSerialControl::setHandshaking(qint16 handshaking) {
    note("Handshaking", handshaking);
}

void ScriptedSerialControl::setInputMode(qint16 mode) {
    note("InputMode", mode);
}

void ScriptedSerialControl::setRThreshold(qint16 bytes) {
    note("RThreshold", bytes);
}

void ScriptedSerialControl::setSThreshold(qint16 bytes) {
    note("SThreshold", bytes);
}

void ScriptedSerialControl::setRTSEnable(bool on) {
    note("RTSEnable", on);
    m_RTSEnable = on;
}

} // namespace veldron
