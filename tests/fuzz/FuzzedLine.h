// SPDX-License-Identifier: MIT
#pragma once

#include "link/SerialControl.h"
#include "tests/support/ManualClock.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QList>

#include <deque>
#include <functional>
#include <optional>

namespace veldron {

/// A serial line in memory, for a fuzzer: each command is answered by the next turn of a list, the
/// last one again and again. No call waits: a wait moves the clock, further than it was asked to
/// where nothing comes, as on a busy machine.
class FuzzedLine : public SerialControl {
public:
    /// Whether the bytes that are there can be taken together or only one by one.
    enum class Delivery { Whole, Single };

    /// Seconds by which a wait for nothing is longer than it was asked to be, at most.
    static constexpr double kOversleep = 0.2;
    static constexpr qint16 kPort = 3;

    FuzzedLine(ManualClock &clock, Delivery delivery) : m_clock(clock), m_delivery(delivery) {}

    /// The answers from now on. In a turn these bytes mean something (all others arrive as they
    /// are): 0x1B the next byte arrives as it is; 0x1C repeats the byte before as often as the next
    /// one says; 0x1F what follows comes later, by as many hundredths of a second as the next one
    /// says.
    void setTurns(const QList<QByteArray> &turns) { m_turns.assign(turns.begin(), turns.end()); }
    /// What arrives when the port is opened the next time.
    void sendAtOpening(const QByteArray &turn) { m_atOpening = turn; }
    /// The line fails, or is there again.
    void setLost(bool lost) { m_lost = lost; }
    /// What a turn brings, without its pauses; nothing where it has one.
    [[nodiscard]] static std::optional<QByteArray> withoutPauses(const QByteArray &turn);

    /// Commands sent so far, without their line ends.
    [[nodiscard]] const QByteArrayList &commands() const { return m_commands; }
    [[nodiscard]] qint16 inputLength() const { return m_inputLength; }

    [[nodiscard]] qint16 CommPort() const override { return m_port; }
    Result setCommPort(qint16 port) override;
    [[nodiscard]] bool PortOpen() const override { return m_open; }
    Result setPortOpen(bool open) override;
    [[nodiscard]] QByteArray Input() override;
    void setInputLen(qint16 length) override { m_inputLength = length; }
    [[nodiscard]] qint32 InBufferCount() override;
    Result setOutput(const QByteArray &bytes) override;
    void setSettings(const QString & /*settings*/) override {}
    void setHandshaking(qint16 /*handshaking*/) override {}
    void setInputMode(qint16 /*mode*/) override {}
    void setRThreshold(qint16 /*bytes*/) override {}
    void setSThreshold(qint16 /*bytes*/) override {}
    [[nodiscard]] bool RTSEnable() const override { return true; }
    void setRTSEnable(bool /*on*/) override {}
    [[nodiscard]] qint16 CommEvent() const override { return 0; }
    void setCommHandler(std::function<void()> /*handler*/) override {}
    [[nodiscard]] bool waitForInput(int milliseconds) override;
    [[nodiscard]] QString deviceName(qint16 /*port*/) const override { return {}; }

private:
    struct Arrival {
        double time;
        QByteArray bytes;
    };

    void collect();
    void send(const QByteArray &turn);

    ManualClock &m_clock;
    Delivery m_delivery;
    std::deque<QByteArray> m_turns;
    std::deque<Arrival> m_coming;
    QByteArray m_arrived;
    qsizetype m_taken = 0; ///< of those that arrived
    QByteArray m_atOpening;
    QByteArrayList m_commands;
    qint16 m_port = 0;
    qint16 m_inputLength = 0;
    bool m_open = false;
    bool m_lost = false;
};

} // namespace veldron
