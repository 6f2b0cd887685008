// SPDX-License-Identifier: MIT
// Lines that belong together: whole blocks, channels, scans.
#include "settings/SettingsStream.h"

#include "common/UntrappedError.h"
#include "tests/support/InstrumentBench.h"

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

TEST(SettingsStreamBlock, spectrumBlock_goesToTheUnitInItsOrderWithItsWaits) {
    InstrumentBench bench;
    bench.connectUnit();
    bench.loadAll(kSpectrumBlock);
    EXPECT_EQ(bench.log, kSpectrumWire);
}

TEST(SettingsStreamBlock, controlledReceiver_takesFiveSeconds) {
    InstrumentBench bench;
    bench.connectUnit();
    const double start = bench.clock.seconds();
    bench.loadAll(kSpectrumBlock);
    EXPECT_NEAR(bench.clock.seconds() - start, 5.0, 0.05);
}

TEST(SettingsStreamBlock, twoBlocks_areBothAppliedInFull) {
    InstrumentBench bench;
    bench.connectUnit();
    bench.loadAll(kSpectrumBlock + kSpectrumBlock);
    EXPECT_EQ(bench.log, kSpectrumWire + kSpectrumWire);
}

TEST(SettingsStreamBlock, channelBlock_sendsChannelsAndMarkerAtItsEnd) {
    InstrumentBench bench;
    bench.connectUnit();
    bench.loadAll(kChannelBlock);
    QStringList expected = {"wait 1.0", "WUOM3", "WURX1", "WUCS 88 12.5 92", "wait 1.0"};
    // The unit's marker stands at 0, more than a screen away from where it should go.
    expected.append("ReadBackSettings");
    EXPECT_EQ(bench.log, expected);
}

TEST(SettingsStreamBlock, channelBlockWithTheMarkerNear_stepsItThere) {
    InstrumentBench bench;
    bench.line.setUnitValue("ICD", "88");
    bench.connectUnit();
    (void)bench.vdr.VDRMarkerFreq();
    bench.log.clear();
    bench.loadAll(kChannelBlock);
    EXPECT_EQ(bench.log.mid(3),
              (QStringList{"WUCS 88 12.5 92", "wait 1.0", "WUDS1", "WUMC", "ReadBackSettings"}));
}

TEST(SettingsStreamBlock, channelBlock_fillsThePanelAfterTheUnit) {
    InstrumentBench bench;
    bench.connectUnit();
    bench.loadAll(kChannelBlock);
    const ctlMonitorMode &panel = bench.ctlMonitorMode1;
    EXPECT_EQ(panel.fStart(), Hertz::fromWhole(88000000));
    EXPECT_EQ(panel.fCentre(), Hertz::fromWhole(12500));
    EXPECT_EQ(panel.fEnd(), Hertz::fromWhole(92000000));
    EXPECT_EQ(panel.fSpan(), Hertz::fromWhole(4000000));
    EXPECT_EQ(panel.fStep(), Hertz::fromWhole(12500));
    EXPECT_EQ(bench.ctlFrequency1.Frequency(), Hertz::fromWhole(88012500));
}

TEST(SettingsStreamBlock, channelBlockInPlayback_fillsThePanelAlone) {
    InstrumentBench bench;
    bench.connectUnit();
    bench.session.InPlayback = true;
    bench.loadAll(kChannelBlock);
    EXPECT_EQ(bench.log, QStringList{"UpdateChartSettings"});
    EXPECT_EQ(bench.ctlMonitorMode1.fStart(), Hertz::fromWhole(88000000));
    EXPECT_EQ(bench.ctlMonitorMode1.fCentre(), Hertz::fromWhole(12500));
}

TEST(SettingsStreamBlock, channelLinesOtherThanThree_haveNoEffect) {
    const QStringList lines = {"Start 1000000", "End 2000000", "Step 500", "Start 3000000"};
    for (const int count : {0, 1, 2, 4}) {
        InstrumentBench bench;
        bench.connectUnit();
        bench.loadAll(QStringList{"StartSettings x"} + lines.mid(0, count));
        EXPECT_TRUE(bench.changesOf("EndSettings").isEmpty()) << count;
        EXPECT_EQ(bench.log, QStringList{"ReadBackSettings"}) << count;
    }
}

