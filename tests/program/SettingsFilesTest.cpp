// SPDX-License-Identifier: MIT
// Start, exit, and the settings kept from one run to the next.
#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/ProgramRun.h"

#include <gtest/gtest.h>

#include <QFile>

namespace veldron {

using namespace std::chrono_literals;

namespace {

const Commands kReadBackAvg = {"RURX", "RUST", "RUAT", "RUMD", "RSGN", "RSDM",
                               "RSBW", "RSAV", "RUOM", "RSSP", "RSCF"};

class StartAndEnd : public testing::Test {
protected:
    /// The program's commands behind a place in the log, up to the first poll.
    Commands commandsBeforeFirstPoll(qsizetype place) {
        (void)eventually(20s, [&] { return run.unit().countSince(place, "RIFD") > 0; });
        Commands commands = run.unit().commandsSince(place);
        return commands.first(qMax<qsizetype>(0, commands.indexOf("RIFD")));
    }

    void terminate() {
        run.sendTerminate();
        ASSERT_TRUE(run.ends());
        EXPECT_EQ(run.exitCode(), 0);
        EXPECT_FALSE(run.hasCrashed());
    }

    ProgramRun run;
};

TEST_F(StartAndEnd, firstStartWithUnit_searchesConnectsAndReadsEverything) {
    ASSERT_TRUE(run.plugUnit());
    ASSERT_TRUE(run.open());
    EXPECT_EQ(commandsBeforeFirstPoll(0), Commands({"RIVE", "RIVE"}) + kReadBack);
    EXPECT_EQ(run.statusText(), "VELDRON connected on COM 3");
    EXPECT_EQ(run.shown("Receiver"), "VK3900");
    EXPECT_EQ(run.shown("Centre"), "100.00000");
    EXPECT_EQ(Desk::windows(), QStringList{"VELDRON"});
}

TEST_F(StartAndEnd, startWithUnitOnThirdPort_isFoundThere) {
    ASSERT_TRUE(run.plugUnit(9));
    ProgramRun others;
    // Two more devices in front of it: one silent, one that is no unit.
    ASSERT_TRUE(others.plugUnit(1));
    others.unit().tell("silence forever");
    QFile::link(others.path("ports/COM1"), run.path("ports/COM1"));
    ProgramRun third;
    ASSERT_TRUE(third.plugUnit(4));
    third.unit().tell("times 1 refuse");
    QFile::link(third.path("ports/COM4"), run.path("ports/COM4"));
    ASSERT_TRUE(run.open());
    EXPECT_TRUE(run.awaitStatus("VELDRON connected on COM 9")) << qPrintable(run.statusText());
    EXPECT_EQ(others.unit().commandsSince(0), Commands{"RIVE"});
    EXPECT_EQ(third.unit().commandsSince(0), Commands{"RIVE"});
    EXPECT_EQ(run.shown("Centre"), "100.00000");
}

TEST_F(StartAndEnd, startWithoutAnyPort_windowComesUpAndWaits) {
    ASSERT_TRUE(run.open());
    EXPECT_EQ(run.statusText(), "No serial port selected");
    EXPECT_EQ(Desk::windows(), QStringList{"VELDRON"});
    terminate();
    EXPECT_TRUE(run.exists(kDefaultFile));
}

TEST_F(StartAndEnd, secondStart_settingsOfTheFirstGoToTheUnitInOrder) {
    ASSERT_TRUE(run.plugUnit());
    ASSERT_TRUE(run.open());
    run.pick("Data mode", "Avg");
    run.enter("RX Frequency", "145.5");
    EXPECT_EQ(run.shownAfterWait("Centre", "145.50000"), "145.50000");
    terminate();
    // The unit's settings are changed by hand between the two runs.
    run.unit().tell("set centre 50");
    run.unit().tell("set receiver 3");
    const qsizetype begin = run.unit().now();
    ASSERT_TRUE(run.open());
    const Commands restored = {"WUOM1", "WSSP10", "WSCF145.5", "WURX7", "WUMD1", "WUST100",
                               "WUAT2", "WSBW2",  "WSGN-30",   "WSDM2", "WSAV8"};
    EXPECT_EQ(commandsBeforeFirstPoll(begin),
              Commands({"RIVE", "RIVE"}) + restored + kReadBackAvg + kReadBackAvg);
    EXPECT_EQ(run.shown("Centre"), "145.50000");
    EXPECT_EQ(run.shown("Receiver"), "VK3900");
    EXPECT_EQ(run.shown("Data mode"), "Avg");
}

TEST_F(StartAndEnd, startWithBrokenDefaultFile_linesBeforeTheBadOneStand) {
    run.write(kDefaultFile, "VELDRONv1 Settings\r\nSpan 5000000\r\nRBW 40000\r\nAmp -10\r\n");
    ASSERT_TRUE(run.plugUnit());
    ASSERT_TRUE(run.open());
    EXPECT_EQ(commandsBeforeFirstPoll(0), Commands({"RIVE", "RIVE", "WSSP5"}) + kReadBack);
    EXPECT_EQ(run.shown("Span"), "5.00000");
    EXPECT_EQ(run.shown("Amp"), "-30 dB");
    EXPECT_EQ(Desk::windows(), QStringList{"VELDRON"});
}

TEST_F(StartAndEnd, exitInTheMenu_savesAndEnds) {
    ASSERT_TRUE(run.plugUnit());
    ASSERT_TRUE(run.open());
    run.choose("File", "Exit");
    ASSERT_TRUE(run.ends());
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(run.content(kDefaultFile).startsWith("VELDRONv1 Settings\r\nStartSettings "));
    EXPECT_TRUE(run.content(kDefaultFile).endsWith("EndSettings \r\n"));
}

TEST_F(StartAndEnd, closeBox_savesAndEnds) {
    ASSERT_TRUE(run.plugUnit());
    ASSERT_TRUE(run.open());
    Desk::pressCloseBox("VELDRON");
    ASSERT_TRUE(run.ends());
    EXPECT_EQ(run.exitCode(), 0);
    EXPECT_TRUE(run.content(kDefaultFile).contains("\r\nCentre 100000000\r\n"));
}

TEST_F(StartAndEnd, terminateSignal_savesAndEndsWithoutAQuestion) {
    ASSERT_TRUE(run.plugUnit());
    ASSERT_TRUE(run.open());
    terminate();
    EXPECT_TRUE(run.content(kDefaultFile).contains("\r\nReceiver VK3900\r\n"));
}

/// Settings of the user's own, through the file dialogs.
class OwnSettings : public StartAndEnd {
protected:
    void SetUp() override {
        ASSERT_TRUE(run.plugUnit());
        ASSERT_TRUE(run.open());
    }

