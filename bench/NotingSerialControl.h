// SPDX-License-Identifier: MIT
#pragma once

#include "link/QtSerialControl.h"

#include <QByteArrayList>

#include <chrono>

namespace veldron {

/// The program's serial control, which also keeps what was sent, and when the last of it left.
class NotingSerialControl : public QtSerialControl {
public:
    using QtSerialControl::QtSerialControl;

    Result setOutput(const QByteArray &bytes) override {
        m_sent.append(bytes.chopped(qMin(bytes.size(), qsizetype{2})));
        m_lastSent = std::chrono::steady_clock::now();
        return QtSerialControl::setOutput(bytes);
    }
    /// The commands since the last call, without their line ends.
    QByteArrayList takeSent() {
        QByteArrayList sent;
        sent.swap(m_sent);
        return sent;
    }
    [[nodiscard]] std::chrono::steady_clock::time_point lastSent() const { return m_lastSent; }

private:
    QByteArrayList m_sent;
    std::chrono::steady_clock::time_point m_lastSent;
};

} // namespace veldron
