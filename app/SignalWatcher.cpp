// SPDX-License-Identifier: MIT
#include "app/SignalWatcher.h"

#include <QSocketNotifier>

#ifdef Q_OS_UNIX
#include <array>
#include <cerrno>
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace veldron {

#ifdef Q_OS_UNIX

namespace {

/// The writing and the reading end of the pair that carries signals into the event loop.
std::array<int, 2> g_ends{-1, -1};

constexpr std::array<int, 3> kSignals{SIGTERM, SIGINT, SIGHUP};

void onSignal(int /*number*/) {
    const int interrupted = errno; // of whatever the signal came into
    const char byte = 1;
    // Nothing can be done about a full pair: a request is waiting in it already.
    [[maybe_unused]] const ssize_t written = write(g_ends[0], &byte, 1);
    errno = interrupted;
}

} // namespace

SignalWatcher::SignalWatcher(QObject *parent) : QObject(parent) {
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, g_ends.data()) != 0) {
        return;
    }
    m_notifier = new QSocketNotifier(g_ends[1], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &SignalWatcher::take);
    for (const int number : kSignals) {
        struct sigaction action {};
        action.sa_handler = onSignal;
        action.sa_flags = SA_RESTART;
        sigaction(number, &action, nullptr);
    }
}

SignalWatcher::~SignalWatcher() {
    for (const int number : kSignals) {
        std::signal(number, SIG_DFL);
    }
    for (int &end : g_ends) {
        if (end >= 0) {
            ::close(end);
            end = -1;
        }
    }
}

void SignalWatcher::take() {
    char byte = 0;
    if (read(g_ends[1], &byte, 1) == 1) {
        Q_EMIT endRequested();
    }
}

#else

SignalWatcher::SignalWatcher(QObject *parent) : QObject(parent) {}
SignalWatcher::~SignalWatcher() = default;
void SignalWatcher::take() {}

#endif

} // namespace veldron
