// SPDX-License-Identifier: MIT
#include "tests/app/FormFixture.h"

namespace veldron {
namespace {

const QString kFile = QStringLiteral("VELDRON-last-connected.set");

class LastSessionTest : public FormFixture {
protected:
    [[nodiscard]] bool isSaved() const { return !readFile(kFile).isEmpty(); }
    void expectSettingsOfTheUnit() {
        const QByteArray saved = readFile(kFile);
        EXPECT_TRUE(saved.contains("\r\nSpan 10000000\r\nCentre 100000000\r\n")) << saved.data();
        EXPECT_TRUE(saved.contains("\r\nRXStep 25000\r\n"));
        EXPECT_TRUE(saved.contains("\r\nRBW 2\r\n"));
        EXPECT_FALSE(saved.contains(" -1\r\n"));
        EXPECT_TRUE(saved.endsWith("EndSettings \r\n"));
    }
    /// What stands in the recording, and in the settings file, of these tests.
    static constexpr const char *kOtherSettings = "MonitorMode 1\r\nSpan 5000000\r\n"
                                                  "Centre 433000000\r\nRXStep 12500\r\nRBW 4\r\n";
    /// Opens a recording of other settings, with two scans or with none.
    void openRecording(bool withScans = true) {
        writeFile("a.rec", QByteArray("VELDRONv1 History file\r\nStartSettings 14 Mar 2026\r\n") +
                               kOtherSettings + "EndSettings \r\n" +
                               (withScans ? "Data AAAA 10:00:00\r\nData BBBB 10:00:10\r\n" : ""));
        m_dialogs.pickFile(path("a.rec"));
        pick("mnuFilePlayback");
        ASSERT_EQ(m_form->InPlayback(), withScans);
        ASSERT_EQ(monitor().fCentre(), megahertz(433));
    }
    /// Reads everything back, since the receiver has changed, and one of the replies is \a reply.
    void failOneRead(const QString &command, const QByteArray &reply) {
        setUnit("URX", "5");
        m_control.queueReply(command, reply);
        poll();
    }
    void expectFailureValuesInThePanels() { EXPECT_EQ(receiver().Step(), -1); }
};

TEST_F(LastSessionTest, unitThatFallsSilent_leavesItsSettingsBehind) {
    startUp();
    m_control.setSilent(true);
    poll();
    expectFailureValuesInThePanels();
    expectSettingsOfTheUnit();
}

TEST_F(LastSessionTest, unitThatFallsSilentBehindTheScan_leavesItsSettingsBehind) {
    startUp();
    m_control.setCommandHook(
        [this](const QString &command) { m_control.setSilent(command != "RIFD"); });
    poll();
    expectFailureValuesInThePanels();
    expectSettingsOfTheUnit();
}

TEST_F(LastSessionTest, unitThatFallsSilentWhileAllIsReadBack_leavesItsSettingsBehind) {
    startUp();
    setUnit("URX", "5");
    m_control.setCommandHook(
        [this](const QString &command) { m_control.setSilent(command == "RUST"); });
    poll();
    expectFailureValuesInThePanels();
    expectSettingsOfTheUnit();
}

TEST_F(LastSessionTest, unitThatFallsSilentAtAnAct_leavesItsSettingsBehind) {
    startUp();
    m_control.setSilent(true);
    data().setRBW(4);
    raise(data(), DataChangeCode::RBW);
    raise(receiver(), ReceiverChangeCode::Step);
    expectFailureValuesInThePanels();
    expectSettingsOfTheUnit();
}

TEST_F(LastSessionTest, longSilence_keepsWhatWasSavedAtItsBegin) {
    startUp();
    m_control.setSilent(true);
    poll();
    const QByteArray saved = readFile(kFile);
    poll(30);
    m_form->close();
    EXPECT_EQ(readFile(kFile), saved);
    EXPECT_TRUE(readFile("VELDRON.set").contains("\r\nSpan -1\r\n"));
}

TEST_F(LastSessionTest, unitThatAnswersOnceInASilence_leavesTheFileAlone) {
    startUp();
    m_control.setSilent(true);
    poll();
    const QByteArray saved = readFile(kFile);
    m_control.setCommandHook(
        [this](const QString &command) { m_control.setSilent(command != "RIFD"); });
    poll(2); // the try to connect, then a scan whose check is not answered any more
    EXPECT_EQ(readFile(kFile), saved);
}

TEST_F(LastSessionTest, exitWithTheUnitConnected_savesItsSettings) {
    startUp();
    poll();
    EXPECT_FALSE(isSaved());
    m_form->close();
    expectSettingsOfTheUnit();
}

TEST_F(LastSessionTest, exitByASignal_savesItsSettings) {
    startUp();
    m_form->endWithoutQuestion();
    expectSettingsOfTheUnit();
}

TEST_F(LastSessionTest, runWithoutAUnit_neverTouchesTheFile) {
    setPorts({3}, 0);
    startUp();
    pickDialog("mnuSettingsComms", [](QDialog &dialog) { pickRow(dialog, "cboComPort", 1); });
    poll(5);
    m_form->close();
    EXPECT_FALSE(isSaved());
}

TEST_F(LastSessionTest, exitOutOfPlayback_savesWhatTheUnitHeldBefore) {
    startUp();
    openRecording();
    m_form->close();
    expectSettingsOfTheUnit();
}

TEST_F(LastSessionTest, playbackLeftWithTheUnitGone_savesWhatTheUnitHeldBefore) {
    startUp();
    openRecording();
    m_control.setSilent(true);
    Q_EMIT transport().Quit();
    ASSERT_FALSE(m_form->InPlayback());
    expectFailureValuesInThePanels();
    expectSettingsOfTheUnit();
}

TEST_F(LastSessionTest, recordingWithoutAScanAndTheUnitGone_savesWhatTheUnitHeldBefore) {
    startUp();
    openRecording(false);
    m_control.setSilent(true);
    poll();
    expectFailureValuesInThePanels();
    expectSettingsOfTheUnit();
}

TEST_F(LastSessionTest, playbackLeftWithAReadThatFails_savesNothingOfTheRecording) {
    startUp();
    openRecording();
    m_control.setReply("RSBW", "?\r\n");
    Q_EMIT transport().Quit();
    ASSERT_EQ(data().RBW(), 4); // which no read has replaced
    m_form->close();
    expectSettingsOfTheUnit();
}

TEST_F(LastSessionTest, readRefusedBeforeAnExit_isNotSaved) {
    startUp();
    failOneRead("RSCF", "?\r\n");
    ASSERT_EQ(monitor().fCentre(), Hertz::fromWhole(-1));
    m_form->close();
    expectSettingsOfTheUnit();
}

TEST_F(LastSessionTest, readGarbledBeforeASilence_isNotSaved) {
    startUp();
    failOneRead("RSCF", "#\r\n");
    ASSERT_EQ(monitor().fCentre(), Hertz::fromWhole(-1));
    m_control.setSilent(true);
    poll();
    expectSettingsOfTheUnit();
}

TEST_F(LastSessionTest, valueTakenWhileAFailureStandsInAnotherPanel_isNotSaved) {
    startUp();
    failOneRead("RUST", "?\r\n");
    data().setRBW(4);
    raise(data(), DataChangeCode::RBW);
    m_form->close();
    expectSettingsOfTheUnit();
}

TEST_F(LastSessionTest, linkLostWhileSettingsAreLoaded_savesWhatTheUnitHeldBefore) {
    startUp();
    writeFile("b.set", QByteArray("VELDRONv1 Settings\r\nStartSettings 14 Mar 2026\r\n") +
                           kOtherSettings + "EndSettings \r\n");
    m_control.setCommandHook([this](const QString &) { m_control.setSilent(true); });
    m_dialogs.pickFile(path("b.set"));
    pick("mnuFileLoadSettings");
    ASSERT_EQ(data().RBW(), 4);
    m_form->close();
    expectSettingsOfTheUnit();
}

TEST_F(LastSessionTest, valueThatTheUnitHasTaken_isSaved) {
    startUp();
    data().setRBW(4);
    raise(data(), DataChangeCode::RBW);
    m_control.setSilent(true);
    poll();
    EXPECT_TRUE(readFile(kFile).contains("\r\nRBW 4\r\n"));
}

TEST_F(LastSessionTest, displaySettingAndPollRate_areSaved) {
    startUp();
    pickDialog("mnuSettingsDisplay", [](QDialog &dialog) { pickRow(dialog, "cboPalette", 5); });
    pickDialog("mnuSettingsComms", [](QDialog &dialog) { pickRow(dialog, "cboPoll", 1); });
    m_control.setSilent(true);
    poll();
    EXPECT_TRUE(readFile(kFile).contains("\r\nPalette 5\r\n")) << readFile(kFile).data();
    EXPECT_TRUE(readFile(kFile).contains("\r\nPoll 500\r\n"));
}

TEST_F(LastSessionTest, error_leavesTheFileAlone) {
    startUp();
    m_form->endWithError(UntrappedError(UntrappedError::Kind::File, "gone"));
    EXPECT_FALSE(isSaved());
}

} // namespace
} // namespace veldron
