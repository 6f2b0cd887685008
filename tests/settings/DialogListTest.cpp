// SPDX-License-Identifier: MIT
#include "settings/DialogList.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

namespace veldron {
namespace {

class DialogListTest : public testing::Test {
protected:
    DialogListTest() {
        m_list.addRow("one", 10);
        m_list.addRow("two", 20);
        m_list.addRow("two again", 20);
        m_list.show();
    }

    DialogList m_list;
    QSignalSpy m_picks{&m_list, &QComboBox::activated};
};

TEST_F(DialogListTest, rowsAdded_selectsNone) {
    EXPECT_EQ(m_list.count(), 3);
    EXPECT_EQ(m_list.currentIndex(), -1);
    EXPECT_EQ(m_picks.count(), 0);
}

TEST_F(DialogListTest, rowAdded_keepsTheSelectedRow) {
    m_list.setCurrentIndex(1);
    m_list.addRow("three", 30);
    EXPECT_EQ(m_list.currentIndex(), 1);
}

TEST_F(DialogListTest, valueInTwoRows_isTheFirst) {
    EXPECT_EQ(m_list.rowOfValue(20), 1);
    EXPECT_EQ(m_list.rowOfValue(21), -1);
}

TEST_F(DialogListTest, selectedRow_givesItsItemValue) {
    m_list.setCurrentIndex(0);
    EXPECT_EQ(m_list.itemValue(), 10);
}

TEST_F(DialogListTest, selectionByCode_isNoPick) {
    m_list.setCurrentIndex(2);
    EXPECT_EQ(m_picks.count(), 0);
}

TEST_F(DialogListTest, arrowKey_picksTheNextRow) {
    m_list.setCurrentIndex(0);
    QTest::keyClick(&m_list, Qt::Key_Down);
    EXPECT_EQ(m_list.currentIndex(), 1);
    EXPECT_EQ(m_picks.count(), 1);
}

TEST_F(DialogListTest, selectedRowPickedAgain_isAPick) {
    m_list.setCurrentIndex(1);
    m_list.showPopup();
    QTest::keyClick(m_list.view(), Qt::Key_Return);
    EXPECT_EQ(m_list.currentIndex(), 1);
    EXPECT_EQ(m_picks.count(), 1);
}

TEST_F(DialogListTest, wheelOverTheClosedList_picksNothing) {
    m_list.setCurrentIndex(0);
    m_list.setFocus();
    QWheelEvent wheel(QPointF(5, 5), m_list.mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&m_list, &wheel);
    EXPECT_EQ(m_list.currentIndex(), 0);
    EXPECT_EQ(m_picks.count(), 0);
    EXPECT_FALSE(wheel.isAccepted());
}

} // namespace
} // namespace veldron
