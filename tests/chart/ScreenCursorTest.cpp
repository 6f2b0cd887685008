// SPDX-License-Identifier: MIT
#include "chart/ScreenCursor.h"

#include <QCursor>
#include <QGuiApplication>

#include <gtest/gtest.h>

namespace veldron {
namespace {

TEST(ScreenCursor, anyNumberOfShapes_areOneOverride) {
    ScreenCursor cursor;
    for (const CursorShape shape : {CursorShape::NorthSouth, CursorShape::EastWest,
                                    CursorShape::Hourglass, CursorShape::Hourglass}) {
        cursor.setShape(shape);
        EXPECT_EQ(cursor.shape(), shape);
    }
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
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
