// SPDX-License-Identifier: MIT
#include "app/SystemRequests.h"

#include "app/SignalWatcher.h"
#include "app/frmDisplay.h"

#include <QGuiApplication>
#include <QSessionManager>

namespace veldron {

void followSystem(frmDisplay &form, const SignalWatcher &watcher,
                  const QGuiApplication &application) {
    connectGuarded(form.guard(), &watcher, &SignalWatcher::endRequested, &form,
                   &frmDisplay::endWithoutQuestion);
    connectGuarded(form.guard(), &application, &QGuiApplication::commitDataRequest, &form,
                   [&form] { form.expectSessionEnd(); });
}

} // namespace veldron
