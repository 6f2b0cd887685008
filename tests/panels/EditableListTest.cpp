// SPDX-License-Identifier: MIT
#include "panels/EditableList.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

namespace veldron {
namespace {

class EditableListTest : public testing::Test {
protected:
    EditableListTest() {
        list.addItems({"5.000", "12.500", "25.000"});
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        list.setFocus();
    }
    void type(const char *keys) { QTest::keyClicks(&list, QLatin1String(keys)); }
    /// As the toolkit does before it delivers a key that closes the rows.
    void closeRows() {
        list.showPopup();
        list.hidePopup();
    }

    QWidget window;
    EditableList list{&window};
    QSignalSpy picks{&list, &QComboBox::activated};
};

TEST_F(EditableListTest, digitsOfARow_areItsHertz) {
    EXPECT_EQ(list.rowHertz(0), Hertz::fromWhole(5'000));
    EXPECT_EQ(list.rowHertz(1), Hertz::fromWhole(12'500));
}

TEST_F(EditableListTest, valueOfARow_makesItThePresentRowUnderItsOwnText) {
    list.showValue("0.02500", Hertz::fromWhole(25'000));
    EXPECT_EQ(list.currentIndex(), 2);
    EXPECT_EQ(list.currentText(), "0.02500");
    EXPECT_EQ(picks.count(), 0);
}

TEST_F(EditableListTest, valueWithoutARow_isShownWithNone) {
    list.showValue("7.000", Hertz::fromWhole(7'000));
    EXPECT_EQ(list.currentIndex(), -1);
    EXPECT_EQ(list.currentText(), "7.000");
}

TEST_F(EditableListTest, presentRowTypedOver_isShownWholeAgain) {
    list.showRowText(0, "none");
    list.setEditText("5.0");
    list.showRowText(0, "none");
    EXPECT_EQ(list.currentText(), "5.000");
}

TEST_F(EditableListTest, noRow_showsTheTextForNone) {
    list.showRowText(-1, "none");
    EXPECT_EQ(list.currentIndex(), -1);
    EXPECT_EQ(list.currentText(), "none");
}

TEST_F(EditableListTest, typedTextThatIsARow_picksAddsAndCompletesNothing) {
    list.showRowText(-1, "");
    type("12.5");
    EXPECT_EQ(list.currentText(), "12.5");
    type("00\r");
    list.clearFocus();
    EXPECT_EQ(list.currentIndex(), -1);
    EXPECT_EQ(list.count(), 3);
    EXPECT_EQ(picks.count(), 0);
}

TEST_F(EditableListTest, keyThatClosedTheRows_isNoKeyOfTheText) {
    list.showRowText(-1, "");
    closeRows();
    EXPECT_TRUE(list.isClosingKey());
    type("1");
    EXPECT_FALSE(list.isClosingKey());
    type("2");
    EXPECT_EQ(list.currentText(), "2");
}

TEST_F(EditableListTest, rowsClosedByTheMouse_leaveTheNextKeyAlone) {
    list.showRowText(-1, "");
    closeRows();
    QCoreApplication::processEvents();
    type("1");
    EXPECT_EQ(list.currentText(), "1");
}

TEST_F(EditableListTest, rowsThatWereNotOpen_closeWithoutAKey) {
    list.hidePopup();
    EXPECT_FALSE(list.isClosingKey());
}

} // namespace
} // namespace veldron
