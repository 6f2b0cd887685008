// SPDX-License-Identifier: MIT
#pragma once

class QGuiApplication;

namespace veldron {

class SignalWatcher;
class frmDisplay;

/// Lets \a form end in good order when the system asks for it: at once on a signal of \a watcher,
/// and without a question when the desktop closes the program at the end of its session.
void followSystem(frmDisplay &form, const SignalWatcher &watcher,
                  const QGuiApplication &application);

} // namespace veldron
