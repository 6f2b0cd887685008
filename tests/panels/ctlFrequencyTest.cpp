// SPDX-License-Identifier: MIT
// What the receiver panel shows, its lists, and what writes do to it.
#include "tests/panels/CtlFrequencyFixture.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QMenu>

namespace veldron {
namespace {

TEST(CtlFrequencyMade, freshPanel_showsReceiverAndFrequencyAlone) {
    const ctlFrequency panel(failingGuard());
    const auto isHidden = [&panel](const char *name) {
        return panel.findChild<QWidget *>(QString::fromLatin1(name))->isHidden();
    };
    for (const char *name : {"cboStep", "lblStep", "cboMode", "lblMode", "chkAtten", "lblAtten"}) {
        EXPECT_TRUE(isHidden(name)) << name;
    }
    for (const char *name : {"Label2", "cboRX", "Label1", "txtFreq", "Picture1", "lblFreq"}) {
        EXPECT_FALSE(isHidden(name)) << name;
    }
    EXPECT_TRUE(panel.Enabled());
    EXPECT_EQ(panel.Frequency(), Hertz());
    EXPECT_EQ(panel.Step(), 0);
    EXPECT_EQ(panel.RX(), 0);
    EXPECT_EQ(panel.Mode(), 0);
    EXPECT_EQ(panel.TuneStep(), 0);
    EXPECT_FALSE(panel.Atten());
}

TEST(CtlFrequencyMade, freshPanel_hasItsTextsAndRows) {
    const ctlFrequency panel(failingGuard());
    const auto *receivers = panel.findChild<QComboBox *>("cboRX");
    EXPECT_EQ(receivers->count(), 11);
    EXPECT_EQ(receivers->itemText(0), "Other (10M)");
    EXPECT_EQ(receivers->itemText(10), "VKF2700");
    EXPECT_EQ(receivers->currentText(), "None");
    EXPECT_EQ(receivers->currentIndex(), -1);
    EXPECT_EQ(panel.findChild<QLineEdit *>("txtFreq")->text(), "0123.45678");
    EXPECT_EQ(panel.findChild<QLabel *>("lblFreq")->text(), "0123.456.789");
    EXPECT_EQ(panel.findChild<QComboBox *>("cboStep")->currentText(), "10.000");
    EXPECT_EQ(panel.findChild<QComboBox *>("cboMode")->count(), 0);
}

TEST(CtlFrequencyMade, unconfiguredPanel_offersAllModesAndAStepOf25kHz) {
    ctlFrequency panel(failingGuard());
    panel.showUnconfigured();
    const auto *modes = panel.findChild<QComboBox *>("cboMode");
    EXPECT_EQ(modes->count(), 17);
    EXPECT_EQ(modes->currentIndex(), 10);
    EXPECT_EQ(modes->currentText(), "AMW");
    EXPECT_EQ(panel.Step(), 25'000);
}

TEST_F(CtlFrequency, controls_haveTheirLabelsAndRows) {
    EXPECT_EQ(label("Label2"), "Receiver");
    EXPECT_EQ(label("Label1"), "RX Frequency");
    EXPECT_EQ(label("lblStep"), "RX Step");
    EXPECT_EQ(label("lblMode"), "RX Mode");
    EXPECT_EQ(label("lblAtten"), "RX Atten");
    EXPECT_EQ(child<QCheckBox>("chkAtten")->text(), "");
    EXPECT_EQ(rows("cboStep"), QStringList({"1.000", "2.500", "5.000", "9.000", "10.000", "25.000",
                                            "50.000", "100.000"}));
}

TEST_F(CtlFrequency, roundingMenu_existsAndDoesNothing) {
    const auto *menu = child<QMenu>("mnuRounding");
    EXPECT_EQ(menu->title(), "Rounding");
    EXPECT_EQ(child<QAction>("mnuNoRound")->text(), "No rounding");
    EXPECT_EQ(child<QAction>("mnuRound")->text(), "Round to Channel step");
    EXPECT_EQ(child<QAction>("mnuRoundHalf")->text(), "Round to half Channel Step");
    EXPECT_FALSE(menu->isVisible());
}

TEST_F(CtlFrequency, stepWritten12500_isShownAndALaterPickOf25Raises4) {
    panel->setStep(12'500);
    EXPECT_EQ(text("cboStep"), "12.500");
    pick("cboStep", 5);
    EXPECT_EQ(panel->Step(), 25'000);
    EXPECT_EQ(text("cboStep"), "25.000");
    EXPECT_EQ(events, Events{Code::Step});
}

TEST_F(CtlFrequency, stepRowThatEqualsTheStep_raisesNothing) {
    pick("cboStep", 4);
    EXPECT_EQ(events, Events{});
    EXPECT_EQ(text("cboStep"), "10.000");
}

TEST_F(CtlFrequency, rowPickedByMouse_acts) {
    list("cboStep")->setFocus();
    key(Qt::Key_Down, Qt::AltModifier);
    QAbstractItemView *view = list("cboStep")->view();
    const QModelIndex index = view->model()->index(6, 0);
    view->scrollTo(index);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                      view->visualRect(index).center());
    EXPECT_EQ(panel->Step(), 50'000);
    EXPECT_EQ(events, Events{Code::Step});
}

TEST_F(CtlFrequency, arrowOnTheClosedStepList_goesOnFromTheShownStep) {
    click("cboStep");
    key(Qt::Key_Down);
    EXPECT_EQ(panel->Step(), 25'000);
    EXPECT_EQ(events, Events{Code::Step});
}

TEST_F(CtlFrequency, wheelOverClosedLists_doesNothing) {
    for (const char *name : {"cboRX", "cboStep", "cboMode"}) {
        list(name)->setFocus();
        QWheelEvent wheel(QPointF(5, 5), list(name)->mapToGlobal(QPointF(5, 5)), QPoint(),
                          QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(list(name), &wheel);
    }
    EXPECT_EQ(events, Events{});
    EXPECT_EQ(panel->RX(), 7);
}

TEST_F(CtlFrequency, receiverPicked_isStoredAndRaised2WithoutRefilling) {
    pick("cboRX", 2);
    EXPECT_EQ(panel->RX(), 3);
    EXPECT_EQ(events, Events{Code::RX});
    EXPECT_EQ(list("cboMode")->count(), 10) << "the modes of the receiver before";
}

TEST_F(CtlFrequency, receiverPickedAgain_raisesNothing) {
    pick("cboRX", 6);
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlFrequency, receiverTypedOver_hasNoEffect) {
    click("cboRX");
    key(Qt::Key_A, Qt::ControlModifier);
    type("VK1100\r");
    EXPECT_EQ(text("cboRX"), "VK1100") << "the name of a row";
    leave();
    EXPECT_EQ(panel->RX(), 7);
    EXPECT_EQ(events, Events{});
    EXPECT_EQ(list("cboRX")->count(), 11);
}

TEST_F(CtlFrequency, eachReceiverWritten_showsItsControlsAndModes) {
    for (qint16 code = 0; code <= 10; ++code) {
        panel->setRX(code);
        const bool tunable = code >= 3;
        const bool attenuator = code >= 3 && code <= 8;
        EXPECT_EQ(panel->RX(), code);
        EXPECT_EQ(isShown("cboMode"), tunable) << code;
        EXPECT_EQ(isShown("lblMode"), tunable) << code;
        EXPECT_EQ(isShown("cboStep"), tunable) << code;
        EXPECT_EQ(isShown("lblStep"), tunable) << code;
        EXPECT_EQ(isShown("chkAtten"), attenuator) << code;
        EXPECT_EQ(isShown("lblAtten"), attenuator) << code;
        EXPECT_EQ(list("cboRX")->currentIndex(), code - 1);
        EXPECT_EQ(list("cboMode")->currentIndex(), -1) << code;
    }
    panel->setRX(8);
    EXPECT_EQ(rows("cboMode"),
              QStringList({"WFM", "NFM", " AM", "LSB", "USB", " CW", "AUTO", " FM"}));
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlFrequency, rxWrittenAs0_clearsTheSelectionAndHidesTheOptionalControls) {
    panel->setRX(0);
    EXPECT_EQ(list("cboRX")->currentIndex(), -1);
    EXPECT_EQ(text("cboRX"), "None");
    for (const char *name : {"cboStep", "cboMode", "chkAtten"}) {
        EXPECT_FALSE(isShown(name)) << name;
    }
}

TEST_F(CtlFrequency, rxWrittenOverATypedText_showsTheReceiverAgain) {
    typeInto("cboRX", "zzz");
    panel->setRX(7);
    EXPECT_EQ(text("cboRX"), "VK3900");
    typeInto("cboRX", "zzz");
    panel->setRX(0);
    EXPECT_EQ(text("cboRX"), "None");
}

TEST_F(CtlFrequency, rxWrittenAs11OrOutside_isIgnored) {
    for (const int code : {11, 12, -1, 32767}) {
        panel->setRX(static_cast<qint16>(code));
        EXPECT_EQ(panel->RX(), 7) << code;
        EXPECT_EQ(text("cboRX"), "VK3900");
        EXPECT_EQ(list("cboMode")->count(), 10);
    }
}

TEST_F(CtlFrequency, receiver11Picked_isKeptWhenWrittenBackAndItsModesAreTaken) {
    panel->setRX(10);
    pick("cboRX", 10);
    EXPECT_EQ(panel->RX(), 11);
    panel->setRX(11);
    EXPECT_EQ(panel->RX(), 11);
    EXPECT_EQ(list("cboMode")->count(), 7) << "the lists are still those of the receiver before";
    panel->setMode(4);
    EXPECT_EQ(panel->Mode(), 4);
    EXPECT_EQ(events, Events{Code::RX});
}

TEST_F(CtlFrequency, receiver11OverAnEmptyModeList_storesTheModeAndLeavesTheSelection) {
    panel->setRX(1);
    pick("cboRX", 10);
    panel->setMode(5);
    EXPECT_EQ(panel->Mode(), 5);
    EXPECT_EQ(list("cboMode")->currentIndex(), -1);
}

TEST_F(CtlFrequency, modePicked_raises8AlsoForTheSameRow) {
    pick("cboMode", 4);
    EXPECT_EQ(panel->Mode(), 5);
    EXPECT_EQ(text("cboMode"), " AM");
    pick("cboMode", 4);
    EXPECT_EQ(panel->Mode(), 5);
    EXPECT_EQ(events, (Events{Code::Mode, Code::Mode}));
}

TEST_F(CtlFrequency, receiverWithoutAModeInCommon_leavesTheOldModeUntilWritten) {
    panel->setMode(6);
    panel->setRX(8);
    EXPECT_EQ(panel->Mode(), 6);
    EXPECT_EQ(list("cboMode")->currentIndex(), -1);
    panel->setMode(12);
    EXPECT_EQ(panel->Mode(), 12);
    EXPECT_EQ(text("cboMode"), " FM");
}

TEST_F(CtlFrequency, modeWritten10WithReceiver4_changesNothing) {
    panel->setRX(4);
    panel->setMode(2);
    panel->setMode(10);
    EXPECT_EQ(panel->Mode(), 2);
    EXPECT_EQ(text("cboMode"), "NFM");
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlFrequency, attenuatorClicked_raises16) {
    click(child("chkAtten"), QPoint(8, child("chkAtten")->height() / 2));
    EXPECT_TRUE(panel->Atten());
    child("chkAtten")->setFocus();
    key(Qt::Key_Space);
    EXPECT_FALSE(panel->Atten());
    EXPECT_EQ(events, (Events{Code::Atten, Code::Atten}));
}

TEST_F(CtlFrequency, attenuatorWritten_isCheckedAndCleared) {
    panel->setAtten(true);
    EXPECT_TRUE(child<QCheckBox>("chkAtten")->isChecked());
    panel->setAtten(false);
    EXPECT_FALSE(panel->Atten());
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlFrequency, enabled_switchesTheFiveControlsAndNotThePanel) {
    panel->setEnabled(false);
    EXPECT_FALSE(panel->Enabled());
    EXPECT_TRUE(panel->isEnabled());
    for (const char *name : {"cboRX", "cboStep", "cboMode", "chkAtten", "txtFreq"}) {
        EXPECT_FALSE(child(name)->isEnabled()) << name;
    }
    panel->setEnabled(true);
    for (const char *name : {"cboRX", "cboStep", "cboMode", "chkAtten", "txtFreq"}) {
        EXPECT_TRUE(child(name)->isEnabled()) << name;
    }
}

TEST_F(CtlFrequency, singleEnables_switchTheirControlAlone) {
    panel->setAttenEn(false);
    EXPECT_FALSE(child("chkAtten")->isEnabled());
    panel->setStepEn(false);
    EXPECT_FALSE(child("cboStep")->isEnabled());
    panel->setModeEn(false);
    EXPECT_FALSE(child("cboMode")->isEnabled());
    EXPECT_TRUE(child("txtFreq")->isEnabled());
    EXPECT_TRUE(panel->Enabled());
    panel->setAttenEn(true);
    EXPECT_TRUE(child("chkAtten")->isEnabled());
}

} // namespace
} // namespace veldron