TEST(SettingsStreamBlock, startAndEndWithoutStep_haveNoEffect) {
    InstrumentBench bench;
    bench.loadAll({"StartSettings x", "Start 1000000", "End 2000000"});
    EXPECT_TRUE(bench.changesOf("EndSettings ").isEmpty());
}

TEST(SettingsStreamBlock, channelStoreLivesFromCallToCall_untilTheNextStart) {
    InstrumentBench bench;
    bench.connectUnit();
    bench.loadAll({"Start 1000000", "Step 500", "End 2000000", "EndSettings", "EndSettings"});
    EXPECT_EQ(bench.log.filter("WUCS").size(), 2);
    bench.loadAll({"StartSettings x", "EndSettings"});
    EXPECT_EQ(bench.log.filter("WUCS").size(), 2);
}

TEST(SettingsStreamBlock, moreChannelLinesThanTheCountHolds_areUntrapped) {
    InstrumentBench bench;
    for (int i = 0; i < 32767; ++i) {
        bench.load("Step 500");
    }
    EXPECT_THROW(bench.load("Step 500"), UntrappedError);
}

TEST(SettingsStreamBlock, endWithAndWithoutItsBlank_isTheSameLine) {
    for (const char *line : {"EndSettings", "EndSettings ", "EndSettings of the block"}) {
        InstrumentBench bench;
        bench.connectUnit();
        bench.load(line);
        EXPECT_EQ(bench.log, QStringList{"ReadBackSettings"}) << line;
    }
}

TEST(SettingsStreamBlock, modeNameWithOneBlank_isNotFoundWithTwoItIs) {
    InstrumentBench bench;
    bench.connectUnit();
    bench.loadAll({"RXMode  AM", "RXMode AM"});
    EXPECT_EQ(bench.log, (QStringList{"wait 1.0", "WUMD5", "wait 1.0", "WUMD0"}));
}

TEST(SettingsStreamBlock, commaLocale_losesDecimalsInSpanAndStepButNotInCentre) {
    InstrumentBench bench(QLocale(QLocale::German, QLocale::Germany));
    bench.loadAll({"Centre 145500000,25", "Span 5000000,75"});
    EXPECT_EQ(bench.ctlMonitorMode1.fCentre(), Hertz::fromUnits(1455000002500));
    EXPECT_EQ(bench.ctlMonitorMode1.fSpan(), Hertz::fromWhole(5000000));
    bench.loadAll(
        {"MonitorMode 3", "Start 1000000,5", "Step 500,9", "End 2000000,5", "EndSettings"});
    EXPECT_EQ(bench.ctlMonitorMode1.fStart(), Hertz::fromUnits(10000005000));
    EXPECT_EQ(bench.ctlMonitorMode1.fCentre(), Hertz::fromWhole(500));
    EXPECT_EQ(bench.ctlMonitorMode1.fEnd(), Hertz::fromUnits(20000005000));
}

TEST(SettingsStreamBlock, stepWithAPoint_keepsItsDecimalsInEveryLocale) {
    InstrumentBench bench(QLocale(QLocale::German, QLocale::Germany));
    bench.loadAll(
        {"MonitorMode 3", "Start 1000000", "Step 8333.33333", "End 2000000", "EndSettings"});
    EXPECT_EQ(bench.ctlMonitorMode1.fCentre(), Hertz::fromUnits(83333333));
}

TEST(SettingsStreamBlock, whatIsWritten_readsBackToTheSameBlock) {
    for (const QLocale &locale :
         {QLocale(QLocale::English, QLocale::UnitedStates),
          QLocale(QLocale::German, QLocale::Germany), QLocale(QLocale::Arabic, QLocale::Egypt)}) {
        InstrumentBench written(locale);
        written.loadAll(kSpectrumBlock);
        written.loadAll({"PersistenceOn True", "Persistence 60", "WaterfallOn True", "Palette 4",
                         "Update 5", "MarkerOn True", "Poll 500"});
        InstrumentBench read(locale);
        read.loadAll(written.saved());
        EXPECT_EQ(read.saved(), written.saved());
    }
}

