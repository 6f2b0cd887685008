// SPDX-License-Identifier: MIT
#include "bench/InstantUnit.h"

namespace veldron {

SerialControl::Result InstantUnit::setCommPort(qint16 port) {
    m_CommPort = port;
    return std::nullopt;
}

SerialControl::Result InstantUnit::setPortOpen(bool open) {
    m_arrived.clear();
    m_PortOpen = open && m_present && m_CommPort == 1;
    if (open && !m_PortOpen) {
        return SerialError{SerialErrorCode::kNoSuchPort, QStringLiteral("No such port")};
    }
    return std::nullopt;
}

QByteArray InstantUnit::Input() {
    if (m_InputLen == 0) {
        return std::exchange(m_arrived, {});
    }
    const QByteArray taken = m_arrived.left(m_InputLen);
    m_arrived.remove(0, taken.size());
    return taken;
}

} // namespace veldron
