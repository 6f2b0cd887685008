// SPDX-License-Identifier: MIT
#pragma once

#include "link/SerialControl.h"
#include "tests/support/ManualClock.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <deque>
#include <functional>
#include <map>
#include <utility>
#include <vector>

namespace veldron {

/// Bytes that arrive \a delay seconds after the ones before them (the first after the command).
struct ReplyChunk {
    QByteArray bytes;
    double delay = 0.0;
};
using ReplyScript = std::vector<ReplyChunk>;

/// A serial control with scripted replies, on the time of a ManualClock.
///
/// A line that ends in CR LF is a command. It is answered by the first of these that there is: the
/// next queued reply for it, the fixed reply for it, the built-in unit if it is switched on, the
/// default reply (silence at first). A wait advances the clock by the time asked for, or to the
/// next arrival.
///
/// The built-in unit stores what is written: "WUMD3" is accepted, and "RUMD" then reads "UMD3 ". A
/// value that was never written is the one given with setUnitValue; without one the read is
/// refused.
class ScriptedSerialControl : public SerialControl {
public:
    explicit ScriptedSerialControl(ManualClock &clock) : m_clock(clock) {}

    // Ports. COM 1 to COM 16 exist and open from the start.
    /// Only \a ports exist; any other gives error 8002.
    void setPorts(const std::vector<qint16> &ports);
    /// Opening \a port fails with \a number and \a description; a number of 0 ends that.
    void failOpen(qint16 port, int number, const QString &description = {});
    /// Choosing \a port fails with \a number and \a description.
    void failChoice(qint16 port, int number, const QString &description = {});
    /// Commands are answered on COM \a port only; 0 for every port.
    void setUnitPort(qint16 port) { m_unitPort = port; }
    void setDeviceName(qint16 port, const QString &name) { m_deviceNames[port] = name; }
    /// The line has failed while the port is open: reads give nothing, and a wait returns at once.
    void setLineLost(bool lost) { m_lost = lost; }
    /// The line has failed, and each write fails to open it again; a number of 0 ends that.
    void failReopening(int number, const QString &description = {}) {
        setLineLost(number != 0);
        m_reopening = {number, description};
    }

    // Replies, as raw bytes with their line ends.
    void setReply(const QString &command, const QByteArray &reply);
    void setReply(const QString &command, const ReplyScript &reply);
    /// Used once, before the fixed reply, in the order queued.
    void queueReply(const QString &command, const QByteArray &reply);
    void queueReply(const QString &command, const ReplyScript &reply);
    /// For every command that nothing else answers; empty for silence.
    void setDefaultReply(const QByteArray &reply) { m_defaultReply = reply; }
    /// No command at all is answered.
    void setSilent(bool silent) { m_silent = silent; }

    // The built-in unit.
    void setUnit(bool on) { m_unit = on; }
    /// \a letters are the three after "W" or "R", as "UMD".
    void setUnitValue(const QString &letters, const QString &value) { m_values[letters] = value; }
    [[nodiscard]] QString unitValue(const QString &letters) const { return m_values.at(letters); }
    /// The samples that "RIFD" brings, behind the header and before the terminator.
    void setScan(const QByteArray &samples) { m_scan = samples; }
    /// The version text behind the blank.
    void setVersion(const QString &version) { m_version = version; }

    /// Bytes that are there to be read now, whatever was sent.
    void arrive(const QByteArray &bytes) { m_arrived += bytes; }

