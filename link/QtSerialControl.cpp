// SPDX-License-Identifier: MIT
#include "link/QtSerialControl.h"

#include <QFileInfo>
#include <QSerialPort>
#include <QSerialPortInfo>

#include <map>
#include <utility>

#include <poll.h>

namespace veldron {

namespace {

constexpr qint16 kReceiveEvent = 2;
/// Limit in bytes for what is received and not read, so that a device that sends unasked can't fill
/// the memory. Far above the largest block that the unit sends.
constexpr qint64 kLargestBacklog = 1000000;

/// The device that the link \a path points at, empty when it points at nothing. Locks against other
/// programs are on this name.
QString resolved(const QString &path) {
    return path.isEmpty() ? QString() : QFileInfo(path).canonicalFilePath();
}

bool mayUse(const QString &device) {
    const QFileInfo info(device);
    return info.isReadable() && info.isWritable();
}

/// Whether the kernel holds bytes or an error. Called for each byte of a scan: this costs far less
/// than a wait of the port that ends without a byte.
bool hasNews(const QSerialPort &port) {
    pollfd line{port.handle(), POLLIN, 0};
    return ::poll(&line, 1, 0) != 0;
}

/// Errors after which the handle can't be used. A time-out isn't one, nor is an unsupported
/// setting.
bool isFatal(QSerialPort::SerialPortError error) {
    switch (error) {
    case QSerialPort::NoError:
    case QSerialPort::TimeoutError:
    case QSerialPort::UnsupportedOperationError:
    case QSerialPort::NotOpenError:
    case QSerialPort::OpenError:
        return false;
    default:
        return true;
    }
}

OpenFailure::Kind kindOf(QSerialPort::SerialPortError error) {
    switch (error) {
    case QSerialPort::DeviceNotFoundError:
        return OpenFailure::Kind::NotThere;
    case QSerialPort::PermissionError:
        return OpenFailure::Kind::NotAllowed;
    case QSerialPort::OpenError:
        return OpenFailure::Kind::AlreadyOpen;
    default:
        return OpenFailure::Kind::Other;
    }
}

QString text(const char *words) {
    return QString::fromLatin1(words);
}

struct LineSettings {
    qint32 baud = 0;
    QSerialPort::Parity parity = QSerialPort::NoParity;
    QSerialPort::DataBits dataBits = QSerialPort::Data8;
    QSerialPort::StopBits stopBits = QSerialPort::OneStop;
};

/// Reads "9600,n,8,2". False: the text is of another form.
bool readSettings(const QString &settings, LineSettings &line) {
    static const std::map<QString, QSerialPort::Parity> kParities{
        {text("n"), QSerialPort::NoParity},
        {text("e"), QSerialPort::EvenParity},
        {text("o"), QSerialPort::OddParity},
        {text("m"), QSerialPort::MarkParity},
        {text("s"), QSerialPort::SpaceParity}};
    static const std::map<QString, QSerialPort::StopBits> kStopBits{
        {text("1"), QSerialPort::OneStop},
        {text("1.5"), QSerialPort::OneAndHalfStop},
        {text("2"), QSerialPort::TwoStop}};
    const QStringList fields = settings.toLower().split(QLatin1Char(','));
    if (fields.size() != 4 || !kParities.contains(fields[1]) || !kStopBits.contains(fields[3])) {
        return false;
    }
    const int dataBits = fields[2].toInt();
    line.baud = fields[0].toInt();
    line.parity = kParities.at(fields[1]);
    line.dataBits = static_cast<QSerialPort::DataBits>(dataBits);
    line.stopBits = kStopBits.at(fields[3]);
    return line.baud > 0 && dataBits >= QSerialPort::Data5 && dataBits <= QSerialPort::Data8;
}

QSerialPort::FlowControl flowControl(qint16 handshaking) {
    if (handshaking == 0) {
        return QSerialPort::NoFlowControl;
    }
    // The port knows no combination of both; RTS/CTS is the one that loses no bytes.
    return handshaking == 1 ? QSerialPort::SoftwareControl : QSerialPort::HardwareControl;
}

} // namespace

QtSerialControl::QtSerialControl(const ErrorGuard &guard, PortMap ports)
    : m_ports(std::move(ports)), m_port(std::make_unique<QSerialPort>()) {
    connectGuarded(guard, m_port.get(), &QSerialPort::errorOccurred, m_port.get(),
                   [this] { noteError(); });
    connectGuarded(guard, m_port.get(), &QSerialPort::readyRead, m_port.get(),
                   [this] { noteArrival(); });
}

QtSerialControl::~QtSerialControl() {
    m_commHandler = {};
    closeDevice();
}

QStringList QtSerialControl::systemDevices() {
    QStringList devices;
    for (const QSerialPortInfo &port : QSerialPortInfo::availablePorts()) {
        devices.append(port.systemLocation());
    }
    return devices;
}

SerialError QtSerialControl::describe(const OpenFailure &failure) {
    using Kind = OpenFailure::Kind;
    if (failure.kind == Kind::NotThere) {
        return {SerialErrorCode::kNoSuchPort, text("There is no such serial port")};
    }
    const bool allowed = failure.kind != Kind::NotAllowed || failure.accessible;
    if (!allowed) {
        return {SerialErrorCode::kPermissionDenied,
                text("Permission denied for ") + failure.device +
                    text(": to use it, become a member of the group \"") + failure.group +
                    text("\" and log in again")};
    }
    if (failure.kind != Kind::Other) {
        return {SerialErrorCode::kPortInUse, failure.device + text(" is open already")};
    }
    return {SerialErrorCode::kDeviceFailed, failure.systemText};
}

QString QtSerialControl::deviceName(qint16 port) const {
    const QString path = m_ports.device(port);
    const QString device = resolved(path);
    return device.isEmpty() ? path : device;
}

SerialControl::Result QtSerialControl::setCommPort(qint16 port) {
    if (m_PortOpen) {
        return SerialError{SerialErrorCode::kNotWhileOpen,
                           text("The port can't be changed while it is open")};
    }
    m_CommPort = port;
    return std::nullopt;
}

SerialControl::Result QtSerialControl::setPortOpen(bool open) {
    if (!open) {
        m_PortOpen = false;
        closeDevice();
        return std::nullopt;
    }
    if (m_PortOpen) {
        return describe({OpenFailure::Kind::AlreadyOpen, deviceName(m_CommPort), {}, true, {}});
    }
    Result failure = openDevice();
    m_PortOpen = !failure;
    return failure;
}

bool QtSerialControl::isLive() const {
    return m_port->isOpen() && !m_broken;
}

SerialControl::Result QtSerialControl::openDevice() {
    const QString device = resolved(m_ports.device(m_CommPort));
    if (device.isEmpty()) {
        return describe({OpenFailure::Kind::NotThere, device, {}, false, {}});
    }
    // Before the port is opened: that already changes the line settings.
    if (const std::optional<PortHolder> holder = m_lock.take(device)) {
        return SerialError{SerialErrorCode::kPortInUse,
                           device + text(" is in use by ") + holder->text()};
    }
    // The port makes a lock file of its own, named after the path, and replaces one that it takes
    // for stale. The second slash gives it a name that no other program uses.
    m_port->setPortName(QLatin1Char('/') + device);
    const bool opened = m_port->open(QIODevice::ReadWrite);
    m_broken = false;
    if (!opened) {
        const OpenFailure failure = openFailure(device);
        m_lock.release();
        return describe(failure);
    }
    m_port->clear(QSerialPort::Input);
    return std::nullopt;
}

OpenFailure QtSerialControl::openFailure(const QString &device) const {
    return {kindOf(m_port->error()), device, QFileInfo(device).group(), mayUse(device),
            m_port->errorString()};
}

void QtSerialControl::closeDevice() {
    if (m_port->isOpen()) {
        // Before the close: with bytes unsent and CTS low it would block for half a minute.
        m_port->clear(QSerialPort::AllDirections);
        m_port->close();
    }
    m_lock.release();
    m_broken = false;
}

void QtSerialControl::noteError() {
    if (m_port->isOpen() && isFatal(m_port->error()) && !m_broken) {
        m_broken = true;
        // Queued, because the port must not be closed inside its own call. This is for an error
        // between two exchanges; the members here check m_broken themselves.
        QMetaObject::invokeMethod(
            m_port.get(), [this] { letGoOfBroken(); }, Qt::QueuedConnection);
    }
}

void QtSerialControl::letGoOfBroken() {
    if (m_broken) {
        closeDevice();
    }
}

void QtSerialControl::noteArrival() {
    if (m_port->bytesAvailable() > kLargestBacklog) {
        m_port->readAll();
    }
    if (m_RThreshold > 0 && m_port->bytesAvailable() >= m_RThreshold && m_commHandler) {
        m_CommEvent = kReceiveEvent;
        m_commHandler();
    }
}

void QtSerialControl::fetch() {
    // The port only sees what the kernel holds after a wait.
    if (hasNews(*m_port)) {
        m_port->waitForReadyRead(0);
        letGoOfBroken();
    }
}

QByteArray QtSerialControl::Input() {
    if (isLive() && (m_InputLen == 0 || m_port->bytesAvailable() == 0)) {
        fetch();
    }
    if (!isLive()) {
        return {};
    }
    return m_InputLen == 0 ? m_port->readAll() : m_port->read(m_InputLen);
}

qint32 QtSerialControl::InBufferCount() {
    if (isLive() && m_port->bytesAvailable() == 0) {
        fetch();
    }
    return isLive() ? static_cast<qint32>(m_port->bytesAvailable()) : 0;
}

SerialControl::Result QtSerialControl::setOutput(const QByteArray &bytes) {
    letGoOfBroken();
    if (!m_PortOpen) {
        return std::nullopt;
    }
    if (!m_port->isOpen()) {
        if (Result failure = openDevice()) {
            return failure; // the device is still gone, or not free: the bytes are dropped
        }
    }
    // Before the write: what an earlier exchange could not send must not reach the unit now.
    m_port->clear(QSerialPort::Output);
    m_port->write(bytes);
    m_port->flush();
    letGoOfBroken();
    return std::nullopt;
}

void QtSerialControl::setSettings(const QString &settings) {
    LineSettings line;
    if (readSettings(settings, line)) {
        m_port->setBaudRate(line.baud);
        m_port->setDataBits(line.dataBits);
        m_port->setParity(line.parity);
        m_port->setStopBits(line.stopBits);
        letGoOfBroken();
    }
}

void QtSerialControl::setHandshaking(qint16 handshaking) {
    m_port->setFlowControl(flowControl(handshaking));
    letGoOfBroken();
}

void QtSerialControl::setRTSEnable(bool on) {
    m_RTSEnable = on;
    if (isLive() && m_port->flowControl() != QSerialPort::HardwareControl) {
        m_port->setRequestToSend(on);
        letGoOfBroken();
    }
}

bool QtSerialControl::waitForInput(int milliseconds) {
    if (!isLive()) {
        return false;
    }
    if (m_port->bytesAvailable() == 0) {
        m_port->waitForReadyRead(milliseconds);
        letGoOfBroken();
    }
    return isLive();
}

} // namespace veldron
