// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "common/ErrorGuard.h"

class QSocketNotifier;

namespace veldron {

/// Turns SIGTERM, SIGINT and SIGHUP into a signal of the event loop, so that the program can end in
/// good order. A signal that was ignored when the program was started stays ignored. One instance
/// at a time, because a signal handler reaches nothing but globals.
class SignalWatcher : public QObject {
    Q_OBJECT

public:
    /// Where no socket pair can be made nothing is watched, and the signals end the program at
    /// once.
    explicit SignalWatcher(const ErrorGuard &guard, QObject *parent = nullptr);
    /// Gives the signals back to what they did before.
    ~SignalWatcher() override;

Q_SIGNALS:
    /// The system asked the program to end.
    void endRequested();

private:
    void take();

    QSocketNotifier *m_notifier = nullptr;
};

} // namespace veldron
