// SPDX-License-Identifier: MIT
// Lines that belong together: whole blocks, channels, scans.
#include "settings/SettingsLines.h"

#include "common/UntrappedError.h"
#include "tests/support/SettingsFixture.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

const QStringList kSpectrumBlock = {"StartSettings 21/03/2005",
                                    "MonitorMode 1",
                                    "Span 5000000",
                                    "Centre 430000000",
                                    "Receiver VK1100",
                                    "RXMode USB",
                                    "RXStep 2500",
                                    "RXAtten True",
                                    "RBW 3",
                                    "Amp -30",
                                    "DataMode 4",
                                    "Samples 4",
                                    "EndSettings "};
const QStringList kSpectrumWire = {"wait 1.0", "WUOM1",           "WSSP5", "wait 1.0", "WSCF430",
                                   "WURX3",    "wait 1.0",        "WUMD8", "wait 1.0", "WUST2.5",
                                   "wait 1.0", "WUAT1",           "WSBW3", "WSGN-30",  "WSDM4",
                                   "WSME4",    "ReadBackSettings"};
const QStringList kChannelBlock = {"StartSettings 21/03/2005",
                                   "MonitorMode 3",
                                   "Start 88000000",
                                   "Step 12500",
                                   "End 92000000",
                                   "MarkerFrequency 88012500",
                                   "Receiver Other (10M)",
                                   "EndSettings "};

TEST(SettingsLinesBlock, spectrumBlock_goesToTheUnitInItsOrderWithItsWaits) {
    SettingsFixture fixture;
    fixture.connectUnit();
    fixture.loadAll(kSpectrumBlock);
    EXPECT_EQ(fixture.log, kSpectrumWire);
}

TEST(SettingsLinesBlock, controlledReceiver_takesFiveSeconds) {
    SettingsFixture fixture;
    fixture.connectUnit();
    const double start = fixture.clock.seconds();
    fixture.loadAll(kSpectrumBlock);
    EXPECT_NEAR(fixture.clock.seconds() - start, 5.0, 0.05);
}

TEST(SettingsLinesBlock, twoBlocks_areBothAppliedInFull) {
    SettingsFixture fixture;
    fixture.connectUnit();
    fixture.loadAll(kSpectrumBlock + kSpectrumBlock);
    EXPECT_EQ(fixture.log, kSpectrumWire + kSpectrumWire);
}

TEST(SettingsLinesBlock, channelBlock_sendsChannelsAndMarkerAtItsEnd) {
    SettingsFixture fixture;
    fixture.connectUnit();
    fixture.loadAll(kChannelBlock);
    QStringList expected = {"wait 1.0", "WUOM3", "WURX1", "WUCS 88 12.5 92", "wait 1.0"};
    // The unit's marker stands at 0, more than a screen away from where it should go.
    expected.append("ReadBackSettings");
    EXPECT_EQ(fixture.log, expected);
}

TEST(SettingsLinesBlock, channelBlockWithTheMarkerNear_stepsItThere) {
    SettingsFixture fixture;
    fixture.line.setUnitValue("ICD", "88");
    fixture.connectUnit();
    (void)fixture.vdr.VDRMarkerFreq();
    fixture.log.clear();
    fixture.loadAll(kChannelBlock);
    EXPECT_EQ(fixture.log.mid(3),
              (QStringList{"WUCS 88 12.5 92", "wait 1.0", "WUDS1", "WUMC", "ReadBackSettings"}));
}

TEST(SettingsLinesBlock, channelsAndMarker_goToTheUnitBeforeAnyPanelIsWritten) {
    SettingsFixture fixture;
    fixture.line.setUnitValue("ICD", "88");
    fixture.connectUnit();
    (void)fixture.vdr.VDRMarkerFreq();
    fixture.loadAll(kChannelBlock.mid(0, kChannelBlock.size() - 1));
    const QStringList before = fixture.state();
    QStringList commands;
    fixture.line.setCommandHook([&](const QString &command) {
        commands += command;
        EXPECT_EQ(fixture.state(), before) << command.toStdString();
    });
    fixture.load(kChannelBlock.last());
    EXPECT_EQ(commands, (QStringList{"WUCS 88 12.5 92", "WUDS1", "WUMC"}));
    EXPECT_EQ(fixture.ctlMonitorMode1.fStart(), Hertz::fromWhole(88000000));
}

TEST(SettingsLinesBlock, channelBlock_fillsThePanelAfterTheUnit) {
    SettingsFixture fixture;
    fixture.connectUnit();
    fixture.loadAll(kChannelBlock);
    const ctlMonitorMode &panel = fixture.ctlMonitorMode1;
    EXPECT_EQ(panel.fStart(), Hertz::fromWhole(88000000));
    EXPECT_EQ(panel.fCentre(), Hertz::fromWhole(12500));
    EXPECT_EQ(panel.fEnd(), Hertz::fromWhole(92000000));
    EXPECT_EQ(panel.fSpan(), Hertz::fromWhole(4000000));
    EXPECT_EQ(panel.fStep(), Hertz::fromWhole(12500));
    EXPECT_EQ(fixture.ctlFrequency1.Frequency(), Hertz::fromWhole(88012500));
}

