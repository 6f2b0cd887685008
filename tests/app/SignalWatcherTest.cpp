// SPDX-License-Identifier: MIT
#include "app/SignalWatcher.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <cerrno>
#include <csignal>

namespace veldron {
namespace {

const ErrorGuard kGuard([](const UntrappedError &error) { FAIL() << qPrintable(error.message()); });

TEST(SignalWatcher, eachRequestToEnd_reachesTheEventLoop) {
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        const SignalWatcher watcher(kGuard);
        QSignalSpy requests(&watcher, &SignalWatcher::endRequested);
        ASSERT_EQ(raise(number), 0);
        EXPECT_EQ(requests.count(), 0); // not inside the signal itself
        EXPECT_TRUE(requests.wait(5000));
        EXPECT_EQ(requests.count(), 1);
    }
}

TEST(SignalWatcher, signal_leavesTheErrorNumberAlone) {
    const SignalWatcher watcher(kGuard);
    errno = ENOENT;
    raise(SIGTERM);
    EXPECT_EQ(errno, ENOENT);
}

TEST(SignalWatcher, destroyed_givesTheSignalsBack) {
    { const SignalWatcher watcher(kGuard); }
    struct sigaction action {};
    ASSERT_EQ(sigaction(SIGTERM, nullptr, &action), 0);
    EXPECT_EQ(action.sa_handler, SIG_DFL);
}

TEST(SignalWatcher, signalIgnoredAtTheStart_staysIgnored) {
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        std::signal(number, SIG_IGN);
        {
            const SignalWatcher watcher(kGuard);
            QSignalSpy requests(&watcher, &SignalWatcher::endRequested);
            ASSERT_EQ(raise(number), 0);
            EXPECT_FALSE(requests.wait(50)) << number;
        }
        EXPECT_EQ(std::signal(number, SIG_DFL), SIG_IGN) << number;
    }
}

} // namespace
} // namespace veldron
