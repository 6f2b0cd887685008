// SPDX-License-Identifier: MIT
// A user who closes the window in whatever state the program is, and who starts it twice.
#include "tests/prove/Promise.h"

#include <QProcess>
#include <QThread>

#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/RecordedFile.h"
#include "tests/program/VirtualDesktop.h"

#include <gtest/gtest.h>

#include <functional>

namespace veldron {

using namespace std::chrono_literals;

namespace {

const QString kFile = QStringLiteral("user.rec");

class UserFaults : public testing::Test {
protected:
    [[nodiscard]] ProgramRun &run() { return m_live.run(); }

    void record() { ASSERT_TRUE(m_live.startRecording(kFile)); }
    void play() {
        record();
        ASSERT_TRUE(eventually(
            10s, [this] { return RecordedFile::read(run().content(kFile)).scans.size() >= 8; }));
        run().choose(QStringLiteral("File"), QStringLiteral("Stop recording"));
        run().choose(QStringLiteral("File"), QStringLiteral("Playback"));
        ASSERT_TRUE(run().answerFileDialog(QStringLiteral("History playback"), run().path(kFile)));
        Desk::focus(kMainWindow);
        ASSERT_TRUE(eventually(
            5s, [this] { return run().statusText().startsWith(QLatin1String("Playback")); }));
    }
    void close() { Desk::pressCloseBox(kMainWindow); }
    /// A running recording asks first.
    void closeRecording() {
        close();
        ASSERT_TRUE(Desk::awaitWindow(QStringLiteral("Exit VELDRON?"), 10s));
        Desk::focus(QStringLiteral("Exit VELDRON?"));
        // By keys, because a screen reader would ask the busy program hundreds of times.
        Desk::keys({QStringLiteral("Left"), QStringLiteral("space")});
    }
    void expectOrderlyEnd() {
        ASSERT_TRUE(run().ends());
        EXPECT_EQ(run().exitCode(), 0);
        EXPECT_FALSE(run().hasCrashed());
        EXPECT_EQ(run().errorOutput(), QByteArray());
        EXPECT_TRUE(run().content(QStringLiteral("VELDRON.set")).endsWith("EndSettings \r\n"));
        EXPECT_EQ(Desk::windows(), QStringList());
        if (run().exists(kFile)) {
            const RecordedFile file = RecordedFile::read(run().content(kFile));
            EXPECT_FALSE(file.scans.isEmpty());
            EXPECT_TRUE(file.rest.isEmpty());
        }
    }

