// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QTemporaryDir>

namespace veldron {

/// A desktop of our own for one test program: an X server without a screen, a message bus, and
/// folders for what desktop programs keep. Sets the environment of this process and so of all that
/// it starts; everything ends with the object.
///
/// Needed before the application object, which becomes a client of the server.
class VirtualDesktop {
public:
    VirtualDesktop() = default;
    VirtualDesktop(const VirtualDesktop &) = delete;
    VirtualDesktop &operator=(const VirtualDesktop &) = delete;
    ~VirtualDesktop();

    /// False if a server did not come up; error() tells which.
    [[nodiscard]] bool start();
    [[nodiscard]] const QString &error() const { return m_error; }

    /// Makes \a process end when this one does, however it does.
    static void tieToThisProcess(QProcess &process);

private:
    void setFolders();
    [[nodiscard]] bool startServer(QProcess &server, const QStringList &command, QByteArray &told);

    QTemporaryDir m_home;
    QProcess m_screen;
    QProcess m_bus;
    QString m_error;
};

} // namespace veldron
