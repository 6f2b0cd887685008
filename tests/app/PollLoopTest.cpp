// SPDX-License-Identifier: MIT
#include "app/PollLoop.h"

#include "tests/support/ManualClock.h"
#include "tests/support/RecordingLinkHost.h"
#include "tests/support/ScriptedSerialControl.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace veldron {
namespace {

/// Writes down what the poll asks of the form.
class RecordingPollHost : public PollHost {
public:
    explicit RecordingPollHost(frmVDR &vdr) : m_vdr(vdr) {}

    QStringList log;
    /// What a scan does with the line.
    bool scanAsksUnit = false;

    void showActivity(ActivityImage image) override {
        log.append(QStringLiteral("image %1").arg(static_cast<int>(image)));
    }
    void showLinkStatus() override { log.append("status"); }
    void TakeScan() override {
        log.append("scan");
        if (scanAsksUnit) {
            static_cast<void>(m_vdr.GetData());
        }
    }
    void checkNextSetting() override { log.append("check"); }
    void readBackAtMidnight() override { log.append("midnight"); }

private:
    frmVDR &m_vdr;
};

const QStringList kPoll{"image 3", "scan", "check", "image 2"};
const QStringList kReconnect{"image 2", "status", "image 1"};

class PollLoopTest : public testing::Test {
protected:
    PollLoopTest() { m_control.setUnit(true); }

    void connectUnit() {
        m_vdr.setCommPort(3);
        m_vdr.Connect();
        m_control.clearCommands();
    }
    QStringList tickAt(double timeOfDay) {
        m_host.log.clear();
        m_clock.setTimeOfDay(timeOfDay);
        m_loop.tick();
        return m_host.log;
    }

