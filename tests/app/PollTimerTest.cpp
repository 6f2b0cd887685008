// SPDX-License-Identifier: MIT
#include "app/PollTimer.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <stdexcept>

namespace veldron {
namespace {

class PollTimerTest : public testing::Test {
protected:
    [[nodiscard]] QTimer &inner() { return *m_timer.findChild<QTimer *>(); }
    [[nodiscard]] bool runs() { return inner().isActive(); }
    /// Some milliseconds of a countdown of a second.
    void letTheCountdownRun() {
        while (inner().remainingTime() > 980) {
        }
    }

    int m_reports = 0;
    PollTimer m_timer{ErrorGuard([this](const UntrappedError &) { ++m_reports; })};
};

TEST_F(PollTimerTest, atFirst_isOffAtAQuarterOfASecond) {
    EXPECT_FALSE(m_timer.isEnabled());
    EXPECT_FALSE(runs());
    EXPECT_EQ(inner().interval(), 250);
    EXPECT_EQ(inner().timerType(), Qt::PreciseTimer);
}

TEST_F(PollTimerTest, newInterval_switchesNothingOn) {
    m_timer.setInterval(500);
    EXPECT_FALSE(runs());
    EXPECT_EQ(inner().interval(), 500);
}

TEST_F(PollTimerTest, intervalOfZero_holdsTheTicksOffUntilTheNextOne) {
    m_timer.start(500);
    m_timer.setInterval(0);
    EXPECT_FALSE(runs());
    EXPECT_TRUE(m_timer.isEnabled());
    m_timer.setInterval(-3);
    EXPECT_FALSE(runs());
    m_timer.setInterval(1000);
    EXPECT_TRUE(runs());
}

TEST_F(PollTimerTest, newIntervalWhileRunning_restartsTheCountdown) {
    m_timer.start(1000);
    letTheCountdownRun();
    m_timer.setInterval(1000);
    EXPECT_GT(inner().remainingTime(), 980);
}

TEST_F(PollTimerTest, switchedOnTwice_leavesTheCountdownAlone) {
    m_timer.start(1000);
    letTheCountdownRun();
    m_timer.setEnabled(true);
    EXPECT_LE(inner().remainingTime(), 980);
}

TEST_F(PollTimerTest, switchedOff_keepsItsInterval) {
    m_timer.start(1000);
    m_timer.setEnabled(false);
    EXPECT_FALSE(runs());
    m_timer.setEnabled(true);
    EXPECT_EQ(inner().interval(), 1000);
}

TEST_F(PollTimerTest, expiredInterval_ticks) {
    QSignalSpy ticks(&m_timer, &PollTimer::ticked);
    m_timer.start(1);
    EXPECT_TRUE(ticks.wait(5000));
}

TEST_F(PollTimerTest, exceptionOutOfATick_reachesTheGuard) {
    QObject::connect(&m_timer, &PollTimer::ticked, [] { throw std::runtime_error("tick"); });
    QTimerEvent event((m_timer.start(1000), inner().timerId()));
    QCoreApplication::sendEvent(&inner(), &event);
    EXPECT_EQ(m_reports, 1);
}

} // namespace
} // namespace veldron
