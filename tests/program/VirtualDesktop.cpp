// SPDX-License-Identifier: MIT
#include "tests/program/VirtualDesktop.h"

#include <QDir>
#include <QFile>

#include <csignal>

#include <sys/prctl.h>

namespace veldron {

namespace {

constexpr int kStartLimit = 10000;
constexpr int kEndLimit = 5000;

void end(QProcess &server) {
    if (server.state() == QProcess::NotRunning) {
        return;
    }
    server.terminate();
    if (!server.waitForFinished(kEndLimit)) {
        server.kill();
        server.waitForFinished(kEndLimit);
    }
}

} // namespace

VirtualDesktop::~VirtualDesktop() {
    end(m_bus);
    end(m_screen);
}

bool VirtualDesktop::start() {
    QByteArray display;
    QByteArray address;
    setFolders();
    if (!startServer(m_screen,
                     {QStringLiteral("Xvfb"), QStringLiteral("-displayfd"), QStringLiteral("1"),
                      QStringLiteral("-screen"), QStringLiteral("0"), QStringLiteral("1280x800x24"),
                      QStringLiteral("-nolisten"), QStringLiteral("tcp"),
                      QStringLiteral("-noreset")},
                     display)) {
        return false;
    }
    qputenv("DISPLAY", ":" + display);
    if (!startServer(m_bus,
                     {QStringLiteral("dbus-daemon"), QStringLiteral("--session"),
                      QStringLiteral("--nofork"), QStringLiteral("--print-address=1")},
                     address)) {
        return false;
    }
    qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    return true;
}

void VirtualDesktop::setFolders() {
    const QByteArray home = QFile::encodeName(m_home.path());
    QFile::setPermissions(m_home.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    for (const char *name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_DATA_HOME"}) {
        qputenv(name, home);
    }
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("TZ", "UTC");
    for (const char *name : {"WAYLAND_DISPLAY", "QT_SCALE_FACTOR", "QT_STYLE_OVERRIDE",
                             "QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "QT_FONT_DPI"}) {
        qunsetenv(name);
    }
}

bool VirtualDesktop::startServer(QProcess &server, const QStringList &command, QByteArray &told) {
    tieToThisProcess(server);
    server.setStandardErrorFile(QProcess::nullDevice());
    server.start(command.first(), command.mid(1));
    while (!server.canReadLine() && server.waitForReadyRead(kStartLimit)) {
    }
    told = server.readLine().trimmed();
    if (told.isEmpty()) {
        m_error = command.first() + QStringLiteral(" did not start: ") + server.errorString();
    }
    return !told.isEmpty();
}

void VirtualDesktop::tieToThisProcess(QProcess &process) {
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
}

} // namespace veldron
