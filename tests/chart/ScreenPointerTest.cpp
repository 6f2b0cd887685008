// SPDX-License-Identifier: MIT
#include "chart/ScreenPointer.h"

#include <QCursor>
#include <QGuiApplication>

#include <gtest/gtest.h>

namespace veldron {
namespace {

TEST(ScreenPointer, anyNumberOfShapes_areOneOverride) {
    ScreenPointer pointer;
    for (const PointerShape shape : {PointerShape::NorthSouth, PointerShape::EastWest,
                                     PointerShape::Hourglass, PointerShape::Hourglass}) {
        pointer.setShape(shape);
        EXPECT_EQ(pointer.shape(), shape);
    }
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    pointer.setShape(PointerShape::Default);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST(ScreenPointer, destroyed_leavesTheOrdinaryPointer) {
    {
        ScreenPointer pointer;
        pointer.setShape(PointerShape::EastWest);
        EXPECT_NE(QGuiApplication::overrideCursor(), nullptr);
    }
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

} // namespace
} // namespace veldron
