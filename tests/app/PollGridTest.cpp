// SPDX-License-Identifier: MIT
#include "app/PollGrid.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

constexpr qint16 kPeriod = 1000;

class PollGridTest : public testing::Test {
protected:
    void pollAt(float timeOfDay, qint16 period = kPeriod) { m_grid.moveBeyond(timeOfDay, period); }
    [[nodiscard]] bool isDue(float timeOfDay, qint16 period = kPeriod) const {
        return m_grid.isDue(timeOfDay, period);
    }
    /// A tick exactly on the next poll still waits, one just behind it polls.
    void expectNextPoll(float timeOfDay, qint16 period = kPeriod) {
        EXPECT_FALSE(isDue(timeOfDay, period)) << timeOfDay;
        EXPECT_TRUE(isDue(timeOfDay + 0.02F, period)) << timeOfDay;
    }

    PollGrid m_grid;
};

TEST_F(PollGridTest, firstTick_isDueAtMostTimesOfDay) {
    for (const float time : {0.1F, 10.0F, 36000.2F, 86398.5F}) {
        EXPECT_TRUE(isDue(time)) << time;
    }
}

TEST_F(PollGridTest, firstTickInTheLastPeriodOfTheDay_waits) {
    EXPECT_FALSE(isDue(86399.5F));
}

TEST_F(PollGridTest, tickBeforeTheNextPoll_waits) {
    pollAt(10.03F);
    EXPECT_FALSE(isDue(10.2F));
    expectNextPoll(11.0F);
}

TEST_F(PollGridTest, tickAWholePeriodBeforeTheNextPoll_waits) {
    pollAt(10.0F);
    EXPECT_FALSE(isDue(10.0F));
    expectNextPoll(11.0F);
}

TEST_F(PollGridTest, clockSetBackByMoreThanAPeriod_isDue) {
    pollAt(50.03F);
    EXPECT_TRUE(isDue(40.03F));
    pollAt(40.03F);
    expectNextPoll(41.0F);
}

TEST_F(PollGridTest, pollLongerThanThePeriod_movesTheGridOn) {
    pollAt(10.03F);
    EXPECT_TRUE(isDue(14.7F));
    pollAt(14.7F);
    expectNextPoll(15.0F);
}

TEST_F(PollGridTest, eachPeriod_hasAGridOfWholeMultiples) {
    struct Case {
        qint16 period;
        float time;
        float next;
    };
    for (const Case &c : {Case{250, 36000.3F, 36000.5F}, Case{500, 36000.3F, 36000.5F},
                          Case{1000, 36000.3F, 36001.0F}, Case{2000, 36001.3F, 36002.0F},
                          Case{5000, 36001.3F, 36005.0F}, Case{10000, 36001.3F, 36010.0F},
                          Case{10000, 36009.9F, 36010.0F}, Case{250, 36000.25F, 36000.5F}}) {
        SCOPED_TRACE(c.period);
        pollAt(c.time, c.period);
        expectNextPoll(c.next, c.period);
    }
}

TEST_F(PollGridTest, midnight_isPassedAtTheSecondPollOfTheDayAndOnlyThere) {
    pollAt(86398.9F);
    pollAt(86399.5F); // the next poll is at 86400
    EXPECT_FALSE(m_grid.hasPassedMidnight());
    EXPECT_TRUE(isDue(0.2F));
    pollAt(0.2F);
    EXPECT_TRUE(m_grid.hasPassedMidnight());
    expectNextPoll(1.0F);
    pollAt(1.1F);
    EXPECT_FALSE(m_grid.hasPassedMidnight());
}

} // namespace
} // namespace veldron
