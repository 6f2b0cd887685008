// SPDX-License-Identifier: MIT
#include "bench/SimulatorProcess.h"

#include <QDir>

namespace veldron {

SimulatorProcess::SimulatorProcess(const QString &pace) {
    QDir(m_folder.path()).mkdir(QStringLiteral("ports"));
    m_process.start(QStringLiteral(VELDRON_SIMULATOR),
                    {QStringLiteral("--port"), portsFolder() + QStringLiteral("/COM1"),
                     QStringLiteral("--pace"), pace});
    m_ready = m_process.waitForReadyRead(5000) && m_process.readLine().startsWith("ready");
}

SimulatorProcess::~SimulatorProcess() {
    m_process.terminate();
    m_process.waitForFinished(2000);
}

} // namespace veldron
