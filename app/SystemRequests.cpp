// SPDX-License-Identifier: MIT
#include "app/SystemRequests.h"

#include "app/SignalWatcher.h"
#include "app/frmDisplay.h"

#include <QGuiApplication>
#include <QSessionManager>

namespace veldron {

void followSystem(frmDisplay &form, const SignalWatcher &watcher,
                  const QGuiApplication &application) {
    QObject::connect(&watcher, &SignalWatcher::endRequested, &form,
                     &frmDisplay::endWithoutQuestion);
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &form,
                     &frmDisplay::expectSessionEnd);
}

} // namespace veldron
