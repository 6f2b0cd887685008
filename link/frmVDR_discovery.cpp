// SPDX-License-Identifier: MIT
// Which ports there are, which one is open, and whether the unit is on it.
#include "link/frmVDR.h"

namespace veldron {

namespace {

constexpr qint16 kFirstPort = 1;
constexpr qint16 kLastPort = 16;

/// A number in the form that leaves the place of the sign blank.
QString signedPlace(qint16 number) {
    return (number < 0 ? QString() : QStringLiteral(" ")) + QString::number(number);
}

QString failureText(qint16 port, const SerialError &error) {
    if (error.number == SerialErrorCode::kPortInUse) {
        return QStringLiteral("COM ") + signedPlace(port) +
               QStringLiteral(" is in use by another application");
    }
    return QStringLiteral("Error ") + QString::number(error.number) + QLatin1Char(' ') +
           error.description;
}

} // namespace

QStringList frmVDR::GetCommPorts() {
    if (!m_portsListed) {
        m_host.setHourglass(true);
        m_portsListed = true;
        m_ComDefault = 0;
        for (qint16 port = kFirstPort; port <= kLastPort; ++port) {
            probePort(port);
        }
        m_host.setHourglass(false);
    }
    return m_PortList;
}

void frmVDR::probePort(qint16 port) {
    // Both steps are taken whatever the first one gives; the later failure is the one remembered.
    const SerialControl::Result chosen = m_control.setCommPort(port);
    const SerialControl::Result opened = m_control.setPortOpen(true);
    const int error = opened ? opened->number : chosen ? chosen->number : 0;
    if (error == 0 || error == SerialErrorCode::kPortInUse) {
        m_PortList.append(QStringLiteral("COM ") + QString::number(port));
    }
    if (error == 0 && m_ComDefault == 0 && Connect() && m_Version.contains(QLatin1String("Ver"))) {
        m_ComDefault = static_cast<qint16>(m_PortList.size());
    }
    if (m_control.PortOpen()) {
        m_control.setPortOpen(false);
    }
}

qint16 frmVDR::CommPort() const {
    return m_control.PortOpen() ? m_control.CommPort() : qint16{0};
}

void frmVDR::setCommPort(qint16 port) {
    if (m_unloaded) {
        return;
    }
    qint16 old = 0;
    if (m_control.PortOpen()) {
        old = m_control.CommPort();
        m_control.setPortOpen(false);
    }
    m_Connected = false;
    if (port < kFirstPort) {
        m_Status = QStringLiteral("No serial port selected");
        return;
    }
    if (const SerialControl::Result failure = openPort(port)) {
        m_host.showMessage(QStringLiteral("Select serial port"), failureText(port, *failure));
        restorePort(old);
        return;
    }
    m_Status = QStringLiteral("Opening COM") + signedPlace(port);
}

SerialControl::Result frmVDR::openPort(qint16 port) {
    if (SerialControl::Result failure = m_control.setCommPort(port)) {
        return failure;
    }
    return m_control.setPortOpen(true);
}

void frmVDR::restorePort(qint16 port) {
    // The program may have been ended while the user was told. Nothing more can be done for him if
    // the earlier port is gone too.
    if (port > 0 && !m_unloaded) {
        static_cast<void>(openPort(port));
    }
}

bool frmVDR::Connect() {
    if (!m_control.PortOpen()) {
        m_Connected = false;
        return false;
    }
    m_Active = true;
    // The way past the test for a link that is down.
    m_Connected = true;
    const QString port = QStringLiteral(" on COM") + signedPlace(m_control.CommPort());
    if (SendCommand(QStringLiteral("RIVE"))) {
        m_Status = QStringLiteral("VELDRON connected") + port;
        m_Version = m_LastReply.mid(1);
    } else {
        // Connected stays up with a silent unit as well, on purpose: the next poll's first command
        // is what takes the link down, so that polls and attempts to connect alternate.
        m_Connected = true;
        m_Status = QStringLiteral("VELDRON not found") + port;
        m_Version.clear();
    }
    m_Active = false;
    return m_Connected;
}

} // namespace veldron
