// SPDX-License-Identifier: MIT
// From the serial line to the trace on the screen, with a good line and with a faulty one.
#include "tests/program/ChartPicture.h"
#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/ProgramRun.h"

#include <gtest/gtest.h>

namespace veldron {

using namespace std::chrono_literals;

namespace {

/// Two poll periods and two seconds.
constexpr auto kComeback = 4s;
/// A round of checks repairs what a dead link has left in panels and chart: eleven polls.
constexpr auto kRepair = 13s;

class LivePicture : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(run.plugUnit());
        ASSERT_TRUE(run.open());
        chart = run.chart();
    }

    /// Waits until the trace on the screen is the unit's latest scan, and that came behind a place
    /// in the log.
    bool showsScanBehind(qsizetype place, std::chrono::milliseconds limit) {
        return eventually(limit, [&] {
            const QByteArray scan = run.unit().lastScan(place);
            return !scan.isEmpty() &&
                   ChartPicture(Desk::screenshot(), chart).wrongColumns(scan) == 0;
        });
    }

    bool scansFlowBehind(qsizetype place, std::chrono::milliseconds limit) {
        return eventually(limit, [&] { return run.unit().scansSince(place) > 0; });
    }

    /// The instants of all polls behind a place in the log, in milliseconds of the day.
    QList<int> pollsSince(qsizetype place) {
        QList<int> polls;
        const QList<LineEvent> &all = run.unit().events();
        for (qsizetype i = place; i < all.size(); ++i) {
            if (all.at(i).text == "RIFD") {
                polls << all.at(i).at.time().msecsSinceStartOfDay();
            }
        }
        return polls;
    }

    ProgramRun run;
    QRect chart;
};

TEST_F(LivePicture, unitOnAPort_programConnectsAndDrawsItsScans) {
    EXPECT_TRUE(run.awaitStatus(kConnected)) << qPrintable(run.statusText());
    ASSERT_TRUE(showsScanBehind(0, 10s));
    const ChartPicture picture(Desk::screenshot(), chart);
    EXPECT_TRUE(picture.isBlackAboveTrace());
    // Two steady stations of every scene, at 95.25 and 104.55 MHz of 95 to 105.
    for (const double share : {0.025, 0.955}) {
        EXPECT_GT(picture.heightAt(share), picture.heightOf(58)) << share;
    }
}

TEST_F(LivePicture, waterfallSwitchedOn_scansRunDownBelowTheTrace) {
    constexpr int kFewestColours = 8;
    run.choose("Settings", "Display...");
    ASSERT_TRUE(Desk::awaitWindow("Display Settings", 5s));
    run.clickButton("Show waterfall");
    run.clickButton("OK");
    EXPECT_TRUE(eventually(15s, [this] {
        const ChartPicture picture(Desk::screenshot(), chart, true);
        return picture.wrongColumns(run.unit().lastScan()) == 0 &&
               picture.waterfallColours() >= kFewestColours;
    }));
}

TEST_F(LivePicture, tenSeconds_onePollInEachSecondOfTheClock) {
    ASSERT_TRUE(run.awaitStatus(kConnected));
    const qsizetype begin = run.unit().now();
    ASSERT_TRUE(eventually(15s, [&] { return pollsSince(begin).size() > 10; }));
    const QList<int> polls = pollsSince(begin);
    for (qsizetype i = 1; i < polls.size(); ++i) {
        EXPECT_GT(polls.at(i) / 1000, polls.at(i - 1) / 1000) << "two polls in one second";
    }
    const double average = double(polls.last() - polls.first()) / double(polls.size() - 1);
    EXPECT_NEAR(average, 1000.0, 110.0);
}

/// The commands that the unit has heard and not answered for its silence.
QList<QByteArray> unansweredSince(SimulatedUnit &unit, qsizetype place) {
    QList<QByteArray> commands;
    const QList<LineEvent> &all = unit.events();
    for (qsizetype i = place; i + 1 < all.size(); ++i) {
        if (all.at(i).kind == LineEvent::Kind::Command && all.at(i + 1).text == "silent") {
            commands << all.at(i).text;
        }
    }
    return commands;
}

TEST_F(LivePicture, unitSilentForThreeSeconds_comesBack) {
    ASSERT_TRUE(showsScanBehind(0, 10s));
    run.unit().tell("silence 3");
    const qsizetype begin = run.unit().now();
    EXPECT_TRUE(scansFlowBehind(begin, 3s + kComeback));
    EXPECT_TRUE(showsScanBehind(begin, kRepair));
}

TEST_F(LivePicture, unitSilent_triesScanAndVersionInTurn) {
    ASSERT_TRUE(showsScanBehind(0, 10s));
    const qsizetype begin = run.unit().now();
    run.unit().tell("silence forever");
    ASSERT_TRUE(eventually(20s, [&] { return unansweredSince(run.unit(), begin).size() >= 5; }));
    EXPECT_EQ(unansweredSince(run.unit(), begin).first(5),
              (QList<QByteArray>{"RIFD", "RIVE", "RIFD", "RIVE", "RIFD"}));
    EXPECT_TRUE(run.awaitStatus(QStringLiteral("VELDRON not found on COM 3")))
        << qPrintable(run.statusText());
    // Heard again while a scan is awaited in vain, so that the version is asked for next.
    const qsizetype tries = unansweredSince(run.unit(), begin).count("RIFD");
    ASSERT_TRUE(
        eventually(10s, [&] { return unansweredSince(run.unit(), begin).count("RIFD") > tries; }));
    run.unit().tell("speak");
    EXPECT_TRUE(scansFlowBehind(run.unit().now(), kComeback));
    EXPECT_TRUE(run.awaitStatus(kConnected)) << qPrintable(run.statusText());
}

TEST_F(LivePicture, adapterPulledAndPutBack_scansFlowAgainWithoutAClick) {
    ASSERT_TRUE(showsScanBehind(0, 10s));
    run.unit().tell("unplug");
    const qsizetype pulled = run.unit().now();
    EXPECT_FALSE(scansFlowBehind(pulled, 2500ms));
    run.unit().tell("plug");
    EXPECT_TRUE(scansFlowBehind(pulled, kComeback));
    EXPECT_TRUE(showsScanBehind(pulled, kRepair));
}

TEST_F(LivePicture, rubbishOnTheLine_scansFlowAgain) {
    ASSERT_TRUE(showsScanBehind(0, 10s));
    const std::initializer_list<QByteArray> faults = {
        "times 3 garble",       "on RIFD before \\xff#~#", "on RIFD behind #~\\r\\n#",
        "on RIFD scan-cut 100", "on RIFD scan-unended",    "on RIFD scan-early 50"};
    for (const QByteArray &fault : faults) {
        run.unit().tell(fault);
        ASSERT_TRUE(eventually(10s, [this] { return run.unit().tell("armed").isEmpty(); }))
            << fault.constData();
        EXPECT_TRUE(scansFlowBehind(run.unit().now(), kComeback)) << fault.constData();
    }
    EXPECT_TRUE(showsScanBehind(run.unit().now(), kRepair));
}

} // namespace

} // namespace veldron