    LiveProgram m_live;
};

struct State {
    const char *name;
    /// Brings a program that polls into the state.
    std::function<void(LiveProgram &)> begin;
    bool records = false;
    bool plays = false;
    bool isShort = false;
};

void PrintTo(const State &state, std::ostream *out) {
    *out << state.name;
}

void awaitCommand(LiveProgram &live, const QByteArray &command) {
    const qsizetype place = live.unit().now();
    EXPECT_TRUE(eventually(10s, [&] { return live.unit().countSince(place, command) > 0; }));
}

QList<State> chosenStates() {
    const auto nothing = [](LiveProgram &) {
    };
    const auto slowScan = [](LiveProgram &live) {
        live.unit().tell("on RIFD delay 0.8");
        awaitCommand(live, "RIFD");
    };
    const auto silence = [](LiveProgram &live) {
        live.unit().tell("silence forever");
        awaitCommand(live, "RIVE");
    };
    const auto unplug = [](LiveProgram &live) {
        live.unit().tell("unplug");
        QThread::msleep(600);
    };
    const auto slowDisk = [](LiveProgram &live) {
        live.run().slowDownDisk(1500ms);
        QThread::msleep(500);
    };
    const auto playing = [](LiveProgram &live) {
        live.run().clickButton(QStringLiteral("Continuous playback"));
        QThread::msleep(1200);
    };
    const QList<State> all = {
        {"polling", nothing},
        {"inAnExchange", slowScan, false, false, true},
        {"unitSilent", silence},
        {"unplugged", unplug},
        {"slowDisk", slowDisk},
        {"recording", nothing, true, false, true},
        {"recordingInAnExchange", slowScan, true},
        {"recordingWithTheUnitSilent", silence, true},
        {"recordingUnplugged", unplug, true},
        {"recordingOnASlowDisk", slowDisk, true},
        {"playback", nothing, false, true, true},
        {"playbackPlaying", playing, false, true},
    };
    QList<State> chosen;
    for (const State &state : all) {
        if (provesLong() || state.isShort) {
            chosen.append(state);
        }
    }
    return chosen;
}

class ClosingIn : public UserFaults, public testing::WithParamInterface<State> {};

TEST_P(ClosingIn, theState_endsInOrder) {
    const State &state = GetParam();
    run().slowDownDisk(0ms);
    ASSERT_TRUE(state.plays ? m_live.openAsItStarts() : m_live.open());
    if (state.records) {
        record();
        ASSERT_TRUE(m_live.secondsToPolling(3.0));
    } else if (state.plays) {
        play();
    }
    state.begin(m_live);
    const qsizetype place = m_live.unit().now();
    if (state.records) {
        closeRecording();
    } else {
        close();
    }
    expectOrderlyEnd();
    EXPECT_EQ(state.records ? m_live.lostSince(place, kFile) : 0, 0);
    std::printf("| closing: %s |\n", state.name);
}

INSTANTIATE_TEST_SUITE_P(Row, ClosingIn, testing::ValuesIn(chosenStates()),
                         [](const testing::TestParamInfo<State> &item) {
                             return std::string(item.param.name);
                         });

TEST_F(UserFaults, closingWithoutAUnit_endsInOrder) {
    ASSERT_TRUE(run().open());
    close();
    expectOrderlyEnd();
}

/// A dialog, and how the user comes to it.
struct Dialog {
    const char *name;
    const char *menu;
    const char *entry;
    const char *title;
    bool isShort = false;
};

void PrintTo(const Dialog &dialog, std::ostream *out) {
    *out << dialog.name;
}

QList<Dialog> chosenDialogs() {
    const QList<Dialog> all = {
        {"loadSettings", "File", "Load Settings", "Load Settings"},
        {"saveSettings", "File", "Save Settings", "Save Settings"},
        {"record", "File", "Record", "Record to file"},
        {"playback", "File", "Playback", "History playback"},
        {"display", "Settings", "Display...", "Display Settings", true},
        {"communications", "Settings", "Communications...", "Communication Settings"},
        {"about", "Help", "About", "About VELDRON"},
    };
    QList<Dialog> chosen;
    for (const Dialog &dialog : all) {
        if (provesLong() || dialog.isShort) {
            chosen.append(dialog);
        }
    }
    return chosen;
}

class ClosingUnder : public UserFaults, public testing::WithParamInterface<Dialog> {};

/// The dialog holds the window: its close box does nothing until the dialog is gone, which its own
/// close box does.
TEST_P(ClosingUnder, theDialog_waitsForIt) {
    ASSERT_TRUE(m_live.open());
    run().choose(GetParam().menu, GetParam().entry);
    ASSERT_TRUE(Desk::awaitWindow(GetParam().title, 5s));
    Desk::pressCloseBox(kMainWindow);
    EXPECT_FALSE(run().ends(1s));
    EXPECT_TRUE(Desk::hasWindow(GetParam().title));
    Desk::pressCloseBox(GetParam().title);
    ASSERT_TRUE(eventually(5s, [] { return !Desk::hasWindow(GetParam().title); }));
    EXPECT_TRUE(m_live.secondsToPolling(Promise::kBackWithin));
    close();
    expectOrderlyEnd();
    std::printf("| closing under a dialog: %s |\n", GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(Row, ClosingUnder, testing::ValuesIn(chosenDialogs()),
                         [](const testing::TestParamInfo<Dialog> &item) {
                             return std::string(item.param.name);
                         });

/// A second program in the folder of one that records, on the same port.
class SecondProgram : public UserFaults {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_live.open());
        record();
        ASSERT_TRUE(m_live.secondsToPolling(3.0));
        VirtualDesktop::tieToThisProcess(m_second);
        m_second.setWorkingDirectory(run().path({}));
    }
    void startSecond() { m_second.start(run().path(QStringLiteral("veldron")), QStringList()); }
    /// Waits until the second program has searched its ports, and its window stands there beside
    /// the first one's.
    [[nodiscard]] bool bothShow() {
        return eventually(20s, [this] {
            m_second.waitForReadyRead(0);
            m_told += m_second.readAllStandardError();
            return m_told.endsWith('\n') && Desk::windows().count(kMainWindow) == 2;
        });
    }
    void expectSecondEnds() {
        m_second.terminate();
        ASSERT_TRUE(m_second.waitForFinished(10000));
        EXPECT_EQ(m_second.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(m_second.exitCode(), 0);
        // It has found the port in use, and told that.
        m_told += m_second.readAllStandardError();
        EXPECT_TRUE(m_told.startsWith("veldron: COM 3: ") && m_told.count('\n') == 1)
            << m_told.constData();
    }

    QProcess m_second;
    QByteArray m_told; ///< on standard error
};

TEST_F(SecondProgram, besideARecording_disturbsNothing) {
    Promise promise(m_live, kFile);
    startSecond();
    ASSERT_TRUE(bothShow());
    expectSecondEnds();
    Desk::focus(kMainWindow);
    promise.expectKept("secondProgram", 0);
    EXPECT_TRUE(run().content(QStringLiteral("VELDRON.set")).endsWith("EndSettings \r\n") ||
                run().content(QStringLiteral("VELDRON.set")) == "VELDRONv1 Settings\r\n");
    closeRecording();
    expectOrderlyEnd();
}

TEST_F(SecondProgram, killedAtOnce_disturbsNothing) {
    Promise promise(m_live, kFile);
    for (int i = 0; i < 5; ++i) {
        startSecond();
        ASSERT_TRUE(m_second.waitForStarted());
        QThread::msleep(static_cast<unsigned long>(100 + i * 150));
        m_second.kill();
        ASSERT_TRUE(m_second.waitForFinished(10000));
    }
    promise.expectKept("fiveProgramsKilled", 0);
    closeRecording();
    expectOrderlyEnd();
}

} // namespace

} // namespace veldron
