// SPDX-License-Identifier: MIT
#include "app/SystemRequests.h"

#include "app/SignalWatcher.h"
#include "tests/app/FormFixture.h"

#include <QSessionManager>

#include <csignal>

namespace veldron {
namespace {

class SystemRequestsTest : public FormFixture {
protected:
    /// A recording runs, so that a close would ask.
    void startRecording() {
        startUp();
        followSystem(*m_form, m_watcher, *qGuiApp);
        m_dialogs.pickFile(path("a.rec"));
        pick("mnuFileRecord");
        ASSERT_TRUE(m_form->Recording());
    }
    /// What the toolkit raises when the desktop's session ends.
    static void endSession() {
        auto *manager = qGuiApp->findChild<QSessionManager *>();
        ASSERT_NE(manager, nullptr);
        Q_EMIT qGuiApp->commitDataRequest(*manager);
    }
    [[nodiscard]] QTimer &sessionEnd() const { return child<QTimer>("SessionEnd"); }
    void letTheMinutePass() const {
        QTimerEvent event(sessionEnd().timerId());
        QCoreApplication::sendEvent(&sessionEnd(), &event);
    }
    [[nodiscard]] QStringList questions() const { return m_dialogs.log().filter("question"); }

    const SignalWatcher m_watcher{ErrorGuard([](const UntrappedError &) { FAIL(); })};
};

TEST_F(SystemRequestsTest, eachSignal_endsTheProgramInOrderWithCode0) {
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        startRecording();
        EXPECT_EQ(runUntilEnd([number] { ::raise(number); }), 0);
        EXPECT_TRUE(m_form->hasEnded());
        EXPECT_FALSE(m_form->hasFailed());
        EXPECT_FALSE(m_control.PortOpen());
        EXPECT_TRUE(readFile("VELDRON.set").endsWith("EndSettings \r\n"));
        ASSERT_TRUE(QFile::remove(path("VELDRON.set")));
    }
    EXPECT_EQ(questions(), QStringList());
}

TEST_F(SystemRequestsTest, endOfTheSession_letsTheCloseThatFollowsAskNothing) {
    startRecording();
    endSession();
    EXPECT_TRUE(m_form->isVisible());
    EXPECT_TRUE(m_form->close());
    EXPECT_EQ(questions(), QStringList());
    EXPECT_FALSE(readFile("VELDRON.set").isEmpty());
}

TEST_F(SystemRequestsTest, sessionThatStays_isAskedAgainAfterAMinute) {
    startRecording();
    endSession();
    EXPECT_TRUE(sessionEnd().isActive());
    EXPECT_TRUE(sessionEnd().isSingleShot());
    EXPECT_EQ(sessionEnd().interval(), 60000);
    letTheMinutePass();
    EXPECT_FALSE(m_form->close());
    EXPECT_EQ(questions(), QStringList{"question"});
    EXPECT_TRUE(m_form->Recording());
}

} // namespace
} // namespace veldron
