// SPDX-License-Identifier: MIT
#include "tests/app/FormFixture.h"

namespace veldron {
namespace {

/// Reading everything back, set off by a receiver that was changed at the unit.
class ReadBackTest : public FormFixture {
protected:
    /// The first check of the round robin finds another receiver.
    void readEverythingBack() {
        setUnit("URX", receiver().RX() == 5 ? "6" : "5");
        forgetSent();
        poll();
    }
};

TEST_F(ReadBackTest, spectrumMode_readsEachSettingOnceInOrder) {
    startUp();
    readEverythingBack();
    EXPECT_EQ(sent(), (QStringList{"RIFD", "RURX"}) + readBack());
}

TEST_F(ReadBackTest, channelMode_readsChannelsAndMarker) {
    startUpInChannelMode();
    readEverythingBack();
    EXPECT_EQ(sent(), (QStringList{"RIFD", "RURX"}) + readBackChannels());
}

TEST_F(ReadBackTest, dataModesWithSamples_readTheirCountToo) {
    setUnit("SDM", "2");
    startUp();
    readEverythingBack();
    EXPECT_TRUE(sent().contains("RSAV"));
    setUnit("SDM", "4");
    startUp();
    readEverythingBack();
    EXPECT_TRUE(sent().contains("RSME"));
}

TEST_F(ReadBackTest, allPanels_showWhatTheUnitHolds) {
    startUp();
    for (const auto &[letters, value] :
         std::vector<std::pair<const char *, const char *>>{{"UST", "12.5"},
                                                            {"UAT", "1"},
                                                            {"UMD", "5"},
                                                            {"SGN", "-10"},
                                                            {"SDM", "2"},
                                                            {"SBW", "4"},
                                                            {"SAV", "16"},
                                                            {"UOM", "2"},
                                                            {"SSP", "4"},
                                                            {"SCF", "433"}}) {
        setUnit(letters, QLatin1String(value));
    }
    readEverythingBack();
    EXPECT_EQ(receiver().RX(), 5);
    EXPECT_EQ(receiver().Step(), 12500);
    EXPECT_TRUE(receiver().Atten());
    EXPECT_EQ(receiver().Mode(), 5);
    EXPECT_EQ(receiver().Frequency(), megahertz(433));
    EXPECT_EQ(data().Amp(), -10);
    EXPECT_EQ(data().DataMode(), DataModeCode::Average);
    EXPECT_EQ(data().RBW(), 4);
    EXPECT_EQ(data().Samples(), 16);
    EXPECT_EQ(monitor().MonitorMode(), MonitorModeCode::Step);
    EXPECT_EQ(monitor().fSpan(), megahertz(4));
    EXPECT_EQ(monitor().fCentre(), megahertz(433));
}

TEST_F(ReadBackTest, channelPanel_holdsTheChannelStepInItsCentre) {
    startUpInChannelMode();
    setUnit("UCS", "430 12.5 432");
    setUnit("ICD", "431");
    readEverythingBack();
    EXPECT_EQ(monitor().fStart(), megahertz(430));
    EXPECT_EQ(monitor().fCentre(), Hertz::fromWhole(12500));
    EXPECT_EQ(monitor().fEnd(), megahertz(432));
    EXPECT_EQ(monitor().fSpan(), megahertz(2));
    EXPECT_EQ(monitor().fStep(), Hertz::fromWhole(12500));
    EXPECT_EQ(receiver().Frequency(), megahertz(431));
    EXPECT_EQ(chart().RXFreq(), megahertz(431));
}

TEST_F(ReadBackTest, chart_takesGridAndDisplaySettings) {
    startUp();
    writeDisplay(&DisplaySettings::PaletteIndex, 5);
    writeDisplay(&DisplaySettings::Persistence, 60);
    writeDisplay(&DisplaySettings::Update, 10);
    writeDisplay(&DisplaySettings::MarkerEnable, false);
    writeDisplay(&DisplaySettings::PersistenceEnable, true);
    writeDisplay(&DisplaySettings::WaterfallEnable, true);
    setUnit("SCF", "433");
    setUnit("SSP", "4");
    readEverythingBack();
    EXPECT_EQ(chart().DataResolution(), Hertz::fromWhole(12500));
    EXPECT_EQ(chart().ScanStart(), megahertz(431));
    EXPECT_EQ(chart().ScanStop(), megahertz(435));
    EXPECT_EQ(chart().RXFreq(), megahertz(433));
    EXPECT_EQ(chart().Palette(), 5);
    EXPECT_EQ(chart().Timespan(), 60);
    EXPECT_EQ(chart().Update(), 10);
    EXPECT_FALSE(chart().MarkerEn());
    EXPECT_TRUE(chart().Peak());
    EXPECT_EQ(chart().DisplayType(), DisplayTypeCode::TraceAndWaterfall);
    writeDisplay(&DisplaySettings::WaterfallEnable, false);
    doubleClickChart(megahertz(433));
    EXPECT_EQ(chart().DisplayType(), DisplayTypeCode::Trace);
}

/// The resolution bounds how close start and stop may come, so it is written before them.
TEST_F(ReadBackTest, spanNarrowerThanAnOldBin_isTakenOverWhole) {
    setUnit("SCF", "1000");
    setUnit("SSP", "1600"); // bins of 5 MHz
    startUp();
    setUnit("SSP", "2");
    readEverythingBack();
    EXPECT_EQ(chart().ScanStart(), megahertz(999));
    EXPECT_EQ(chart().ScanStop(), megahertz(1001));
}

/// Where start and stop are closer than a bin, the one that is written last stays.
TEST_F(ReadBackTest, channelsCloserThanTheirStep_keepTheirEnd) {
    startUpInChannelMode();
    setUnit("UCS", "144 25 144.01");
    readEverythingBack();
    EXPECT_EQ(chart().ScanStop(), megahertz(144.01));
    EXPECT_EQ(chart().ScanStart(), megahertz(143.985));
}

/// The pace of the waterfall, whose labels tell the time, redraws nothing by itself.
TEST_F(ReadBackTest, displaySettings_standInTheAxes) {
    writeFile("VELDRON.set", "VELDRONv1 Settings\r\nWaterfallOn True\r\nEndSettings \r\n");
    startUp();
    writeDisplay(&DisplaySettings::Update, 10);
    readEverythingBack();
    chart().Refresh();
    const QImage shown = chart().grab().toImage();
    chart().DrawAxes();
    chart().Refresh();
    EXPECT_EQ(chart().grab().toImage(), shown);
}

TEST_F(ReadBackTest, pollTimer_runsAtTheFullPollPeriodAfterwards) {
    startUp();
    commSettings().setPoll(2000);
    pollTimer()->setInterval(125);
    readEverythingBack();
    EXPECT_TRUE(isPolling());
    EXPECT_EQ(pollTimer()->interval(), 2000);
}

TEST_F(ReadBackTest, stoppedPollTimer_isStarted) {
    startUp();
    m_form->findChild<PollTimer *>()->setEnabled(false);
    ASSERT_FALSE(isPolling());
    doubleClickChart(megahertz(101));
    EXPECT_TRUE(isPolling());
}

TEST_F(ReadBackTest, whileRecording_writesAShortBlockIntoTheFile) {
    startUp();
    m_dialogs.pickFile(path("a.rec"));
    pick("mnuFileRecord");
    const qsizetype before = readFile("a.rec").size();
    readEverythingBack();
    const QByteArray added = readFile("a.rec").mid(before);
    EXPECT_TRUE(added.contains("StartSettings "));
    EXPECT_TRUE(added.contains("Receiver VK3700(10M)\r\n"));
    EXPECT_FALSE(added.contains("Palette "));
}

TEST_F(ReadBackTest, withoutRecording_writesNoFile) {
    startUp();
    readEverythingBack();
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList());
}

TEST_F(ReadBackTest, deadLink_asksNothingFurtherAndLeavesTheFailureValuesInThePanels) {
    startUp();
    m_control.setSilent(true);
    poll();
    EXPECT_EQ(sent(), QStringList{"RIFD"});
    EXPECT_EQ(receiver().Step(), -1);
    EXPECT_EQ(monitor().fCentre(), Hertz::fromWhole(-1));
    EXPECT_EQ(monitor().fSpan(), Hertz::fromWhole(-1));
    EXPECT_EQ(receiver().Frequency(), Hertz::fromWhole(-1));
    EXPECT_EQ(chart().RXFreq(), megahertz(100)); // the chart keeps its scale and its rows
}

TEST_F(ReadBackTest, unitSilentAndBackAgain_panelsEqualTheUnit) {
    startUp();
    m_control.setSilent(true);
    poll(20);
    m_control.setSilent(false);
    poll(14);
    EXPECT_EQ(receiver().Step(), 25000);
    EXPECT_EQ(receiver().RX(), 7);
    EXPECT_EQ(data().Amp(), -20);
    EXPECT_EQ(monitor().fCentre(), megahertz(100));
    EXPECT_EQ(chart().RXFreq(), megahertz(100));
}

} // namespace
} // namespace veldron
