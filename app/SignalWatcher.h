// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QSocketNotifier;

namespace veldron {

/// Turns SIGTERM, SIGINT and SIGHUP into a signal of the event loop, so that the program can end in
/// good order. One instance at a time; does nothing on systems without these signals.
class SignalWatcher : public QObject {
    Q_OBJECT

public:
    explicit SignalWatcher(QObject *parent = nullptr);
    ~SignalWatcher() override;

Q_SIGNALS:
    /// The system asked the program to end.
    void endRequested();

private:
    void take();

    QSocketNotifier *m_notifier = nullptr;
};

} // namespace veldron
