// SPDX-License-Identifier: MIT
#include "link/frmVDR.h"

#include "link/CommEvents.h"
#include "link/Wire.h"

namespace veldron {

frmVDR::frmVDR(SerialControl &control, Clock &clock, LinkHost &host)
    : m_control(control), m_clock(clock), m_host(host) {
    m_control.setInputMode(Wire::kBinaryInput);
    m_control.setHandshaking(Wire::kRequestToSend);
    m_control.setSettings(QLatin1String(Wire::kTextLine));
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
    // Only a debugger sees the name: line events change nothing here.
    [[maybe_unused]] const QString name = commEventName(m_control.CommEvent());
}

} // namespace veldron
