// SPDX-License-Identifier: MIT
#include "history/StepButton.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QSignalSpy>
#include <QTest>

namespace veldron {
namespace {

class StepButtonTest : public testing::Test {
protected:
    StepButtonTest() {
        m_button.resize(40, 30);
        m_button.show();
    }
    void press() { QTest::mousePress(&m_button, Qt::LeftButton, Qt::NoModifier, inside()); }
    void release() { QTest::mouseRelease(&m_button, Qt::LeftButton, Qt::NoModifier, inside()); }
    void moveTo(QPoint place) {
        QMouseEvent move(QEvent::MouseMove, place, m_button.mapToGlobal(place), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&m_button, &move);
    }
    static QPoint inside() { return {20, 15}; }

    StepButton m_button{ErrorGuard([](const UntrappedError &) {})};
    QSignalSpy m_downs{&m_button, &StepButton::wentDown};
    QSignalSpy m_ups{&m_button, &StepButton::wentUp};
};

TEST_F(StepButtonTest, press_goesDownAndReleaseGoesUp) {
    press();
    EXPECT_EQ(m_downs.count(), 1);
    EXPECT_EQ(m_ups.count(), 0);
    release();
    EXPECT_EQ(m_downs.count(), 1);
    EXPECT_EQ(m_ups.count(), 1);
}

TEST_F(StepButtonTest, pointerLeavesHeldButtonAndComesBack_pressesNothingAnew) {
    press();
    moveTo({200, 200});
    moveTo(inside());
    EXPECT_EQ(m_downs.count(), 1);
    EXPECT_EQ(m_ups.count(), 0);
}

TEST_F(StepButtonTest, releaseOutsideTheButton_goesUp) {
    press();
    moveTo({200, 200});
    QTest::mouseRelease(&m_button, Qt::LeftButton, Qt::NoModifier, {200, 200});
    EXPECT_EQ(m_ups.count(), 1);
}

TEST_F(StepButtonTest, secondPressOfDoubleClick_isAPressOfItsOwn) {
    press();
    release();
    QMouseEvent second(QEvent::MouseButtonDblClick, inside(), m_button.mapToGlobal(inside()),
                       Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&m_button, &second);
    release();
    EXPECT_EQ(m_downs.count(), 2);
    EXPECT_EQ(m_ups.count(), 2);
}

TEST_F(StepButtonTest, otherMouseButtons_doNothing) {
    QTest::mouseClick(&m_button, Qt::RightButton, Qt::NoModifier, inside());
    EXPECT_EQ(m_downs.count(), 0);
    EXPECT_EQ(m_ups.count(), 0);
}

TEST_F(StepButtonTest, spaceKey_goesDownAndUpAtOnce) {
    QTest::keyPress(&m_button, Qt::Key_Space);
    EXPECT_EQ(m_downs.count(), 1);
    EXPECT_EQ(m_ups.count(), 1);
    QTest::keyRelease(&m_button, Qt::Key_Space);
    EXPECT_EQ(m_downs.count(), 1);
    EXPECT_EQ(m_ups.count(), 1);
}

TEST_F(StepButtonTest, heldSpaceKey_isOnePress) {
    QTest::keyPress(&m_button, Qt::Key_Space);
    QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ", true);
    QApplication::sendEvent(&m_button, &repeat);
    QApplication::sendEvent(&m_button, &repeat);
    EXPECT_EQ(m_downs.count(), 1);
}

TEST_F(StepButtonTest, heldButtonIsDisabled_goesUpOnce) {
    press();
    m_button.setEnabled(false);
    EXPECT_EQ(m_ups.count(), 1);
    m_button.setEnabled(true);
    release();
    EXPECT_EQ(m_ups.count(), 1);
}

TEST_F(StepButtonTest, heldButtonIsHidden_goesUpOnce) {
    press();
    m_button.hide();
    EXPECT_EQ(m_ups.count(), 1);
}

TEST_F(StepButtonTest, pressActionOfAssistiveTechnology_goesDownAndUpOnce) {
    QAccessibleInterface *const button = QAccessible::queryAccessibleInterface(&m_button);
    ASSERT_NE(button, nullptr);
    button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(m_downs.count(), 1);
    EXPECT_EQ(m_ups.count(), 1);
}

TEST_F(StepButtonTest, clickByCode_goesDownAndUpOnce) {
    m_button.click();
    EXPECT_EQ(m_downs.count(), 1);
    EXPECT_EQ(m_ups.count(), 1);
}

} // namespace
} // namespace veldron
