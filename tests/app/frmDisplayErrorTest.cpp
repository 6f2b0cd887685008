// SPDX-License-Identifier: MIT
#include "tests/app/FormFixture.h"

#include "tests/support/OpenFiles.h"

#include <QTest>
#include <QToolButton>

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

TEST_F(FrmDisplayErrorTest, errorWhileRecording_closesTheFileBeforeTheUserIsTold) {
    startUp();
    m_dialogs.pickFile(path("a.rec"));
    pick("mnuFileRecord");
    ASSERT_TRUE(isHeldOpen(path("a.rec")));
    bool open = true;
    m_dialogs.setWhileUp([&] { open = isHeldOpen(path("a.rec")); });
    reportOf([this] { m_form->endWithError(error()); });
    EXPECT_FALSE(open);
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

TEST_F(FrmDisplayErrorTest, fileThatCanNotBeMadeAfterTheSaveDialog_endsTheProgram) {
    startUp();
    m_dialogs.pickFile(path("nowhere/mine.set"));
    const QString line = reportOf([this] { pick("mnuFileSaveSettings"); });
    EXPECT_EQ(m_exitCode, 1);
    EXPECT_EQ(m_dialogs.log(), (QStringList{"save", "error"}));
    EXPECT_TRUE(m_dialogs.texts().last().contains("mine.set"));
    EXPECT_TRUE(line.startsWith("veldron: ") && line.contains("mine.set"));
    EXPECT_FALSE(m_control.PortOpen());
}

TEST_F(FrmDisplayErrorTest, errorAfterTheEnd_isNoneAnyMore) {
    startUp();
    m_form->close();
    const QString line = reportOf([this] {
        m_form->endWithError(error());
        QCoreApplication::exit(0);
    });
    EXPECT_EQ(line, "");
    EXPECT_EQ(m_exitCode, 0);
    EXPECT_EQ(m_dialogs.log(), QStringList());
    EXPECT_FALSE(m_form->hasFailed());
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

// ---- errors of recording and playback

/// A file whose second scan has no time, and a form that shows its first.
class FrmDisplayHistoryErrorTest : public FrmDisplayErrorTest {
protected:
    void playBrokenFile() {
        writeFile("broken.rec",
                  "VELDRONv1 History file\r\nStartSettings 14 Mar 2026\r\nEndSettings \r\n"
                  "Data AAAA 10:00:00\r\nData BB\x01 BB 10:00:10\r\nData CCCC 10:00:20\r\n");
        startUp();
        m_dialogs.pickFile(path("broken.rec"));
        pick("mnuFilePlayback");
        ASSERT_TRUE(m_form->InPlayback());
    }
    [[nodiscard]] QToolButton &button(const char *name) const { return child<QToolButton>(name); }
    /// A tick of the transport's own timer, if it runs.
    void tickTransport() {
        auto *timer = transport().findChild<QTimer *>("Timer1");
        if (timer->isActive()) {
            QTimerEvent event(timer->timerId());
            QCoreApplication::sendEvent(timer, &event);
        }
    }
    /// One report in box and line, exit code 1, and nothing open.
    void expectOneReport(const QString &line, const QString &what) {
        EXPECT_EQ(m_exitCode, 1);
        EXPECT_EQ(m_dialogs.log().count("error"), 1);
        EXPECT_EQ(m_dialogs.log().last(), "error");
        EXPECT_TRUE(m_dialogs.texts().last().startsWith(what))
            << qPrintable(m_dialogs.texts().last());
        EXPECT_EQ(line.toStdString(), ("veldron: " + what + '\n').toStdString());
        EXPECT_TRUE(m_form->hasFailed());
        EXPECT_FALSE(m_control.PortOpen());
    }
    /// Neither buttons nor timer bring the next scan.
    void expectNoMoreSteps() {
        const QString before = place();
        tickTransport();
        tickTransport();
        button("cmdStepForward").setEnabled(true);
        QTest::mouseClick(&button("cmdStepForward"), Qt::LeftButton);
        EXPECT_EQ(place(), before);
        EXPECT_NE(chartStatus(), "10:00:20");
        EXPECT_EQ(m_dialogs.log().count("error"), 1);
        expectNoTimers();
    }
    [[nodiscard]] QString brokenScan() const {
        return "Line 5 of the file \"" + path("broken.rec") +
               "\": no time of day stands behind the scan but \"BB 10:00:10\" (a level of 10, 13 "
               "or 32 in a recording does this, and so do more than 323 levels).";
    }
};

TEST_F(FrmDisplayHistoryErrorTest, stepButton_endsTheProgramThroughOneReport) {
    playBrokenFile();
    const QString line =
        reportOf([this] { QTest::mousePress(&button("cmdStepForward"), Qt::LeftButton); });
    expectOneReport(line, brokenScan());
    expectNoMoreSteps();
}

TEST_F(FrmDisplayHistoryErrorTest, tickOfContinuousPlay_endsTheProgramThroughOneReport) {
    playBrokenFile();
    QTest::mouseClick(&button("cmdPlay"), Qt::LeftButton);
    const QString line = reportOf([this] { tickTransport(); });
    expectOneReport(line, brokenScan());
    expectNoTimers();
    expectNoMoreSteps();
}

TEST_F(FrmDisplayHistoryErrorTest, repeatOfAHeldButton_endsTheProgramThroughOneReport) {
    writeFile("broken.rec",
              "VELDRONv1 History file\r\nStartSettings 14 Mar 2026\r\nEndSettings \r\n"
              "Data AAAA 10:00:00\r\nData BBBB 10:00:10\r\nData\r\n");
    startUp();
    m_dialogs.pickFile(path("broken.rec"));
    pick("mnuFilePlayback");
    QTest::mousePress(&button("cmdStepForward"), Qt::LeftButton);
    EXPECT_FALSE(m_form->hasFailed());
    const QString line = reportOf([this] { tickTransport(); });
    expectOneReport(line, "Line 6 of the file \"" + path("broken.rec") +
                              "\": a scan line has no time behind its scan (a level of 10, 13 or "
                              "32 in a recording does this).");
    expectNoMoreSteps();
}

TEST_F(FrmDisplayHistoryErrorTest, openingThatFails_endsTheProgramThroughOneReport) {
    const QByteArray scans = "Data AAAA 10:00:00\r\nData BBBB 10:00:10\r\n";
    writeFile("empty.rec", "");
    writeFile("undated.rec", "VELDRONv1 History file\r\n" + scans);
    writeFile("baddate.rec", "VELDRONv1 History file\r\nStartSettings 1/2/3\r\n" + scans);
    writeFile("badvalue.rec", "VELDRONv1 History file\r\nRBW 99999\r\n" + scans);
    const auto inLine = [this](int number, const char *name, const char *what) {
        return "Line " + QString::number(number) + " of the file \"" + path(name) + "\": " + what +
               '.';
    };
    const struct {
        const char *name;
        QString what;
    } cases[] = {
        {"nothing.rec",
         "Can't read the file \"" + path("nothing.rec") + "\": No such file or directory"},
        {"empty.rec", "Can't read the file \"" + path("empty.rec") + "\": the file is empty"},
        {"undated.rec", inLine(2, "undated.rec", "there is no StartSettings line with a date")},
        {"baddate.rec", inLine(2, "baddate.rec", "\"1/2/3\" is not a date")},
        {"badvalue.rec", inLine(2, "badvalue.rec", "the number \"99999\" is out of range")}};
    for (const auto &item : cases) {
        SCOPED_TRACE(item.name);
        m_dialogs.forget();
        startUp();
        m_dialogs.pickFile(path(item.name));
        const QString line = reportOf([this] { pick("mnuFilePlayback"); });
        expectOneReport(line, item.what);
        EXPECT_EQ(m_dialogs.log(), (QStringList{"open", "error"}));
        EXPECT_FALSE(chart().Playback());
        expectNoMoreSteps();
    }
}

TEST_F(FrmDisplayHistoryErrorTest, recordingThatCannotBegin_endsTheProgramThroughOneReport) {
    startUp();
    m_dialogs.pickFile(path("no/such/folder.rec"));
    const QString line = reportOf([this] { pick("mnuFileRecord"); });
    expectOneReport(line, "Can't make the file \"" + path("no/such/folder.rec") +
                              "\": No such file or directory");
    EXPECT_EQ(m_dialogs.log(), (QStringList{"save", "error"}));
    EXPECT_FALSE(m_form->Recording());
    expectNoTimers();
}

TEST_F(FrmDisplayHistoryErrorTest, recordingWhoseHeadCannotBeWritten_endsTheProgram) {
    startUp();
    m_dialogs.pickFile("/dev/full");
    const QString line = reportOf([this] { pick("mnuFileRecord"); });
    expectOneReport(line, "Can't write to the file \"/dev/full\": No space left on device");
    EXPECT_FALSE(m_form->Recording());
    expectNoTimers();
}

} // namespace
} // namespace veldron
