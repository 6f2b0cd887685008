// SPDX-License-Identifier: MIT
#include "app/SignalWatcher.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace veldron {

namespace {

/// The writing and the reading end of the socket pair that wakes the event loop. A signal handler
/// reaches nothing but globals.
std::array<int, 2> g_ends{-1, -1};

constexpr std::array<int, 3> kSignals{SIGTERM, SIGINT, SIGHUP};
/// What each of them did before.
std::array<struct sigaction, kSignals.size()> g_actionsBefore{};

bool isIgnored(const struct sigaction &action) {
    return (action.sa_flags & SA_SIGINFO) == 0 && action.sa_handler == SIG_IGN;
}

void onSignal(int /*number*/) {
    const int interrupted = errno; // of the code that the signal has interrupted
    const char byte = 1;
    // A full socket needs no further byte: a request is waiting in it already.
    [[maybe_unused]] const ssize_t written = write(g_ends[0], &byte, 1);
    errno = interrupted;
}

} // namespace

SignalWatcher::SignalWatcher(const ErrorGuard &guard, QObject *parent) : QObject(parent) {
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, g_ends.data()) != 0) {
        return;
    }
    m_notifier = new QSocketNotifier(g_ends[1], QSocketNotifier::Read, this);
    connectGuarded(guard, m_notifier, &QSocketNotifier::activated, this, &SignalWatcher::take);
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        sigaction(kSignals[i], nullptr, &g_actionsBefore[i]);
        if (isIgnored(g_actionsBefore[i])) {
            continue; // whoever started the program, such as nohup, wants it to live on
        }
        struct sigaction action {};
        action.sa_handler = onSignal;
        action.sa_flags = SA_RESTART;
        sigaction(kSignals[i], &action, nullptr);
    }
}

SignalWatcher::~SignalWatcher() {
    if (m_notifier == nullptr) {
        return; // the constructor changed nothing
    }
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        sigaction(kSignals[i], &g_actionsBefore[i], nullptr);
    }
    for (int &end : g_ends) {
        ::close(end);
        end = -1;
    }
}

void SignalWatcher::take() {
    char byte = 0;
    if (read(g_ends[1], &byte, 1) == 1) {
        Q_EMIT endRequested();
    }
}

} // namespace veldron
