// SPDX-License-Identifier: MIT
#include "tests/app/FormFixture.h"

#include "app/PollLoop.h"

namespace veldron {
namespace {

/// What a tick sends, with the number of the activity picture that was up at that moment; last the
/// picture that it leaves.
class PollLoopTest : public FormFixture {
protected:
    void connectUnit() { startUp(); }
    void startWithoutUnit(qint16 port) {
        setPorts(port == 0 ? std::vector<qint16>{} : std::vector<qint16>{port}, 0);
        startUp();
        pollTimerOf().setEnabled(true);
    }
    [[nodiscard]] PollTimer &pollTimerOf() const { return *m_form->findChild<PollTimer *>(); }
    QStringList tickAt(double timeOfDay) {
        QStringList log;
        m_control.setCommandHook(
            [&](const QString &command) { log.append(picture() + ' ' + command); });
        m_clock.setTimeOfDay(timeOfDay);
        tick();
        m_control.setCommandHook({});
        return log.isEmpty() ? log : log << picture();
    }
    [[nodiscard]] QString picture() const { return QString::number(static_cast<int>(activity())); }
    /// A poll that is at \a check of its round.
    static QStringList pollWith(const QString &check) { return {"3 RIFD", "3 " + check, "2"}; }
    static QStringList withPicture(int number, const QStringList &commands) {
        QStringList log;
        for (const QString &command : commands) {
            log.append(QString::number(number) + ' ' + command);
        }
        return log;
    }
    const QStringList m_reconnect{"2 RIVE", "1"};
};

TEST_F(PollLoopTest, dueTick_takesAScanAndThenChecksASetting) {
    connectUnit();
    EXPECT_EQ(tickAt(36000.2), pollWith("RURX"));
    EXPECT_EQ(tickAt(36001.03), pollWith("RUST"));
}

TEST_F(PollLoopTest, tickThatIsNotDue_doesNothing) {
    connectUnit();
    tickAt(36000.2);
    EXPECT_EQ(tickAt(36000.7), QStringList());
    EXPECT_EQ(tickAt(36001.0), QStringList());
    EXPECT_EQ(tickAt(36001.5), pollWith("RUST"));
}

TEST_F(PollLoopTest, midnight_readsEverythingBackBeforeTheSecondPollOfTheDay) {
    connectUnit();
    tickAt(86398.9);
    EXPECT_EQ(tickAt(86399.5), pollWith("RUST"));
    EXPECT_EQ(tickAt(0.2), pollWith("RUAT"));
    EXPECT_EQ(tickAt(1.1), withPicture(2, readBack()) + pollWith("RUMD"));
    EXPECT_EQ(tickAt(2.1), pollWith("RSGN"));
}

TEST_F(PollLoopTest, midnightWithoutLink_readsNothingBack) {
    startWithoutUnit(0);
    for (const double time : {86398.9, 86399.5, 0.2, 1.1, 2.1}) {
        EXPECT_EQ(tickAt(time), QStringList()) << time;
    }
}

TEST_F(PollLoopTest, linkLostAndPortClosed_showsTheBlankPictureAndTriesNothing) {
    connectUnit();
    tickAt(36000.2);
    EXPECT_EQ(activity(), ActivityImage::Idle);
    pickDialog("mnuSettingsComms", [](QDialog &dialog) { pickRow(dialog, "cboComPort", 0); });
    pollTimerOf().setEnabled(true);
    EXPECT_EQ(tickAt(36005.2), QStringList());
    EXPECT_EQ(activity(), ActivityImage::Blank);
}

TEST_F(PollLoopTest, linkLostAndPortOpen_triesToConnectOnce) {
    connectUnit();
    m_control.setSilent(true);
    tickAt(36000.2);
    m_control.setSilent(false);
    EXPECT_EQ(tickAt(36005.2), m_reconnect);
    EXPECT_EQ(status(), "VELDRON connected on COM 3");
    EXPECT_EQ(tickAt(36006.2).first(), "3 RIFD");
}

TEST_F(PollLoopTest, unitStaysSilent_failedPollsAndReconnectsAlternate) {
    connectUnit();
    m_control.setSilent(true);
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(tickAt(36000.2 + 10 * round), (QStringList{"3 RIFD", "2"}));
        EXPECT_EQ(tickAt(36005.2 + 10 * round), m_reconnect);
    }
}

TEST_F(PollLoopTest, silentUnit_costsOneSecondATick) {
    connectUnit();
    m_control.setSilent(true);
    tickAt(36000.2);
    EXPECT_NEAR(m_clock.seconds(), 36001.2, 0.02);
    tickAt(36005.2);
    EXPECT_NEAR(m_clock.seconds(), 36006.2, 0.02);
}

TEST(PollLoop, tickInterval_isHalfThePeriodAndFiveHundredAtMost) {
    const std::vector<std::pair<qint16, int>> cases{{250, 125},  {500, 250},  {1000, 500},
                                                    {2000, 500}, {5000, 500}, {10000, 500}};
    for (const auto &[period, interval] : cases) {
        EXPECT_EQ(PollLoop::tickInterval(period), interval) << period;
    }
}

} // namespace
} // namespace veldron
