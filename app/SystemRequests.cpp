// SPDX-License-Identifier: MIT
#include "app/SystemRequests.h"

#include "app/SignalWatcher.h"
#include "app/frmDisplay.h"

#include <QGuiApplication>
#include <QPointer>
#include <QSessionManager>

#include <cstdlib>

namespace veldron {

namespace {

QPointer<frmDisplay> g_form;

/// The toolkit leaves the process by exit() when the display server is gone. Nothing of main() is
/// unwound then, so that the form is still there.
void endIfStillThere() {
    if (g_form != nullptr) {
        g_form->endWithoutDisplay();
    }
}

} // namespace

void followSystem(frmDisplay &form, const SignalWatcher &watcher,
                  const QGuiApplication &application) {
    connectGuarded(form.guard(), &watcher, &SignalWatcher::endRequested, &form,
                   &frmDisplay::endWithoutQuestion);
    connectGuarded(form.guard(), &application, &QGuiApplication::commitDataRequest, &form,
                   [&form] { form.expectSessionEnd(); });
    g_form = &form;
    std::atexit(endIfStillThere);
}

} // namespace veldron
