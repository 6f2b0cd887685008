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
        EXPECT_FALSE(saved.contains(" -1\r\n"));
        EXPECT_TRUE(saved.endsWith("EndSettings \r\n"));
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

TEST_F(LastSessionTest, exitOutOfPlayback_neverSavesWhatTheFileHolds) {
    startUp();
    writeFile("a.rec", "VELDRONv1 History file\r\nStartSettings 14 Mar 2026\r\nMonitorMode 1\r\n"
                       "Span 5000000\r\nCentre 433000000\r\nEndSettings \r\n"
                       "Data AAAA 10:00:00\r\nData BBBB 10:00:10\r\n");
    m_dialogs.pickFile(path("a.rec"));
    pick("mnuFilePlayback");
    ASSERT_TRUE(m_form->InPlayback());
    m_form->close();
    EXPECT_FALSE(isSaved());
}

TEST_F(LastSessionTest, error_leavesTheFileAlone) {
    startUp();
    m_form->endWithError(UntrappedError(UntrappedError::Kind::File, "gone"));
    EXPECT_FALSE(isSaved());
}

} // namespace
} // namespace veldron
