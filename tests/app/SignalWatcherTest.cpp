// SPDX-License-Identifier: MIT
#include "app/SignalWatcher.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <cerrno>
#include <csignal>

namespace veldron {
namespace {

TEST(SignalWatcher, eachRequestToEnd_reachesTheEventLoop) {
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        const SignalWatcher watcher;
        QSignalSpy requests(&watcher, &SignalWatcher::endRequested);
        ASSERT_EQ(raise(number), 0);
        EXPECT_EQ(requests.count(), 0); // not inside the signal itself
        EXPECT_TRUE(requests.wait(5000));
        EXPECT_EQ(requests.count(), 1);
    }
}

TEST(SignalWatcher, signal_leavesTheErrorNumberAlone) {
    const SignalWatcher watcher;
    errno = ENOENT;
    raise(SIGTERM);
    EXPECT_EQ(errno, ENOENT);
}

TEST(SignalWatcher, destroyed_givesTheSignalsBack) {
    { const SignalWatcher watcher; }
    struct sigaction action {};
    ASSERT_EQ(sigaction(SIGTERM, nullptr, &action), 0);
    EXPECT_EQ(action.sa_handler, SIG_DFL);
}

} // namespace
} // namespace veldron
