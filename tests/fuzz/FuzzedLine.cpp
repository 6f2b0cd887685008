// SPDX-License-Identifier: MIT
#include "tests/fuzz/FuzzedLine.h"

#include "tests/fuzz/Demand.h"

#include <algorithm>
#include <utility>

namespace veldron {

namespace {

constexpr char kAsItIs = 0x1B;
constexpr char kRepeat = 0x1C;
constexpr char kPause = 0x1F;
constexpr double kPauseUnit = 0.01;

/// Calls \a pause with the seconds of each pause and \a bytes with what arrives between them.
template <typename Pause, typename Bytes>
void readTurn(const QByteArray &turn, const Pause &pause, const Bytes &bytes) {
    QByteArray piece;
    for (qsizetype place = 0; place < turn.size(); ++place) {
        const char byte = turn[place];
        const bool means = byte == kAsItIs || byte == kRepeat || byte == kPause;
        if (!means || place + 1 == turn.size()) {
            piece += byte;
            continue;
        }
        const char argument = turn[++place];
        const int count = static_cast<unsigned char>(argument);
        if (byte == kAsItIs) {
            piece += argument;
        } else if (byte == kRepeat) {
            piece += QByteArray(count, piece.isEmpty() ? '\0' : piece.back());
        } else {
            bytes(piece);
            piece.clear();
            pause(count * kPauseUnit);
        }
    }
    bytes(piece);
}

} // namespace

std::optional<QByteArray> FuzzedLine::withoutPauses(const QByteArray &turn) {
    bool hasPause = false;
    QByteArray all;
    readTurn(
        turn, [&](double /*seconds*/) { hasPause = true; },
        [&](const QByteArray &bytes) { all += bytes; });
    return hasPause ? std::nullopt : std::optional(all);
}

SerialControl::Result FuzzedLine::setCommPort(qint16 port) {
    if (m_open) {
        return SerialError{SerialErrorCode::kNotWhileOpen, {}};
    }
    m_port = port;
    return std::nullopt;
}

SerialControl::Result FuzzedLine::setPortOpen(bool open) {
    m_arrived.clear();
    m_taken = 0;
    m_coming.clear();
    m_open = open && m_port == kPort;
    if (m_open) {
        send(std::exchange(m_atOpening, {}));
    }
    return open && !m_open ? Result(SerialError{SerialErrorCode::kNoSuchPort, {}}) : std::nullopt;
}

void FuzzedLine::collect() {
    while (!m_coming.empty() && m_coming.front().time <= m_clock.steadySeconds()) {
        m_arrived += m_coming.front().bytes;
        m_coming.pop_front();
    }
}

qint32 FuzzedLine::InBufferCount() {
    collect();
    const qsizetype count = m_open && !m_lost ? m_arrived.size() - m_taken : 0;
    return static_cast<qint32>(m_delivery == Delivery::Single ? qMin<qsizetype>(count, 1) : count);
}

QByteArray FuzzedLine::Input() {
    const qsizetype there = InBufferCount();
    const qsizetype count = m_inputLength == 0 ? there : qMin<qsizetype>(there, m_inputLength);
    m_taken += count;
    return m_arrived.mid(m_taken - count, count);
}

SerialControl::Result FuzzedLine::setOutput(const QByteArray &bytes) {
    // Nothing that came in may stand in a command: they are letters, digits and signs.
    demand(bytes.endsWith("\r\n"));
    const QByteArray command = bytes.chopped(2);
    demand(std::all_of(command.begin(), command.end(), [](char byte) {
        return (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') || byte == ' ' ||
               byte == '-' || byte == '.';
    }));
    m_commands.append(command);
    if (m_lost) {
        return SerialError{SerialErrorCode::kDeviceFailed, QStringLiteral("gone")};
    }
    if (!m_turns.empty()) {
        send(m_turns.front());
        if (m_turns.size() > 1) {
            m_turns.pop_front();
        }
    }
    return std::nullopt;
}

void FuzzedLine::send(const QByteArray &turn) {
    double arrival = m_clock.steadySeconds();
    readTurn(
        turn, [&](double seconds) { arrival += seconds; },
        [&](const QByteArray &bytes) {
            if (!bytes.isEmpty()) {
                // Behind what comes before it, even where that is of an earlier turn.
                const auto later = std::find_if(m_coming.begin(), m_coming.end(),
                                                [&](const Arrival &a) { return a.time > arrival; });
                m_coming.insert(later, {arrival, bytes});
            }
        });
}

bool FuzzedLine::waitForInput(int milliseconds) {
    if (!m_open || m_lost) {
        return false;
    }
    if (InBufferCount() == 0) {
        const double limit = qMax(milliseconds / 1000.0, kOversleep);
        const double now = m_clock.steadySeconds();
        m_clock.advance(m_coming.empty() ? limit : qMin(limit, m_coming.front().time - now));
    }
    return true;
}

} // namespace veldron
