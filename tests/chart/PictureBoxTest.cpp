// SPDX-License-Identifier: MIT
#include "chart/PictureBox.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace veldron {
namespace {

class Box : public testing::Test {
protected:
    Box() {
        box.resize(60, 40);
        box.prepare();
        box.surface().clear();
        box.show();
        QApplication::processEvents();
    }
    [[nodiscard]] quint32 onScreen(int x, int y) {
        return box.grab().toImage().pixel(x, y) & 0x00FFFFFFU;
    }

    void refresh() { box.Refresh({{}, 0, {box.surface().takeChange()}}); }

    PictureBox box{nullptr};
};

using PictureBoxTest = Box;

TEST_F(PictureBoxTest, surface_isWhatTheWindowShows) {
    box.surface().line({5, 5}, {15, 5}, 0x000000FF);
    refresh();
    EXPECT_EQ(onScreen(7, 5), 0x00FF0000U);
}

TEST_F(PictureBoxTest, painting_asksForNoDrawing) {
    QSignalSpy exposed(&box, &PictureBox::exposed);
    box.surface().line({5, 5}, {15, 5}, 0x000000FF);
    refresh();
    for (int i = 0; i < 5; ++i) {
        box.repaint();
        QApplication::processEvents();
    }
    EXPECT_EQ(exposed.count(), 0);
}

TEST_F(PictureBoxTest, newSize_isToldAndTaken) {
    const quint64 before = box.surface().generation();
    EXPECT_FALSE(box.prepare());
    EXPECT_EQ(box.surface().generation(), before);
    box.resize(80, 50);
    EXPECT_FALSE(box.fits());
    EXPECT_TRUE(box.prepare());
    EXPECT_TRUE(box.fits());
    EXPECT_EQ(box.surface().width(), 80);
    EXPECT_NE(box.surface().generation(), before);
}

TEST_F(PictureBoxTest, paintedBeforeItsImagesFit_asksForDrawingOnce) {
    box.resize(80, 50);
    QSignalSpy exposed(&box, &PictureBox::exposed);
    box.repaint();
    EXPECT_EQ(exposed.count(), 0); // not within the paint event
    QApplication::processEvents();
    EXPECT_EQ(exposed.count(), 1);
}

TEST_F(PictureBoxTest, text_hasItsUpperLeftCornerAtItsPlace) {
    box.Print(box.surface(), {{{10, 12}, QStringLiteral("H8"), 0x00FFFFFF}});
    int left = 60;
    int top = 40;
    int bottom = 0;
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 60; ++x) {
            if (box.surface().pixel(x, y) != 0) {
                left = std::min(left, x);
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
        }
    }
    EXPECT_GE(left, 10);
    EXPECT_LE(left, 13);
    EXPECT_GE(top, 12);
    EXPECT_LE(bottom, 12 + 14);
}

TEST_F(PictureBoxTest, textWidth_growsWithTheText) {
    EXPECT_EQ(box.textWidth(QString()), 0);
    EXPECT_GT(box.textWidth(QStringLiteral("10.000.000")), 40);
    EXPECT_LT(box.textWidth(QStringLiteral("10.000.000")), 80);
}

TEST_F(PictureBoxTest, secondClick_isADoubleClickAndNoPress) {
    QSignalSpy pressed(&box, &PictureBox::pressed);
    QSignalSpy doubled(&box, &PictureBox::doubleClicked);
    QTest::mouseClick(&box, Qt::LeftButton, {}, {5, 5});
    QTest::mouseDClick(&box, Qt::LeftButton, {}, {5, 5});
    EXPECT_EQ(pressed.count(), 1);
    EXPECT_EQ(doubled.count(), 1);
}

TEST_F(PictureBoxTest, secondClickOfAnotherButton_isAPress) {
    QSignalSpy pressed(&box, &PictureBox::pressed);
    QSignalSpy doubled(&box, &PictureBox::doubleClicked);
    QTest::mouseDClick(&box, Qt::RightButton, {}, {5, 6});
    ASSERT_GT(pressed.count(), 0);
    EXPECT_EQ(pressed.last().at(0).toPoint(), QPoint(5, 6));
    EXPECT_EQ(pressed.last().at(1).value<Qt::MouseButton>(), Qt::RightButton);
    const auto before = pressed.count();
    QTest::mousePress(&box, Qt::RightButton, {}, {5, 6});
    EXPECT_EQ(pressed.count(), before + 1);
    EXPECT_EQ(doubled.count(), 0);
}

TEST_F(PictureBoxTest, keysThatScrollNothing_areLeftToTheWindow) {
    QSignalSpy scrolled(&box, &PictureBox::scrollKeyPressed);
    for (const auto &[code, isTaken] :
         {std::pair(Qt::Key_PageUp, true), std::pair(Qt::Key_PageDown, true),
          std::pair(Qt::Key_Home, true), std::pair(Qt::Key_End, false),
          std::pair(Qt::Key_A, false)}) {
        scrolled.clear();
        QKeyEvent key(QEvent::KeyPress, code, Qt::NoModifier);
        QApplication::sendEvent(&box, &key);
        EXPECT_EQ(key.isAccepted(), isTaken) << code;
        EXPECT_EQ(scrolled.count(), isTaken ? 1 : 0) << code;
    }
}

} // namespace
} // namespace veldron
