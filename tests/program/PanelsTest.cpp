// SPDX-License-Identifier: MIT
// What the user does at the panels and the chart: the commands on the wire, and what the screen
// shows of the unit's answers.
#include "tests/program/ChartPicture.h"
#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/ProgramRun.h"

#include <gtest/gtest.h>

namespace veldron {

using namespace std::chrono_literals;

namespace {

const Commands kReadChannelsIn = {"RUCS", "RICD", "RICD"};

/// A program that polls so seldom that nothing stands between the commands of one act.
class Panels : public testing::Test {
protected:
    void SetUp() override {
        run.write(QStringLiteral("VELDRON.set"), "VELDRONv1 Settings\r\nPoll 10000\r\n");
        ASSERT_TRUE(run.plugUnit());
        ASSERT_TRUE(run.open());
        mark();
    }

    void mark() { place = run.unit().now(); }

    /// Waits until the unit has heard exactly these commands since the last look.
    void expectCommands(const Commands &expected) {
        (void)eventually(8s,
                         [&] { return run.unit().commandsSince(place).size() >= expected.size(); });
        EXPECT_EQ(withoutPolls(), expected);
        mark();
    }

    /// Leaves out the commands that the poll itself sends: the scan and the check behind it.
    Commands withoutPolls() {
        Commands commands = run.unit().commandsSince(place);
        const qsizetype scan = commands.indexOf("RIFD");
        if (scan >= 0) {
            commands.remove(scan, qMin<qsizetype>(2, commands.size() - scan));
        }
        return commands;
    }

    void expectShown(const QString &label, const QString &text) {
        EXPECT_EQ(run.shownAfterWait(label, text), text) << qPrintable(label);
    }

