// SPDX-License-Identifier: MIT
#pragma once

class QGuiApplication;

namespace veldron {

class SignalWatcher;
class frmDisplay;

/// Lets \a form end in good order when the system asks for it: at once on a signal of \a watcher,
/// without a question when the desktop closes the program at the end of its session, and when the
/// display goes away under the program. Once in a process.
void followSystem(frmDisplay &form, const SignalWatcher &watcher,
                  const QGuiApplication &application);

} // namespace veldron
