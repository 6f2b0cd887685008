// SPDX-License-Identifier: MIT
#include "app/LinkScreen.h"

#include "tests/app/FakeDialogs.h"

#include <gtest/gtest.h>

#include <QCursor>
#include <QGuiApplication>

namespace veldron {
namespace {

class LinkScreenTest : public testing::Test {
protected:
    ScreenCursor cursor;
    FakeDialogs dialogs;
    LinkScreen screen{cursor, dialogs};
};

TEST_F(LinkScreenTest, hourglass_comesAndGoes) {
    screen.setHourglass(true);
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    screen.setHourglass(false);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(LinkScreenTest, message_isABoxWithItsTitle) {
    screen.showMessage("Title", "The port is in use.");
    EXPECT_EQ(dialogs.log(), QStringList{"message"});
    EXPECT_EQ(dialogs.titles(), QStringList{"Title"});
    EXPECT_EQ(dialogs.texts(), QStringList{"The port is in use."});
}

} // namespace
} // namespace veldron
