// SPDX-License-Identifier: MIT
#include "settings/SettingsDialog.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

namespace veldron {
namespace {

/// A dialog with two buttons, of which the second is the first control.
class TwoButtons : public SettingsDialog {
public:
    TwoButtons() : SettingsDialog(ErrorGuard([](const UntrappedError &) {}), nullptr) {
        auto *column = new QVBoxLayout(this);
        column->addWidget(other);
        column->addWidget(first);
        setFirstControl(first);
    }
    QPushButton *other = new QPushButton("other");
    QPushButton *first = new QPushButton("first");
};

class SettingsDialogTest : public testing::Test {
protected:
    SettingsDialogTest() { dialog.show(); }
    TwoButtons dialog;
};

TEST_F(SettingsDialogTest, escapeAndCloseBox_hideTheDialogAsAccepted) {
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    dialog.setResult(QDialog::Rejected);
    dialog.show();
    dialog.close();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

TEST_F(SettingsDialogTest, eachTimeItComesUp_theFirstControlHasTheFocus) {
    EXPECT_EQ(dialog.focusWidget(), dialog.first);
    dialog.other->setFocus();
    dialog.hide();
    dialog.show();
    EXPECT_EQ(dialog.focusWidget(), dialog.first);
}

} // namespace
} // namespace veldron
