// SPDX-License-Identifier: MIT
// What a field shows while an entry is open in it, and what ends the entry besides its keys.
#include "tests/panels/CtlFrequencyFixture.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>

namespace veldron {
namespace {

class CtlFrequencyOpenEntry : public CtlFrequency {
protected:
    /// The line edit of a box or of a list.
    QLineEdit *textOf(const char *name) const {
        auto *combo = qobject_cast<QComboBox *>(child(name));
        return combo != nullptr ? combo->lineEdit() : box(name);
    }
    void expectShown(const char *name, const QString &expected, const char *act) const {
        EXPECT_EQ(text(name), expected) << act;
        EXPECT_EQ(textOf(name)->cursorPosition(), expected.size()) << act;
        EXPECT_FALSE(textOf(name)->hasSelectedText()) << act;
    }
    void paste(const char *content) {
        QGuiApplication::clipboard()->setText(content);
        key(Qt::Key_V, Qt::ControlModifier);
    }
    void drop(const char *name, const char *content) {
        QMimeData data;
        data.setText(content);
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(textOf(name), &enter);
        QDropEvent event(QPointF(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(textOf(name), &event);
        EXPECT_TRUE(event.isAccepted());
        EXPECT_EQ(event.dropAction(), Qt::CopyAction);
    }
    /// Opens the menu of a field with the menu key's event.
    QMenu *openMenu(const char *name) {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5),
                                child(name)->mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(child(name), &event);
        return qobject_cast<QMenu *>(QApplication::activePopupWidget());
    }
    static void trigger(QMenu &menu, const char *entry) {
        for (QAction *action : menu.actions()) {
            if (action->text() == QLatin1String(entry)) {
                action->trigger();
            }
        }
        menu.close();
    }
    void pickFromMenu(const char *name, const char *entry) {
        QMenu *menu = openMenu(name);
        ASSERT_NE(menu, nullptr);
        trigger(*menu, entry);
    }
};

constexpr const char *kFields[] = {"txtFreq", "cboStep"};

TEST_F(CtlFrequencyOpenEntry, selectAllAndDeleteWithinAnEntry_areShownToHaveNoEffect) {
    for (const char *name : kFields) {
        typeInto(name, "145");
        key(Qt::Key_A, Qt::ControlModifier);
        expectShown(name, "145", "Ctrl+A");
        key(Qt::Key_Delete);
        expectShown(name, "145", "Delete");
        type("146");
        expectShown(name, "145146", name);
        leave();
    }
}

TEST_F(CtlFrequencyOpenEntry, keysThatMoveSelectOrCut_doNothing) {
    struct Case {
        Qt::Key code;
        Qt::KeyboardModifiers modifiers;
        const char *act;
    };
    const Case cases[] = {{Qt::Key_Left, Qt::NoModifier, "Left"},
                          {Qt::Key_Home, Qt::NoModifier, "Home"},
                          {Qt::Key_Left, Qt::ShiftModifier, "Shift+Left"},
                          {Qt::Key_Home, Qt::ShiftModifier, "Shift+Home"},
                          {Qt::Key_Backspace, Qt::ControlModifier, "Ctrl+Backspace"},
                          {Qt::Key_X, Qt::ControlModifier, "Ctrl+X"},
                          {Qt::Key_Z, Qt::ControlModifier, "Ctrl+Z"},
                          {Qt::Key_Delete, Qt::ShiftModifier, "Shift+Delete"}};
    for (const char *name : kFields) {
        typeInto(name, "145");
        for (const Case &example : cases) {
            key(example.code, example.modifiers);
            expectShown(name, "145", example.act);
        }
        leave();
    }
}

TEST_F(CtlFrequencyOpenEntry, mouseWithinAnEntry_movesAndSelectsNothing) {
    for (const char *name : kFields) {
        typeInto(name, "145");
        QLineEdit *edit = textOf(name);
        click(edit, QPoint(3, edit->height() / 2));
        expectShown(name, "145", "click");
        QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                           edit->mapTo(&window, QPoint(8, edit->height() / 2)));
        expectShown(name, "145", "double click");
        leave();
    }
}

TEST_F(CtlFrequencyOpenEntry, textChangedInAnyOtherWay_comesBackAtOnce) {
    typeInto("txtFreq", "145");
    box("txtFreq")->setText("7");
    expectShown("txtFreq", "145", "text set");
    box("txtFreq")->selectAll();
    expectShown("txtFreq", "145", "all selected");
    box("txtFreq")->setCursorPosition(1);
    expectShown("txtFreq", "145", "cursor set");
}

TEST_F(CtlFrequencyOpenEntry, arrowsOnTheStepList_pickNoRow) {
    typeInto("cboStep", "12");
    for (const Qt::Key code : {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_PageUp}) {
        key(code);
        expectShown("cboStep", "12", "arrow");
    }
    EXPECT_EQ(panel->Step(), 10'000);
    EXPECT_EQ(events, Events{});
}

/// The receiver was changed at the unit, to one without a step of its own.
TEST_F(CtlFrequencyOpenEntry, fieldHiddenWithinItsEntry_leaksNothingIntoTheNext) {
    typeInto("cboStep", "14");
    panel->setRX(1);
    ASSERT_FALSE(isShown("cboStep"));
    typeInto("txtFreq", "5");
    EXPECT_EQ(text("txtFreq"), "5");
    key(Qt::Key_Return);
    EXPECT_EQ(hertz(), 5'000'000);
    EXPECT_EQ(events, Events{Code::Frequency});
}

TEST_F(CtlFrequencyOpenEntry, commaAndBlank_areShownAsWhatTheyStandFor) {
    typeInto("txtFreq", "14 5,5");
    EXPECT_EQ(text("txtFreq"), "145.5");
}

TEST_F(CtlFrequencyOpenEntry, entryAboveTheCeiling_isShownAsTheCeiling) {
    typeInto("txtFreq", "3600000000");
    EXPECT_EQ(text("txtFreq"), " 3500000000");
}

TEST_F(CtlFrequencyOpenEntry, pastedText_isTakenAsKeysUpToTheFirstThatEndsTheEntry) {
    struct Case {
        const char *typed;
        const char *pasted;
        qint64 hertz;
        const char *text;
    };
    const Case cases[] = {{"", "145.5 MHz", 145'500'000, "145.50000"},
                          {"", "145\n77", 145'000'000, "145.00000"},
                          {"1", "44,8k", 144'800, "0.14480"},
                          {"", "146M999", 146'000'000, "146.00000"}};
    for (const Case &example : cases) {
        events.clear();
        typeInto("txtFreq", example.typed);
        paste(example.pasted);
        EXPECT_EQ(hertz(), example.hertz) << example.pasted;
        EXPECT_EQ(text("txtFreq"), example.text) << example.pasted;
        EXPECT_EQ(events, Events{Code::Frequency}) << example.pasted;
        leave();
    }
}

TEST_F(CtlFrequencyOpenEntry, pastedDigits_leaveTheEntryOpen) {
    for (const char *name : kFields) {
        typeInto(name, "1");
        paste("4.5");
        expectShown(name, "14.5", name);
        EXPECT_EQ(events, Events{});
        type("\r");
        events.clear();
    }
    EXPECT_EQ(hertz(), 14'500'000);
    EXPECT_EQ(panel->Step(), 14'500);
}

TEST_F(CtlFrequencyOpenEntry, pastedWord_isRefusedAtItsFirstLetter) {
    click("txtFreq");
    paste("VHF 145");
    EXPECT_EQ(text("txtFreq"), "V");
    EXPECT_EQ(hertz(), 100'000'000);
    leave();
    EXPECT_EQ(text("txtFreq"), "100.00000");
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlFrequencyOpenEntry, droppedText_isTakenAsKeysAndTakesTheFocus) {
    typeInto("txtFreq", "14");
    drop("cboStep", "12.5");
    EXPECT_EQ(events, Events{Code::Frequency}) << "the frequency was left";
    EXPECT_EQ(text("txtFreq"), "100.00000");
    expectShown("cboStep", "12.5", "drop");
    EXPECT_EQ(QApplication::focusWidget(), child("cboStep"));
    drop("cboStep", "1K");
    EXPECT_EQ(panel->Step(), 12'510);
}

TEST_F(CtlFrequencyOpenEntry, pasteFromTheMenu_isTakenAsKeys) {
    for (const char *name : kFields) {
        typeInto(name, "1");
        QGuiApplication::clipboard()->setText("45.5K");
        pickFromMenu(name, "&Paste");
        leave();
    }
    EXPECT_EQ(hertz(), 145'500);
    EXPECT_EQ(panel->Step(), 145'500);
}

TEST_F(CtlFrequencyOpenEntry, rowPickedOverAnEntry_endsIt) {
    typeInto("cboStep", "12");
    pick("cboStep", 5);
    EXPECT_EQ(panel->Step(), 25'000);
    EXPECT_EQ(text("cboStep"), "25.000");
    EXPECT_EQ(events, Events{Code::Step});
    type("5");
    EXPECT_EQ(text("cboStep"), "5");
}

TEST_F(CtlFrequencyOpenEntry, rowOfTheStepInForcePickedOverAnEntry_showsTheStepWithoutAnEvent) {
    typeInto("cboStep", "12");
    pick("cboStep", 4);
    EXPECT_EQ(text("cboStep"), "10.000");
    EXPECT_EQ(events, Events{});
}

TEST_F(CtlFrequencyOpenEntry, panelDisabled_endsTheEntryAndShowsTheStoredValue) {
    for (const char *name : kFields) {
        typeInto(name, "14");
        panel->setEnabled(false);
        EXPECT_EQ(text("txtFreq"), "100.00000") << name;
        EXPECT_EQ(text("cboStep"), "10.000") << name;
        panel->setEnabled(true);
        EXPECT_EQ(events, Events{}) << name;
    }
    typeInto("txtFreq", "5\r");
    EXPECT_EQ(hertz(), 5'000'000);
    EXPECT_EQ(events, Events{Code::Frequency});
}

TEST_F(CtlFrequencyOpenEntry, refusedTextOnADisabledPanel_goesBackToTheStoredValue) {
    typeInto("txtFreq", "x");
    panel->setEnabled(false);
    EXPECT_EQ(text("txtFreq"), "100.00000");
}

TEST_F(CtlFrequencyOpenEntry, fieldDisabledUnderItsMenu_takesNoPaste) {
    for (const char *name : kFields) {
        QGuiApplication::clipboard()->setText("5.5K");
        QMenu *menu = openMenu(name);
        ASSERT_NE(menu, nullptr);
        panel->setEnabled(false);
        trigger(*menu, "&Paste");
        panel->setEnabled(true);
    }
    EXPECT_EQ(events, Events{});
    EXPECT_EQ(hertz(), 100'000'000);
    EXPECT_EQ(panel->Step(), 10'000);
}

TEST_F(CtlFrequencyOpenEntry, dropWhileTheWindowIsInactive_leavesTheOpenEntryFirst) {
    typeInto("txtFreq", "14");
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    drop("cboStep", "12.5");
    EXPECT_EQ(text("txtFreq"), "100.00000");
    EXPECT_EQ(text("cboStep"), "12.5");
}

TEST_F(CtlFrequencyOpenEntry, shownMenuBar_borrowsTheFocusOfFieldAndPanel) {
    QMenuBar bar(&window);
    bar.addMenu("File")->addAction("One");
    bar.show();
    panel->setTuneStep(500);
    typeInto("txtFreq", "14");
    bar.setFocus(Qt::MenuBarFocusReason);
    ASSERT_EQ(QApplication::focusWidget(), &bar);
    EXPECT_EQ(events, Events{});
    EXPECT_EQ(text("txtFreq"), "14");
    EXPECT_EQ(panel->TuneStep(), 500);
    box("txtFreq")->setFocus(Qt::MenuBarFocusReason);
    type("5\r");
    EXPECT_EQ(hertz(), 145'000'000) << "the entry has gone on";
}

TEST_F(CtlFrequencyOpenEntry, controlThatTakesTheFocusAfterTheMenuBar_isALoss) {
    QMenuBar bar(&window);
    bar.addMenu("File")->addAction("One");
    bar.show();
    panel->setTuneStep(500);
    typeInto("txtFreq", "14");
    bar.setFocus(Qt::MenuBarFocusReason);
    leave();
    EXPECT_EQ(text("txtFreq"), "100.00000");
    EXPECT_EQ(events, Events{Code::Frequency});
    EXPECT_EQ(panel->TuneStep(), 0);
}

TEST_F(CtlFrequencyOpenEntry, focusMovedInTheEvent_findsTheEntryStillInProgress) {
    QObject::connect(panel, &ctlFrequency::Changed, &window, [this] { outside->setFocus(); });
    typeInto("txtFreq", "145\r");
    EXPECT_EQ(events, (Events{Code::Frequency, Code::Frequency}))
        << "the field is left while its event is being raised";
}

TEST_F(CtlFrequencyOpenEntry, receiverTypedOver_goesBackWhenItIsLeft) {
    for (const int code : {7, 0}) {
        panel->setRX(static_cast<qint16>(code));
        const QString before = text("cboRX");
        click("cboRX");
        key(Qt::Key_A, Qt::ControlModifier);
        type("VK1100\r");
        EXPECT_EQ(text("cboRX"), "VK1100");
        leave();
        EXPECT_EQ(text("cboRX"), before);
        EXPECT_EQ(panel->RX(), code);
    }
    EXPECT_EQ(events, Events{});
    EXPECT_EQ(list("cboRX")->count(), 11);
}

TEST_F(CtlFrequencyOpenEntry, receiverPickedThatNobodyConfirms_staysWhenItIsLeft) {
    pick("cboRX", 10);
    leave();
    EXPECT_EQ(text("cboRX"), "VKF2700");
    EXPECT_EQ(panel->RX(), 11);
}

} // namespace
} // namespace veldron
