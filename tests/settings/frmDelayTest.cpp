// SPDX-License-Identifier: MIT
#include "settings/frmDelay.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStringList>
#include <QTest>

#include <cstdlib>

namespace veldron {
namespace {

class FrmDelayTest : public testing::Test {
protected:
    FrmDelayTest() {
        m_form.show();
        text()->clear();
    }
    QLineEdit *text() { return m_form.findChild<QLineEdit *>("Text1"); }
    /// The text after each key.
    QStringList typed(const char *keys) {
        QStringList texts;
        for (const char *key = keys; *key != '\0'; ++key) {
            QTest::keyClick(text(), *key);
            texts.append(text()->text());
        }
        return texts;
    }

    frmDelay m_form{ErrorGuard([](const UntrappedError &) {})};
};

TEST(FrmDelay, start_hasItsTexts) {
    const frmDelay form{ErrorGuard([](const UntrappedError &) {})};
    EXPECT_EQ(form.windowTitle(), "LoadSettings delay");
    EXPECT_EQ(form.findChild<QLineEdit *>("Text1")->text(), "500");
    EXPECT_EQ(form.findChild<QLabel *>("Label1")->text(), "Delay in ms (0 - 1000)");
    EXPECT_EQ(form.findChild<QLabel *>("Label1")->buddy(), form.findChild<QWidget *>("Text1"));
    EXPECT_EQ(form.findChild<QPushButton *>("cmdOK")->text(), "OK");
}

TEST_F(FrmDelayTest, field_standsBehindItsLabelAndAboveTheButton) {
    const QRect label = m_form.findChild<QLabel *>("Label1")->geometry();
    const QRect field = text()->geometry();
    EXPECT_GT(field.left(), label.right());
    EXPECT_LE(std::abs(field.center().y() - label.center().y()), 1);
    EXPECT_GT(m_form.findChild<QPushButton *>("cmdOK")->geometry().top(), field.bottom());
    EXPECT_TRUE(m_form.rect().contains(field));
}

TEST_F(FrmDelayTest, twoThousandTyped_becomesOneThousandAtTheFourthDigit) {
    EXPECT_EQ(typed("2000"), (QStringList{"2", "20", "200", "1000"}));
}

TEST_F(FrmDelayTest, oneTyped_isLeftAlone) {
    EXPECT_EQ(typed("1"), QStringList{"1"});
}

TEST_F(FrmDelayTest, oneThousandTyped_isLeftAlone) {
    EXPECT_EQ(typed("1000"), (QStringList{"1", "10", "100", "1000"}));
}

TEST_F(FrmDelayTest, negativeNumberTyped_becomesZeroAtItsDigit) {
    EXPECT_EQ(typed("-5"), (QStringList{"-", "0"}));
}

TEST_F(FrmDelayTest, lettersTyped_countAsZeroAndStay) {
    EXPECT_EQ(typed("ab"), (QStringList{"a", "ab"}));
}

TEST_F(FrmDelayTest, okButton_hidesTheForm) {
    QTest::mouseClick(m_form.findChild<QPushButton *>("cmdOK"), Qt::LeftButton);
    EXPECT_FALSE(m_form.isVisible());
}

TEST_F(FrmDelayTest, closeBoxAndEscape_hideTheForm) {
    m_form.close();
    EXPECT_FALSE(m_form.isVisible());
    m_form.show();
    QTest::keyClick(&m_form, Qt::Key_Escape);
    EXPECT_FALSE(m_form.isVisible());
}

TEST_F(FrmDelayTest, reopenedDialog_hasTheFocusOnItsFirstControl) {
    m_form.show();
    EXPECT_EQ(m_form.focusWidget(), m_form.findChild<QWidget *>("Text1"));
    m_form.findChild<QWidget *>("cmdOK")->setFocus();
    m_form.accept();
    m_form.show();
    EXPECT_EQ(m_form.focusWidget(), m_form.findChild<QWidget *>("Text1"));
}

} // namespace
} // namespace veldron
