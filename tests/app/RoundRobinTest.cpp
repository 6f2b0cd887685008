// SPDX-License-Identifier: MIT
#include "tests/app/FormFixture.h"

namespace veldron {
namespace {

class RoundRobinTest : public FormFixture {
protected:
    /// What the poll sends that runs check \a step, after the polls before it.
    QStringList sentAtStep(int step) {
        poll(step - 1);
        forgetSent();
        poll();
        return sent();
    }
};

TEST_F(RoundRobinTest, elevenPolls_checkOneSettingEachAndNoneAtTheLast) {
    startUp();
    const QStringList cycle{"RIFD", "RURX", "RIFD", "RUST", "RIFD", "RUAT", "RIFD",
                            "RUMD", "RIFD", "RSGN", "RIFD", "RSDM", "RIFD", "RSBW",
                            "RIFD", "RIFD", "RUOM", "RIFD", "RSSP", "RSCF", "RIFD"};
    poll(11);
    EXPECT_EQ(sent(), cycle);
    poll(11);
    EXPECT_EQ(sent(), cycle);
}

TEST_F(RoundRobinTest, elevenPollsInChannelMode_checkChannelsAndMarker) {
    startUpInChannelMode();
    const QStringList cycle{"RIFD", "RURX", "RIFD", "RUST", "RIFD", "RUAT", "RIFD",
                            "RUMD", "RIFD", "RSGN", "RIFD", "RSDM", "RIFD", "RSBW",
                            "RIFD", "RIFD", "RUOM", "RIFD", "RUCS", "RICD", "RIFD"};
    poll(11);
    EXPECT_EQ(sent(), cycle);
}

TEST_F(RoundRobinTest, samples_areAskedForInTheModesThatHaveThem) {
    const std::vector<std::pair<const char *, QStringList>> cases{
        {"1", {"RIFD"}}, {"2", {"RIFD", "RSAV"}}, {"3", {"RIFD"}}, {"4", {"RIFD", "RSME"}}};
    for (const auto &[mode, commands] : cases) {
        setUnit("SDM", QLatin1String(mode));
        startUp();
        EXPECT_EQ(sentAtStep(8), commands) << mode;
    }
}

TEST_F(RoundRobinTest, eachDifference_readsEverythingBackAndEndsThere) {
    struct Case {
        int step;
        const char *letters;
        const char *value;
        QStringList checks;
    };
    for (const Case &c : {Case{1, "URX", "5", {"RURX"}}, Case{2, "UST", "50", {"RUST"}},
                          Case{3, "UAT", "1", {"RUAT"}}, Case{4, "UMD", "2", {"RUMD"}},
                          Case{5, "SGN", "-10", {"RSGN"}}, Case{6, "SDM", "3", {"RSDM"}},
                          Case{7, "SBW", "3", {"RSBW"}}, Case{9, "UOM", "2", {"RUOM"}},
                          Case{10, "SCF", "101", {"RSSP", "RSCF"}}}) {
        resetUnit();
        startUp();
        poll(c.step - 1);
        forgetSent();
        setUnit(c.letters, QLatin1String(c.value));
        poll();
        EXPECT_EQ(sent(), QStringList{"RIFD"} + c.checks + readBack()) << c.letters;
        poll(11);
        EXPECT_EQ(sent().size(), 21) << c.letters << " still differs";
    }
}

TEST_F(RoundRobinTest, otherSpan_readsEverythingBackAndThenChecksTheCentre) {
    startUp();
    poll(9);
    forgetSent();
    setUnit("SSP", "5");
    poll();
    EXPECT_EQ(sent(), (QStringList{"RIFD", "RSSP"}) + readBack() + QStringList{"RSCF"});
    EXPECT_EQ(monitor().fSpan(), megahertz(5));
}

TEST_F(RoundRobinTest, otherSamples_readEverythingBack) {
    setUnit("SDM", "2");
    startUp();
    poll(7);
    forgetSent();
    setUnit("SAV", "20");
    poll();
    EXPECT_EQ(sent().mid(0, 3), (QStringList{"RIFD", "RSAV", "RURX"}));
    EXPECT_EQ(data().Samples(), 20);
}

TEST_F(RoundRobinTest, settingChangedByHand_isShownWithinElevenPolls) {
    startUp();
    poll(6);
    setUnit("SGN", "-30");
    poll(11);
    EXPECT_EQ(data().Amp(), -30);
}

TEST_F(RoundRobinTest, nothingIsEverWrittenToTheUnit) {
    startUp();
    setUnit("URX", "5");
    setUnit("SSP", "5");
    poll(22);
    EXPECT_EQ(sent().filter(QRegularExpression("^W")), QStringList());
}

TEST_F(RoundRobinTest, failedRead_readsEverythingBack) {
    startUp();
    m_control.queueReply("RURX", "?\r\n");
    poll();
    EXPECT_EQ(sent(), (QStringList{"RIFD", "RURX"}) + readBack());
}

TEST_F(RoundRobinTest, failedReadOfTheAttenuatorWhileItIsOff_isNoDifference) {
    startUp();
    poll(2);
    forgetSent();
    m_control.queueReply("RUAT", "?\r\n");
    poll();
    EXPECT_EQ(sent(), (QStringList{"RIFD", "RUAT"}));
}

TEST_F(RoundRobinTest, failedReadOfTheAttenuatorWhileItIsOn_readsEverythingBack) {
    setUnit("UAT", "1");
    startUp();
    poll(2);
    forgetSent();
    m_control.queueReply("RUAT", "?\r\n");
    poll();
    EXPECT_EQ(sent(), (QStringList{"RIFD", "RUAT"}) + readBack());
}

TEST_F(RoundRobinTest, attenuatorReplyOtherThanOne_isOff) {
    startUp();
    setUnit("UAT", "3");
    EXPECT_EQ(sentAtStep(3), (QStringList{"RIFD", "RUAT"}));
}

TEST_F(RoundRobinTest, monitorModeChangedBetweenTicks_isFollowedByTheTenthCheck) {
    startUp();
    poll(9);
    monitor().setMonitorMode(MonitorModeCode::Channel);
    raise(monitor(), MonitorChangeCode::MonitorMode);
    forgetSent();
    poll();
    EXPECT_EQ(sent(), (QStringList{"RIFD", "RUCS", "RICD"}));
}

TEST_F(RoundRobinTest, severalDifferencesInOnePollOfChannelMode_readEverythingBackEachTime) {
    startUpInChannelMode();
    poll(9);
    forgetSent();
    // The check sees numbers that have changed again by the time everything is read back.
    m_control.queueReply("RUCS", "UCS150 10 160 \r\n");
    poll();
    EXPECT_EQ(sent(), (QStringList{"RIFD", "RUCS"}) + readBackChannels() + readBackChannels() +
                          readBackChannels() + QStringList{"RICD"});
}

TEST_F(RoundRobinTest, oneOtherChannelValue_readsEverythingBackOnce) {
    for (const char *channels : {"143 25 146", "144 12.5 146", "144 25 147"}) {
        resetUnit();
        startUpInChannelMode();
        poll(9);
        forgetSent();
        setUnit("UCS", QLatin1String(channels));
        poll();
        EXPECT_EQ(sent(), (QStringList{"RIFD", "RUCS"}) + readBackChannels() + QStringList{"RICD"})
            << channels;
    }
}

TEST_F(RoundRobinTest, otherMarkerInChannelMode_readsEverythingBack) {
    startUpInChannelMode();
    poll(9);
    forgetSent();
    setUnit("ICD", "145.5");
    poll();
    EXPECT_EQ(sent(), (QStringList{"RIFD", "RUCS", "RICD"}) + readBackChannels());
    EXPECT_EQ(chart().RXFreq(), megahertz(145.5));
}

/// The marker alone can't be read, three cycles long.
TEST_F(RoundRobinTest, markerThatCannotBeRead_readsEverythingBackOnce) {
    startUpInChannelMode();
    const Hertz before = chart().RXFreq();
    m_control.setReply("RICD", "?\r\n");
    poll(11);
    EXPECT_EQ(receiver().Frequency(), Hertz::fromWhole(-1));
    EXPECT_EQ(chart().RXFreq(), before);
    forgetSent();
    poll(22);

    EXPECT_EQ(sent().count("RICD"), 2);
}

TEST_F(RoundRobinTest, markerReadAgainWhereItWas_isShownInThePanel) {
    startUpInChannelMode();
    poll(9);
    m_control.queueReply("RICD", "?\r\n"); // the check
    m_control.queueReply("RICD", "?\r\n"); // the reading back that it asks for
    poll();
    ASSERT_EQ(receiver().Frequency(), Hertz::fromWhole(-1));
    poll(11);
    EXPECT_EQ(receiver().Frequency(), chart().RXFreq());
}

TEST_F(RoundRobinTest, lostLink_runsNoCheckUntilItIsBack) {
    startUp();
    poll(2);
    m_control.setSilent(true);
    forgetSent();
    poll(); // the third check finds the link dead
    EXPECT_EQ(sent(), QStringList{"RIFD"});
    m_control.setSilent(false);
    poll();
    EXPECT_EQ(sent(), QStringList{"RIVE"});
    poll();
    EXPECT_EQ(sent(), (QStringList{"RIFD", "RUMD"}));
}

TEST_F(RoundRobinTest, midnight_readsEverythingBackBeforeThePoll) {
    m_clock.setTimeOfDay(86390.2);
    startUp();
    poll();
    m_clock.setTimeOfDay(86399.5);
    tick();
    m_clock.advance(0.7);
    tick();
    forgetSent();
    m_clock.advance(0.9);
    tick();
    EXPECT_EQ(sent(), readBack() + (QStringList{"RIFD", "RUMD"}));
    poll();
    EXPECT_EQ(sent(), (QStringList{"RIFD", "RSGN"}));
}

} // namespace
} // namespace veldron
