// SPDX-License-Identifier: MIT
#pragma once

#include "common/ErrorGuard.h"
#include "link/PortLock.h"
#include "link/PortMap.h"
#include "link/SerialControl.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class QSerialPort;

namespace veldron {

/// What is known about a failure to open a device.
struct OpenFailure {
    enum class Kind { NotThere, NotAllowed, AlreadyOpen, Other };
    Kind kind = Kind::Other;
    QString device;         ///< the path that was tried
    QString group;          ///< the group that the device belongs to
    bool accessible = true; ///< the user may read and write it
    QString systemText;     ///< the system's words
};

/// The serial control on the machine's serial ports and on pseudo-terminals.
///
/// A QCoreApplication must exist while a port is open. When a device goes away (adapter unplugged,
/// pseudo-terminal closed), its handle is closed at the first error, because it would report
/// errors without end; PortOpen stays true, and each write tries once to open the device again.
class QtSerialControl : public SerialControl {
public:
    /// No port is open afterwards. \a ports says which devices there are.
    /// \a guard receives what a handler of line events throws.
    QtSerialControl(const ErrorGuard &guard, PortMap ports);
    ~QtSerialControl() override;

    /// Paths of the system's serial ports. Listing them may open some for a moment.
    [[nodiscard]] static QStringList systemDevices();
    /// The error for \a failure. Permission denied although the user has the rights means that
    /// another program holds the device.
    [[nodiscard]] static SerialError describe(const OpenFailure &failure);

    [[nodiscard]] qint16 CommPort() const override { return m_CommPort; }
    Result setCommPort(qint16 port) override;
    /// True from a successful open to the close, also while the device is gone.
    [[nodiscard]] bool PortOpen() const override { return m_PortOpen; }
    /// Takes the device's lock before it is touched, and gives it up after the close. Opening drops
    /// what the kernel had received before.
    Result setPortOpen(bool open) override;

    /// Looks at the kernel when the port's own buffer is empty, or when all is asked for. What
    /// comes unasked for is kept up to a limit.
    [[nodiscard]] QByteArray Input() override;
    void setInputLen(qint16 length) override { m_InputLen = length; }
    [[nodiscard]] qint32 InBufferCount() override;
    /// Drops what an earlier write could not send, so that it can't reach the unit late. Flushes
    /// without waiting for the line.
    Result setOutput(const QByteArray &bytes) override;

    void setSettings(const QString &settings) override;
    /// 3, both kinds, sets RTS/CTS alone, since the port knows no combination.
    void setHandshaking(qint16 handshaking) override;
    /// Input is binary whatever the mode.
    void setInputMode(qint16 /*mode*/) override {}
    void setRThreshold(qint16 bytes) override { m_RThreshold = bytes; }
    /// No send events are raised.
    void setSThreshold(qint16 /*bytes*/) override {}
    [[nodiscard]] bool RTSEnable() const override { return m_RTSEnable; }
    /// With RTS/CTS handshaking the value is only stored: the handshaking sets the line.
    void setRTSEnable(bool on) override;

    [[nodiscard]] qint16 CommEvent() const override { return m_CommEvent; }
    void setCommHandler(std::function<void()> handler) override {
        m_commHandler = std::move(handler);
    }

    /// Parks the thread in the kernel; no timer fires meanwhile.
    [[nodiscard]] bool waitForInput(int milliseconds) override;
    [[nodiscard]] QString deviceName(qint16 port) const override;

private:
    /// The port is open and its handle is good.
    [[nodiscard]] bool isLive() const;
    /// Lock, open, drop old input; a failure leaves neither lock nor handle.
    [[nodiscard]] Result openDevice();
    [[nodiscard]] OpenFailure openFailure(const QString &device) const;
    /// Handle and lock; PortOpen is left to the caller.
    void closeDevice();
    /// Brings what the kernel holds into the buffer of the port, without waiting.
    void fetch();
    void noteError();
    void letGoOfBroken();
    void noteArrival();

    PortMap m_ports;
    PortLock m_lock;
    std::unique_ptr<QSerialPort> m_port;
    std::function<void()> m_commHandler;
    qint16 m_CommPort = 0;
    qint16 m_CommEvent = 0;
    qint16 m_InputLen = 0;
    qint16 m_RThreshold = 0;
    bool m_PortOpen = false;
    bool m_RTSEnable = true;
    /// The handle has reported an error that it will not get over.
    bool m_broken = false;
};

} // namespace veldron
