// SPDX-License-Identifier: MIT
#include "settings/frmCommSettings.h"

#include "link/frmVDR.h"
#include "tests/settings/FakePorts.h"
#include "tests/support/ManualClock.h"
#include "tests/support/RecordingLinkHost.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QStringList>
#include <QTest>
#include <QTextDocument>

#include <optional>
#include <vector>

namespace veldron {
namespace {

class FrmCommSettingsTest : public testing::Test {
protected:
    FrmCommSettingsTest() {
        m_clock.setStepPerReading(0.05);
        m_ports.freePorts = {1, 3, 12};
        m_ports.busyPorts = {4};
        m_ports.portOfUnit = 3;
        m_form.fillComPorts({"COM 1", "COM 3", "COM 4", "COM 12"});
        m_form.show();
    }
    QComboBox *list(const char *name) { return m_form.findChild<QComboBox *>(QLatin1String(name)); }
    QComboBox *ports() { return list("cboComPort"); }
    void pickNext(const char *name) { QTest::keyClick(list(name), Qt::Key_Down); }
    /// The user opens the list and presses Enter on \a row.
    void pickPort(int row) {
        ports()->setCurrentIndex(row);
        Q_EMIT ports()->activated(row);
    }
    std::optional<UntrappedError::Kind> thrownBySelecting(int row) {
        try {
            m_form.selectComPort(row);
        } catch (const UntrappedError &error) {
            return error.kind();
        }
        return std::nullopt;
    }
    std::vector<int> events() {
        std::vector<int> bits;
        for (const QList<QVariant> &event : m_events) {
            bits.push_back(event.first().toInt());
        }
        return bits;
    }

