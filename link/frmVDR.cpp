// SPDX-License-Identifier: MIT
#include "link/frmVDR.h"

#include "link/CommEvents.h"

namespace veldron {

namespace {
constexpr qint16 kBinaryInput = 1;
constexpr qint16 kRequestToSend = 2;
} // namespace

frmVDR::frmVDR(SerialControl &control, Clock &clock, LinkHost &host)
    : m_control(control), m_clock(clock), m_host(host) {
    m_control.setInputMode(kBinaryInput);
    m_control.setHandshaking(kRequestToSend);
    m_control.setSettings(QStringLiteral("9600,n,8,2"));
    m_control.setCommHandler([this] { onComm(); });
}

frmVDR::~frmVDR() {
    unload();
    m_control.setCommHandler({});
}

void frmVDR::unload() {
    m_unloaded = true;
    if (m_control.PortOpen()) {
        m_control.setPortOpen(false);
    }
}

void frmVDR::onComm() {
    // The name is for a debugger's eye only: line events change nothing here.
    [[maybe_unused]] const QString name = commEventName(m_control.CommEvent());
}

} // namespace veldron
