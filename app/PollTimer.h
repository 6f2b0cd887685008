// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>

#include "common/ErrorGuard.h"

namespace veldron {

/// The timer that paces the poll. Interval and switch are set independently of each other; it ticks
/// while it is switched on and the interval is above 0.
///
/// A new interval restarts a running countdown, even one of the same length. Switching on what is
/// on already leaves the countdown alone.
class PollTimer : public QObject {
    Q_OBJECT

public:
    /// Switched off, at 250 ms.
    explicit PollTimer(const ErrorGuard &guard, QObject *parent = nullptr);

    [[nodiscard]] bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enable);
    /// 0 or less holds the ticks off without switching off.
    void setInterval(int milliseconds);
    /// Switches on, whatever state the timer was in, at \a milliseconds.
    void start(int milliseconds);

Q_SIGNALS:
    void ticked();

private:
    void run();

    bool m_enabled = false;
    QTimer Timer1{this};
};

} // namespace veldron