    FakePorts m_ports;
    ManualClock m_clock{36000.0};
    RecordingLinkHost m_host;
    frmVDR m_vdr{m_ports, m_clock, m_host};
    std::vector<UntrappedError> m_reported;
    frmCommSettings m_form{
        ErrorGuard([this](const UntrappedError &error) { m_reported.push_back(error); }), m_vdr};
    QSignalSpy m_events{&m_form, &frmCommSettings::Changed};
};

TEST_F(FrmCommSettingsTest, creation_isEmptyAndUnchanged) {
    EXPECT_EQ(m_form.Poll(), 0);
    EXPECT_EQ(m_form.Change(), 0);
    EXPECT_EQ(list("cboPoll")->currentIndex(), -1);
}

TEST_F(FrmCommSettingsTest, lists_standTwelvePixelsBehindTheirLabels) {
    const auto endOf = [this](const char *name) {
        return m_form.findChild<QLabel *>(QLatin1String(name))->geometry().right() + 1;
    };
    EXPECT_EQ(ports()->x(), endOf("Label2") + 12);
    EXPECT_EQ(list("cboPoll")->x(), endOf("Label3") + 12);
}

TEST_F(FrmCommSettingsTest, texts_areThoseOfTheDialog) {
    EXPECT_EQ(m_form.windowTitle(), "Communication Settings");
    EXPECT_EQ(m_form.findChild<QLabel *>("Label2")->text(), "Serial Port");
    EXPECT_EQ(m_form.findChild<QLabel *>("Label3")->text(), "VDR poll rate");
    EXPECT_EQ(m_form.findChild<QLabel *>("Label2")->buddy(), ports());
    EXPECT_EQ(m_form.findChild<QLabel *>("Label3")->buddy(), list("cboPoll"));
    EXPECT_EQ(list("cboPoll")->toolTip(),
              "How often the VELDRON is asked for fresh frequency scans");
    EXPECT_EQ(m_form.findChild<QPushButton *>("OKButton")->text(), "OK");
}

TEST_F(FrmCommSettingsTest, pollRows_haveTheirTexts) {
    QStringList texts;
    for (int i = 0; i < list("cboPoll")->count(); ++i) {
        texts.append(list("cboPoll")->itemText(i));
    }
    EXPECT_EQ(texts, (QStringList{"0.25s", "0.5s", "1s", "2s", "5s", "10s"}));
}

TEST_F(FrmCommSettingsTest, everyPollRow_canBeWrittenAndReadBack) {
    int row = 0;
    for (const qint32 milliseconds : {250, 500, 1000, 2000, 5000, 10000}) {
        m_form.setPoll(milliseconds);
        EXPECT_EQ(m_form.Poll(), milliseconds);
        EXPECT_EQ(list("cboPoll")->currentIndex(), row++);
    }
    EXPECT_EQ(m_form.Change(), 0);
    EXPECT_TRUE(events().empty());
}

TEST_F(FrmCommSettingsTest, defaultPoll_isShownAsOneSecond) {
    m_form.setPoll(1000);
    EXPECT_EQ(list("cboPoll")->currentText(), "1s");
}

TEST_F(FrmCommSettingsTest, pollWrittenAsThreeHundred_changesNothing) {
    m_form.setPoll(2000);
    m_form.setPoll(300);
    EXPECT_EQ(m_form.Poll(), 2000);
    EXPECT_EQ(list("cboPoll")->currentText(), "2s");
}

TEST_F(FrmCommSettingsTest, pollPicked_setsItsFieldAndBit) {
    m_form.setPoll(1000);
    pickNext("cboPoll");
    EXPECT_EQ(m_form.Poll(), 2000);
    EXPECT_EQ(events(), std::vector{32});
    EXPECT_EQ(m_form.Change(), 32);
    EXPECT_EQ(m_form.Change(), 0);
}

TEST_F(FrmCommSettingsTest, portsFilled_areListedBehindNoneWithoutAReaction) {
    QStringList texts;
    for (int i = 0; i < ports()->count(); ++i) {
        texts.append(ports()->itemText(i));
    }
    EXPECT_EQ(texts, (QStringList{"None", "COM 1", "COM 3", "COM 4", "COM 12"}));
    EXPECT_TRUE(m_ports.log.isEmpty());
    EXPECT_TRUE(events().empty());
    EXPECT_EQ(m_form.Change(), 0);
}

TEST_F(FrmCommSettingsTest, portRow_showsItsDeviceInItsTip) {
    EXPECT_EQ(ports()->itemData(0, Qt::ToolTipRole).toString(), "");
    EXPECT_EQ(ports()->itemData(2, Qt::ToolTipRole).toString(), "/dev/fake3");
    EXPECT_EQ(ports()->itemData(4, Qt::ToolTipRole).toString(), "/dev/fake12");
}

TEST_F(FrmCommSettingsTest, portThatDoesNotOpen_saysWhyInItsTip) {
    m_form.selectComPort(2);
    pickPort(3);
    EXPECT_EQ(ports()->itemData(3, Qt::ToolTipRole).toString(), "/dev/fake4\nin use");
    m_form.fillComPorts({"COM 4"});
    EXPECT_EQ(ports()->itemData(1, Qt::ToolTipRole).toString(), "/dev/fake4\nin use");
    m_ports.freePorts.insert(4);
    m_form.selectComPort(1);
    EXPECT_EQ(ports()->itemData(1, Qt::ToolTipRole).toString(), "/dev/fake4");
}

TEST_F(FrmCommSettingsTest, markUpInTheDevicesName_isShownAsItStandsInTheTip) {
    m_ports.folder = "/tmp/<b>x<b>/";
    m_form.fillComPorts({"COM 4"});
    const QString tip = ports()->itemData(1, Qt::ToolTipRole).toString();
    QTextDocument shown;
    Qt::mightBeRichText(tip) ? shown.setHtml(tip) : shown.setPlainText(tip);
    EXPECT_EQ(shown.toPlainText(), "/tmp/<b>x<b>/fake4");
}

TEST_F(FrmCommSettingsTest, portTakenAfterAnUnplug_saysWhyWhenTheDialogComesUp) {
    m_form.selectComPort(2);
    m_form.hide();
    m_ports.reopening = SerialError{SerialErrorCode::kPortInUse, "in use by dialler"};
    m_vdr.Connect();
    m_form.show();
    EXPECT_EQ(ports()->itemData(2, Qt::ToolTipRole).toString(), "/dev/fake3\nin use by dialler");
}

TEST_F(FrmCommSettingsTest, machineWithoutPorts_listsNoneOnly) {
    m_form.fillComPorts({});
    EXPECT_EQ(ports()->count(), 1);
    EXPECT_EQ(ports()->itemText(0), "None");
    m_form.selectComPort(0);
    EXPECT_EQ(m_vdr.CommPort(), 0);
}

TEST_F(FrmCommSettingsTest, firstSelectionOfNoneByCode_runsTheReactionOnceAndLeavesBitOne) {
    m_form.selectComPort(0);
    EXPECT_EQ(m_vdr.Status(), "No serial port selected");
    EXPECT_FALSE(m_vdr.Connected());
    EXPECT_EQ(events(), std::vector{1});
    EXPECT_EQ(m_form.Change(), 1);
}

TEST_F(FrmCommSettingsTest, portSelectedByCode_isOpenedAndConnectedOnce) {
    m_form.selectComPort(2);
    EXPECT_EQ(m_ports.log, (QStringList{"open 3", "write RIVE"}));
    EXPECT_EQ(m_vdr.CommPort(), 3);
    EXPECT_EQ(m_vdr.Status(), "VELDRON connected on COM 3");
    EXPECT_EQ(events(), std::vector{1});
    EXPECT_EQ(m_form.Change(), 1);
}

TEST_F(FrmCommSettingsTest, selectedPortSelectedAgainByCode_isOpenedAnew) {
    m_form.selectComPort(2);
    m_ports.log.clear();
    m_form.selectComPort(2);
    EXPECT_EQ(m_ports.log, (QStringList{"close 3", "open 3", "write RIVE"}));
}

TEST_F(FrmCommSettingsTest, portPickedByKey_isOpenedAndConnectedOnce) {
    m_form.selectComPort(0);
    m_form.Change();
    pickNext("cboComPort");
    EXPECT_EQ(ports()->currentText(), "COM 1");
    EXPECT_EQ(m_ports.log, (QStringList{"open 1", "write RIVE"}));
    EXPECT_EQ(m_vdr.Status(), "VELDRON not found on COM 1");
    EXPECT_TRUE(m_vdr.Connected());
    EXPECT_EQ(m_form.Change(), 1);
}

TEST_F(FrmCommSettingsTest, portWithTwoDigits_isTakenWhole) {
    m_form.selectComPort(4);
    EXPECT_EQ(m_vdr.CommPort(), 12);
}

TEST_F(FrmCommSettingsTest, nonePicked_closesThePortAndCallsConnectInVain) {
    m_form.selectComPort(2);
    m_ports.log.clear();
    pickPort(0);
    EXPECT_EQ(m_ports.log, QStringList{"close 3"});
    EXPECT_EQ(m_vdr.CommPort(), 0);
    EXPECT_FALSE(m_vdr.Connected());
    EXPECT_EQ(m_vdr.Status(), "No serial port selected");
    EXPECT_TRUE(m_reported.empty());
}

TEST_F(FrmCommSettingsTest, busyPortPicked_jumpsBackToThePortInForceAndConnectsIt) {
    m_form.selectComPort(2);
    m_ports.log.clear();
    m_form.Change();
    m_events.clear();
    pickPort(3);
    ASSERT_EQ(m_host.messages().size(), 1U);
    EXPECT_EQ(m_host.messages().front().text, "COM  4 is in use by another application");
    EXPECT_EQ(ports()->currentText(), "COM 3");
    EXPECT_EQ(m_ports.log,
              (QStringList{"close 3", "refused 4", "open 3", "close 3", "open 3", "write RIVE"}));
    EXPECT_EQ(m_vdr.Status(), "VELDRON connected on COM 3");
    EXPECT_EQ(events(), (std::vector{1, 1}));
    EXPECT_EQ(m_form.Change(), 1);
    EXPECT_TRUE(m_reported.empty());
}

TEST_F(FrmCommSettingsTest, busyPortPickedWithoutEarlierPort_reportsOverflowAfterTheMessage) {
    m_form.selectComPort(0);
    m_form.Change();
    pickPort(3);
    ASSERT_EQ(m_reported.size(), 1U);
    EXPECT_EQ(m_reported.front().kind(), UntrappedError::Kind::Overflow);
    EXPECT_FALSE(m_reported.front().message().isEmpty());
    EXPECT_EQ(m_host.messages().size(), 1U);
    EXPECT_EQ(m_form.Change(), 0);
}

TEST_F(FrmCommSettingsTest, busyPortSelectedByCodeWithoutEarlierPort_throwsOverflow) {
    EXPECT_EQ(thrownBySelecting(3), UntrappedError::Kind::Overflow);
    EXPECT_EQ(m_host.messages().size(), 1U);
    EXPECT_TRUE(m_reported.empty());
}

TEST_F(FrmCommSettingsTest, vanishedPortPickedWithoutEarlierPort_reportsOverflow) {
    m_ports.freePorts.erase(1);
    pickPort(1);
    ASSERT_EQ(m_reported.size(), 1U);
    EXPECT_EQ(m_reported.front().kind(), UntrappedError::Kind::Overflow);
}

TEST_F(FrmCommSettingsTest, rowOutsideTheList_throwsOutOfRange) {
    EXPECT_EQ(thrownBySelecting(5), UntrappedError::Kind::OutOfRange);
    EXPECT_EQ(thrownBySelecting(-1), UntrappedError::Kind::OutOfRange);
    EXPECT_TRUE(m_ports.log.isEmpty());
}

TEST_F(FrmCommSettingsTest, okButtonCloseBoxAndEscape_hideAndKeepTheMask) {
    m_form.setPoll(250);
    pickNext("cboPoll");
    QTest::mouseClick(m_form.findChild<QPushButton *>("OKButton"), Qt::LeftButton);
    EXPECT_FALSE(m_form.isVisible());
    m_form.show();
    m_form.close();
    EXPECT_FALSE(m_form.isVisible());
    m_form.show();
    QTest::keyClick(&m_form, Qt::Key_Escape);
    EXPECT_FALSE(m_form.isVisible());
    EXPECT_EQ(m_form.Poll(), 500);
    EXPECT_EQ(m_form.Change(), 32);
}

TEST_F(FrmCommSettingsTest, tabKey_walksTheControlsFromTopToBottom) {
    QStringList walked;
    QWidget *widget = ports();
    do {
        walked.append(widget->objectName());
        do {
            widget = widget->nextInFocusChain();
        } while ((widget->focusPolicy() & Qt::TabFocus) == 0);
    } while (widget != ports());
    EXPECT_EQ(walked, (QStringList{"cboComPort", "cboPoll", "OKButton"}));
}

TEST_F(FrmCommSettingsTest, reopenedDialog_hasTheFocusOnItsFirstControl) {
    m_form.show();
    EXPECT_EQ(m_form.focusWidget(), m_form.findChild<QWidget *>("cboComPort"));
    m_form.findChild<QWidget *>("cboPoll")->setFocus();
    EXPECT_EQ(m_form.focusWidget(), m_form.findChild<QWidget *>("cboPoll"));
    m_form.accept();
    m_form.show();
    EXPECT_EQ(m_form.focusWidget(), m_form.findChild<QWidget *>("cboComPort"));
}

} // namespace
} // namespace veldron
