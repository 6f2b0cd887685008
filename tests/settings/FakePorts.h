// SPDX-License-Identifier: MIT
#pragma once

#include "link/SerialControl.h"

#include <QStringList>

#include <set>
#include <utility>

namespace veldron {

/// Serial ports for the dialogs: some free, some busy, a unit that answers on one of them. It notes
/// each port that is opened and each line that is written.
class FakePorts : public SerialControl {
public:
    std::set<qint16> freePorts;
    std::set<qint16> busyPorts;
    qint16 portOfUnit = 0;
    QString folder = "/dev/"; ///< of the devices
    Result reopening;         ///< what each write meets, after an unplug
    QStringList log;          ///< "open 3", "refused 4", "close 3", "write RIVE"

    [[nodiscard]] qint16 CommPort() const override { return m_port; }
    Result setCommPort(qint16 port) override {
        m_port = port;
        return std::nullopt;
    }
    [[nodiscard]] bool PortOpen() const override { return m_open; }
    Result setPortOpen(bool open) override {
        if (open && freePorts.count(m_port) == 0) {
            log.append(QString("refused %1").arg(m_port));
            return busyPorts.count(m_port) != 0
                       ? SerialError{SerialErrorCode::kPortInUse, "in use"}
                       : SerialError{SerialErrorCode::kNoSuchPort, "no such port"};
        }
        m_open = open;
        log.append(QString(open ? "open %1" : "close %1").arg(m_port));
        return std::nullopt;
    }
    [[nodiscard]] QByteArray Input() override { return std::exchange(m_waiting, {}); }
    void setInputLen(qint16) override {}
    [[nodiscard]] qint32 InBufferCount() override { return static_cast<qint32>(m_waiting.size()); }
    Result setOutput(const QByteArray &bytes) override {
        log.append("write " + QString::fromLatin1(bytes).trimmed());
        if (m_port == portOfUnit && bytes == "RIVE\r\n") {
            m_waiting = "IVE Ver 1.5 \r\n";
        }
        return reopening;
    }
    void setSettings(const QString &) override {}
    void setHandshaking(qint16) override {}
    void setInputMode(qint16) override {}
    void setRThreshold(qint16) override {}
    void setSThreshold(qint16) override {}
    [[nodiscard]] bool RTSEnable() const override { return true; }
    void setRTSEnable(bool) override {}
    [[nodiscard]] qint16 CommEvent() const override { return 0; }
    void setCommHandler(std::function<void()>) override {}
    [[nodiscard]] bool waitForInput(int) override { return false; }
    [[nodiscard]] QString deviceName(qint16 port) const override {
        return folder + QString("fake%1").arg(port);
    }

private:
    qint16 m_port = 0;
    bool m_open = false;
    QByteArray m_waiting;
};

} // namespace veldron
