// SPDX-License-Identifier: MIT
// Which ports there are, which one is open, and whether the unit is on it.
#include "link/frmVDR.h"

#include "common/ReportText.h"
#include "link/PortMap.h"
#include "link/Wire.h"

namespace veldron {

namespace {

/// A number with a blank in the place of its plus sign.
QString signedNumber(qint16 number) {
    return (number < 0 ? QString() : QStringLiteral(" ")) + QString::number(number);
}

QString failureText(qint16 port, const SerialError &error) {
    if (error.number == SerialErrorCode::kPortInUse) {
        return QStringLiteral("COM ") + signedNumber(port) +
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
        for (qint16 port = PortMap::kFirstPort; port <= PortMap::kLastPort; ++port) {
            probePort(port);
        }
        m_host.setHourglass(false);
    }
    return m_PortList;
}

void frmVDR::probePort(qint16 port) {
    // The port is opened even if it could not be chosen; of two failures the later one counts.
    const SerialControl::Result chosen = m_control.setCommPort(port);
    const SerialControl::Result opened = m_control.setPortOpen(true);
    noteOpening(port, opened);
    const int error = opened ? opened->number : chosen ? chosen->number : 0;
    if (error == 0 || error == SerialErrorCode::kPortInUse) {
        m_PortList.append(QStringLiteral("COM ") + QString::number(port));
    }
    if (error == 0 && m_ComDefault == 0 && Connect() &&
        m_Version.contains(QLatin1String(Wire::kVersionMark))) {
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
    if (port < PortMap::kFirstPort) {
        m_Status = QStringLiteral("No serial port selected");
        return;
    }
    if (const SerialControl::Result failure = openPort(port)) {
        m_host.showMessage(QStringLiteral("Select serial port"), failureText(port, *failure));
        restorePort(old);
        return;
    }
    m_Status = QStringLiteral("Opening COM") + signedNumber(port);
}

SerialControl::Result frmVDR::openPort(qint16 port) {
    if (SerialControl::Result failure = m_control.setCommPort(port)) {
        return failure;
    }
    SerialControl::Result failure = m_control.setPortOpen(true);
    noteOpening(port, failure);
    return failure;
}

/// The message about a port that is in use has a fixed text, and the search shows none at all, so
/// that the reason goes to standard error too.
void frmVDR::noteOpening(qint16 port, const SerialControl::Result &failure) {
    m_portProblems.remove(port);
    const bool explained = failure && !failure->description.isEmpty() &&
                           (failure->number == SerialErrorCode::kPortInUse ||
                            failure->number == SerialErrorCode::kPermissionDenied);
    if (explained) {
        m_portProblems[port] = failure->description;
        writeReportLine(QStringLiteral("COM %1: %2").arg(port).arg(failure->description));
    }
}

/// Each command tries to open a port again whose device has gone, so a reason is told only when it
/// is another one.
void frmVDR::noteReopening(const SerialControl::Result &failure) {
    const qint16 port = CommPort();
    if (portProblem(port) != (failure ? failure->description : QString())) {
        noteOpening(port, failure);
    }
}

void frmVDR::restorePort(qint16 port) {
    // The program may have been ended while the message was shown. If the earlier port is gone too,
    // no port is open, and the caller sees that in CommPort.
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
    // SendCommand refuses while the link is down.
    m_Connected = true;
    const QString port = QStringLiteral(" on COM") + signedNumber(m_control.CommPort());
    if (SendCommand(QLatin1String(Wire::kReadVersion))) {
        m_Status = QStringLiteral("VELDRON connected") + port;
        m_Version = m_LastReply.mid(1);
    } else {
        // On purpose the link counts as up with a silent unit too: the first command of the next
        // poll takes it down, and the poll after that connects again.
        m_Connected = true;
        m_Status = QStringLiteral("VELDRON not found") + port;
        m_Version.clear();
    }
    m_Active = false;
    return m_Connected;
}

} // namespace veldron