TEST(SettingsStreamBlock, missingKeys_leaveTheirSettings) {
    InstrumentBench bench;
    const QStringList before = bench.saved();
    bench.loadAll({"StartSettings 21/03/2005", "RBW 1", "EndSettings"});
    EXPECT_EQ(bench.saved(), before);
}

TEST(SettingsStreamBlock, unitThatRefuses_doesNotStopTheLoad) {
    InstrumentBench bench;
    bench.connectUnit();
    bench.line.setReply("WUOM1", "?\r\n");
    bench.line.setReply("WSSP5", "rubbish\r\n");
    bench.loadAll(kSpectrumBlock);
    EXPECT_EQ(bench.log, kSpectrumWire);
    EXPECT_EQ(bench.ctlMonitorMode1.fSpan(), Hertz::fromWhole(5000000));
}

TEST(SettingsStreamBlock, unitThatFallsSilent_losesTheLinkAndTheLoadGoesOn) {
    InstrumentBench bench;
    bench.connectUnit();
    bench.line.setSilent(true);
    bench.loadAll(kSpectrumBlock);
    EXPECT_EQ(bench.log.filter("W"), QStringList{"WUOM1"});
    EXPECT_EQ(bench.log.last(), "UpdateChartSettings");
    EXPECT_EQ(bench.ctlDataMode1.Samples(), 4);
}

TEST(SettingsStreamBlock, waitThatStartsInTheLastSecondOfTheDay_doesNotEndAtMidnight) {
    InstrumentBench bench;
    bench.clock.setTimeOfDay(86399.5);
    bench.clock.setStepPerReading(100.0);
    const QDateTime start = bench.clock.now();
    bench.load("MonitorMode 2");
    EXPECT_GT(start.secsTo(bench.clock.now()), 80000);
}

TEST(SettingsStreamBlock, scanLine_fillsScanAndTime) {
    InstrumentBench bench;
    EXPECT_TRUE(bench.load(QString::fromLatin1("Data \x01\xFF\x80 2:03:27 PM")));
    EXPECT_EQ(bench.session.ScanData, (LevelScan{1, 255, 128}));
    EXPECT_EQ(bench.session.ScanTime, "2:03:27 PM");
    EXPECT_FALSE(bench.load("RBW 1"));
    EXPECT_TRUE(bench.log.isEmpty());
}

TEST(SettingsStreamBlock, scanOfOneZero_isRead) {
    InstrumentBench bench;
    EXPECT_TRUE(bench.load(QStringLiteral("Data ") + QChar(0) + " 10:00:00"));
    EXPECT_EQ(bench.session.ScanData, LevelScan{0});
}

TEST(SettingsStreamBlock, scanWithABlankInIt_endsThere) {
    InstrumentBench bench;
    EXPECT_TRUE(bench.load("Data ab cd 10:00:00"));
    EXPECT_EQ(bench.session.ScanData, (LevelScan{'a', 'b'}));
    EXPECT_EQ(bench.session.ScanTime, "cd 10:00:00");
}

TEST(SettingsStreamBlock, longScan_isCutAt323Levels) {
    for (const int length : {322, 323, 324, 400}) {
        InstrumentBench bench;
        EXPECT_TRUE(bench.load("Data " + QString(length, 'x') + " 10:00:00"));
        const int kept = qMin(length, 323);
        EXPECT_EQ(bench.session.ScanData, LevelScan(static_cast<std::size_t>(kept), 'x'));
        // One character at the place of the blank is lost; the rest is taken for the time.
        const QString rest = length <= 323 ? QString() : QString(length - 324, 'x') + " ";
        EXPECT_EQ(bench.session.ScanTime, rest + "10:00:00") << length;
    }
}

TEST(SettingsStreamBlock, scanLineWithoutABlank_failsAndKeepsTheLastScan) {
    InstrumentBench bench;
    bench.load("Data ab 10:00:00");
    EXPECT_THROW(bench.load("Data " + QString(400, 'x')), UntrappedError);
    EXPECT_EQ(bench.session.ScanTime, "10:00:00");
}

} // namespace
} // namespace veldron