TEST(SettingsLinesBlock, channelBlockInPlayback_fillsThePanelAlone) {
    SettingsFixture fixture;
    fixture.connectUnit();
    fixture.session.InPlayback = true;
    fixture.loadAll(kChannelBlock);
    EXPECT_EQ(fixture.log, QStringList{"UpdateChartSettings"});
    EXPECT_EQ(fixture.ctlMonitorMode1.fStart(), Hertz::fromWhole(88000000));
    EXPECT_EQ(fixture.ctlMonitorMode1.fCentre(), Hertz::fromWhole(12500));
}

TEST(SettingsLinesBlock, channelLinesOtherThanThree_haveNoEffect) {
    const QStringList lines = {"Start 1000000", "End 2000000", "Step 500", "Start 3000000"};
    for (const int count : {0, 1, 2, 4}) {
        SettingsFixture fixture;
        fixture.connectUnit();
        fixture.loadAll(QStringList{"StartSettings x"} + lines.mid(0, count));
        EXPECT_TRUE(fixture.changesOf("EndSettings").isEmpty()) << count;
        EXPECT_EQ(fixture.log, QStringList{"ReadBackSettings"}) << count;
    }
}

TEST(SettingsLinesBlock, startAndEndWithoutStep_haveNoEffect) {
    SettingsFixture fixture;
    fixture.loadAll({"StartSettings x", "Start 1000000", "End 2000000"});
    EXPECT_TRUE(fixture.changesOf("EndSettings ").isEmpty());
}

TEST(SettingsLinesBlock, channelStoreLivesFromCallToCall_untilTheNextStart) {
    SettingsFixture fixture;
    fixture.connectUnit();
    fixture.loadAll({"Start 1000000", "Step 500", "End 2000000", "EndSettings", "EndSettings"});
    EXPECT_EQ(fixture.log.filter("WUCS").size(), 2);
    fixture.loadAll({"StartSettings x", "EndSettings"});
    EXPECT_EQ(fixture.log.filter("WUCS").size(), 2);
}

TEST(SettingsLinesBlock, moreChannelLinesThanTheCountHolds_areUntrapped) {
    SettingsFixture fixture;
    for (int i = 0; i < 32767; ++i) {
        fixture.load("Step 500");
    }
    EXPECT_THROW(fixture.load("Step 500"), UntrappedError);
}

TEST(SettingsLinesBlock, endWithAndWithoutItsBlank_isTheSameLine) {
    for (const char *line : {"EndSettings", "EndSettings ", "EndSettings of the block"}) {
        SettingsFixture fixture;
        fixture.connectUnit();
        fixture.load(line);
        EXPECT_EQ(fixture.log, QStringList{"ReadBackSettings"}) << line;
    }
}

TEST(SettingsLinesBlock, modeNameWithOneBlank_isNotFoundWithTwoItIs) {
    SettingsFixture fixture;
    fixture.connectUnit();
    fixture.loadAll({"RXMode  AM", "RXMode AM"});
    EXPECT_EQ(fixture.log, (QStringList{"wait 1.0", "WUMD5", "wait 1.0", "WUMD0"}));
}

TEST(SettingsLinesBlock, commaLocale_losesDecimalsInSpanAndStepButNotInCentre) {
    SettingsFixture fixture(QLocale(QLocale::German, QLocale::Germany));
    fixture.loadAll({"Centre 145500000,25", "Span 5000000,75"});
    EXPECT_EQ(fixture.ctlMonitorMode1.fCentre(), Hertz::fromUnits(1455000002500));
    EXPECT_EQ(fixture.ctlMonitorMode1.fSpan(), Hertz::fromWhole(5000000));
    fixture.loadAll(
        {"MonitorMode 3", "Start 1000000,5", "Step 500,9", "End 2000000,5", "EndSettings"});
    EXPECT_EQ(fixture.ctlMonitorMode1.fStart(), Hertz::fromUnits(10000005000));
    EXPECT_EQ(fixture.ctlMonitorMode1.fCentre(), Hertz::fromWhole(500));
    EXPECT_EQ(fixture.ctlMonitorMode1.fEnd(), Hertz::fromUnits(20000005000));
}

TEST(SettingsLinesBlock, stepWithAPoint_keepsItsDecimalsInEveryLocale) {
    SettingsFixture fixture(QLocale(QLocale::German, QLocale::Germany));
    fixture.loadAll(
        {"MonitorMode 3", "Start 1000000", "Step 8333.33333", "End 2000000", "EndSettings"});
    EXPECT_EQ(fixture.ctlMonitorMode1.fCentre(), Hertz::fromUnits(83333333));
}

