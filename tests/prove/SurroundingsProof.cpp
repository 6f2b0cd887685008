// SPDX-License-Identifier: MIT
// A program that lacks something of what it is usually given: a home, a display, memory, the right
// to write.
#include "tests/prove/Promise.h"

#include <QDir>
#include <QFile>
#include <QThread>

#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/RecordedFile.h"

#include <gtest/gtest.h>

namespace veldron {

using namespace std::chrono_literals;

namespace {

class Surroundings : public testing::Test {
protected:
    [[nodiscard]] ProgramRun &run() { return m_live.run(); }

    /// Without a place for what desktop programs keep, but for \a home.
    void setHome(const QString &home) {
        for (const char *name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) {
            run().removeVariable(QString::fromLatin1(name));
        }
        if (!home.isEmpty()) {
            run().setVariable(QStringLiteral("HOME"), home);
        }
    }
    /// It does all that it does elsewhere.
    void expectWorking() {
        ASSERT_TRUE(m_live.open());
        ASSERT_TRUE(m_live.startRecording(kBandFile));
        EXPECT_TRUE(m_live.secondsToPolling(Promise::kBackWithin));
        run().sendTerminate();
        ASSERT_TRUE(run().ends());
        EXPECT_EQ(run().exitCode(), 0);
        expectWholeFiles();
    }
    void expectWholeFiles() {
        const RecordedFile file = RecordedFile::read(run().content(kBandFile));
        EXPECT_FALSE(file.scans.isEmpty());
        EXPECT_TRUE(file.rest.isEmpty());
        EXPECT_TRUE(run().content(QStringLiteral("VELDRON.set")).endsWith("EndSettings \r\n"));
    }
    void expectNoDisplay() {
        run().launch();
        ASSERT_TRUE(run().ends());
        EXPECT_FALSE(run().hasCrashed());
        EXPECT_EQ(run().exitCode(), 1);
        EXPECT_TRUE(run().errorOutput().contains("\nveldron: There is no display"));
    }
    void TearDown() override {
        const char *name = testing::UnitTest::GetInstance()->current_test_info()->name();
        std::printf("| %s |\n", name);
        std::fflush(stdout);
    }

    LiveProgram m_live;
};

TEST_F(Surroundings, noHome_worksAllTheSame) {
    setHome({});
    expectWorking();
}

TEST_F(Surroundings, homeThatDoesNotExist_worksAllTheSame) {
    setHome(QStringLiteral("/nonexistent/home"));
    expectWorking();
}

TEST_F(Surroundings, homeThatMayNotBeWritten_worksAllTheSame) {
    const QString home = run().path(QStringLiteral("home"));
    QDir().mkpath(home);
    QFile::setPermissions(home, QFile::ReadOwner | QFile::ExeOwner);
    run().obeyRights();
    setHome(home);
    expectWorking();
}

TEST_F(Surroundings, noHomeAndNoRightInTheProgramsFolder_livesAndEndsInOrder) {
    setHome(QStringLiteral("/nonexistent/home"));
    ASSERT_TRUE(run().plugUnit());
    run().lockFolder();
    ASSERT_TRUE(run().open());
    EXPECT_TRUE(m_live.secondsToPolling(4.0));
    run().sendTerminate();
    ASSERT_TRUE(run().ends());
    EXPECT_EQ(run().exitCode(), 0);
}

TEST_F(Surroundings, noDisplay_endsWithALine) {
    run().removeVariable(QStringLiteral("DISPLAY"));
    expectNoDisplay();
}

TEST_F(Surroundings, displayThatIsNotThere_endsWithALine) {
    run().setVariable(QStringLiteral("DISPLAY"), QStringLiteral(":32100"));
    expectNoDisplay();
}

/// The dialog refuses the folder, and the program goes on as if it had been cancelled.
TEST_F(Surroundings, recordingIntoAReadOnlyFolder_isRefused) {
    const QString folder = run().path(QStringLiteral("locked"));
    QDir().mkpath(folder);
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner);
    run().obeyRights();
    ASSERT_TRUE(m_live.open());
    run().choose(QStringLiteral("File"), QStringLiteral("Record"));
    const QString title = QStringLiteral("Record to file");
    ASSERT_TRUE(run().nameFile(title, folder + QStringLiteral("/band.rec")));
    ASSERT_TRUE(run().answerQuestion(QStringLiteral("You may not write to the folder \"%1\". "
                                                    "Please choose another one.")
                                         .arg(folder),
                                     QStringLiteral("OK")));
    Desk::focus(title);
    Desk::key(QStringLiteral("Escape"));
    ASSERT_TRUE(eventually(5s, [&] { return !Desk::hasWindow(title); }));
    EXPECT_TRUE(m_live.secondsToPolling(Promise::kBackWithin));
    EXPECT_TRUE(run().isEnabled(QStringLiteral("Span")));
}

class ScarceMemory : public Surroundings, public testing::WithParamInterface<int> {};

/// The program lives on or ends with a message; what was recorded stays in either case. Where
/// nothing at all is left, the toolkit may crash at the box; line and files come before it.
TEST_P(ScarceMemory, recording_losesNothing) {
    ASSERT_TRUE(m_live.open());
    ASSERT_TRUE(m_live.startRecording(kBandFile));
    const qsizetype place = m_live.unit().now();
    run().limitMemory(qint64{GetParam()} * 1024);
    for (const QSize size :
         {QSize(900, 600), QSize(1270, 790), QSize(700, 500), QSize(1280, 800)}) {
        Desk::resize(QStringLiteral("VELDRON"), size);
        QThread::msleep(300);
    }
    const bool lives = m_live.secondsToPolling(Promise::kBackWithin).has_value();
    if (!lives) {
        const QString report = QStringLiteral("VELDRON has to end");
        if (Desk::awaitWindow(report, 3s)) {
            Desk::focus(report);
            Desk::key(QStringLiteral("Return"));
        }
        ASSERT_TRUE(run().ends());
        EXPECT_TRUE(run().errorOutput().startsWith("veldron: "));
    }
    std::printf("%d KiB more: %s\n", GetParam(), lives ? "lives on" : "ends with a message");
    EXPECT_LE(m_live.lostSince(place, kBandFile), lives ? 0 : 1);
    EXPECT_TRUE(RecordedFile::read(run().content(kBandFile)).rest.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Kib, ScarceMemory, testing::Values(0, 256, 1024, 4096, 16384),
                         testing::PrintToStringParamName());

} // namespace

} // namespace veldron