    ProgramRun run;
    qsizetype place = 0;
};

TEST_F(Panels, frequencyTyped_centreIsSentAndTheAnswerShown) {
    run.enter("RX Frequency", "98.5");
    expectCommands({"WSCF98.5", "RSCF"});
    expectShown("RX Frequency", "98.50000");
    expectShown("Centre", "98.50000");
    expectShown("Start", "93.50000");
    expectShown("End", "103.50000");
    // Kilohertz, by the key that ends the entry.
    run.enter("RX Frequency", "101250", "k");
    expectCommands({"WSCF101.25", "RSCF"});
    expectShown("RX Frequency", "101.25000");
}

TEST_F(Panels, spanAndStepPicked_spanIsSentForBoth) {
    run.pick("Span", "2.000.000");
    expectCommands({"WSSP2", "RSSP"});
    expectShown("Span", "2.00000");
    expectShown("Step", "6.250");
    expectShown("Start", "99.00000");
    run.pick("Step", "25.000");
    expectCommands({"WSSP8", "RSSP"});
    expectShown("Step", "25.000");
    expectShown("Span", "8.00000");
    expectShown("End", "104.00000");
}

TEST_F(Panels, spanStartAndEndTyped_windowMovesAsAWhole) {
    run.enter("Span", "4");
    expectCommands({"WSSP4", "RSSP"});
    expectShown("Start", "98.00000");
    run.enter("Start", "144");
    expectCommands({"WSCF146", "RSCF"});
    expectShown("Centre", "146.00000");
    expectShown("RX Frequency", "146.00000");
    run.enter("End", "150");
    expectCommands({"WSCF148", "RSCF"});
    expectShown("Start", "146.00000");
}

TEST_F(Panels, receiverSettings_eachIsSentAndReadBack) {
    run.pick("RX Step", "25.000");
    expectCommands({"WUST25", "RUST"});
    expectShown("RX Step", "25.000");
    run.enter("RX Step", "12.5");
    expectCommands({"WUST12.5", "RUST"});
    expectShown("RX Step", "12.500");
    run.pick("RX Mode", "USB");
    expectCommands({"WUMD8", "RUMD"});
    expectShown("RX Mode", "USB");
    run.clickControl("RX Atten");
    expectCommands({"WUAT1", "RUAT"});
    expectShown("RX Atten", "on");
}

TEST_F(Panels, receiverPicked_everythingIsReadAfterAPause) {
    const QDateTime picked = QDateTime::currentDateTime();
    run.pick("Receiver", "VK1100");
    expectCommands(Commands{"WURX3"} + kReadBack);
    const QList<LineEvent> &all = run.unit().events();
    EXPECT_GE(picked.msecsTo(all.last().at), 1000);
    expectShown("Receiver", "VK1100");
    // The new receiver's modes are in its list.
    run.pick("RX Mode", "AUTO");
    expectCommands({"WUMD10", "RUMD"});
    expectShown("RX Mode", "AUTO");
}

TEST_F(Panels, dataSettings_eachIsSentAndReadBack) {
    run.pick("RBW", "4 kHz");
    expectCommands({"WSBW1", "RSBW"});
    expectShown("RBW", "4 kHz");
    run.pick("Amp", "-10 dB");
    expectCommands({"WSGN-10", "RSGN"});
    expectShown("Amp", "-10 dB");
    run.pick("Data mode", "Avg");
    expectCommands({"WSDM2", "RSDM", "RSAV"});
    expectShown("Samples", "8");
    run.enter("Samples", "12");
    expectCommands({"WSAV12", "RSAV"});
    expectShown("Samples", "12");
    run.clickButton("Samples up");
    expectCommands({"WSAV13", "RSAV"});
    expectShown("Samples", "13");
    run.pick("Data mode", "Med");
    expectCommands({"WSDM4", "RSDM", "RSME"});
    expectShown("Samples", "3");
}

TEST_F(Panels, resetPressed_modeOneThenThreeGoOut) {
    run.pick("Data mode", "Max");
    expectCommands({"WSDM3", "RSDM"});
    expectShown("Data mode", "Max");
    run.clickButton("Reset");
    expectCommands({"WSDM1", "WSDM3", "RSDM"});
    expectShown("Data mode", "Max");
}

/// A place in the plot, \a share of its width from the left.
QPoint inPlot(QRect chart, double share) {
    constexpr int kLeft = 40;
    constexpr int kRight = 15;
    constexpr int kDown = 200;
    const int width = chart.width() - kLeft - kRight;
    return chart.topLeft() + QPoint(kLeft + static_cast<int>(share * width), kDown);
}

TEST_F(Panels, chartDoubleClicked_centreFollowsAndEverythingIsRead) {
    // Three quarters of 95 to 105 MHz, on the bin under the pointer.
    Desk::doubleClick(inPlot(run.chart(), 240.5 / 320.0));
    expectCommands(Commands{"WSCF102.5"} + kReadBack);
    expectShown("RX Frequency", "102.50000");
    expectShown("Centre", "102.50000");
    expectShown("Start", "97.50000");
}

TEST_F(Panels, refusedValue_snapsBackWithoutAWord) {
    run.enter("RX Frequency", "5", "k");
    expectCommands({"WSCF0.005", "RSCF"});
    expectShown("RX Frequency", "100.00000");
    run.enter("RX Step", "20000");
    expectCommands({"WUST20000", "RUST"});
    expectShown("RX Step", "100.000");
    EXPECT_EQ(Desk::windows(), QStringList{"VELDRON"});
    EXPECT_EQ(run.statusText(), "VELDRON connected on COM 3");
}

TEST_F(Panels, garbledReply_isReportedInTheFirstPanel) {
    run.unit().tell("on WSBW garble");
    run.pick("RBW", "128 kHz");
    expectCommands({"WSBW4", "RSBW"});
    EXPECT_TRUE(run.statusText().startsWith("Comms failure with command WSBW4"))
        << qPrintable(run.statusText());
    expectShown("RBW", "128 kHz");
    EXPECT_EQ(Desk::windows(), QStringList{"VELDRON"});
}

/// The same in Channel mode, where the fields mean channels.
class ChannelPanels : public Panels {
protected:
    void SetUp() override {
        Panels::SetUp();
        run.pick("Monitor mode", "Channel");
        expectCommands(Commands{"WUOM3", "RUOM"} + kReadChannelsIn);
    }
};

TEST_F(ChannelPanels, channelModePicked_channelsAndMarkerAreReadIn) {
    expectShown("Monitor mode", "Channel");
    expectShown("Ch. Start", "144.00000");
    expectShown("Ch. Step", "25.000");
    expectShown("Ch. End", "146.00000");
    expectShown("RX Frequency", "144.00000");
    EXPECT_FALSE(run.isEnabled("Span"));
    EXPECT_FALSE(run.isEnabled("Step"));
}

TEST_F(ChannelPanels, channelValuesTyped_allThreeGoOutTogether) {
    run.enter("Ch. Step", "12.5");
    expectCommands(Commands{"WUCS 144 12.5 146"} + kReadChannelsIn);
    expectShown("Ch. Step", "12.500");
    run.enter("Ch. End", "147");
    expectCommands(Commands{"WUCS 144 12.5 147"} + kReadChannelsIn);
    expectShown("Ch. End", "147.00000");
    run.enter("Ch. Start", "145");
    expectCommands(Commands{"WUCS 145 12.5 147"} + kReadChannelsIn);
    expectShown("Ch. Start", "145.00000");
    expectShown("RX Frequency", "145.00000");
}

TEST_F(ChannelPanels, frequencyTyped_markerIsSteppedThere) {
    run.enter("RX Frequency", "144.075");
    expectCommands({"WUDS1", "WUDS1", "WUDS1", "WUMC", "RICD"});
    expectShown("RX Frequency", "144.07500");
    run.enter("RX Frequency", "144.05");
    expectCommands({"WUDS2", "WUMC", "RICD"});
    expectShown("RX Frequency", "144.05000");
    // More than a screen away: nothing moves, and the marker's place comes back.
    run.enter("RX Frequency", "200");
    expectCommands({"RICD"});
    expectShown("RX Frequency", "144.05000");
}

TEST_F(ChannelPanels, chartDoubleClicked_markerIsSteppedThere) {
    constexpr double kChannels = 81.0;
    Desk::doubleClick(inPlot(run.chart(), 10.5 / kChannels));
    expectCommands(Commands(10, "WUDS1") + Commands{"WUMC", "RICD"} + kReadBackChannels);
    expectShown("RX Frequency", "144.25000");
}

TEST_F(ChannelPanels, dataModeAndReset_workAsElsewhere) {
    run.pick("Data mode", "Max");
    expectCommands({"WSDM3", "RSDM"});
    run.clickButton("Reset");
    expectCommands({"WSDM1", "WSDM3", "RSDM"});
    run.pick("RBW", "64 kHz");
    expectCommands({"WSBW3", "RSBW"});
    expectShown("RBW", "64 kHz");
}

TEST_F(ChannelPanels, channelModeLeft_spanAndCentreAreBack) {
    run.pick("Monitor mode", "Step");
    expectCommands({"WUOM2", "RUOM", "RSSP", "RSCF"});
    expectShown("Span", "10.00000");
    expectShown("Centre", "100.00000");
    expectShown("RX Frequency", "100.00000");
    EXPECT_TRUE(run.isEnabled("Span"));
}

} // namespace

} // namespace veldron