TEST(SettingsLinesBlock, whatIsWritten_readsBackToTheSameBlock) {
    for (const QLocale &locale :
         {QLocale(QLocale::English, QLocale::UnitedStates),
          QLocale(QLocale::German, QLocale::Germany), QLocale(QLocale::Arabic, QLocale::Egypt)}) {
        SettingsFixture written(locale);
        written.loadAll(kSpectrumBlock);
        written.loadAll({"PersistenceOn True", "Persistence 60", "WaterfallOn True", "Palette 4",
                         "Update 5", "MarkerOn True", "Poll 500"});
        SettingsFixture read(locale);
        read.loadAll(written.saved());
        EXPECT_EQ(read.saved(), written.saved());
    }
}

TEST(SettingsLinesBlock, missingKeys_leaveTheirSettings) {
    SettingsFixture fixture;
    const QStringList before = fixture.saved();
    fixture.loadAll({"StartSettings 21/03/2005", "RBW 1", "EndSettings"});
    EXPECT_EQ(fixture.saved(), before);
}

TEST(SettingsLinesBlock, unitThatRefuses_doesNotStopTheLoad) {
    SettingsFixture fixture;
    fixture.connectUnit();
    fixture.line.setReply("WUOM1", "?\r\n");
    fixture.line.setReply("WSSP5", "rubbish\r\n");
    fixture.loadAll(kSpectrumBlock);
    EXPECT_EQ(fixture.log, kSpectrumWire);
    EXPECT_EQ(fixture.ctlMonitorMode1.fSpan(), Hertz::fromWhole(5000000));
}

TEST(SettingsLinesBlock, unitThatFallsSilent_losesTheLinkAndTheLoadGoesOn) {
    SettingsFixture fixture;
    fixture.connectUnit();
    fixture.line.setSilent(true);
    fixture.loadAll(kSpectrumBlock);
    EXPECT_EQ(fixture.log.filter("W"), QStringList{"WUOM1"});
    EXPECT_EQ(fixture.log.last(), "UpdateChartSettings");
    EXPECT_EQ(fixture.ctlDataMode1.Samples(), 4);
}

TEST(SettingsLinesBlock, pauseThatMidnightHasCaught_endsAfterAMinute) {
    SettingsFixture fixture;
    fixture.clock.setTimeOfDay(86399.5);
    fixture.clock.setStepPerReading(0.5);
    const QDateTime start = fixture.clock.now();
    fixture.load("MonitorMode 2");
    EXPECT_NEAR(static_cast<double>(start.secsTo(fixture.clock.now())), 60.0, 3.0);
}

TEST(SettingsLinesBlock, scanLine_fillsScanAndTime) {
    SettingsFixture fixture;
    EXPECT_TRUE(fixture.load(QString::fromLatin1("Data \x01\xFF\x80 2:03:27 PM")));
    EXPECT_EQ(fixture.scan->levels, (LevelScan{1, 255, 128}));
    EXPECT_EQ(fixture.scan->timeText, "2:03:27 PM");
    EXPECT_FALSE(fixture.load("RBW 1"));
    EXPECT_TRUE(fixture.log.isEmpty());
}

TEST(SettingsLinesBlock, scanOfOneZero_isRead) {
    SettingsFixture fixture;
    EXPECT_TRUE(fixture.load(QStringLiteral("Data ") + QChar(0) + " 10:00:00"));
    EXPECT_EQ(fixture.scan->levels, LevelScan{0});
}

TEST(SettingsLinesBlock, scanWithABlankInIt_endsThere) {
    SettingsFixture fixture;
    EXPECT_TRUE(fixture.load("Data ab cd 10:00:00"));
    EXPECT_EQ(fixture.scan->levels, (LevelScan{'a', 'b'}));
    EXPECT_EQ(fixture.scan->timeText, "cd 10:00:00");
}

TEST(SettingsLinesBlock, longScan_isCutAt323Levels) {
    for (const int length : {322, 323, 324, 400}) {
        SettingsFixture fixture;
        EXPECT_TRUE(fixture.load("Data " + QString(length, 'x') + " 10:00:00"));
        const int kept = qMin(length, 323);
        EXPECT_EQ(fixture.scan->levels, LevelScan(static_cast<std::size_t>(kept), 'x'));
        // One character at the place of the blank is lost; the rest is taken for the time.
        const QString rest = length <= 323 ? QString() : QString(length - 324, 'x') + " ";
        EXPECT_EQ(fixture.scan->timeText, rest + "10:00:00") << length;
    }
}

TEST(SettingsLinesBlock, scanLineWithoutABlank_failsAndKeepsTheLastScan) {
    SettingsFixture fixture;
    fixture.load("Data ab 10:00:00");
    EXPECT_THROW(fixture.load("Data " + QString(400, 'x')), UntrappedError);
    EXPECT_EQ(fixture.scan->timeText, "10:00:00");
}

} // namespace
} // namespace veldron
