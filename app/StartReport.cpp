// SPDX-License-Identifier: MIT
#include "app/StartReport.h"

#include "common/ReportText.h"

#include <QtGlobal>

#include <cstdlib>

namespace veldron {

namespace {

/// What handled the messages before. A handler reaches nothing but globals.
QtMessageHandler g_handlerBefore = nullptr;

void handle(QtMsgType type, const QMessageLogContext &context, const QString &message) {
    if (type != QtFatalMsg) {
        g_handlerBefore(type, context, message);
        return;
    }
    writeReportLine(QStringLiteral("There is no display to show the window on. ") +
                    message.section(QLatin1Char('\n'), 0, 0));
    // At once: the application object is half made, so that nothing can be unwound.
    std::_Exit(EXIT_FAILURE);
}

} // namespace

StartReport::StartReport() {
    g_handlerBefore = qInstallMessageHandler(handle);
}

StartReport::~StartReport() {
    qInstallMessageHandler(g_handlerBefore);
}

} // namespace veldron
