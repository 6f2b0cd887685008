// SPDX-License-Identifier: MIT
#include "app/PollTimer.h"

namespace veldron {

namespace {

/// In milliseconds, until the settings are made.
constexpr int kFirstInterval = 250;

} // namespace

PollTimer::PollTimer(const ErrorGuard &guard, QObject *parent) : QObject(parent) {
    Timer1.setObjectName(QStringLiteral("Timer1"));
    // A coarse timer may be 5 % late, which would move the scans off the poll grid.
    Timer1.setTimerType(Qt::PreciseTimer);
    Timer1.setInterval(kFirstInterval);
    connectGuarded(guard, &Timer1, &QTimer::timeout, this, &PollTimer::ticked);
}

void PollTimer::setEnabled(bool enable) {
    m_enabled = enable;
    run();
}

void PollTimer::setInterval(int milliseconds) {
    Timer1.setInterval(qMax(milliseconds, 0));
    run();
}

void PollTimer::start(int milliseconds) {
    m_enabled = true;
    setInterval(milliseconds);
}

/// A timer of the toolkit with an interval of 0 would fire without end.
void PollTimer::run() {
    if (!m_enabled || Timer1.interval() <= 0) {
        Timer1.stop();
    } else if (!Timer1.isActive()) {
        Timer1.start();
    }
}

} // namespace veldron
