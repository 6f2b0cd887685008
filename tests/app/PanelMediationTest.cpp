// SPDX-License-Identifier: MIT
#include "tests/app/FormFixture.h"

namespace veldron {
namespace {

/// The handlers of the panels' and the chart's events, seen from the wire.
class PanelMediationTest : public FormFixture {
protected:
    static constexpr const char *kStale = "not renewed";

    void writeDataMode(DataModeCode mode) { data().setDataMode(mode); }
    void markStatus() { statusBar().setStatusText(kStale); }
    /// The chart as it is once all that was drawn is shown.
    [[nodiscard]] QImage refreshedChart() const {
        chart().Refresh();
        return chart().grab().toImage();
    }
    void refuse(const char *command) { m_control.setReply(QLatin1String(command), "?\r\n"); }
    void expectChartFollowsMonitor() {
        EXPECT_EQ(chart().DataResolution(), monitor().fStep());
        EXPECT_EQ(chart().ScanStart(), monitor().fStart());
        EXPECT_EQ(chart().ScanStop(), monitor().fEnd());
    }
};

// ---- receiver panel

TEST_F(PanelMediationTest, frequencyInSpectrumMode_movesTheCentre) {
    startUp();
    receiver().setFrequency(megahertz(145.5));
    raise(receiver(), ReceiverChangeCode::Frequency);
    EXPECT_EQ(sent(), (QStringList{"WSCF145.5", "RSCF"}));
    EXPECT_EQ(monitor().fCentre(), megahertz(145.5));
    EXPECT_EQ(monitor().fStart(), megahertz(140.5));
    EXPECT_EQ(receiver().Frequency(), megahertz(145.5));
    EXPECT_EQ(chart().RXFreq(), megahertz(145.5));
    expectChartFollowsMonitor();
}

TEST_F(PanelMediationTest, refusedFrequency_snapsBackWithoutAMessage) {
    startUp();
    refuse("WSCF4000");
    receiver().setFrequency(megahertz(4000));
    raise(receiver(), ReceiverChangeCode::Frequency);
    EXPECT_EQ(sent(), (QStringList{"WSCF4000", "RSCF"}));
    EXPECT_EQ(receiver().Frequency(), megahertz(100));
    EXPECT_EQ(monitor().fCentre(), megahertz(100));
    EXPECT_EQ(status(), "VELDRON connected on COM 3");
    EXPECT_EQ(m_dialogs.log(), QStringList());
}

TEST_F(PanelMediationTest, frequencyInChannelMode_stepsTheMarker) {
    startUpInChannelMode();
    setUnit("ICD", "145.075");
    receiver().setFrequency(megahertz(145.075));
    raise(receiver(), ReceiverChangeCode::Frequency);
    EXPECT_EQ(sent(), (QStringList{"WUDS1", "WUDS1", "WUDS1", "WUMC", "RICD"}));
    EXPECT_EQ(receiver().Frequency(), megahertz(145.075));
    EXPECT_EQ(chart().RXFreq(), megahertz(145.075));
}

TEST_F(PanelMediationTest, markerMoreThan320StepsAway_sendsNothingAndShowsTheOldMarker) {
    startUpInChannelMode();
    receiver().setFrequency(megahertz(153.025));
    raise(receiver(), ReceiverChangeCode::Frequency);
    EXPECT_EQ(sent(), QStringList{"RICD"});
    EXPECT_EQ(receiver().Frequency(), megahertz(145));
    EXPECT_EQ(chart().RXFreq(), megahertz(145));
}

TEST_F(PanelMediationTest, receiver_waitsASecondAndReadsEverythingBack) {
    startUp();
    std::vector<double> times;
    m_control.setCommandHook([&](const QString &) { times.push_back(m_clock.seconds()); });
    receiver().setRX(5);
    raise(receiver(), ReceiverChangeCode::RX);
    EXPECT_EQ(sent(), QStringList{"WURX5"} + readBack());
    EXPECT_EQ(receiver().RX(), 5);
    EXPECT_NEAR(times.at(1) - times.at(0), 1.0, 0.02);
    EXPECT_NEAR(times.back() - times.at(1), 0.0, 0.02);
}

TEST_F(PanelMediationTest, receiversStep_isConfirmed) {
    startUp();
    receiver().setStep(12500);
    raise(receiver(), ReceiverChangeCode::Step);
    EXPECT_EQ(sent(), (QStringList{"WUST12.5", "RUST"}));
    EXPECT_EQ(receiver().Step(), 12500);
}

TEST_F(PanelMediationTest, receiversMode_isConfirmed) {
    startUp();
    receiver().setMode(2);
    raise(receiver(), ReceiverChangeCode::Mode);
    EXPECT_EQ(sent(), (QStringList{"WUMD2", "RUMD"}));
    EXPECT_EQ(receiver().Mode(), 2);
}

TEST_F(PanelMediationTest, attenuator_isConfirmed) {
    startUp();
    receiver().setAtten(true);
    raise(receiver(), ReceiverChangeCode::Atten);
    EXPECT_EQ(sent(), (QStringList{"WUAT1", "RUAT"}));
    EXPECT_TRUE(receiver().Atten());
}

TEST_F(PanelMediationTest, refusedStepModeAndAttenuator_snapBack) {
    startUp();
    refuse("WUST12.5");
    refuse("WUMD2");
    refuse("WUAT1");
    receiver().setStep(12500);
    raise(receiver(), ReceiverChangeCode::Step);
    receiver().setMode(2);
    raise(receiver(), ReceiverChangeCode::Mode);
    receiver().setAtten(true);
    raise(receiver(), ReceiverChangeCode::Atten);
    EXPECT_EQ(receiver().Step(), 25000);
    EXPECT_EQ(receiver().Mode(), 1);
    EXPECT_FALSE(receiver().Atten());
}

TEST_F(PanelMediationTest, codesThatReceiverAndDataPanelDoNotHave_onlyCopyTheStatus) {
    startUp();
    for (const qint32 What : {0, 3, 5, 12, 32, -1}) {
        markStatus();
        raise(receiver(), static_cast<ReceiverChangeCode>(What));
        EXPECT_EQ(status(), "VELDRON connected on COM 3") << What;
        markStatus();
        raise(data(), static_cast<DataChangeCode>(What));
        EXPECT_EQ(status(), "VELDRON connected on COM 3") << What;
    }
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(PanelMediationTest, panelThatRefusedAnEntry_sendsItsOldValueAgain) {
    startUp();
    raise(receiver(), ReceiverChangeCode::Frequency);
    EXPECT_EQ(sent(), (QStringList{"WSCF100", "RSCF"}));
}

TEST_F(PanelMediationTest, garbledReplyToTheDataPanel_showsItsReportOnPanel1) {
    startUp();
    m_control.setReply("WSBW4", "#\r\n");
    data().setRBW(4);
    raise(data(), DataChangeCode::RBW);
    EXPECT_EQ(status(), "Comms failure with command WSBW4#");
    EXPECT_EQ(data().RBW(), 2);
}

TEST_F(PanelMediationTest, garbledReply_showsItsReportOnPanel1) {
    startUp();
    m_control.setReply("WUMD2", "#\r\n");
    receiver().setMode(2);
    raise(receiver(), ReceiverChangeCode::Mode);
    EXPECT_EQ(status(), "Comms failure with command WUMD2#");
    EXPECT_EQ(receiver().Mode(), 1);
}

// ---- data panel

TEST_F(PanelMediationTest, bandwidth_isConfirmed) {
    startUp();
    data().setRBW(4);
    raise(data(), DataChangeCode::RBW);
    EXPECT_EQ(sent(), (QStringList{"WSBW4", "RSBW"}));
    EXPECT_EQ(data().RBW(), 4);
}

TEST_F(PanelMediationTest, amplifier_isConfirmedAndMovesTheScale) {
    startUp();
    data().setAmp(-10);
    raise(data(), DataChangeCode::Amp);
    EXPECT_EQ(sent(), (QStringList{"WSGN-10", "RSGN"}));
    EXPECT_EQ(data().Amp(), -10);
    EXPECT_EQ(chart().dBStart(), -10 - chart().dBSpan());
}

TEST_F(PanelMediationTest, refusedAmplifier_putsTheScaleWhereTheUnitIs) {
    startUp();
    refuse("WSGN0");
    data().setAmp(0);
    raise(data(), DataChangeCode::Amp);
    EXPECT_EQ(data().Amp(), -20);
    EXPECT_EQ(chart().dBStart(), -20 - chart().dBSpan());
}

TEST_F(PanelMediationTest, dataModesWithSamples_readThemBack) {
    startUp();
    writeDataMode(DataModeCode::Average);
    raise(data(), DataChangeCode::DataMode);
    EXPECT_EQ(sent(), (QStringList{"WSDM2", "RSDM", "RSAV"}));
    EXPECT_EQ(data().Samples(), 8);
    writeDataMode(DataModeCode::Median);
    raise(data(), DataChangeCode::DataMode);
    EXPECT_EQ(sent(), (QStringList{"WSDM4", "RSDM", "RSME"}));
    EXPECT_EQ(data().Samples(), 3);
}

TEST_F(PanelMediationTest, dataModesWithoutSamples_readNone) {
    startUp();
    for (const DataModeCode mode : {DataModeCode::Max, DataModeCode::Normal}) {
        writeDataMode(mode);
        raise(data(), DataChangeCode::DataMode);
        EXPECT_EQ(sent(),
                  (QStringList{QStringLiteral("WSDM%1").arg(static_cast<int>(mode)), "RSDM"}));
        EXPECT_EQ(data().DataMode(), mode);
    }
}

TEST_F(PanelMediationTest, samples_areConfirmedInTheModeInForce) {
    setUnit("SDM", "4");
    startUp();
    data().setSamples(5);
    raise(data(), DataChangeCode::Samples);
    EXPECT_EQ(sent(), (QStringList{"WSME5", "RSME"}));
    EXPECT_EQ(data().Samples(), 5);
}

TEST_F(PanelMediationTest, samplesInAModeWithoutThem_comeFromTheCache) {
    setUnit("SDM", "2");
    startUp();
    for (const DataModeCode mode : {DataModeCode::Normal, DataModeCode::Max}) {
        writeDataMode(mode);
        raise(data(), DataChangeCode::DataMode);
        forgetSent();
        data().setSamples(12);
        raise(data(), DataChangeCode::Samples);
        EXPECT_EQ(sent(), QStringList());
        EXPECT_EQ(data().Samples(), 8);
    }
}

TEST_F(PanelMediationTest, reset_sendsNormalThenMaxWhateverModeWasShown) {
    for (const char *mode : {"1", "2", "3", "4"}) {
        resetUnit();
        setUnit("SDM", QLatin1String(mode));
        startUp();
        raise(data(), DataChangeCode::Reset);
        EXPECT_EQ(sent(), (QStringList{"WSDM1", "WSDM3", "RSDM"})) << mode;
        EXPECT_EQ(data().DataMode(), DataModeCode::Max) << mode;
    }
}

TEST_F(PanelMediationTest, resetThatTheUnitAnswersWithAnotherMode_showsThatMode) {
    startUp();
    m_control.setReply("RSDM", "SDM2 \r\n");
    raise(data(), DataChangeCode::Reset);
    EXPECT_EQ(sent(), (QStringList{"WSDM1", "WSDM3", "RSDM", "RSAV"}));
    EXPECT_EQ(data().DataMode(), DataModeCode::Average);
    EXPECT_EQ(data().Samples(), 8);
}

// ---- monitor panel

TEST_F(PanelMediationTest, monitorModeToChannel_readsTheChannelsInAndTheMarkerTwice) {
    startUp();
    m_control.queueReply("RICD", "f145.1\r\n");
    m_control.queueReply("RICD", "f145.2\r\n");
    monitor().setMonitorMode(MonitorModeCode::Channel);
    raise(monitor(), MonitorChangeCode::MonitorMode);
    EXPECT_EQ(sent(), (QStringList{"WUOM3", "RUOM", "RUCS", "RICD", "RICD"}));
    EXPECT_EQ(monitor().fStart(), megahertz(144));
    EXPECT_EQ(monitor().fCentre(), megahertz(0.025));
    EXPECT_EQ(monitor().fEnd(), megahertz(146));
    EXPECT_EQ(monitor().fSpan(), megahertz(2));
    EXPECT_EQ(monitor().fStep(), megahertz(0.025));
    EXPECT_EQ(receiver().Frequency(), megahertz(145.1));
    EXPECT_EQ(chart().RXFreq(), megahertz(145.2));
    expectChartFollowsMonitor();
}

TEST_F(PanelMediationTest, monitorModeFromChannelToSpectrum_readsSpanAndCentre) {
    startUpInChannelMode();
    monitor().setMonitorMode(MonitorModeCode::Spectrum);
    raise(monitor(), MonitorChangeCode::MonitorMode);
    EXPECT_EQ(sent(), (QStringList{"WUOM1", "RUOM", "RSSP", "RSCF"}));
    EXPECT_EQ(monitor().fSpan(), megahertz(10));
    EXPECT_EQ(monitor().fCentre(), megahertz(100));
    EXPECT_EQ(receiver().Frequency(), megahertz(100));
    EXPECT_EQ(chart().RXFreq(), megahertz(100));
    expectChartFollowsMonitor();
}

TEST_F(PanelMediationTest, refusedMonitorMode_goesOnWithTheModeInForce) {
    startUp();
    refuse("WUOM3");
    monitor().setMonitorMode(MonitorModeCode::Channel);
    raise(monitor(), MonitorChangeCode::MonitorMode);
    EXPECT_EQ(sent(), (QStringList{"WUOM3", "RUOM", "RSSP", "RSCF"}));
    EXPECT_EQ(monitor().MonitorMode(), MonitorModeCode::Spectrum);
}

TEST_F(PanelMediationTest, centre_isConfirmedAndTunesReceiverAndChart) {
    startUp();
    monitor().setfCentre(megahertz(120));
    raise(monitor(), MonitorChangeCode::Centre);
    EXPECT_EQ(sent(), (QStringList{"WSCF120", "RSCF"}));
    EXPECT_EQ(receiver().Frequency(), megahertz(120));
    EXPECT_EQ(chart().RXFreq(), megahertz(120));
    EXPECT_EQ(chart().ScanStart(), megahertz(115));
    expectChartFollowsMonitor();
}

TEST_F(PanelMediationTest, step_goesOutAsTheSpan) {
    startUp();
    monitor().setfStep(Hertz::fromWhole(25000));
    raise(monitor(), MonitorChangeCode::Step);
    EXPECT_EQ(sent(), (QStringList{"WSSP8", "RSSP"}));
    EXPECT_EQ(monitor().fStep(), Hertz::fromWhole(25000));
    EXPECT_EQ(chart().DataResolution(), Hertz::fromWhole(25000));
    expectChartFollowsMonitor();
}

TEST_F(PanelMediationTest, span_isConfirmed) {
    startUp();
    monitor().setfSpan(megahertz(5));
    raise(monitor(), MonitorChangeCode::Span);
    EXPECT_EQ(sent(), (QStringList{"WSSP5", "RSSP"}));
    EXPECT_EQ(chart().ScanStart(), megahertz(97.5));
    expectChartFollowsMonitor();
}

TEST_F(PanelMediationTest, refusedSpan_snapsBack) {
    startUp();
    refuse("WSSP50");
    monitor().setfSpan(megahertz(50));
    raise(monitor(), MonitorChangeCode::Span);
    EXPECT_EQ(monitor().fSpan(), megahertz(10));
    expectChartFollowsMonitor();
}

TEST_F(PanelMediationTest, channelData_isWrittenAndReadIn) {
    startUpInChannelMode();
    monitor().setfEnd(megahertz(147));
    raise(monitor(), MonitorChangeCode::Channel);
    EXPECT_EQ(sent(), (QStringList{"WUCS 144 25 147", "RUCS", "RICD", "RICD"}));
    EXPECT_EQ(monitor().fSpan(), megahertz(3));
    EXPECT_EQ(receiver().Frequency(), megahertz(145));
    EXPECT_EQ(chart().RXFreq(), megahertz(145));
    expectChartFollowsMonitor();
}

TEST_F(PanelMediationTest, refusedChannelData_snapsBack) {
    startUpInChannelMode();
    refuse("WUCS 144 12.5 146");
    monitor().setfCentre(Hertz::fromWhole(12500));
    raise(monitor(), MonitorChangeCode::Channel);
    EXPECT_EQ(sent(), (QStringList{"WUCS 144 12.5 146", "RUCS", "RICD", "RICD"}));
    EXPECT_EQ(monitor().fCentre(), Hertz::fromWhole(25000));
}

TEST_F(PanelMediationTest, codesThatTheMonitorPanelDoesNotHave_doNothingAtAll) {
    startUp();
    chart().setDataResolution(Hertz::fromWhole(1000));
    for (const qint32 What : {-1, 5, 8, 32}) {
        raise(monitor(), static_cast<MonitorChangeCode>(What));
    }
    EXPECT_EQ(sent(), QStringList());
    EXPECT_EQ(chart().DataResolution(), Hertz::fromWhole(1000));
}

TEST_F(PanelMediationTest, monitorPanelAndChart_leaveTheStatusBarAlone) {
    startUp();
    markStatus();
    for (const MonitorChangeCode What : {MonitorChangeCode::MonitorMode, MonitorChangeCode::Centre,
                                         MonitorChangeCode::Step, MonitorChangeCode::Span}) {
        raise(monitor(), What);
    }
    doubleClickChart(megahertz(101));
    monitor().setMonitorMode(MonitorModeCode::Channel);
    raise(monitor(), MonitorChangeCode::MonitorMode);
    raise(monitor(), MonitorChangeCode::Channel);
    doubleClickChart(megahertz(145.025));
    EXPECT_EQ(status(), kStale);
    EXPECT_FALSE(m_form->hasFailed());
}

TEST_F(PanelMediationTest, axes_areDrawnBehindTheNewScale) {
    startUp();
    monitor().setfCentre(megahertz(120));
    raise(monitor(), MonitorChangeCode::Centre);
    const QImage shown = refreshedChart();
    chart().DrawAxes();
    EXPECT_EQ(refreshedChart(), shown);
}

TEST_F(PanelMediationTest, axes_areDrawnThoughTheScaleIsUnknown) {
    startUp();
    m_control.setSilent(true);
    poll();
    chart().setdBStart(-40); // draws nothing by itself
    raise(monitor(), MonitorChangeCode::Span);
    const QImage shown = refreshedChart();
    chart().DrawAxes();
    EXPECT_EQ(refreshedChart(), shown);
}

/// The resolution bounds how close start and stop may come, so it is written before them.
TEST_F(PanelMediationTest, spanNarrowerThanAnOldBin_isTakenOverWhole) {
    setUnit("SCF", "1000");
    setUnit("SSP", "1600"); // bins of 5 MHz
    startUp();
    setUnit("SSP", "2");
    monitor().setfSpan(megahertz(2));
    raise(monitor(), MonitorChangeCode::Span);
    EXPECT_EQ(chart().ScanStart(), megahertz(999));
    EXPECT_EQ(chart().ScanStop(), megahertz(1001));
}

/// Where start and stop are closer than a bin, the one that is written last stays.
TEST_F(PanelMediationTest, channelsCloserThanTheirStep_keepTheirEnd) {
    startUpInChannelMode();
    m_control.setReply("RUCS", "UCS144 25 144.01 \r\n");
    raise(monitor(), MonitorChangeCode::Channel);
    ASSERT_EQ(monitor().fEnd(), megahertz(144.01));
    EXPECT_EQ(chart().ScanStop(), megahertz(144.01));
    EXPECT_EQ(chart().ScanStart(), megahertz(143.985));
}

// ---- chart

TEST_F(PanelMediationTest, doubleClickInSpectrumMode_retunesTheCentreAndReadsEverythingBack) {
    startUp();
    doubleClickChart(megahertz(103.2));
    EXPECT_EQ(sent(), QStringList{"WSCF103.2"} + readBack());
    EXPECT_EQ(monitor().fCentre(), megahertz(103.2));
    EXPECT_EQ(receiver().Frequency(), megahertz(103.2));
    EXPECT_EQ(chart().RXFreq(), megahertz(103.2));
    expectChartFollowsMonitor();
}

TEST_F(PanelMediationTest, doubleClickInChannelMode_stepsTheMarkerAndReadsEverythingBack) {
    startUpInChannelMode();
    doubleClickChart(megahertz(144.95));
    EXPECT_EQ(sent(), (QStringList{"WUDS2", "WUDS2", "WUMC", "RICD"}) + readBackChannels());
}

// ---- dead link

TEST_F(PanelMediationTest, changeWhileTheLinkIsDown_isLostAndShowsTheFailureValue) {
    startUp();
    m_control.setSilent(true);
    poll();
    forgetSent();
    receiver().setStep(12500);
    raise(receiver(), ReceiverChangeCode::Step);
    EXPECT_EQ(sent(), QStringList());
    EXPECT_EQ(receiver().Step(), -1);
    EXPECT_EQ(status(), "Comms failure with command WUST12.5");
}

} // namespace
} // namespace veldron
