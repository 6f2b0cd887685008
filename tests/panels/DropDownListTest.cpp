// SPDX-License-Identifier: MIT
#include "panels/DropDownList.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

namespace veldron {
namespace {

// That shown rows are announced is seen by the program's tests, which have a screen reader.
class DropDownListTest : public testing::Test {
protected:
    DropDownListTest() {
        list.addItems({"one", "two", "three"});
        list.show();
    }

    DropDownList list;
    QSignalSpy picks{&list, &QComboBox::activated};
};

TEST_F(DropDownListTest, rowShownByCode_isNoPick) {
    list.showRow(2);
    EXPECT_EQ(list.currentText(), "three");
    list.showRow(-1);
    EXPECT_EQ(list.currentIndex(), -1);
    EXPECT_EQ(picks.count(), 0);
}

TEST_F(DropDownListTest, arrowKey_picksTheNextRow) {
    QTest::keyClick(&list, Qt::Key_Down);
    ASSERT_EQ(picks.count(), 1);
    EXPECT_EQ(picks[0][0].toInt(), 1);
}

TEST_F(DropDownListTest, shownRowPickedAgain_isAPick) {
    list.showPopup();
    QTest::keyClick(list.view(), Qt::Key_Return);
    EXPECT_EQ(picks.count(), 1);
}

TEST_F(DropDownListTest, wheelOverTheClosedList_goesOnToWhatLiesUnderIt) {
    list.setFocus();
    QWheelEvent wheel(QPointF(5, 5), list.mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&list, &wheel);
    EXPECT_FALSE(wheel.isAccepted());
    EXPECT_EQ(list.currentIndex(), 0);
    EXPECT_EQ(picks.count(), 0);
}

} // namespace
} // namespace veldron
