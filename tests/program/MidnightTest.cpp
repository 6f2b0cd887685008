// SPDX-License-Identifier: MIT
// Waits measure time as a difference of two times of day, so midnight can catch one. It ends after
// a minute then, and with it the freeze of the window.
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/ProgramRun.h"

#include <gtest/gtest.h>

namespace veldron {

using namespace std::chrono_literals;

namespace {

/// A program whose clock comes to midnight while the unit is silent. Its minute by the steady clock
/// passes faster than the machine's; its time of day does not.
class Midnight : public testing::Test {
protected:
    static constexpr int kRate = 6;
    static constexpr auto kMinute = 60000ms / kRate;

    void SetUp() override {
        const QTime now = QDateTime::currentDateTime().time();
        m_shift = now.secsTo(QTime(23, 59, 46));
        run.shiftClock(m_shift);
        run.speedUpSteadyClock(kRate);
        ASSERT_TRUE(run.plugUnit());
        ASSERT_TRUE(run.open());
        silenceTheLastPollOfTheDay();
        ASSERT_TRUE(eventually(10s, [this] { return programsTime() < QTime(12, 0); }));
        ASSERT_TRUE(eventually(10s, [this] { return programsTime() > QTime(0, 0, 3); }));
    }
    [[nodiscard]] QTime programsTime(QTime machines = QTime::currentTime()) const {
        return machines.addSecs(m_shift);
    }
    /// After the poll of 23:59:58 the unit is mute, so the next one waits into the new day.
    void silenceTheLastPollOfTheDay() {
        ASSERT_TRUE(eventually(30s, [this] {
            const QList<LineEvent> &events = run.unit().events();
            // Nothing more has come for a while: this poll is over.
            return !events.isEmpty() &&
                   programsTime(events.last().at.time()) >= QTime(23, 59, 58) &&
                   events.last().at.msecsTo(QDateTime::currentDateTime()) >= 150;
        }));
        run.unit().tell("silence forever");
    }

    ProgramRun run;
    int m_shift = 0;
};

TEST_F(Midnight, terminateSignalInAWaitThatMidnightHasCaught_endsInOrderWithinAMinute) {
    run.sendTerminate();
    // Three seconds of the new day are gone already.
    EXPECT_FALSE(run.ends(kMinute - 5s)) << "midnight has caught no wait";
    ASSERT_TRUE(run.ends(3s));
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(run.content("VELDRON.set").endsWith("EndSettings \r\n"));
}

TEST_F(Midnight, unitThatAnswersAgain_isPolledWithinTwoPolls) {
    run.unit().tell("speak");
    const qsizetype place = run.unit().now();
    EXPECT_FALSE(eventually(kMinute - 5s, [&] { return run.unit().countSince(place, "RIFD") > 0; }))
        << "midnight has caught no wait";
    EXPECT_TRUE(eventually(3s + 2s, [&] { return run.unit().scansSince(place) > 0; }));
}

} // namespace

} // namespace veldron
