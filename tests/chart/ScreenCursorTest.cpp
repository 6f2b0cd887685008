// SPDX-License-Identifier: MIT
#include "chart/ScreenCursor.h"

#include <QCursor>
#include <QGuiApplication>

#include <gtest/gtest.h>

#include <utility>

namespace veldron {
namespace {

TEST(ScreenCursor, anyNumberOfShapes_areOneOverride) {
    ScreenCursor cursor;
    const std::pair<CursorShape, Qt::CursorShape> cases[] = {
        {CursorShape::NorthSouth, Qt::SizeVerCursor},
        {CursorShape::EastWest, Qt::SizeHorCursor},
        {CursorShape::Hourglass, Qt::WaitCursor},
        {CursorShape::Hourglass, Qt::WaitCursor}};
    for (const auto &[shape, shown] : cases) {
        cursor.setShape(shape);
        ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), shown);
    }
    cursor.setShape(CursorShape::Default);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST(ScreenCursor, destroyed_leavesTheOrdinaryCursor) {
    {
        ScreenCursor cursor;
        cursor.setShape(CursorShape::EastWest);
        EXPECT_NE(QGuiApplication::overrideCursor(), nullptr);
    }
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

} // namespace
} // namespace veldron
