// SPDX-License-Identifier: MIT
#include "panels/PanelFields.h"

#include "tests/panels/PanelFixture.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QFrame>
#include <QMenu>

#include <utility>

namespace veldron {
namespace {

/// A panel with two fields beside a control of another panel. The first field shows `entry` while
/// it is open, the second is free. What the panel is told of is noted.
class PanelFieldsTest : public testing::Test {
protected:
    PanelFieldsTest() {
        auto *strip = new QHBoxLayout(&window);
        strip->addWidget(panel);
        strip->addWidget(outside);
        auto *inside = new QHBoxLayout(panel);
        inside->addWidget(bound);
        inside->addWidget(unbound);
        fields.add(*bound, *bound, field("bound", [this] { return entry; }));
        fields.add(*unbound, *unbound, field("free", {}));
        fields.setPanelLeft([this] { log += "panel left"; });
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        outside->setFocus();
        log.clear();
    }

    PanelFields::Field field(const QString &name, std::function<QString()> entryText) {
        return {.takeKey =
                    [this, name](char16_t key) {
                        log += name + ' ' + QString::number(key);
                        return swallows;
                    },
                .leave = [this, name] { log += name + " left"; },
                .disable = [this, name] { log += name + " disabled"; },
                .entryText = std::move(entryText)};
    }
    void key(Qt::Key code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(window.windowHandle(), code, modifiers);
    }
    void openBound(const QString &text) {
        entry = text;
        bound->setFocus();
        fields.open(*bound);
        log.clear();
    }
    [[nodiscard]] QStringList taken() { return std::exchange(log, {}); }

    QWidget window;
    QFrame *panel = new QFrame(&window);
    QLineEdit *bound = new QLineEdit(panel);
    QLineEdit *unbound = new QLineEdit(panel);
    QLineEdit *outside = new QLineEdit(&window);
    QString entry;
    bool swallows = true;
    QStringList log;
    PanelFields fields{failingGuard(), *panel};
};

TEST_F(PanelFieldsTest, swallowedKey_doesNotReachTheField) {
    unbound->setFocus();
    key(Qt::Key_5);
    EXPECT_EQ(taken(), QStringList{"free 53"});
    EXPECT_EQ(unbound->text(), "");
}

TEST_F(PanelFieldsTest, keyThatNobodySwallows_isTyped) {
    swallows = false;
    unbound->setFocus();
    key(Qt::Key_5);
    EXPECT_EQ(unbound->text(), "5");
}

TEST_F(PanelFieldsTest, keysWithoutAPrintableCharacter_areCodesOfTheEntry) {
    unbound->setFocus();
    for (const Qt::Key code : {Qt::Key_Backspace, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
        key(code);
    }
    EXPECT_EQ(taken(), (QStringList{"free 8", "free 13", "free 13", "free 27"}));
}

TEST_F(PanelFieldsTest, arrowsFunctionKeysAndCombinations_areNoKeysOfAnEntry) {
    unbound->setFocus();
    for (const Qt::Key code : {Qt::Key_Left, Qt::Key_Delete, Qt::Key_F5}) {
        key(code);
    }
    key(Qt::Key_5, Qt::AltModifier);
    EXPECT_EQ(taken(), QStringList());
}

TEST_F(PanelFieldsTest, focusMovedWithinThePanel_leavesTheFieldAlone) {
    bound->setFocus();
    unbound->setFocus();
    EXPECT_EQ(taken(), QStringList{"bound left"});
}

TEST_F(PanelFieldsTest, focusMovedOutOfThePanel_leavesTheFieldAndThenThePanel) {
    bound->setFocus();
    outside->setFocus();
    EXPECT_EQ(taken(), (QStringList{"bound left", "panel left"}));
}

TEST_F(PanelFieldsTest, fieldDisabledWithTheFocus_isToldSoInsteadOfALoss) {
    bound->setFocus();
    bound->setEnabled(false);
    EXPECT_EQ(taken(), QStringList{"bound disabled"});
}

TEST_F(PanelFieldsTest, openEntry_isShownWhateverChangesTheText) {
    openBound("12");
    EXPECT_EQ(bound->text(), "12");
    bound->setText("something else");
    EXPECT_EQ(bound->text(), "12");
    bound->setCursorPosition(0);
    EXPECT_EQ(bound->cursorPosition(), 2);
    EXPECT_TRUE(fields.isOpenIn(*bound));
    EXPECT_FALSE(fields.isOpenIn(*unbound));
}

TEST_F(PanelFieldsTest, closedEntry_isNotKeptShown) {
    openBound("12");
    fields.close();
    bound->setText("stored");
    EXPECT_EQ(bound->text(), "stored");
    EXPECT_FALSE(fields.isOpenIn(*bound));
}

TEST_F(PanelFieldsTest, arrowsInAnOpenEntry_areSwallowed) {
    openBound("12");
    swallows = false;
    QObject &filter = fields;
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    EXPECT_TRUE(filter.eventFilter(bound, &down));
    fields.close();
    EXPECT_FALSE(filter.eventFilter(bound, &down));
}

TEST_F(PanelFieldsTest, pastedText_comesAsKeysToTheBoundFieldAlone) {
    QGuiApplication::clipboard()->setText("78");
    openBound("");
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(taken(), (QStringList{"bound 55", "bound 56"}));
    unbound->setFocus();
    log.clear();
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(taken(), QStringList());
    EXPECT_EQ(unbound->text(), "78");
}

TEST_F(PanelFieldsTest, middleButton_pastesTheSelectionAndNotTheClipboard) {
    // A display without a selection, such as that of the tests, has an empty one.
    QClipboard &clipboard = *QGuiApplication::clipboard();
    clipboard.setText("78");
    clipboard.setText("5", QClipboard::Selection);
    openBound("");
    QTest::mouseClick(bound, Qt::MiddleButton);
    EXPECT_EQ(taken(), clipboard.supportsSelection() ? QStringList{"bound 53"} : QStringList());
    EXPECT_EQ(bound->text(), "");
    QTest::mouseClick(bound, Qt::LeftButton);
    EXPECT_EQ(taken(), QStringList());
}

TEST_F(PanelFieldsTest, errorOfThePanel_goesToTheGuard) {
    QStringList errors;
    PanelFields guarded(ErrorGuard([&](const UntrappedError &error) { errors += error.message(); }),
                        *panel);
    PanelFields::Field failing;
    failing.takeKey = [](char16_t /*key*/) -> bool {
        throw UntrappedError(UntrappedError::Kind::BadValue, "of the panel");
    };
    guarded.add(*outside, *outside, failing);
    outside->setFocus();
    key(Qt::Key_5);
    EXPECT_EQ(errors, QStringList{"of the panel"});
}

} // namespace
} // namespace veldron