    // The record.
    /// All commands, without their line ends, in order.
    [[nodiscard]] const QStringList &commands() const { return m_commands; }
    void clearCommands() { m_commands.clear(); }
    /// Every byte written.
    [[nodiscard]] const QByteArray &written() const { return m_written; }
    /// Every write of a property in order, as "CommPort=3", "PortOpen=true", "Output=RIVE".
    [[nodiscard]] const QStringList &writes() const { return m_writes; }
    void clearWrites() { m_writes.clear(); }
    /// Milliseconds asked for at each wait.
    [[nodiscard]] const std::vector<int> &waits() const { return m_waits; }
    /// Bytes that have arrived and were not read.
    [[nodiscard]] const QByteArray &unread();
    /// Raises \a event as the control does.
    void raiseEvent(qint16 event);
    /// Called after each command, before its reply is chosen.
    void setCommandHook(std::function<void(const QString &)> hook) { m_hook = std::move(hook); }
    /// Called at the start of each wait.
    void setWaitHook(std::function<void()> hook) { m_waitHook = std::move(hook); }

    [[nodiscard]] qint16 CommPort() const override { return m_CommPort; }
    Result setCommPort(qint16 port) override;
    [[nodiscard]] bool PortOpen() const override { return m_PortOpen; }
    Result setPortOpen(bool open) override;
    [[nodiscard]] QByteArray Input() override;
    void setInputLen(qint16 length) override;
    [[nodiscard]] qint16 InputLen() const { return m_InputLen; }
    [[nodiscard]] qint32 InBufferCount() override;
    Result setOutput(const QByteArray &bytes) override;
    void setSettings(const QString &settings) override;
    void setHandshaking(qint16 handshaking) override;
    void setInputMode(qint16 mode) override;
    void setRThreshold(qint16 bytes) override;
    void setSThreshold(qint16 bytes) override;
    [[nodiscard]] bool RTSEnable() const override { return m_RTSEnable; }
    void setRTSEnable(bool on) override;
    /// RTS goes low without a write.
    void dropRTS() { m_RTSEnable = false; }
    [[nodiscard]] qint16 CommEvent() const override { return m_CommEvent; }
    void setCommHandler(std::function<void()> handler) override {
        m_commHandler = std::move(handler);
    }
    [[nodiscard]] bool hasCommHandler() const { return static_cast<bool>(m_commHandler); }
    [[nodiscard]] bool waitForInput(int milliseconds) override;
    [[nodiscard]] QString deviceName(qint16 port) const override;

private:
    struct Arrival {
        double time;
        QByteArray bytes;
    };

    void note(const char *property, const QString &value);
    void note(const char *property, int value) { note(property, QString::number(value)); }
    void note(const char *property, bool value);
    void takeCommand(const QString &command);
    [[nodiscard]] ReplyScript replyTo(const QString &command);
    [[nodiscard]] QByteArray unitReply(const QString &command);
    void schedule(const ReplyScript &reply);
    void collect();
    /// Of the steady clock, which doesn't start again at midnight.
    [[nodiscard]] double time() const { return m_clock.steadySeconds(); }

    ManualClock &m_clock;
    std::map<qint16, SerialError> m_openErrors;
    std::map<qint16, SerialError> m_choiceErrors;
    SerialError m_reopening;
    std::map<qint16, QString> m_deviceNames;
    std::map<QString, std::deque<ReplyScript>> m_queued;
    std::map<QString, ReplyScript> m_replies;
    std::map<QString, QString> m_values;
    std::function<void(const QString &)> m_hook;
    std::function<void()> m_waitHook;
    std::function<void()> m_commHandler;
    QByteArray m_defaultReply;
    QByteArray m_scan = QByteArray(321, 'A');
    QString m_version = QStringLiteral("Ver 1.00");
    QByteArray m_line;
    QByteArray m_arrived;
    QByteArray m_written;
    std::deque<Arrival> m_coming;
    QStringList m_commands;
    QStringList m_writes;
    std::vector<int> m_waits;
    qint16 m_CommPort = 0;
    qint16 m_CommEvent = 0;
    qint16 m_InputLen = 0;
    qint16 m_unitPort = 0;
    bool m_PortOpen = false;
    bool m_RTSEnable = true;
    bool m_lost = false;
    bool m_silent = false;
    bool m_unit = false;
};

} // namespace veldron
