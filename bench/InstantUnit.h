// SPDX-License-Identifier: MIT
#pragma once

#include "link/SerialControl.h"
#include "simulator/Unit.h"

#include <QByteArray>

#include <utility>

namespace veldron {

/// The simulated unit on COM 1 without a line in between: what it answers is there at once. Keeps
/// nothing of what was sent, so that a day of exchanges holds no memory here.
class InstantUnit : public SerialControl {
public:
    /// Without the unit no port exists at all.
    explicit InstantUnit(bool present) : m_present(present) {}

    [[nodiscard]] qint16 CommPort() const override { return m_CommPort; }
    Result setCommPort(qint16 port) override;
    [[nodiscard]] bool PortOpen() const override { return m_PortOpen; }
    Result setPortOpen(bool open) override;
    [[nodiscard]] QByteArray Input() override;
    void setInputLen(qint16 length) override { m_InputLen = length; }
    [[nodiscard]] qint32 InBufferCount() override { return static_cast<qint32>(m_arrived.size()); }
    Result setOutput(const QByteArray &bytes) override {
        m_arrived += m_unit.answer(bytes);
        return std::nullopt;
    }
    void setSettings(const QString & /*settings*/) override {}
    void setHandshaking(qint16 /*handshaking*/) override {}
    void setInputMode(qint16 /*mode*/) override {}
    void setRThreshold(qint16 /*bytes*/) override {}
    void setSThreshold(qint16 /*bytes*/) override {}
    [[nodiscard]] bool RTSEnable() const override { return true; }
    void setRTSEnable(bool /*on*/) override {}
    [[nodiscard]] qint16 CommEvent() const override { return 0; }
    void setCommHandler(std::function<void()> /*handler*/) override {}
    [[nodiscard]] bool waitForInput(int /*milliseconds*/) override { return false; }
    [[nodiscard]] QString deviceName(qint16 /*port*/) const override { return {}; }

private:
    Unit m_unit;
    QByteArray m_arrived;
    qint16 m_CommPort = 0;
    qint16 m_InputLen = 0;
    bool m_PortOpen = false;
    bool m_present;
};

} // namespace veldron
