// SPDX-License-Identifier: MIT
#include "tests/app/FormFixture.h"

namespace veldron {
namespace {

const Hertz kFailed = Hertz::fromWhole(-1);

/// What becomes of the chart's scale, and with it of its rows, while reads of the unit fail.
class SilenceTest : public FormFixture {
protected:
    struct Scale {
        Hertz resolution;
        Hertz start;
        Hertz stop;
        Hertz marked;
        friend bool operator==(const Scale &a, const Scale &b) = default;
    };
    [[nodiscard]] Scale scale() const {
        return {chart().DataResolution(), chart().ScanStart(), chart().ScanStop(),
                chart().RXFreq()};
    }
    void mute() {
        m_control.setSilent(true);
        poll();
        ASSERT_EQ(receiver().Step(), -1); // the failure values stand in the panels
    }
};

TEST_F(SilenceTest, silentUnit_leavesFailureValuesInThePanelsAndTheChartAsItWas) {
    startUp();
    const Scale before = scale();
    mute();
    EXPECT_EQ(monitor().fSpan(), kFailed);
    EXPECT_EQ(monitor().fCentre(), kFailed);
    EXPECT_EQ(scale(), before);
    poll(20);
    EXPECT_EQ(scale(), before);
}

TEST_F(SilenceTest, silentUnitInChannelMode_leavesTheChartAsItWas) {
    startUpInChannelMode();
    const Scale before = scale();
    mute();
    EXPECT_EQ(monitor().fStart(), kFailed);
    EXPECT_EQ(receiver().Frequency(), kFailed);
    EXPECT_EQ(scale(), before);
}

TEST_F(SilenceTest, unitBackWithOtherFrequencies_scaleFollows) {
    startUp();
    mute();
    setUnit("SCF", "120");
    m_control.setSilent(false);
    poll(13);
    EXPECT_EQ(monitor().fCentre(), megahertz(120));
    EXPECT_EQ(chart().ScanStart(), megahertz(115));
    EXPECT_EQ(chart().ScanStop(), megahertz(125));
    EXPECT_EQ(chart().RXFreq(), megahertz(120));
}

TEST_F(SilenceTest, onlyTheCentreGarbled_leavesTheChartAsItWas) {
    startUp();
    const Scale before = scale();
    setUnit("SSP", "5");
    m_control.setReply("RSCF", "#\r\n");
    setUnit("URX", "5");
    poll();
    EXPECT_EQ(monitor().fSpan(), megahertz(5));
    EXPECT_EQ(monitor().fCentre(), kFailed);
    EXPECT_EQ(scale(), before);
}

TEST_F(SilenceTest, onlyTheMarkerGarbledInChannelMode_leavesTheChartAsItWas) {
    startUpInChannelMode();
    const Scale before = scale();
    setUnit("UCS", "150 25 152");
    m_control.setReply("RICD", "#\r\n");
    setUnit("URX", "5");
    poll();
    EXPECT_EQ(monitor().fStart(), megahertz(150));
    EXPECT_EQ(receiver().Frequency(), kFailed);
    EXPECT_EQ(scale(), before);
}

TEST_F(SilenceTest, scaleKnownAgainByTheUsersSpan_marksTheCentreReadBefore) {
    startUp();
    setUnit("SCF", "120");
    m_control.queueReply("RSSP", "#\r\n");
    setUnit("URX", "5");
    poll();
    ASSERT_EQ(monitor().fSpan(), kFailed);
    monitor().setfSpan(megahertz(4));
    raise(monitor(), MonitorChangeCode::Span);
    EXPECT_EQ(chart().ScanStart(), megahertz(118));
    EXPECT_EQ(chart().RXFreq(), megahertz(120));
}

TEST_F(SilenceTest, userActsOverADeadLink_leaveTheChartAsItWas) {
    startUp();
    const Scale before = scale();
    mute();
    receiver().setFrequency(megahertz(110));
    Q_EMIT receiver().Changed(ReceiverChangeCode::Frequency);
    EXPECT_EQ(scale(), before);
    for (const MonitorChangeCode What : {MonitorChangeCode::MonitorMode, MonitorChangeCode::Centre,
                                         MonitorChangeCode::Step, MonitorChangeCode::Span}) {
        Q_EMIT monitor().Changed(What);
        EXPECT_EQ(scale(), before) << static_cast<int>(What);
    }
    EXPECT_EQ(monitor().fCentre(), kFailed);
}

TEST_F(SilenceTest, userActsOverADeadLinkInChannelMode_leaveTheChartAsItWas) {
    startUpInChannelMode();
    const Scale before = scale();
    mute();
    Q_EMIT receiver().Changed(ReceiverChangeCode::Frequency);
    EXPECT_EQ(scale(), before);
    Q_EMIT monitor().Changed(MonitorChangeCode::Channel);
    EXPECT_EQ(scale(), before);
    EXPECT_EQ(monitor().fStart(), kFailed);
}

/// The mark stands on the scale, and without the span there is none.
TEST_F(SilenceTest, centreReadWithoutASpan_leavesTheChartAsItWas) {
    startUp();
    const Scale before = scale();
    m_control.setReply("RSSP", "#\r\n");
    setUnit("URX", "5");
    poll();
    ASSERT_EQ(monitor().fSpan(), kFailed);
    monitor().setfCentre(megahertz(120));
    raise(monitor(), MonitorChangeCode::Centre);
    EXPECT_EQ(receiver().Frequency(), megahertz(120));
    EXPECT_EQ(scale(), before);
}

/// The panel has got the marker; the second read of it, for the chart, has failed alone.
TEST_F(SilenceTest, onlyTheChartsReadOfTheMarkerGarbled_leavesTheMarkAsItWas) {
    startUpInChannelMode();
    m_control.queueReply("RICD", "f145.1\r\n");
    m_control.queueReply("RICD", "#\r\n");
    raise(monitor(), MonitorChangeCode::Channel);
    EXPECT_EQ(receiver().Frequency(), megahertz(145.1));
    EXPECT_EQ(chart().RXFreq(), megahertz(145));
}

/// The level of the scale's upper end has no part in the history's rows: it goes to the chart as it
/// was read, a failure value too.
TEST_F(SilenceTest, amplifierOverADeadLink_putsTheFailureValueIntoTheScale) {
    startUp();
    m_control.setReply("RSGN", "#\r\n");
    raise(data(), DataChangeCode::Amp);
    EXPECT_EQ(data().Amp(), -1);
    EXPECT_EQ(chart().dBStart(), -1 - chart().dBSpan());
}

TEST_F(SilenceTest, failureValuesInAHistory_goToTheChartAsTheyAre) {
    startUp();
    const Scale before = scale();
    writeFile("a.rec", "VELDRONv1 History file\r\nStartSettings 14 Mar 2026\r\nMonitorMode 1\r\n"
                       "Span -1\r\nCentre -1\r\nEndSettings \r\n"
                       "Data AAAA 10:00:00\r\nData BBBB 10:00:10\r\n");
    m_dialogs.pickFile(path("a.rec"));
    pick("mnuFilePlayback");
    ASSERT_TRUE(m_form->InPlayback());
    EXPECT_EQ(chart().RXFreq(), kFailed);
    EXPECT_NE(scale().start, before.start);
}

} // namespace
} // namespace veldron
