// SPDX-License-Identifier: MIT
// The unit is the master of all settings: the panels follow whatever is changed at it by hand.
#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/ProgramRun.h"

#include <gtest/gtest.h>

namespace veldron {

using namespace std::chrono_literals;

namespace {

/// A full round of checks.
constexpr int kRound = 11;
/// The poll that is under way when the setting changes.
constexpr int kUnderWay = 1;

/// A program that polls four times a second, as chosen in its dialog.
class FollowUnit : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(run.plugUnit());
        ASSERT_TRUE(run.open());
        ASSERT_TRUE(run.pollFourTimesASecond());
    }

    struct Change {
        const char *byHand;
        const char *label;
        const char *shown;
    };

    /// Changes a setting at the unit and counts the polls until the panel shows it.
    void expectFollowed(const Change &change) {
        const qsizetype begin = run.unit().now();
        run.unit().tell(change.byHand);
        EXPECT_EQ(run.shownAfterWait(change.label, change.shown, 15s), QString(change.shown))
            << change.byHand;
        EXPECT_LE(run.unit().countSince(begin, "RIFD"), kRound + kUnderWay) << change.byHand;
    }

    void expectShown(const QString &label, const QString &text) {
        EXPECT_EQ(run.shownAfterWait(label, text, 15s), text) << qPrintable(label);
    }

    ProgramRun run;
};

TEST_F(FollowUnit, settingsChangedByHand_panelsFollowWithinElevenPolls) {
    for (const Change &change : {
             Change{"set receiver 5", "Receiver", "VK3700(10M)"},
             Change{"set mode 7", "RX Mode", "LSB"},
             Change{"set step 25", "RX Step", "25.000"},
             Change{"set attenuator 1", "RX Atten", "on"},
             Change{"set amplitude -20", "Amp", "-20 dB"},
             Change{"set bandwidth 3", "RBW", "64 kHz"},
             Change{"set datamode 2", "Data mode", "Avg"},
             Change{"set average 21", "Samples", "21"},
             Change{"set datamode 4", "Data mode", "Med"},
             Change{"set median 4", "Samples", "4"},
         }) {
        expectFollowed(change);
    }
}

TEST_F(FollowUnit, frequenciesAndChannelsChangedByHand_panelsFollowWithinElevenPolls) {
    for (const Change &change : {
             Change{"set centre 145.5", "Centre", "145.50000"},
             Change{"set span 2", "Span", "2.00000"},
             Change{"set monitor 2", "Monitor mode", "Step"},
             Change{"set monitor 3", "Monitor mode", "Channel"},
             Change{"set channels 144 12.5 147", "Ch. Step", "12.500"},
             Change{"set channels 145 12.5 147", "Ch. Start", "145.00000"},
             Change{"set channels 145 12.5 146", "Ch. End", "146.00000"},
             Change{"set marker 1", "RX Frequency", "145.51250"},
             Change{"set monitor 1", "Monitor mode", "Spectrum"},
         }) {
        expectFollowed(change);
    }
    expectShown("RX Frequency", "145.50000");
}

TEST_F(FollowUnit, unitSilentForAWhile_panelsEndEqualToTheUnit) {
    run.unit().tell("set centre 145.5");
    expectShown("RX Frequency", "145.50000");
    run.unit().tell("silence 6");
    ASSERT_TRUE(run.awaitStatus("VELDRON not found on COM 3", 10s)) << qPrintable(run.statusText());
    // Changed while the line is silent, so that the program can't see it.
    run.unit().tell("set span 5");
    run.unit().tell("set bandwidth 4");
    expectShown("RBW", "128 kHz");
    expectShown("Span", "5.00000");
    expectShown("Centre", "145.50000");
    expectShown("RX Frequency", "145.50000");
    expectShown("Start", "143.00000");
    expectShown("Receiver", "VK3900");
    expectShown("RX Step", "100.000");
    expectShown("RX Mode", "WFM");
    expectShown("RX Atten", "off");
    expectShown("Amp", "-30 dB");
    expectShown("Data mode", "Normal");
    expectShown("Monitor mode", "Spectrum");
}

} // namespace

} // namespace veldron
