// SPDX-License-Identifier: MIT
#include <QApplication>

#include "app/Manual.h"
#include "app/MemoryUse.h"
#include "app/QtDialogs.h"
#include "app/SignalWatcher.h"
#include "app/StartReport.h"
#include "app/SystemClock.h"
#include "app/SystemRequests.h"
#include "app/frmDisplay.h"
#include "common/DateTimeText.h"
#include "common/ProgramFolder.h"
#include "link/PortMap.h"
#include "link/QtSerialControl.h"

#include <QIcon>
#include <QLocale>

#include <optional>

namespace {

/// The sizes that window lists and title bars ask for.
QIcon windowIcon() {
    QIcon icon;
    for (const int size : {16, 32, 48, 128}) {
        icon.addFile(QStringLiteral(":/veldron/icon/%1.png").arg(size));
    }
    return icon;
}

} // namespace

int main(int argc, char **argv) {
    using namespace veldron;
    std::optional<StartReport> startReport(std::in_place);
    const QApplication application(argc, argv);
    startReport.reset();
    boundMemoryUse();
    QCoreApplication::setApplicationName(QStringLiteral("VELDRON"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELDRON_VERSION));
    QApplication::setWindowIcon(windowIcon());
    // The name of the menu entry, by which a desktop finds the icon of a window.
    QGuiApplication::setDesktopFileName(QStringLiteral("veldron"));
    const QString folder = ProgramFolder::path();
    SystemClock clock;
    const DateTimeText texts{QLocale::system()};
    frmDisplay *window = nullptr; // made below; no line event comes before it opens a port
    QtSerialControl control(
        ErrorGuard([&window](const UntrappedError &error) { window->endWithError(error); }),
        PortMap::choose({QCoreApplication::applicationDirPath(), folder},
                        QtSerialControl::systemDevices));
    QtDialogs dialogs;
    frmDisplay form({control, clock, dialogs, texts, folder, QCoreApplication::applicationVersion(),
                     Manual::find(QCoreApplication::applicationDirPath())});
    window = &form;
    dialogs.setWindow(&form);
    const SignalWatcher signalWatcher(form.guard());
    followSystem(form, signalWatcher, application);
    form.load();
    if (form.hasEnded()) {
        return form.hasFailed() ? 1 : 0;
    }
    return QApplication::exec();
}
