// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace veldron {

/// A simulated unit as a process of its own, on COM 1 of a folder of its own.
class SimulatorProcess {
public:
    /// \a pace as the simulator's option of that name takes it.
    explicit SimulatorProcess(const QString &pace);
    ~SimulatorProcess();
    SimulatorProcess(const SimulatorProcess &) = delete;
    SimulatorProcess &operator=(const SimulatorProcess &) = delete;

    /// False when the unit did not come up.
    [[nodiscard]] bool isReady() const { return m_ready; }
    /// The folder that stands for the program's.
    [[nodiscard]] QString folder() const { return m_folder.path(); }
    [[nodiscard]] QString portsFolder() const { return m_folder.filePath(QStringLiteral("ports")); }

private:
    QTemporaryDir m_folder;
    QProcess m_process;
    bool m_ready = false;
};

} // namespace veldron
