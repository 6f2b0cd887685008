// SPDX-License-Identifier: MIT
#include "tests/app/FormFixture.h"

#include "app/frmAbout.h"
#include "chart/ChartColours.h"
#include "chart/PictureBox.h"

#include <QCheckBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QScrollBar>

namespace veldron {
namespace {

class FrmDisplayMenuTest : public FormFixture {
protected:
    static constexpr const char *kDisplay = "mnuSettingsDisplay";
    static constexpr const char *kComms = "mnuSettingsComms";

    void changeDisplay(const std::function<void(QDialog &)> &act) { pickDialog(kDisplay, act); }
    /// The first closing after a start still holds what the start has chosen.
    void startUpWithComms() {
        startUp();
        pickDialog(kComms);
        forgetSent();
    }
    static void click(QDialog &dialog, const char *name) {
        dialog.findChild<QCheckBox *>(QLatin1String(name))->click();
    }
    /// A waterfall of more rows than it has room for, one a second.
    void fillWaterfall() {
        writeDisplay(&DisplaySettings::WaterfallEnable, true);
        chart().setDisplayType(DisplayTypeCode::TraceAndWaterfall);
        m_clock.advance(500.0);
        chart().onTimer1();
    }
    [[nodiscard]] const QScrollBar &scrollBar() const { return child<QScrollBar>("VScroll1"); }
    /// Whether the picture has a dot of a held peak anywhere.
    [[nodiscard]] bool showsPeaks() const {
        const PictureBox &picture = child<PictureBox>("Picture1");
        for (int y = 0; y < picture.ScaleHeight(); ++y) {
            for (int x = 0; x < picture.ScaleWidth(); ++x) {
                if (picture.surface().pixel(x, y) == ChartColours::kPeak) {
                    return true;
                }
            }
        }
        return false;
    }
    [[nodiscard]] QStringList entries(const char *menu) const {
        QStringList texts;
        for (const QAction *action : child<QMenu>(menu).actions()) {
            texts.append(action->text().remove('&'));
        }
        return texts;
    }
};

TEST_F(FrmDisplayMenuTest, menus_holdTheirEntriesInOrder) {
    make();
    QStringList titles;
    for (const QAction *action : m_form->menuBar()->actions()) {
        titles.append(action->text().remove('&'));
    }
    EXPECT_EQ(titles, (QStringList{"File", "Settings", "Help"}));
    EXPECT_EQ(entries("mnuFile"), (QStringList{"Load Settings", "Save Settings", "", "Record",
                                               "Playback", "", "Exit"}));
    EXPECT_EQ(entries("mnuSettings"), (QStringList{"Display...", "Communications..."}));
    EXPECT_EQ(entries("mnuHelp"), QStringList{"About"});
    EXPECT_EQ(child<QMenu>("mnuFile").actions().at(2)->objectName(), "mnuFileSeparator1");
}

// ---- display settings

TEST_F(FrmDisplayMenuTest, displayDialog_holdsThePollOffAndLetsItGoOn) {
    startUp();
    bool polled = true;
    changeDisplay([&](QDialog &) { polled = isPolling(); });
    EXPECT_FALSE(polled);
    EXPECT_TRUE(isPolling());
}

TEST_F(FrmDisplayMenuTest, displayDialogWithoutPolling_startsNone) {
    setPorts({}, 0);
    startUp();
    changeDisplay([](QDialog &) {});
    EXPECT_FALSE(isPolling());
}

TEST_F(FrmDisplayMenuTest, displayDialogClosedWithoutAChange_leavesTheChartAlone) {
    startUp();
    chart().setPalette(1);
    chart().setTimespan(77);
    chart().setUpdate(9);
    chart().setMarkerEn(false);
    chart().setPeak(true);
    chart().setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    changeDisplay([](QDialog &) {});
    EXPECT_EQ(chart().Palette(), 1);
    EXPECT_EQ(chart().Timespan(), 77);
    EXPECT_EQ(chart().Update(), 9);
    EXPECT_FALSE(chart().MarkerEn());
    EXPECT_TRUE(chart().Peak());
    EXPECT_EQ(chart().DisplayType(), DisplayTypeCode::TraceAndWaterfall);
}

TEST_F(FrmDisplayMenuTest, newPalette_reachesTheChartWhenTheDialogCloses) {
    startUp();
    qint16 before = -1;
    changeDisplay([&](QDialog &dialog) {
        pickRow(dialog, "cboPalette", 5);
        before = chart().Palette();
    });
    EXPECT_EQ(before, 3);
    EXPECT_EQ(chart().Palette(), 5);
}

TEST_F(FrmDisplayMenuTest, peakFollowing_setsPeakAndTimespan) {
    startUp();
    chart().setTimespan(77);
    changeDisplay([](QDialog &dialog) { click(dialog, "chkPersistence"); });
    EXPECT_TRUE(chart().Peak());
    EXPECT_EQ(chart().Timespan(), 5);
}

TEST_F(FrmDisplayMenuTest, persistenceTime_setsTimespan) {
    startUp();
    changeDisplay([](QDialog &dialog) { pickRow(dialog, "cboPersistence", 8); });
    EXPECT_EQ(chart().Timespan(), -1);
}

TEST_F(FrmDisplayMenuTest, waterfallSwitchedOn_writesTheUpdateRateToo) {
    startUp();
    chart().setUpdate(9);
    changeDisplay([](QDialog &dialog) { click(dialog, "chkWaterfall"); });
    EXPECT_EQ(chart().DisplayType(), DisplayTypeCode::TraceAndWaterfall);
    EXPECT_EQ(chart().Update(), 1);
    changeDisplay([](QDialog &dialog) { click(dialog, "chkWaterfall"); });
    EXPECT_EQ(chart().DisplayType(), DisplayTypeCode::Trace);
}

TEST_F(FrmDisplayMenuTest, waterfallSwitchedOffAndOn_takesTheScrollBarAwayAndBringsItBackAtOnce) {
    startUp();
    fillWaterfall();
    ASSERT_FALSE(scrollBar().isHidden());
    changeDisplay([](QDialog &dialog) { click(dialog, "chkWaterfall"); });
    EXPECT_TRUE(scrollBar().isHidden());
    changeDisplay([](QDialog &dialog) { click(dialog, "chkWaterfall"); });
    EXPECT_FALSE(scrollBar().isHidden());
}

TEST_F(FrmDisplayMenuTest, peakFollowingAndUpdateRateTogether_showThePeaksAtOnce) {
    startUp();
    poll();
    for (const bool on : {true, false}) {
        changeDisplay([on](QDialog &dialog) {
            click(dialog, "chkPersistence");
            pickRow(dialog, "cboUpdate", on ? 4 : 0);
        });
        EXPECT_EQ(showsPeaks(), on);
    }
}

TEST_F(FrmDisplayMenuTest, updateRateChangedAndChangedBack_writesTheSameValues) {
    startUp();
    chart().setUpdate(9);
    changeDisplay([](QDialog &dialog) {
        pickRow(dialog, "cboUpdate", 4);
        pickRow(dialog, "cboUpdate", 0);
    });
    EXPECT_EQ(chart().Update(), 1);
}

TEST_F(FrmDisplayMenuTest, markerSwitchedOff_reachesTheChart) {
    startUp();
    changeDisplay([](QDialog &dialog) { click(dialog, "chkMarker"); });
    EXPECT_FALSE(chart().MarkerEn());
}

TEST_F(FrmDisplayMenuTest, displayDialog_sendsNothing) {
    startUp();
    changeDisplay([](QDialog &dialog) { pickRow(dialog, "cboPalette", 5); });
    EXPECT_EQ(sent(), QStringList());
}

// ---- communications

TEST_F(FrmDisplayMenuTest, commsDialog_holdsThePollOffAndLetsItGoOn) {
    startUpWithComms();
    bool polled = true;
    pickDialog(kComms, [&](QDialog &) { polled = isPolling(); });
    EXPECT_FALSE(polled);
    EXPECT_TRUE(isPolling());
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(FrmDisplayMenuTest, firstClosingOfTheCommsDialog_readsEverythingBack) {
    startUp();
    pickDialog(kComms);
    EXPECT_EQ(sent(), readBack());
    pickDialog(kComms);
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(FrmDisplayMenuTest, pollRates_setGridChartAndInterval) {
    struct Case {
        int row;
        qint16 poll;
        int interval;
    };
    startUpWithComms();
    for (const Case &c : {Case{0, 250, 125}, Case{1, 500, 250}, Case{2, 1000, 500},
                          Case{3, 2000, 500}, Case{4, 5000, 500}, Case{5, 10000, 500}}) {
        pickDialog(kComms, [&](QDialog &dialog) { pickRow(dialog, "cboPoll", c.row); });
        EXPECT_EQ(chart().Poll(), c.poll);
        EXPECT_EQ(pollTimer()->interval(), c.interval) << c.poll;
        EXPECT_TRUE(isPolling());
    }
}

TEST_F(FrmDisplayMenuTest, pollRate_takesEffectWhenTheDialogCloses) {
    startUpWithComms();
    int interval = 0;
    pickDialog(kComms, [&](QDialog &dialog) {
        pickRow(dialog, "cboPoll", 0);
        interval = pollTimer()->interval();
    });
    EXPECT_EQ(interval, 1000);
    EXPECT_EQ(pollTimer()->interval(), 125);
}

TEST_F(FrmDisplayMenuTest, pollRateOfAQuarterSecond_pollsFourTimesASecond) {
    startUpWithComms();
    pickDialog(kComms, [](QDialog &dialog) { pickRow(dialog, "cboPoll", 0); });
    int polls = 0;
    m_clock.setTimeOfDay(40000.01);
    for (int ticks = 0; ticks < 8; ++ticks) {
        tick();
        polls += static_cast<int>(sent().count("RIFD"));
        m_clock.advance(0.125);
    }
    EXPECT_EQ(polls, 4);
}

TEST_F(FrmDisplayMenuTest, pollRateChangedWithoutPolling_startsNone) {
    setPorts({}, 0);
    startUp();
    pickDialog(kComms, [](QDialog &dialog) { pickRow(dialog, "cboPoll", 0); });
    EXPECT_EQ(pollTimer()->interval(), 125);
    EXPECT_FALSE(isPolling());
}

TEST_F(FrmDisplayMenuTest, pollRateOfAFileThatNoRowHas_reachesTimerAndChartAlone) {
    startUp();
    writeFile("a.set", "VELDRONv1 Settings\r\nPoll 300\r\n");
    m_dialogs.pickFile(path("a.set"));
    pick("mnuFileLoadSettings");
    EXPECT_EQ(pollTimer()->interval(), 300);
    EXPECT_EQ(chart().Poll(), 300);
    EXPECT_EQ(commSettings().Poll(), 1000);
    EXPECT_EQ(commSettings().findChild<QComboBox *>("cboPoll")->currentText(), "1s");
}

TEST_F(FrmDisplayMenuTest, firstPortChosenByTheUser_connectsAtOnceAndStartsPolling) {
    setPorts({3}, 0);
    startUp();
    m_control.setUnitPort(3);
    QStringList atThePick;
    pickDialog(kComms, [&](QDialog &dialog) {
        pickRow(dialog, "cboComPort", 1);
        atThePick = sent();
    });
    EXPECT_EQ(atThePick, QStringList{"RIVE"});
    EXPECT_EQ(sent(), readBack());
    EXPECT_TRUE(isPolling());
    EXPECT_EQ(pollTimer()->interval(), 1000);
    EXPECT_EQ(status(), "VELDRON connected on COM 3");
}

TEST_F(FrmDisplayMenuTest, portAndPollRateTogether_endWithHalfThePeriod) {
    startUpWithComms();
    pickDialog(kComms, [](QDialog &dialog) {
        pickRow(dialog, "cboComPort", 1);
        pickRow(dialog, "cboPoll", 1);
    });
    EXPECT_EQ(sent(), QStringList{"RIVE"} + readBack());
    EXPECT_EQ(pollTimer()->interval(), 250);
    EXPECT_TRUE(isPolling());
}

TEST_F(FrmDisplayMenuTest, noneChosen_endsTheLinkAndReadsNothingBack) {
    startUpWithComms();
    pickDialog(kComms, [](QDialog &dialog) { pickRow(dialog, "cboComPort", 0); });
    EXPECT_EQ(sent(), QStringList());
    EXPECT_EQ(status(), "No serial port selected");
    EXPECT_FALSE(m_control.PortOpen());
    EXPECT_TRUE(isPolling());
    poll();
    EXPECT_EQ(activity(), ActivityImage::Blank);
    EXPECT_EQ(sent(), QStringList());
}

TEST_F(FrmDisplayMenuTest, commsDialog_copiesTheStatusToPanel1) {
    startUpWithComms();
    statusBar().setStatusText("not renewed");
    pickDialog(kComms);
    EXPECT_EQ(status(), "VELDRON connected on COM 3");
}

TEST_F(FrmDisplayMenuTest, busyPortWithAnotherOneOpen_tellsTheUserAndGoesBack) {
    setPorts({3, 4}, 3);
    startUpWithComms();
    m_control.failOpen(4, SerialErrorCode::kPortInUse);
    pickDialog(kComms, [](QDialog &dialog) { pickRow(dialog, "cboComPort", 2); });
    EXPECT_EQ(m_dialogs.log(), QStringList{"message"});
    EXPECT_EQ(m_dialogs.titles(), QStringList{"Select serial port"});
    EXPECT_EQ(m_dialogs.texts(), QStringList{"COM  4 is in use by another application"});
    EXPECT_EQ(sent(), QStringList{"RIVE"} + readBack());
    EXPECT_TRUE(isPolling());
    EXPECT_FALSE(m_form->hasFailed());
}

// ---- About

TEST_F(FrmDisplayMenuTest, about_isModalOverTheFormAndTellsOfTheUnit) {
    startUp();
    QString info;
    QWidget *owner = nullptr;
    pickDialog("mnuAbout", [&](QDialog &dialog) {
        owner = dialog.parentWidget();
        info = dialog.findChild<QLabel *>("lblInfo")->text();
        EXPECT_NE(qobject_cast<frmAbout *>(&dialog), nullptr);
        EXPECT_TRUE(dialog.isModal());
    });
    EXPECT_EQ(owner, m_form.get());
    EXPECT_TRUE(info.contains("VELDRON connected on COM 3"));
    EXPECT_TRUE(info.contains("Firmware Ver 1.00"));
}

TEST_F(FrmDisplayMenuTest, aboutWithoutConnection_showsNoFirmwareLine) {
    setPorts({}, 0);
    startUp();
    QString info = "not empty";
    pickDialog("mnuAbout",
               [&](QDialog &dialog) { info = dialog.findChild<QLabel *>("lblInfo")->text(); });
    EXPECT_EQ(info, "");
}

TEST_F(FrmDisplayMenuTest, pollGoesOnUnderAbout) {
    startUp();
    pickDialog("mnuAbout", [&](QDialog &) {
        EXPECT_TRUE(isPolling());
        poll();
    });
    EXPECT_EQ(sent(), (QStringList{"RIFD", "RURX"}));
}

} // namespace
} // namespace veldron
