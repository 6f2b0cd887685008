// SPDX-License-Identifier: MIT
#include "tests/app/FormFixture.h"

namespace veldron {
namespace {

/// The one way out on an error that nobody may swallow.
class FrmDisplayErrorTest : public FormFixture {
protected:
    /// Runs \a act in the event loop; what the program, and not the toolkit, writes to standard
    /// error.
    QString reportOf(const std::function<void()> &act) {
        testing::internal::CaptureStderr();
        m_exitCode = runUntilEnd(act);
        QStringList lines =
            QString::fromStdString(testing::internal::GetCapturedStderr()).split('\n');
        lines.removeIf([](const QString &line) { return line.startsWith("This plugin does not"); });
        return lines.join('\n');
    }
    void pickBusyPort() {
        pickDialog("mnuSettingsComms", [](QDialog &dialog) { pickRow(dialog, "cboComPort", 2); });
    }
    static UntrappedError error() {
        return UntrappedError(UntrappedError::Kind::Overflow, "Something\nwent wrong.");
    }
    void expectNoTimers() {
        for (const QTimer *timer : m_form->findChildren<QTimer *>()) {
            // The runner's own watchdogs have no name.
            EXPECT_FALSE(timer->isActive() && !timer->objectName().isEmpty())
                << timer->objectName().toStdString();
        }
    }

    int m_exitCode = -1;
};

TEST_F(FrmDisplayErrorTest, busyPortWithoutAnEarlierOne_endsTheProgramThroughOneReport) {
    setPorts({3, 4}, 0);
    startUp();
    m_control.failOpen(4, SerialErrorCode::kPortInUse);
    const QString line = reportOf([this] { pickBusyPort(); });
    EXPECT_EQ(m_dialogs.log(), (QStringList{"message", "error"}));
    EXPECT_EQ(m_dialogs.texts().first(), "COM  4 is in use by another application");
    EXPECT_EQ(m_exitCode, 1);
    EXPECT_EQ(line, "veldron: The serial port could not be opened, and there is no earlier port to "
                    "go back to.\n");
    EXPECT_TRUE(m_form->hasFailed());
    EXPECT_FALSE(m_control.PortOpen());
    expectNoTimers();
}

TEST_F(FrmDisplayErrorTest, report_saysInPlainWordsWhatHappened) {
    startUp();
    reportOf([this] { m_form->endWithError(error()); });
    EXPECT_TRUE(m_dialogs.texts().last().startsWith("Something\nwent wrong."));
    EXPECT_TRUE(m_dialogs.texts().last().contains("has to end"));
}

TEST_F(FrmDisplayErrorTest, error_stopsTimersClosesThePortAndWritesOneLine) {
    startUp();
    const QString line = reportOf([this] { m_form->endWithError(error()); });
    EXPECT_EQ(line, "veldron: Something went wrong.\n");
    EXPECT_EQ(m_exitCode, 1);
    EXPECT_FALSE(m_control.PortOpen());
    expectNoTimers();
    EXPECT_EQ(readFile("VELDRON.set"), QByteArray());
}

TEST_F(FrmDisplayErrorTest, allIsClosedBeforeTheUserIsTold) {
    startUp();
    bool open = true;
    bool polled = true;
    m_dialogs.setWhileUp([&] {
        open = m_control.PortOpen();
        polled = isPolling();
    });
    reportOf([this] { m_form->endWithError(error()); });
    EXPECT_FALSE(open);
    EXPECT_FALSE(polled);
}

TEST_F(FrmDisplayErrorTest, secondError_isNotReportedAgain) {
    startUp();
    m_dialogs.setWhileUp([this] { m_form->endWithError(error()); });
    const QString lines = reportOf([this] { m_form->endWithError(error()); });
    EXPECT_EQ(lines.count('\n'), 1);
    EXPECT_EQ(m_dialogs.log(), QStringList{"error"});
}

TEST_F(FrmDisplayErrorTest, errorWhileRecording_keepsTheScansAndAsksNothing) {
    startUp();
    m_dialogs.pickFile(path("a.rec"));
    pick("mnuFileRecord");
    poll(2);
    reportOf([this] { m_form->endWithError(error()); });
    EXPECT_EQ(readFile("a.rec").count("\r\nData "), 2);
    EXPECT_TRUE(m_form->close());
    EXPECT_EQ(m_dialogs.log(), (QStringList{"save", "error"}));
}

TEST_F(FrmDisplayErrorTest, badValueInAMenuLoad_endsTheProgramAndNamesFileAndLine) {
    startUp();
    writeFile("bad.set", "VELDRONv1 Settings\r\nRBW 3\r\nCentre nonsense\r\n");
    m_dialogs.pickFile(path("bad.set"));
    const QString line = reportOf([this] { pick("mnuFileLoadSettings"); });
    EXPECT_EQ(m_exitCode, 1);
    EXPECT_TRUE(line.contains("bad.set"));
    EXPECT_TRUE(line.contains("Line 3"));
    EXPECT_TRUE(line.contains("nonsense"));
    EXPECT_EQ(unitHolds("SBW"), "3");
}

TEST_F(FrmDisplayErrorTest, fileThatIsNotThere_endsTheProgram) {
    startUp();
    m_dialogs.pickFile(path("nothing.set"));
    reportOf([this] { pick("mnuFileLoadSettings"); });
    EXPECT_EQ(m_exitCode, 1);
    EXPECT_TRUE(m_dialogs.texts().last().contains("nothing.set"));
}

TEST_F(FrmDisplayErrorTest, cancelledFileDialogs_endSilently) {
    startUp();
    m_dialogs.cancelFile();
    for (const char *name :
         {"mnuFileLoadSettings", "mnuFileSaveSettings", "mnuFileRecord", "mnuFilePlayback"}) {
        pick(name);
    }
    EXPECT_EQ(m_dialogs.log(), (QStringList{"open", "save", "save", "open"}));
    EXPECT_FALSE(m_form->hasFailed());
    EXPECT_TRUE(isPolling());
    EXPECT_EQ(sent(), QStringList());
}

} // namespace
} // namespace veldron
