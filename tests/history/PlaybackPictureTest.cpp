// SPDX-License-Identifier: MIT
#include "history/PlaybackPicture.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QPalette>

#include <array>

namespace veldron {
namespace {

constexpr std::array kShapes{PlaybackShape::DoubleArrow, PlaybackShape::Bars,
                             PlaybackShape::ArrowRight, PlaybackShape::ArrowLeft,
                             PlaybackShape::Cross};

QImage drawn(PlaybackShape shape, const QColor &colour, qreal density,
             QIcon::Mode mode = QIcon::Normal) {
    return PlaybackPicture::icon(shape, colour)
        .pixmap(PlaybackPicture::sizeOf(shape), density, mode)
        .toImage()
        .convertToFormat(QImage::Format_ARGB32);
}

int inkOf(const QImage &picture) {
    int ink = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            ink += qAlpha(picture.pixel(x, y)) > 127 ? 1 : 0;
        }
    }
    return ink;
}

/// The corners of all outlines, seen through \a mirror.
std::set<std::pair<qreal, qreal>> cornersOf(PlaybackShape shape, const QTransform &mirror = {}) {
    std::set<std::pair<qreal, qreal>> corners;
    for (const QPolygonF &outline : PlaybackPicture::outlinesOf(shape)) {
        for (const QPointF &corner : outline) {
            const QPointF seen = mirror.map(corner);
            corners.emplace(seen.x(), seen.y());
        }
    }
    return corners;
}

TEST(PlaybackPicture, sizes_areSixteenHighAndTheDoubleArrowIsTwiceAsWide) {
    EXPECT_EQ(PlaybackPicture::sizeOf(PlaybackShape::DoubleArrow), QSize(32, 16));
    EXPECT_EQ(PlaybackPicture::sizeOf(PlaybackShape::Bars), QSize(16, 16));
    EXPECT_EQ(PlaybackPicture::sizeOf(PlaybackShape::ArrowRight), QSize(16, 16));
    EXPECT_EQ(PlaybackPicture::sizeOf(PlaybackShape::ArrowLeft), QSize(16, 16));
    EXPECT_EQ(PlaybackPicture::sizeOf(PlaybackShape::Cross), QSize(16, 16));
}

TEST(PlaybackPicture, outlines_stayInsideThePicture) {
    for (const PlaybackShape shape : kShapes) {
        const QRectF frame(QPointF(0, 0), QSizeF(PlaybackPicture::sizeOf(shape)));
        EXPECT_FALSE(PlaybackPicture::outlinesOf(shape).empty());
        for (const QPolygonF &outline : PlaybackPicture::outlinesOf(shape)) {
            EXPECT_TRUE(frame.contains(outline.boundingRect()));
        }
    }
}

TEST(PlaybackPicture, outlines_areTheSameUpsideDown) {
    for (const PlaybackShape shape : kShapes) {
        EXPECT_EQ(cornersOf(shape, QTransform(1, 0, 0, -1, 0, 16)), cornersOf(shape));
    }
}

TEST(PlaybackPicture, crossAndBars_areTheSameFromBehind) {
    for (const PlaybackShape shape : {PlaybackShape::Cross, PlaybackShape::Bars}) {
        EXPECT_EQ(cornersOf(shape, QTransform(-1, 0, 0, 1, 16, 0)), cornersOf(shape));
    }
}

TEST(PlaybackPicture, doubleDensity_drawsTheShapeAnewWithFourTimesThePixels) {
    for (const PlaybackShape shape : kShapes) {
        const QImage single = drawn(shape, Qt::black, 1.0);
        const QImage twice = drawn(shape, Qt::black, 2.0);
        EXPECT_EQ(single.size(), PlaybackPicture::sizeOf(shape));
        EXPECT_EQ(twice.size(), 2 * PlaybackPicture::sizeOf(shape));
        EXPECT_GT(inkOf(single), 0);
        EXPECT_NEAR(inkOf(twice), 4 * inkOf(single), inkOf(single) / 2);
    }
}

TEST(PlaybackPicture, colour_fillsTheShape) {
    EXPECT_EQ(drawn(PlaybackShape::DoubleArrow, Qt::red, 1.0).pixelColor(8, 8), QColor(Qt::red));
    EXPECT_EQ(drawn(PlaybackShape::DoubleArrow, Qt::black, 1.0).pixelColor(8, 8),
              QColor(Qt::black));
}

TEST(PlaybackPicture, noColour_isThatOfTheTextsOnButtonsWhenItIsPainted) {
    const QIcon icon = PlaybackPicture::icon(PlaybackShape::DoubleArrow);
    const QPalette before = QGuiApplication::palette();
    for (const Qt::GlobalColor colour : {Qt::white, Qt::black}) {
        QPalette palette = before;
        palette.setColor(QPalette::Active, QPalette::ButtonText, colour);
        QGuiApplication::setPalette(palette);
        EXPECT_EQ(icon.pixmap(32, 16).toImage().pixelColor(8, 8), QColor(colour));
    }
    QGuiApplication::setPalette(before);
}

TEST(PlaybackPicture, disabledButton_isDrawnInAnotherColour) {
    const QImage normal = drawn(PlaybackShape::ArrowLeft, Qt::black, 1.0);
    const QImage disabled = drawn(PlaybackShape::ArrowLeft, Qt::black, 1.0, QIcon::Disabled);
    EXPECT_NE(normal.pixelColor(10, 8), disabled.pixelColor(10, 8));
    EXPECT_EQ(disabled.pixelColor(10, 8).alpha(), 255);
}

TEST(PlaybackPicture, arrows_pointTheirWay) {
    const QImage right = drawn(PlaybackShape::ArrowRight, Qt::black, 1.0);
    const QImage left = drawn(PlaybackShape::ArrowLeft, Qt::black, 1.0);
    EXPECT_GT(right.pixelColor(4, 4).alpha(), 0);
    EXPECT_EQ(right.pixelColor(12, 4).alpha(), 0);
    EXPECT_EQ(left.pixelColor(3, 4).alpha(), 0);
    EXPECT_GT(left.pixelColor(11, 4).alpha(), 0);
}

} // namespace
} // namespace veldron