    ManualClock m_clock{36000.0};
    ScriptedSerialControl m_control{m_clock};
    RecordingLinkHost m_linkHost;
    frmVDR m_vdr{m_control, m_clock, m_linkHost};
    RecordingPollHost m_host{m_vdr};
    PollLoop m_loop{m_host, m_vdr, m_clock};
};

TEST_F(PollLoopTest, firstTick_polls) {
    connectUnit();
    EXPECT_EQ(tickAt(36000.2), kPoll);
    EXPECT_FLOAT_EQ(m_loop.NextPoll(), 36001.0F);
    EXPECT_FLOAT_EQ(m_loop.PreviousPoll(), 0.0F);
}

TEST_F(PollLoopTest, tickBeforeTheGrid_doesNothing) {
    connectUnit();
    tickAt(10.03);
    EXPECT_FLOAT_EQ(m_loop.NextPoll(), 11.0F);
    EXPECT_EQ(tickAt(10.2), QStringList());
    EXPECT_FLOAT_EQ(m_loop.NextPoll(), 11.0F);
}

TEST_F(PollLoopTest, tickBehindTheGrid_polls) {
    connectUnit();
    tickAt(10.03);
    EXPECT_EQ(tickAt(11.03), kPoll);
    EXPECT_FLOAT_EQ(m_loop.NextPoll(), 12.0F);
    EXPECT_FLOAT_EQ(m_loop.PreviousPoll(), 11.0F);
}

TEST_F(PollLoopTest, tickExactlyOnTheGrid_leavesThePollToTheNextTick) {
    connectUnit();
    tickAt(10.03);
    EXPECT_EQ(tickAt(11.0), QStringList());
    EXPECT_EQ(tickAt(11.5), kPoll);
}

TEST_F(PollLoopTest, tickAWholePeriodBeforeTheGrid_doesNothing) {
    connectUnit();
    tickAt(10.0);
    EXPECT_FLOAT_EQ(m_loop.NextPoll(), 11.0F);
    EXPECT_EQ(tickAt(10.0), QStringList());
}

TEST_F(PollLoopTest, clockSetBackByMoreThanAPeriod_polls) {
    connectUnit();
    tickAt(50.03);
    EXPECT_EQ(tickAt(40.03), kPoll);
    EXPECT_FLOAT_EQ(m_loop.NextPoll(), 41.0F);
}

TEST_F(PollLoopTest, pollLongerThanThePeriod_movesTheGridOn) {
    connectUnit();
    tickAt(10.03);
    EXPECT_EQ(tickAt(14.7), kPoll);
    EXPECT_FLOAT_EQ(m_loop.NextPoll(), 15.0F);
}

TEST_F(PollLoopTest, firstTickInTheLastPeriodOfTheDay_waits) {
    connectUnit();
    EXPECT_EQ(tickAt(86399.5), QStringList());
    EXPECT_EQ(tickAt(86398.5), kPoll);
}

TEST_F(PollLoopTest, gridOfEachPeriod_isOfWholeMultiples) {
    struct Case {
        qint16 period;
        double time;
        float next;
    };
    connectUnit();
    for (const Case &c : {Case{250, 36000.3, 36000.5F}, Case{500, 36000.3, 36000.5F},
                          Case{1000, 36000.3, 36001.0F}, Case{2000, 36001.3, 36002.0F},
                          Case{5000, 36001.3, 36005.0F}, Case{10000, 36001.3, 36010.0F},
                          Case{10000, 36009.9, 36010.0F}, Case{250, 36000.25, 36000.5F}}) {
        m_loop.setPollPeriod(c.period);
        tickAt(20000.0);
        tickAt(c.time);
        EXPECT_FLOAT_EQ(m_loop.NextPoll(), c.next) << c.period << " at " << c.time;
    }
}

TEST_F(PollLoopTest, midnight_readsEverythingBackOnThePollAfterTheFirstOfTheDay) {
    connectUnit();
    tickAt(86398.9);
    EXPECT_EQ(tickAt(86399.5), kPoll);
    EXPECT_FLOAT_EQ(m_loop.NextPoll(), 86400.0F);

    EXPECT_EQ(tickAt(0.2), kPoll);
    EXPECT_FLOAT_EQ(m_loop.NextPoll(), 1.0F);
    EXPECT_FLOAT_EQ(m_loop.PreviousPoll(), 86400.0F);

    EXPECT_EQ(tickAt(1.1), QStringList{"midnight"} + kPoll);
    EXPECT_EQ(tickAt(2.1), kPoll);
}

TEST_F(PollLoopTest, midnightWithoutLink_readsNothingBack) {
    tickAt(86398.9);
    tickAt(86399.5);
    tickAt(0.2);
    EXPECT_EQ(tickAt(1.1), QStringList{"image 1"});
    EXPECT_EQ(tickAt(2.1), QStringList{"image 1"});
}

TEST_F(PollLoopTest, linkLostAndPortClosed_showsTheBlankPictureAndTriesNothing) {
    EXPECT_EQ(tickAt(36000.2), QStringList{"image 1"});
    EXPECT_EQ(m_control.commands(), QStringList());
}

TEST_F(PollLoopTest, linkLostAndPortOpen_triesToConnectOnce) {
    m_vdr.setCommPort(3);
    EXPECT_EQ(tickAt(36000.2), kReconnect);
    EXPECT_EQ(m_control.commands(), QStringList{"RIVE"});
    EXPECT_TRUE(m_vdr.Connected());
    EXPECT_EQ(m_vdr.Status(), "VELDRON connected on COM 3");
}

TEST_F(PollLoopTest, unitStaysSilent_failedPollsAndReconnectsAlternate) {
    connectUnit();
    m_host.scanAsksUnit = true;
    m_control.setSilent(true);
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(tickAt(36000.2 + 10 * round), kPoll);
        EXPECT_FALSE(m_vdr.Connected());
        EXPECT_EQ(tickAt(36005.2 + 10 * round), kReconnect);
        EXPECT_TRUE(m_vdr.Connected());
    }
    EXPECT_EQ(m_control.commands(), (QStringList{"RIFD", "RIVE", "RIFD", "RIVE", "RIFD", "RIVE"}));
}

TEST_F(PollLoopTest, silentUnit_costsOneSecondATick) {
    connectUnit();
    m_host.scanAsksUnit = true;
    m_control.setSilent(true);
    tickAt(36000.2);
    EXPECT_NEAR(m_clock.seconds(), 36001.2, 0.02);
    tickAt(36005.2);
    EXPECT_NEAR(m_clock.seconds(), 36006.2, 0.02);
}

TEST_F(PollLoopTest, unitBackAgain_pollsGoOnAfterTheReconnect) {
    connectUnit();
    m_host.scanAsksUnit = true;
    m_control.setSilent(true);
    tickAt(36000.2);
    m_control.setSilent(false);
    EXPECT_EQ(tickAt(36005.2), kReconnect);
    EXPECT_EQ(tickAt(36006.2), kPoll);
    EXPECT_TRUE(m_vdr.Connected());
}

TEST(PollLoop, tickInterval_isHalfThePeriodAndFiveHundredAtMost) {
    const std::vector<std::pair<qint16, int>> cases{{250, 125},  {500, 250},  {1000, 500},
                                                    {2000, 500}, {5000, 500}, {10000, 500}};
    for (const auto &[period, interval] : cases) {
        EXPECT_EQ(PollLoop::tickInterval(period), interval) << period;
    }
}

} // namespace
} // namespace veldron
