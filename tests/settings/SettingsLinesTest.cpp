// SPDX-License-Identifier: MIT
// What a written block looks like, and what each single line does when it is read.
#include "settings/SettingsLines.h"

#include "common/UntrappedError.h"
#include "tests/support/SettingsFixture.h"
#include "utilities/Receivers.h"

#include <gtest/gtest.h>

#include <QComboBox>

#include <memory>

namespace veldron {
namespace {

using Kind = UntrappedError::Kind;

const QStringList kDisplayLines = {"PersistenceOn False", "Persistence 5", "WaterfallOn False",
                                   "Palette 0",           "Update 10",     "MarkerOn False"};
const QStringList kUnitLines = {"Poll 1000",
                                "MonitorMode 1",
                                "Span 10000000",
                                "Centre 145500000",
                                "Receiver VK3700(10M)",
                                "RXMode NFM",
                                "RXStep 25000",
                                "RXAtten False",
                                "RBW 1",
                                "Amp 0",
                                "DataMode 1",
                                "EndSettings "};

TEST(SettingsLines, blockWithOwnReceiver_hasItsLinesInOrder) {
    const SettingsFixture fixture;
    EXPECT_EQ(fixture.saved(),
              QStringList{"StartSettings 21/03/2005"} + kDisplayLines + kUnitLines);
}

TEST(SettingsLines, blockWhileRecording_hasNoDisplayLines) {
    SettingsFixture fixture;
    fixture.session.Recording = true;
    EXPECT_EQ(fixture.saved(), QStringList{"StartSettings 21/03/2005"} + kUnitLines);
}

TEST(SettingsLines, dateOfABlock_isThatOfTheCall) {
    SettingsFixture fixture;
    fixture.clock.setDate(QDate(2026, 12, 31));
    EXPECT_EQ(fixture.saved().first(), "StartSettings 31/12/2026");
}

TEST(SettingsLines, plainReceivers_haveNoReceiverLines) {
    for (const qint16 code : {qint16{1}, qint16{2}}) {
        SettingsFixture fixture;
        fixture.ctlFrequency1.setRX(code);
        const QStringList lines = fixture.saved();
        EXPECT_TRUE(lines.contains("Receiver " + GeneralUtilities::ReceiverName(code)));
        EXPECT_TRUE(lines.filter("RX").isEmpty()) << lines.join("|").toStdString();
    }
}

TEST(SettingsLines, modeNameWithABlankInFront_keepsIt) {
    SettingsFixture fixture;
    fixture.ctlFrequency1.setMode(5);
    EXPECT_TRUE(fixture.saved().contains("RXMode  AM"));
}

TEST(SettingsLines, samples_areWrittenInTheModesThatHaveThem) {
    struct Case {
        DataModeCode mode;
        bool written;
    };
    const Case cases[] = {{DataModeCode::Normal, false},
                          {DataModeCode::Average, true},
                          {DataModeCode::Max, false},
                          {DataModeCode::Median, true}};
    for (Case example : cases) {
        SettingsFixture fixture;
        fixture.ctlDataMode1.setDataMode(example.mode);
        EXPECT_EQ(fixture.saved().contains("Samples 3"), example.written)
            << static_cast<int>(example.mode);
    }
}

TEST(SettingsLines, channelMode_writesFourLinesForTheFrequencyPair) {
    SettingsFixture fixture;
    fixture.ctlMonitorMode1.setMonitorMode(MonitorModeCode::Channel);
    fixture.ctlMonitorMode1.setfStart(Hertz::fromWhole(88000000));
    fixture.ctlMonitorMode1.setfStep(Hertz::fromWhole(12500));
    fixture.ctlMonitorMode1.setfEnd(Hertz::fromUnits(1080000005000));
    fixture.ctlChartSpectrum1.setRXFreq(Hertz::fromWhole(88012500));
    const QStringList lines = fixture.saved();
    const qsizetype place = lines.indexOf("MonitorMode 3");
    EXPECT_EQ(lines.mid(place + 1, 4),
              (QStringList{"Start 88000000", "Step 12500", "End 108000000.5",
                           "MarkerFrequency 88012500"}));
    EXPECT_EQ(lines.at(place + 5), "Receiver VK3700(10M)");
    EXPECT_TRUE(lines.filter("Span").isEmpty());
    EXPECT_TRUE(lines.filter("Centre").isEmpty());
}

TEST(SettingsLines, writing_asksTheUnitNothing) {
    SettingsFixture fixture;
    fixture.connectUnit();
    EXPECT_FALSE(fixture.saved().isEmpty());
    EXPECT_TRUE(fixture.log.isEmpty());
}

TEST(SettingsLines, commaLocale_writesFrequenciesWithTheComma) {
    SettingsFixture fixture(QLocale(QLocale::German, QLocale::Germany));
    fixture.ctlMonitorMode1.setfCentre(Hertz::fromUnits(1455000002500));
    EXPECT_TRUE(fixture.saved().contains("Centre 145500000,25"));
    EXPECT_EQ(fixture.saved().first(), "StartSettings 21.03.2005");
}

TEST(SettingsLines, commaLocale_writesEveryFrequencyWithTheComma) {
    SettingsFixture fixture(QLocale(QLocale::German, QLocale::Germany));
    fixture.ctlMonitorMode1.setfSpan(Hertz::fromUnits(50000007500));
    EXPECT_TRUE(fixture.saved().contains("Span 5000000,75"));
    fixture.ctlMonitorMode1.setMonitorMode(MonitorModeCode::Channel);
    fixture.ctlMonitorMode1.setfStart(Hertz::fromUnits(880000005000));
    fixture.ctlMonitorMode1.setfEnd(Hertz::fromUnits(920000005000));
    fixture.ctlChartSpectrum1.setRXFreq(Hertz::fromUnits(880125002500));
    const QStringList lines = fixture.saved();
    EXPECT_TRUE(lines.contains("Start 88000000,5")) << lines.join('|').toStdString();
    EXPECT_TRUE(lines.contains("End 92000000,5")) << lines.join('|').toStdString();
    EXPECT_TRUE(lines.contains("MarkerFrequency 88012500,25")) << lines.join('|').toStdString();
}

TEST(SettingsLines, receiverZero_isWrittenAsAnErrorWithoutLinesOfItsOwn) {
    SettingsFixture fixture;
    fixture.ctlFrequency1.setRX(0);
    const QStringList lines = fixture.saved();
    EXPECT_TRUE(lines.contains("Receiver ERR"));
    EXPECT_TRUE(lines.filter("RX").isEmpty()) << lines.join('|').toStdString();
}

TEST(SettingsLines, table_hasEachKeyInItsOrder) {
    ASSERT_EQ(settingsLines().size(), kSettingsKeys.size());
    for (std::size_t i = 0; i < settingsLines().size(); ++i) {
        EXPECT_EQ(settingsLines()[i].key, static_cast<SettingsKey>(i));
    }
}

struct LineCase {
    QString line;
    QStringList log;             ///< on the wire and asked of the form
    QStringList changes;         ///< in the holders
    QStringList playbackChanges; ///< the same with InPlayback
    QString before = {};         ///< a line that comes first
};

std::vector<LineCase> lineCases() {
    const QStringList span = {"monitor fSpan 5000000", "monitor fStep 15625",
                              "monitor fStart 143000000", "monitor fEnd 148000000"};
    const QStringList centre = {"receiver Frequency 430000000", "monitor fStart 425000000",
                                "monitor fCentre 430000000", "monitor fEnd 435000000"};
    const QStringList marker = {"chart RXFreq 146000000", "receiver Frequency 146000000"};
    const QStringList date = {"session ScanDate 1 April"};
    return {
        {"StartSettings 1 April", {}, date, date},
        {"PersistenceOn True",
         {},
         {"dialog PersistenceEnable True", "chart Peak True"},
         {"chart Peak True"}},
        {"Persistence -1", {}, {"dialog Persistence -1", "chart Timespan -1"}, {}},
        {"WaterfallOn True",
         {},
         {"dialog WaterfallEnable True", "chart DisplayType 1"},
         {"chart DisplayType 1"}},
        {"Palette 3", {}, {"dialog PaletteIndex 3", "chart Palette 3"}, {}},
        {"Update 2", {}, {"dialog Update 2", "chart Update 2"}, {}},
        {"MarkerOn True",
         {},
         {"dialog MarkerEnable True", "chart MarkerEn True"},
         {"chart MarkerEn True"}},
        {"Poll 250", {"Interval 250"}, {"dialog Poll 250", "chart Poll 250"}, {"chart Poll 250"}},
        {"MonitorMode 2",
         {"wait 1.0", "WUOM2"},
         {"monitor MonitorMode 2"},
         {"monitor MonitorMode 2"}},
        {"Span 5000000", {"WSSP5"}, span, span},
        {"Centre 430000000", {"wait 1.0", "WSCF430"}, centre, centre},
        {"Start 88000000", {}, {}, {}},
        {"Step 12500", {}, {}, {}},
        {"End 108000000", {}, {}, {}},
        {"MarkerFrequency 146000000", {}, marker, marker},
        {"Receiver Other (45M)", {"WURX2"}, {"receiver RX 2"}, {"receiver RX 2"}},
        {"RXMode  AM", {"wait 1.0", "WUMD5"}, {"receiver Mode 5"}, {"receiver Mode 5"}},
        {"RXStep 12500",
         {"wait 1.0", "WUST12.5"},
         {"receiver Step 12500"},
         {"receiver Step 12500"}},
        {"RXAtten True", {"wait 1.0", "WUAT1"}, {"receiver Atten True"}, {"receiver Atten True"}},
        {"RBW 4", {"WSBW4"}, {"data RBW 4"}, {"data RBW 4"}},
        {"Amp -20", {"WSGN-20"}, {"data Amp -20"}, {"data Amp -20"}},
        {"DataMode 3", {"WSDM3"}, {"data DataMode 3"}, {"data DataMode 3"}},
        {"Samples 16", {"WSAV16"}, {"data Samples 16"}, {"data Samples 16"}, "DataMode 2"},
        {"EndSettings ", {"ReadBackSettings"}, {}, {}},
    };
}

TEST(SettingsLines, everyLineOutsidePlayback_goesToUnitThenHolders) {
    for (const LineCase &item : lineCases()) {
        SettingsFixture fixture;
        fixture.connectUnit();
        fixture.load(item.before);
        fixture.log.clear();
        EXPECT_EQ(fixture.changesOf(item.line), item.changes) << item.line.toStdString();
        EXPECT_EQ(fixture.log, item.log) << item.line.toStdString();
    }
}

TEST(SettingsLines, pollOfNought_isTheTimersInterval) {
    SettingsFixture fixture;
    fixture.load("Poll 0");
    EXPECT_EQ(fixture.log, QStringList{"Interval 0"});
}

TEST(SettingsLines, everyLineInPlayback_leavesUnitAndDialogsAlone) {
    for (const LineCase &item : lineCases()) {
        SettingsFixture fixture;
        fixture.connectUnit();
        fixture.session.InPlayback = true;
        fixture.load(item.before);
        fixture.log.clear();
        EXPECT_EQ(fixture.changesOf(item.line), item.playbackChanges) << item.line.toStdString();
        const bool isEnd = item.line.startsWith("EndSettings");
        EXPECT_EQ(fixture.log, isEnd ? QStringList{"UpdateChartSettings"} : QStringList{})
            << item.line.toStdString();
    }
}

TEST(SettingsLines, tableOfLines_coversEveryKey) {
    const std::vector<LineCase> cases = lineCases();
    ASSERT_EQ(cases.size(), settingsLines().size());
    for (std::size_t i = 0; i < cases.size(); ++i) {
        EXPECT_TRUE(cases[i].line.startsWith(textOf(settingsLines()[i].key) + ' '));
    }
}

TEST(SettingsLines, unitWrite_isTheFirstThingOfItsLine) {
    int writes = 0;
    for (const LineCase &item : lineCases()) {
        SettingsFixture fixture;
        fixture.connectUnit();
        fixture.load(item.before);
        const QStringList before = fixture.state();
        fixture.line.setCommandHook([&](const QString &command) {
            ++writes;
            EXPECT_EQ(fixture.state(), before) << command.toStdString();
        });
        fixture.load(item.line);
    }
    EXPECT_EQ(writes, 11);
}

TEST(SettingsLines, writesWithThePortClosed_leaveThePanelsWritten) {
    SettingsFixture fixture;
    fixture.load("RBW 4");
    EXPECT_EQ(fixture.ctlDataMode1.RBW(), 4);
    EXPECT_TRUE(fixture.log.isEmpty());
    fixture.load("EndSettings");
    EXPECT_EQ(fixture.log, QStringList{"UpdateChartSettings"});
}

TEST(SettingsLines, waitWithThePortClosed_isStillMade) {
    SettingsFixture fixture;
    fixture.load("MonitorMode 2");
    EXPECT_EQ(fixture.log, QStringList{"wait 1.0"});
}

struct BadCase {
    const char *line;
    Kind kind;
};

constexpr BadCase kBadLines[] = {
    {"Start ", Kind::BadValue},
    {"Start", Kind::BadValue},
    {"Start 88 MHz", Kind::BadValue},
    {"End 1.2.3", Kind::BadValue},
    {"End 99999999999999999999", Kind::BadValue},
    {"Centre centre", Kind::BadValue},
    {"Centre 145500000,5", Kind::BadValue},
    {"Persistence 3000000000", Kind::Overflow},
    {"Palette 40000", Kind::Overflow},
    {"Update -3000000000", Kind::Overflow},
    {"Poll 3000000000", Kind::Overflow},
    {"Poll 65535", Kind::Overflow}, // the longest interval, but not a number of the chart's
    {"Poll 65536", Kind::OutOfRange},
    {"Poll -1", Kind::OutOfRange},
    {"Poll 40000", Kind::Overflow},
    {"MonitorMode 32767.6", Kind::Overflow},
    {"Span 3000000000", Kind::Overflow},
    {"Step 1000000000000000", Kind::Overflow},
    {"MarkerFrequency 99999999999999999999", Kind::Overflow},
    {"RXStep 3000000000", Kind::Overflow},
    {"RBW 32768", Kind::Overflow},
    {"Amp -32769", Kind::Overflow},
    {"DataMode 32768", Kind::Overflow},
    {"Samples 32768", Kind::Overflow},
    {"Data", Kind::OutOfRange},
    {"Data ", Kind::OutOfRange},
    {"Data scan", Kind::OutOfRange},
    {"Data  10:00:00", Kind::OutOfRange},
};

TEST(SettingsLines, badValue_isUntrapped) {
    for (const BadCase &item : kBadLines) {
        SettingsFixture fixture;
        fixture.connectUnit();
        try {
            fixture.load(item.line);
            ADD_FAILURE() << item.line;
        } catch (const UntrappedError &error) {
            EXPECT_EQ(error.kind(), item.kind) << item.line << ": " << error.what();
            EXPECT_FALSE(error.message().isEmpty());
        }
        EXPECT_TRUE(fixture.log.filter("W").isEmpty()) << item.line;
    }
}

TEST(SettingsLines, badValueInPlayback_isUntrappedToo) {
    for (const char *line : {"Centre x", "Poll 40000", "MonitorMode 40000", "RXStep 3000000000",
                             "RBW 40000", "Span 1000000000000000"}) {
        SettingsFixture fixture;
        fixture.session.InPlayback = true;
        EXPECT_THROW(fixture.load(line), UntrappedError) << line;
    }
}

TEST(SettingsLines, numberWithTextBehindIt_isItsLeadingNumber) {
    SettingsFixture fixture;
    fixture.loadAll({"Palette 3abc", "Persistence 60 s", "RBW 2.5", "Amp -10dB"});
    EXPECT_EQ(fixture.displaySettings.values().PaletteIndex, 3);
    EXPECT_EQ(fixture.displaySettings.values().Persistence, 60);
    EXPECT_EQ(fixture.ctlDataMode1.RBW(), 2); // half to even
    EXPECT_EQ(fixture.ctlDataMode1.Amp(), -10);
}

TEST(SettingsLines, noNumberAtAll_isZero) {
    SettingsFixture fixture;
    fixture.loadAll({"Palette 3", "Palette none", "RBW x"});
    EXPECT_EQ(fixture.displaySettings.values().PaletteIndex, 0);
    EXPECT_EQ(fixture.ctlDataMode1.RBW(), 0);
}

TEST(SettingsLines, flag_isTrueForTheExactWordOnly) {
    for (const char *value : {"true", "TRUE", "True ", " True", "1", "-1", ""}) {
        SettingsFixture fixture;
        fixture.load("RXAtten True");
        EXPECT_TRUE(fixture.ctlFrequency1.Atten());
        fixture.load(QStringLiteral("RXAtten ") + value);
        EXPECT_FALSE(fixture.ctlFrequency1.Atten()) << value;
    }
}

TEST(SettingsLines, unknownName_sendsCodeZero) {
    SettingsFixture fixture;
    fixture.connectUnit();
    fixture.loadAll({"Receiver vk1100", "RXMode AM"});
    EXPECT_EQ(fixture.log, (QStringList{"WURX0", "wait 1.0", "WUMD0"}));
}

TEST(SettingsLines, receiverName_isMatchedExactly) {
    for (const char *name :
         {"VK1100 ", " VK1100", "vk1100", "VK110", "VK11000", "VK3700", "VK3700(10m)", ""}) {
        SettingsFixture fixture;
        fixture.load(QStringLiteral("Receiver ") + name);
        EXPECT_EQ(fixture.ctlFrequency1.RX(), 0) << '"' << name << '"';
    }
    SettingsFixture fixture;
    fixture.load("Receiver VK1100");
    EXPECT_EQ(fixture.ctlFrequency1.RX(), 3);
}

TEST(SettingsLines, decimalsOfCentreAndSpan_reachUnitAndPanelUnrounded) {
    SettingsFixture fixture;
    fixture.connectUnit();
    fixture.load("Centre 145500012.5");
    EXPECT_EQ(fixture.log.last(), "WSCF145.5000125");
    EXPECT_EQ(fixture.ctlMonitorMode1.fCentre(), Hertz::fromUnits(1455000125000));
    EXPECT_EQ(fixture.ctlFrequency1.Frequency(), Hertz::fromUnits(1455000125000));
    fixture.load("Span 5000000.75"); // the unit takes whole hertz, the panel doesn't
    EXPECT_EQ(fixture.log.last(), "WSSP5.000001");
    EXPECT_EQ(fixture.ctlMonitorMode1.fSpan(), Hertz::fromUnits(50000007500));
}

TEST(SettingsLines, valueThatNoListHas_goesToTheChartAlone) {
    SettingsFixture fixture;
    EXPECT_EQ(fixture.changesOf("Update 7"), QStringList{"chart Update 7"});
    EXPECT_EQ(fixture.changesOf("Persistence 7"), QStringList{"chart Timespan 7"});
    EXPECT_EQ(fixture.changesOf("Palette 9"), QStringList{"chart Palette 9"});
}

TEST(SettingsLines, unknownReceiver_leavesThePanelWithoutOne) {
    SettingsFixture fixture;
    ASSERT_NE(fixture.ctlFrequency1.RX(), 0);
    fixture.load("Receiver vk1100");
    EXPECT_EQ(fixture.ctlFrequency1.RX(), 0);
    EXPECT_EQ(fixture.ctlFrequency1.findChild<QComboBox *>("cboRX")->currentIndex(), -1);
    EXPECT_TRUE(fixture.ctlFrequency1.findChild<QComboBox *>("cboMode")->isHidden());
}

TEST(SettingsLines, unknownMode_isNoneThatThePanelTakes) {
    SettingsFixture fixture;
    fixture.load("RXMode WFM");
    const qint16 mode = fixture.ctlFrequency1.Mode();
    EXPECT_TRUE(fixture.changesOf("RXMode AM").isEmpty());
    EXPECT_EQ(fixture.ctlFrequency1.Mode(), mode);
}

TEST(SettingsLines, linesOfOtherFormats_doNothing) {
    for (const char *line : {"", " ", "rbw 4", "RBW\t4", " RBW 4", "RBW4", "Nonsense 1",
                             "VELDRONv1 Settings", "Data10", "data x y"}) {
        SettingsFixture fixture;
        EXPECT_TRUE(fixture.changesOf(line).isEmpty()) << line;
        EXPECT_TRUE(fixture.log.isEmpty()) << line;
    }
}

} // namespace
} // namespace veldron
