// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <functional>
#include <optional>

namespace veldron {

/// Why a port could not be chosen or opened. The numbers are those of SerialErrorCode, the
/// description is a sentence for the user.
struct SerialError {
    int number = 0;
    QString description;
};

/// The error numbers that a serial control gives.
namespace SerialErrorCode {
constexpr int kPermissionDenied = 70; ///< the user may not use the device
constexpr int kNotWhileOpen = 8000;   ///< the port number can't change under an open port
constexpr int kNoSuchPort = 8002;     ///< no device stands behind the port number
constexpr int kPortInUse = 8005;      ///< the device is open already, here or in another program
constexpr int kDeviceFailed = 8012;   ///< anything else; the description is the system's
} // namespace SerialErrorCode

/// A serial port, with the property names of a serial control.
///
/// A port is a number, COM 1 and up. All members are called on one thread, and none runs the event
/// loop. A line that fails while its port is open reads as silence: PortOpen stays true, reads give
/// nothing, writes are dropped, and each write first tries once to open the same port again.
class SerialControl {
public:
    /// Nothing when the call succeeded.
    using Result = std::optional<SerialError>;

    SerialControl() = default;
    SerialControl(const SerialControl &) = delete;
    SerialControl &operator=(const SerialControl &) = delete;
    virtual ~SerialControl() = default;

    /// Number of the chosen port, open or not; 0 before the first choice.
    [[nodiscard]] virtual qint16 CommPort() const = 0;
    /// Fails while a port is open.
    virtual Result setCommPort(qint16 port) = 0;

    [[nodiscard]] virtual bool PortOpen() const = 0;
    /// Opens or closes the chosen port. After a failure to open, the port is closed; closing never
    /// fails, and drops what is waiting in both directions.
    virtual Result setPortOpen(bool open) = 0;

    /// Takes up to InputLen bytes (0: all) of what has arrived; empty when nothing is there.
    [[nodiscard]] virtual QByteArray Input() = 0;
    virtual void setInputLen(qint16 length) = 0;
    /// Bytes that Input can take.
    [[nodiscard]] virtual qint32 InBufferCount() = 0;
    /// Writes \a bytes to the line without waiting until they are sent. Fails, and drops them, when
    /// the line has failed and the port can't be opened again.
    virtual Result setOutput(const QByteArray &bytes) = 0;

    /// Line settings as "baud,parity letter,data bits,stop bits"; a text of another form is
    /// dropped.
    virtual void setSettings(const QString &settings) = 0;
    /// 0 none, 1 XON/XOFF, 2 RTS/CTS, 3 both.
    virtual void setHandshaking(qint16 handshaking) = 0;
    /// 0 text, 1 binary.
    virtual void setInputMode(qint16 mode) = 0;
    /// Bytes that must wait before a receive event is raised; 0 for no such event.
    virtual void setRThreshold(qint16 bytes) = 0;
    virtual void setSThreshold(qint16 bytes) = 0;
    [[nodiscard]] virtual bool RTSEnable() const = 0;
    virtual void setRTSEnable(bool on) = 0;

    /// Number of the latest event.
    [[nodiscard]] virtual qint16 CommEvent() const = 0;
    /// \a handler is called after each event; an empty one ends that.
    virtual void setCommHandler(std::function<void()> handler) = 0;

    /// Sleeps until bytes can be taken, \a milliseconds at most. False: there is no line to wait
    /// for, and the call returned at once.
    [[nodiscard]] virtual bool waitForInput(int milliseconds) = 0;
    /// Path of the device behind COM \a port, empty when there is none.
    [[nodiscard]] virtual QString deviceName(qint16 port) const = 0;
};

} // namespace veldron
