// SPDX-License-Identifier: MIT
#include "chart/OverlayLine.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPixmap>

namespace veldron {
namespace {

class OverlayLineTest : public testing::Test {
protected:
    OverlayLineTest() { parent.resize(200, 100); }
    [[nodiscard]] QRect placed(QPoint from, QPoint to) {
        line.setEnds(from, to);
        return line.geometry();
    }

    QWidget parent;
    OverlayLine line{QStringLiteral("Line1"), &parent};
};

TEST_F(OverlayLineTest, newLine_isHiddenAndLetsThePointerThrough) {
    EXPECT_FALSE(line.Visible());
    EXPECT_EQ(line.objectName(), "Line1");
    EXPECT_TRUE(line.testAttribute(Qt::WA_TransparentForMouseEvents));
}

TEST_F(OverlayLineTest, verticalLine_coversItsRowsButTheLast) {
    EXPECT_EQ(placed({7, 10}, {7, 60}), QRect(7, 10, 1, 50));
    EXPECT_EQ(placed({7, 60}, {7, 10}), QRect(7, 10, 1, 50));
}

TEST_F(OverlayLineTest, horizontalLine_coversItsColumnsButTheLast) {
    EXPECT_EQ(placed({10, 7}, {60, 7}), QRect(10, 7, 50, 1));
}

TEST_F(OverlayLineTest, coordinatesBeyondAnyWidget_areKeptAndDrawnAtALimit) {
    EXPECT_EQ(placed({-100'000, 0}, {-100'000, 200'000}), QRect(-30'000, 0, 1, 30'000));
    EXPECT_EQ(line.X1(), -100'000);
    EXPECT_EQ(line.Y2(), 200'000);
}

TEST_F(OverlayLineTest, singleCoordinates_moveTheirEndAlone) {
    line.setEnds({1, 2}, {1, 50});
    line.setX(9);
    line.setY2(40);
    EXPECT_EQ(line.geometry(), QRect(9, 2, 1, 38));
    EXPECT_EQ(line.X2(), 9);
}

TEST_F(OverlayLineTest, lineToldToShow_isVisibleWithoutAWindow) {
    line.showIf(true);
    EXPECT_TRUE(line.Visible());
    line.showIf(false);
    EXPECT_FALSE(line.Visible());
}

TEST_F(OverlayLineTest, colour_isReadFromBlueGreenRed) {
    line.setEnds({0, 0}, {0, 5});
    line.setBorderColor(0x00332211);
    EXPECT_EQ(line.grab().toImage().pixelColor(0, 0), QColor(0x11, 0x22, 0x33));
}

} // namespace
} // namespace veldron
