// SPDX-License-Identifier: MIT
#include "tests/app/FormFixture.h"

#include "tests/support/OpenFiles.h"

#include <QDialog>
#include <QMenu>

namespace veldron {
namespace {

class FrmDisplayEndTest : public FormFixture {
protected:
    void startRecording() {
        startUp();
        m_dialogs.pickFile(path("a.rec"));
        pick("mnuFileRecord");
        ASSERT_TRUE(m_form->Recording());
    }
    [[nodiscard]] QStringList questions() const { return m_dialogs.log().filter("question"); }
    void expectEnded() {
        EXPECT_TRUE(m_form->hasEnded());
        EXPECT_FALSE(m_form->isVisible());
        EXPECT_FALSE(isPolling());
        EXPECT_FALSE(m_control.PortOpen());
        EXPECT_TRUE(readFile("VELDRON.set").startsWith("VELDRONv1 Settings\r\n"));
    }
};

TEST_F(FrmDisplayEndTest, closeBoxWithoutRecording_savesTheDefaultsAndClosesThePort) {
    startUp();
    EXPECT_TRUE(m_form->close());
    expectEnded();
    EXPECT_EQ(questions(), QStringList());
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(FrmDisplayEndTest, exitEntry_endsTheProgramWithCode0) {
    startUp();
    EXPECT_EQ(runUntilEnd([this] { pick("mnuFileExit"); }), 0);
    expectEnded();
}

TEST_F(FrmDisplayEndTest, listOrMenuOpenedRightAfterTheClose_doesNotKeepTheProgramAlive) {
    const std::vector<std::function<void()>> acts{
        [this] { monitor().findChild<QComboBox *>("cboMonitorMode")->showPopup(); },
        [this] {
            child<QMenu>("mnuFile").popup({10, 10});
        },
        [this] {
            child<QMenu>("mnuSettings").popup({10, 10});
        }};
    for (const auto &act : acts) {
        startUp();
        EXPECT_EQ(runUntilEnd([&] {
                      m_form->close();
                      act();
                  }),
                  0);
        expectEnded();
    }
}

TEST_F(FrmDisplayEndTest, unload_closesTheRecordingThenSavesThenClosesThePort) {
    startRecording();
    QStringList seen;
    m_clock.setDateHook([&] {
        seen.append(QString(isHeldOpen(path("a.rec")) ? "recording open" : "recording closed") +
                    (m_control.PortOpen() ? ", port open" : ", port closed"));
    });
    m_dialogs.answerOk(true);
    m_form->close();
    m_clock.setDateHook({});
    ASSERT_FALSE(seen.isEmpty());
    seen.removeDuplicates();
    EXPECT_EQ(seen, QStringList{"recording closed, port open"});
    expectEnded();
}

/// Calls \a act when a dialog closes, shown or not.
class CloseWatcher : public QObject {
public:
    explicit CloseWatcher(std::function<void(const QString &)> act) : m_act(std::move(act)) {}
    void watch(QDialog &dialog) { dialog.installEventFilter(this); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override {
        if (event->type() == QEvent::Close) {
            m_act(qobject_cast<QDialog *>(watched)->windowTitle());
        }
        return false;
    }

private:
    std::function<void(const QString &)> m_act;
};

TEST_F(FrmDisplayEndTest, unload_closesTheDialogsBehindThePort) {
    startUp();
    QStringList seen;
    CloseWatcher watcher([&](const QString &title) {
        seen.append(title + (m_control.PortOpen() ? ", port open" : ", port closed"));
    });
    watcher.watch(displaySettings());
    watcher.watch(commSettings());
    m_form->close();
    EXPECT_EQ(seen, (QStringList{"Communication Settings, port closed",
                                 "Display Settings, port closed"}));
}

TEST_F(FrmDisplayEndTest, closeWhileRecordingAnsweredCancel_changesNothing) {
    startRecording();
    m_dialogs.answerOk(false);
    EXPECT_FALSE(m_form->close());
    EXPECT_TRUE(m_form->isVisible());
    EXPECT_TRUE(m_form->Recording());
    EXPECT_TRUE(isPolling());
    const qsizetype before = readFile("a.rec").size();
    poll();
    EXPECT_GT(readFile("a.rec").size(), before);
    EXPECT_EQ(readFile("VELDRON.set"), QByteArray());
}

TEST_F(FrmDisplayEndTest, closeWhileRecording_asksInTheseWords) {
    startRecording();
    m_form->close();
    EXPECT_EQ(m_dialogs.titles().last(), "Exit VELDRON?");
    EXPECT_EQ(m_dialogs.texts().last(),
              "You are still recording.\r\n Do you want to stop recording and exit?");
}

TEST_F(FrmDisplayEndTest, closeWhileRecordingAnsweredOk_closesFileAndPortAndSaves) {
    startRecording();
    poll();
    m_dialogs.answerOk(true);
    EXPECT_TRUE(m_form->close());
    expectEnded();
    EXPECT_TRUE(readFile("a.rec").contains("\r\nData "));
    // The defaults of such an exit leave the display settings of the next start alone.
    EXPECT_FALSE(readFile("VELDRON.set").contains("Palette "));
}

TEST_F(FrmDisplayEndTest, pollsGoOnUnderTheQuestion) {
    startRecording();
    forgetSent();
    m_dialogs.setWhileUp([this] { poll(); });
    m_form->close();
    EXPECT_EQ(sent(), (QStringList{"RIFD", "RURX"}));
}

TEST_F(FrmDisplayEndTest, sessionEndWhileRecording_asksNothing) {
    startRecording();
    m_form->expectSessionEnd();
    EXPECT_TRUE(m_form->close());
    EXPECT_EQ(questions(), QStringList());
    expectEnded();
}

TEST_F(FrmDisplayEndTest, systemAsksForTheEndWhileRecording_endsOrderlyWithCode0) {
    startRecording();
    EXPECT_EQ(runUntilEnd([this] { m_form->endWithoutQuestion(); }), 0);
    EXPECT_EQ(questions(), QStringList());
    EXPECT_FALSE(m_control.PortOpen());
    EXPECT_FALSE(readFile("VELDRON.set").isEmpty());
}

TEST_F(FrmDisplayEndTest, systemAsksForTheEndUnderTheQuestion_ends) {
    startRecording();
    m_dialogs.setWhileUp([this] { m_form->endWithoutQuestion(); });
    EXPECT_EQ(runUntilEnd([this] { m_form->close(); }), 0);
    EXPECT_TRUE(m_form->hasEnded());
    EXPECT_FALSE(m_control.PortOpen());
}

TEST_F(FrmDisplayEndTest, systemAsksForTheEndUnderADialog_endsWithoutApplyingIt) {
    startUp();
    const int code = runUntilEnd([this] {
        pickDialog("mnuSettingsDisplay", [this](QDialog &dialog) {
            pickRow(dialog, "cboPalette", 5);
            m_form->endWithoutQuestion();
        });
    });
    EXPECT_EQ(code, 0);
    EXPECT_EQ(chart().Palette(), 3);
    EXPECT_FALSE(isPolling());
}

TEST_F(FrmDisplayEndTest, systemAsksForTheEndUnderTheCommunicationsDialog_appliesNothing) {
    startUp();
    const int interval = pollTimer()->interval();
    const qint16 chartPoll = chart().Poll();
    QStringList after;
    const int code = runUntilEnd([&] {
        pickDialog("mnuSettingsComms", [this](QDialog &dialog) {
            pickRow(dialog, "cboPoll", 0);
            pickRow(dialog, "cboComPort", 1);
            forgetSent();
            m_form->endWithoutQuestion();
        });
        after = sent();
    });
    EXPECT_EQ(code, 0);
    EXPECT_EQ(after, QStringList());
    EXPECT_EQ(pollTimer()->interval(), interval);
    EXPECT_FALSE(isPolling());
    EXPECT_EQ(chart().Poll(), chartPoll);
}

TEST_F(FrmDisplayEndTest, systemAsksForTheEndUnderThePortsMessage_opensNoPortAgain) {
    for (const qint16 unitPort : {qint16{3}, qint16{0}}) {
        setPorts({3, 4}, unitPort);
        startUp();
        m_control.failOpen(4, SerialErrorCode::kPortInUse);
        m_control.clearWrites();
        m_dialogs.setWhileUp([this] {
            m_form->endWithoutQuestion();
            m_control.clearWrites();
        });
        const int code = runUntilEnd([this] {
            pickDialog("mnuSettingsComms",
                       [](QDialog &dialog) { pickRow(dialog, "cboComPort", 2); });
        });
        EXPECT_EQ(code, 0);
        EXPECT_EQ(m_control.writes(), QStringList());
        EXPECT_FALSE(m_control.PortOpen());
        EXPECT_FALSE(m_form->hasFailed());
        EXPECT_TRUE(readFile("VELDRON.set").endsWith("EndSettings \r\n"));
        ASSERT_TRUE(QFile::remove(path("VELDRON.set")));
        m_dialogs.setWhileUp({});
        m_control.failOpen(4, 0);
    }
    EXPECT_EQ(m_dialogs.log(), (QStringList{"message", "message"}));
}

TEST_F(FrmDisplayEndTest, closeDuringPlayback_savesThePanelsAsTheHistoryLeftThem) {
    startUp();
    writeFile("a.rec", "VELDRONv1 History file\r\nStartSettings 14 Mar 2026\r\nMonitorMode 1\r\n"
                       "Span 5000000\r\nCentre 433000000\r\nRBW 3\r\nEndSettings \r\n"
                       "Data AAAA 10:00:00\r\nData BBBB 10:00:10\r\n");
    m_dialogs.pickFile(path("a.rec"));
    pick("mnuFilePlayback");
    ASSERT_TRUE(m_form->InPlayback());
    m_form->close();
    expectEnded();
    EXPECT_TRUE(readFile("VELDRON.set")
                    .contains("\r\nMonitorMode 1\r\nSpan 5000000\r\nCentre 433000000\r\n"));
    EXPECT_TRUE(readFile("VELDRON.set").contains("\r\nRBW 3\r\n"));
    EXPECT_EQ(unitHolds("SCF"), "100");
}

TEST_F(FrmDisplayEndTest, bothDialogs_areClosed) {
    startUp();
    commSettings().show();
    displaySettings().show();
    m_form->close();
    EXPECT_FALSE(commSettings().isVisible());
    EXPECT_FALSE(displaySettings().isVisible());
}

TEST_F(FrmDisplayEndTest, defaultsOfARunWithoutTheUnit_areSaved) {
    setPorts({}, 0);
    startUp();
    m_form->close();
    EXPECT_TRUE(readFile("VELDRON.set").contains("Palette 3\r\n"));
}

TEST_F(FrmDisplayEndTest, folderThatCanNotBeWritten_failsNoExit) {
    startUp();
    ASSERT_TRUE(m_folder.remove());
    EXPECT_TRUE(m_form->close());
    EXPECT_FALSE(m_form->hasFailed());
    EXPECT_FALSE(m_control.PortOpen());
}

TEST_F(FrmDisplayEndTest, recordingStoppedByAnErrorUnderTheQuestion_andCancel_goesOnWithout) {
    startRecording();
    m_dialogs.setWhileUp([this] {
        QFile::remove(path("a.rec"));
        poll();
    });
    EXPECT_FALSE(m_form->close());
    EXPECT_FALSE(m_form->Recording());
    EXPECT_TRUE(isPolling());
    EXPECT_EQ(entry("mnuFileRecord").text(), "Record");
}

} // namespace
} // namespace veldron
