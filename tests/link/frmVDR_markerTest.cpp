// SPDX-License-Identifier: MIT
#include "tests/link/LinkFixture.h"

namespace veldron {
namespace {

constexpr qint64 kStep = 31250;

/// The link up, the marker at 145 MHz, a span of 10 MHz: steps of 31250 Hz. Writes are accepted.
class FrmVDRMarker : public LinkFixture {
protected:
    FrmVDRMarker() {
        bringUp();
        control.setUnit(true);
        marker(QStringLiteral("145"));
        vdr.setVDRSpan(10000000);
        control.clearCommands();
    }
    void marker(const QString &megahertz) {
        control.setUnitValue("ICD", megahertz);
        vdr.VDRMarkerFreq();
    }
    void channelStep(qint64 hertz) {
        vdr.setVDRMonitorMode(MonitorModeCode::Channel);
        vdr.setVDRChData(
            {Hertz::fromWhole(144000000), Hertz::fromWhole(hertz), Hertz::fromWhole(146000000)});
        control.clearCommands();
    }
    void moveTo(Hertz target) { vdr.setVDRMarkerFreq(target); }
    /// Moves the marker by \a hertz from 145 MHz.
    void moveBy(double hertz) { moveTo(Hertz::fromWhole(145000000) + Hertz::fromDouble(hertz)); }
    /// What was sent to move, as "+", "-" and "." for the end.
    QString moves() {
        QString text;
        for (const QString &command : control.commands()) {
            text += command == "WUDS1"   ? "+"
                    : command == "WUDS2" ? "-"
                    : command == "WUMC"  ? "."
                                         : "X";
        }
        control.clearCommands();
        return text;
    }
    /// Whether the cached marker is at \a hertz: then a write of that value sends nothing.
    bool cachedAt(qint64 hertz) {
        control.clearCommands();
        moveTo(Hertz::fromWhole(hertz));
        return control.commands().isEmpty();
    }
};

struct MoveCase {
    double hertz;
    QString moves;
};

TEST_F(FrmVDRMarker, distance_isCoveredInSteps) {
    const QString nothing;
    const MoveCase cases[] = {
        {kStep, "+."},        {-kStep, "-."},        {3.0 * kStep, "+++."}, {-3.0 * kStep, "---."},
        {2.4 * kStep, "++."}, {2.6 * kStep, "+++."}, {2.5 * kStep, "++."},  {3.5 * kStep, "++++."},
        {0.5 * kStep, "."},   {-0.5 * kStep, "."},   {0.0001, "."},         {0.51 * kStep, "+."},
        {0.0, nothing},
    };
    for (const MoveCase &each : cases) {
        marker("145");
        control.clearCommands();
        moveBy(each.hertz);
        EXPECT_EQ(moves(), each.moves) << each.hertz;
    }
}

TEST_F(FrmVDRMarker, exactlyAScreen_isAccepted) {
    moveBy(320.0 * kStep);
    EXPECT_EQ(moves(), QString(320, '+') + ".");
    moveTo(Hertz::fromWhole(145000000));
    EXPECT_EQ(moves(), QString(320, '-') + ".");
}

TEST_F(FrmVDRMarker, justOverAScreen_isIgnored) {
    for (const double distance : {320.01 * kStep, -320.01 * kStep, 320.0 * kStep + 0.0001}) {
        moveBy(distance);
        EXPECT_EQ(moves(), "") << distance;
    }
}

TEST_F(FrmVDRMarker, acceptedSteps_moveTheCachedMarker) {
    moveBy(2.4 * kStep);
    EXPECT_TRUE(cachedAt(145000000 + 2 * kStep));
}

TEST_F(FrmVDRMarker, refusedStep_leavesTheCacheBehindSilently) {
    control.queueReply("WUDS1", " \r\n");
    control.queueReply("WUDS1", "?\r\n");
    moveBy(3.0 * kStep);
    EXPECT_EQ(moves(), "+++.");
    EXPECT_EQ(vdr.Status(), "VELDRON connected on COM 3");
    EXPECT_TRUE(cachedAt(145000000 + 2 * kStep));
}

TEST_F(FrmVDRMarker, failedStep_isReportedAndTheLoopGoesOn) {
    control.queueReply("WUDS2", "E1\r\n");
    moveBy(-2.0 * kStep);
    EXPECT_EQ(moves(), "--.");
    EXPECT_EQ(vdr.Status(), "Comms failure with command WUDS2E1");
    EXPECT_TRUE(cachedAt(145000000 - kStep));
}

TEST_F(FrmVDRMarker, failedEnd_isReportedAsAStepWithoutDirection) {
    control.queueReply("WUMC", "E2\r\n");
    moveBy(kStep);
    EXPECT_EQ(vdr.Status(), "Comms failure with command WUDSE2");
}

TEST_F(FrmVDRMarker, refusedEnd_isSilent) {
    control.queueReply("WUMC", "?\r\n");
    moveBy(kStep);
    EXPECT_EQ(vdr.Status(), "VELDRON connected on COM 3");
}

TEST_F(FrmVDRMarker, linkLostDuringTheSteps_restIsNotSent) {
    control.setSilent(true);
    moveBy(5.0 * kStep);
    EXPECT_EQ(moves(), "+");
    EXPECT_EQ(vdr.Status(), "Comms failure with command WUDS");
    EXPECT_FALSE(vdr.Connected());
}

TEST_F(FrmVDRMarker, spanThatIsNoWholeMultiple_stepIsRoundedToEven) {
    // 800 / 320 = 2.5 gives 2, 1120 / 320 = 3.5 gives 4.
    for (const auto &[span, way] : {std::pair{800, 2.0}, std::pair{1120, 4.0}}) {
        vdr.setVDRSpan(span);
        marker("145");
        control.clearCommands();
        moveBy(3.0 * way);
        EXPECT_EQ(moves(), "+++.") << span;
        EXPECT_TRUE(cachedAt(145000000 + static_cast<qint64>(3.0 * way)));
    }
}

TEST_F(FrmVDRMarker, stepOfZeroFromTheSpan_sendsNothing) {
    for (const qint32 span : {0, 160}) {
        vdr.setVDRSpan(span);
        control.clearCommands();
        moveBy(1.0);
        EXPECT_EQ(moves(), "") << span;
    }
}

TEST_F(FrmVDRMarker, failedSpan_isAStepOfZero) {
    control.queueReply("RSSP", "?\r\n");
    ASSERT_EQ(vdr.VDRSpan(), -1);
    control.clearCommands();
    moveBy(kStep);
    EXPECT_EQ(moves(), "");
}

TEST_F(FrmVDRMarker, channelMode_takesTheChannelStep) {
    channelStep(25000);
    moveBy(50000.0);
    EXPECT_EQ(moves(), "++.");
    EXPECT_TRUE(cachedAt(145050000));
}

TEST_F(FrmVDRMarker, channelModeWithStepZero_sendsNothing) {
    channelStep(0);
    moveBy(25000.0);
    EXPECT_EQ(moves(), "");
}

TEST_F(FrmVDRMarker, refusedChannelWrite_leavesTheStepAsItWas) {
    channelStep(25000);
    control.setReply("WUCS 144 12.5 146", "?\r\n");
    channelStep(12500);
    moveBy(50000.0);
    EXPECT_EQ(moves(), "++.");
}

TEST_F(FrmVDRMarker, failedChannelData_isAStepOfOneHertz) {
    channelStep(25000);
    control.queueReply("RUCS", "?\r\n");
    vdr.VDRChData();
    control.clearCommands();
    moveBy(25000.0);
    EXPECT_EQ(moves(), "");
    moveBy(-3.0);
    EXPECT_EQ(moves(), "---.");
    EXPECT_TRUE(cachedAt(144999997));
}

TEST_F(FrmVDRMarker, otherModes_takeTheSpan) {
    channelStep(25000);
    vdr.setVDRMonitorMode(MonitorModeCode::Step);
    control.clearCommands();
    moveBy(kStep);
    EXPECT_EQ(moves(), "+.");
}

TEST_F(FrmVDRMarker, failedMarker_isFarAwayAndTheWriteIgnored) {
    control.queueReply("RICD", "?\r\n");
    EXPECT_EQ(vdr.VDRMarkerFreq(), Hertz::fromWhole(-1));
    control.clearCommands();
    moveTo(Hertz::fromWhole(145000000));
    EXPECT_EQ(moves(), "");
}

TEST_F(FrmVDRMarker, markerBeyondAllRange_isIgnoredWithoutOverflow) {
    marker("-99999999999999999999");
    control.clearCommands();
    moveTo(Hertz::fromWhole(145000000));
    EXPECT_EQ(moves(), "");
}

TEST_F(FrmVDRMarker, aLongMove_isOneExchangeForEachStep) {
    std::vector<double> times;
    control.setCommandHook([&](const QString &) { times.push_back(clock.seconds()); });
    control.setReply("WUDS1", ReplyScript{{" \r\n", 0.01}});
    const double start = clock.seconds();
    moveBy(10.0 * kStep);
    EXPECT_EQ(times.size(), 11U);
    EXPECT_NEAR(clock.seconds() - start, 0.1 + 11.0 * kStaleQuiet, 0.001);
}

} // namespace
} // namespace veldron
