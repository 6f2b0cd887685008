// SPDX-License-Identifier: MIT
#include "app/ActivityPicture.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QTest>

namespace veldron {
namespace {

QImage imageOf(ActivityImage image) {
    ActivityPicture picture;
    picture.setImage(image);
    return picture.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

/// Pixels along the middle line that are not of the ground.
int dotWidth(const QImage &image) {
    int count = 0;
    for (int x = 0; x < image.width(); ++x) {
        count += image.pixelColor(x, image.height() / 2) != image.pixelColor(0, 0) ? 1 : 0;
    }
    return count;
}

bool isGrey(QColor colour) {
    return colour.red() == colour.green() && colour.green() == colour.blue();
}

TEST(ActivityPicture, allImages_are24PixelsOnGrey) {
    for (const ActivityImage image :
         {ActivityImage::Blank, ActivityImage::Idle, ActivityImage::Busy}) {
        const QImage shown = imageOf(image);
        EXPECT_EQ(shown.size(), QSize(24, 24));
        EXPECT_TRUE(isGrey(shown.pixelColor(0, 0)));
        EXPECT_TRUE(isGrey(shown.pixelColor(23, 23)));
    }
}

TEST(ActivityPicture, dots_haveTheirWidths) {
    EXPECT_EQ(dotWidth(imageOf(ActivityImage::Blank)), 0);
    EXPECT_EQ(dotWidth(imageOf(ActivityImage::Idle)), 8);
    EXPECT_EQ(dotWidth(imageOf(ActivityImage::Busy)), 16);
    EXPECT_EQ(imageOf(ActivityImage::Idle).pixelColor(12, 12), QColor(255, 0, 0));
    EXPECT_EQ(imageOf(ActivityImage::Busy).pixelColor(12, 12), QColor(255, 0, 0));
}

TEST(ActivityPicture, numbers_areThoseOfTheImageList) {
    EXPECT_EQ(static_cast<int>(ActivityImage::Blank), 1);
    EXPECT_EQ(static_cast<int>(ActivityImage::Idle), 2);
    EXPECT_EQ(static_cast<int>(ActivityImage::Busy), 3);
}

/// Counts paint events.
class CountingPicture : public ActivityPicture {
public:
    int paints = 0;

protected:
    void paintEvent(QPaintEvent *event) override {
        ++paints;
        ActivityPicture::paintEvent(event);
    }
};

TEST(ActivityPicture, newImageOnTheScreen_isPaintedAtOnce) {
    CountingPicture picture;
    picture.setAttribute(Qt::WA_QuitOnClose, false);
    picture.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&picture));
    const int before = picture.paints;
    picture.setImage(ActivityImage::Busy);
    EXPECT_EQ(picture.paints, before + 1);
    picture.setImage(ActivityImage::Busy);
    EXPECT_EQ(picture.paints, before + 1);
}

TEST(ActivityPicture, name_isThatOfTheLink) {
    EXPECT_EQ(ActivityPicture().accessibleName(), "Link activity");
}

TEST(ActivityPicture, eachImage_isTold) {
    ActivityPicture picture;
    EXPECT_EQ(picture.accessibleDescription(), "No link");
    picture.setImage(ActivityImage::Idle);
    EXPECT_EQ(picture.accessibleDescription(), "Link idle");
    picture.setImage(ActivityImage::Busy);
    EXPECT_EQ(picture.accessibleDescription(), "Poll running");
}

} // namespace
} // namespace veldron