    void save(const QString &name) {
        run.choose("File", "Save Settings");
        ASSERT_TRUE(run.answerFileDialog("Save Settings", run.path(name)));
        ASSERT_TRUE(eventually(5s, [&] { return run.exists(name); }));
        Desk::focus("VELDRON");
    }

    /// Loads a file; the commands up to the end of the reading back.
    Commands load(const QString &name, const QByteArray &lastCommand) {
        const qsizetype begin = run.unit().now();
        run.choose("File", "Load Settings");
        EXPECT_TRUE(run.answerFileDialog("Load Settings", run.path(name)));
        (void)eventually(15s, [&] { return run.unit().countSince(begin, lastCommand) > 0; });
        Desk::focus("VELDRON");
        Commands commands = run.unit().commandsSince(begin);
        // Polls went on while the dialog was open.
        const auto isWrite = [](const QByteArray &command) {
            return command.startsWith('W');
        };
        commands.erase(commands.begin(), std::find_if(commands.begin(), commands.end(), isWrite));
        commands.resize(qMin(commands.size(), commands.indexOf("RIFD") < 0
                                                  ? commands.size()
                                                  : commands.indexOf("RIFD")));
        return commands;
    }
};

TEST_F(OwnSettings, savedAndLoaded_unitGetsThemInTheFilesOrder) {
    run.enter("Span", "2");
    EXPECT_EQ(run.shownAfterWait("Span", "2.00000"), "2.00000");
    save("mine.set");
    const QByteArray file = run.content("mine.set");
    EXPECT_TRUE(file.startsWith("VELDRONv1 Settings\r\nStartSettings "));
    EXPECT_TRUE(file.contains("\r\nPersistenceOn False\r\nPersistence 5\r\nWaterfallOn False\r\n"
                              "Palette 3\r\nUpdate 1\r\nMarkerOn True\r\nPoll 1000\r\n"
                              "MonitorMode 1\r\nSpan 2000000\r\nCentre 100000000\r\n"
                              "Receiver VK3900\r\nRXMode WFM\r\nRXStep 100000\r\nRXAtten False\r\n"
                              "RBW 2\r\nAmp -30\r\nDataMode 1\r\nEndSettings \r\n"))
        << file.constData();
    run.enter("Span", "10");
    EXPECT_EQ(run.shownAfterWait("Span", "10.00000"), "10.00000");
    EXPECT_EQ(load("mine.set", "RSCF"),
              Commands({"WUOM1", "WSSP2", "WSCF100", "WURX7", "WUMD1", "WUST100", "WUAT2", "WSBW2",
                        "WSGN-30", "WSDM1"}) +
                  kReadBack);
    EXPECT_EQ(run.shownAfterWait("Span", "2.00000"), "2.00000");
}

TEST_F(OwnSettings, channelModeSavedAndLoaded_channelsAndMarkerComeBack) {
    run.pick("Monitor mode", "Channel");
    EXPECT_EQ(run.shownAfterWait("Ch. Step", "25.000"), "25.000");
    run.enter("RX Frequency", "144.05");
    EXPECT_EQ(run.shownAfterWait("RX Frequency", "144.05000"), "144.05000");
    save("channels.set");
    EXPECT_TRUE(run.content("channels.set")
                    .contains("\r\nMonitorMode 3\r\nStart 144000000\r\nStep 25000\r\n"
                              "End 146000000\r\nMarkerFrequency 144050000\r\nReceiver "));
    run.unit().tell("set channels 145 12.5 147");
    EXPECT_EQ(run.shownAfterWait("Ch. Step", "12.500", 15s), "12.500");
    const Commands loaded = load("channels.set", "WUMC");
    EXPECT_EQ(loaded.first(9), Commands({"WUOM3", "WURX7", "WUMD1", "WUST100", "WUAT2", "WSBW2",
                                         "WSGN-30", "WSDM1", "WUCS 144 25 146"}));
    EXPECT_EQ(run.shownAfterWait("Ch. Start", "144.00000", 15s), "144.00000");
    EXPECT_EQ(run.shownAfterWait("Ch. Step", "25.000"), "25.000");
    EXPECT_EQ(run.shownAfterWait("Ch. End", "146.00000"), "146.00000");
}

TEST_F(OwnSettings, dialogCancelled_nothingHappens) {
    const qsizetype begin = run.unit().now();
    run.choose("File", "Save Settings");
    ASSERT_TRUE(Desk::awaitWindow("Save Settings", 5s));
    Desk::focus("Save Settings");
    Desk::key("Escape");
    ASSERT_TRUE(eventually(5s, [] { return !Desk::hasWindow("Save Settings"); }));
    EXPECT_EQ(run.unit().countSince(begin, "WUOM1"), 0);
    EXPECT_TRUE(run.isRunning());
}

TEST_F(OwnSettings, newNameAndOldName_areAskedAboutBeforeTheFileIsWritten) {
    run.choose("File", "Save Settings");
    ASSERT_TRUE(run.nameFile("Save Settings", run.path("mine.set")));
    const QString make = "mine.set does not exist.\nDo you want to create it?";
    ASSERT_TRUE(run.answerQuestion(make, "No"));
    EXPECT_TRUE(Desk::hasWindow("Save Settings"));
    EXPECT_FALSE(run.exists("mine.set"));
    run.write("mine.set", "old");
    ASSERT_TRUE(run.nameFile("Save Settings", run.path("mine.set")));
    const QString replace = "mine.set already exists.\nDo you want to replace it?";
    ASSERT_TRUE(run.answerQuestion(replace, "No"));
    EXPECT_EQ(run.content("mine.set"), "old");
    ASSERT_TRUE(run.nameFile("Save Settings", run.path("mine.set")));
    ASSERT_TRUE(run.answerQuestion(replace, "Yes"));
    EXPECT_TRUE(eventually(5s, [this] { return run.content("mine.set").startsWith("VELDRON"); }));
    EXPECT_EQ(Desk::windows(), QStringList{"VELDRON"});
}

TEST_F(OwnSettings, badValueInALoadedFile_programSaysSoAndEnds) {
    run.write("bad.set", "VELDRONv1 Settings\r\nCentre nowhere\r\n");
    run.choose("File", "Load Settings");
    ASSERT_TRUE(run.answerFileDialog("Load Settings", run.path("bad.set")));
    ASSERT_TRUE(eventually(5s, [] { return Desk::windows().contains("VELDRON has to end"); }));
    Desk::focus("VELDRON has to end");
    Desk::key("Return");
    ASSERT_TRUE(run.ends());
    EXPECT_EQ(run.exitCode(), 1);
    EXPECT_TRUE(run.errorOutput().startsWith("veldron: "));
}

} // namespace

} // namespace veldron
