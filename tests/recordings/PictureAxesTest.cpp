// SPDX-License-Identifier: MIT
#include "recordings/PictureAxes.h"

#include "common/TimeOfDay.h"

#include <gtest/gtest.h>

#include <QDate>
#include <QTime>

#include <algorithm>
#include <utility>
#include <vector>

namespace veldron {
namespace {

constexpr qint64 kHour = 3600;

qint64 momentAt(const QDate &date, qint64 second) {
    return date.toJulianDay() * kSecondsPerDay + second;
}

/// The axes of ten megahertz from \a begin on.
PictureAxes axesOf(QSize size, qint64 begin, qint64 seconds, bool hasTrace = false) {
    const WaterfallRaster::Extent extent{begin, begin + seconds, Hertz::fromWhole(140000000),
                                         Hertz::fromWhole(150000000)};
    return PictureAxes::of(size, PictureLayout::of(size, true, hasTrace), extent, LevelScale());
}

QStringList textsOf(const PictureAxes &axes, PictureAxes::Label::Anchor anchor) {
    QStringList texts;
    for (const PictureAxes::Label &label : axes.labels) {
        if (label.anchor == anchor) {
            texts += label.text;
        }
    }
    return texts;
}

const qint64 kNoon = momentAt(QDate(2005, 3, 21), 12 * kHour);

TEST(PictureAxes, timeSpacing_leavesFortyPixels) {
    struct Case {
        qint64 seconds;
        int height;
        qint64 spacing;
    };
    for (const Case &row :
         {Case{10, 400, 1}, Case{10, 399, 2}, Case{600, 400, 60}, Case{kHour, 400, 600},
          Case{kSecondsPerDay, 746, 7200},
          Case{qint64{100} * kSecondsPerDay, 746, qint64{6} * kSecondsPerDay},
          Case{qint64{3650} * kSecondsPerDay, 40, qint64{3651} * kSecondsPerDay}}) {
        EXPECT_EQ(PictureAxes::timeSpacing(row.seconds, row.height), row.spacing)
            << row.seconds << " in " << row.height;
    }
}

TEST(PictureAxes, timeText_isAsFineAsTheTicks) {
    const qint64 at = kNoon + 61;
    EXPECT_EQ(PictureAxes::timeText(at, 1), "12:01:01");
    EXPECT_EQ(PictureAxes::timeText(at, 60), "12:01");
    EXPECT_EQ(PictureAxes::timeText(at, kSecondsPerDay), "2005-03-21");
    EXPECT_EQ(PictureAxes::timeText(at, 0), "2005-03-21 12:01:01");
    EXPECT_EQ(PictureAxes::timeText(kNoon + 12 * kHour, 60), "2005-03-22");
}

TEST(PictureAxes, times_standOnTheClock) {
    const PictureAxes axes = axesOf({800, 400}, kNoon + 30, 600);
    EXPECT_EQ(textsOf(axes, PictureAxes::Label::Anchor::Right),
              (QStringList{"12:10", "12:08", "12:06", "12:04", "12:02"}));
    // 346 rows for 600 seconds, the last of which ends at 12:10:30.
    ASSERT_EQ(axes.timeRows.size(), 5U);
    EXPECT_EQ(axes.timeRows[0], 24 + 29 * 346 / 600);
    EXPECT_EQ(axes.timeRows[4], 24 + 509 * 346 / 600);
}

/// What a label covers, as wide as letters of the picture's font are at most.
QRect boxOf(const PictureAxes::Label &label) {
    QRect box(0, 0, 8 * static_cast<int>(label.text.size()), 14);
    box.moveCenter(label.at);
    if (label.anchor == PictureAxes::Label::Anchor::Right) {
        box.moveRight(label.at.x());
    }
    return box;
}

TEST(PictureAxes, textsOfADay_haveRoomBesideEachOther) {
    for (const QSize size : {QSize(1280, 800), QSize(2560, 1600)}) {
        for (const bool hasTrace : {false, true}) {
            const PictureAxes axes =
                axesOf(size, kNoon - kSecondsPerDay / 2, kSecondsPerDay, hasTrace);
            std::vector<QRect> taken;
            for (const PictureAxes::Label &label : axes.labels) {
                const QRect box = boxOf(label);
                EXPECT_TRUE(QRect({0, 0}, size).contains(box)) << label.text.toStdString();
                EXPECT_TRUE(std::none_of(taken.begin(), taken.end(), [&](const QRect &other) {
                    return other.intersects(box);
                })) << label.text.toStdString();
                taken.push_back(box);
            }
        }
    }
}

TEST(PictureAxes, timesOfADay_areWholeHours) {
    for (const auto &[height, hours] : {std::pair(800, 2), std::pair(1600, 1)}) {
        const PictureAxes axes = axesOf({1280, height}, kNoon - kSecondsPerDay / 2, kSecondsPerDay);
        QStringList expected{"2005-03-21"};
        for (int hour = hours; hour < 24; hour += hours) {
            expected.prepend(QTime(hour, 0).toString("HH:mm"));
        }
        EXPECT_EQ(textsOf(axes, PictureAxes::Label::Anchor::Right), expected) << height;
    }
}

TEST(PictureAxes, midnight_isADate) {
    const PictureAxes axes = axesOf({800, 400}, kNoon, kSecondsPerDay);
    const QStringList texts = textsOf(axes, PictureAxes::Label::Anchor::Right);
    EXPECT_TRUE(texts.contains("2005-03-22"));
    EXPECT_TRUE(texts.contains("21:00"));
}

TEST(PictureAxes, frequencies_standBelowTheirColumn) {
    const PictureAxes axes = axesOf({800, 400}, kNoon, 600);
    const PictureLayout layout = PictureLayout::of({800, 400}, true, false);
    QStringList texts;
    for (const PictureAxes::Label &label : axes.labels) {
        if (label.at.y() > layout.fall.bottom()) {
            const double share = (QString(label.text).remove('.').toDouble() - 140e6) / 10e6;
            EXPECT_NEAR(label.at.x(), layout.fall.left() + share * (layout.fall.width() - 1), 1);
            texts += label.text;
        }
    }
    EXPECT_GE(texts.size(), 4);
    EXPECT_EQ(texts.value(0), "140.000.000");
}

TEST(PictureAxes, everything_standsInThePicture) {
    for (const QSize size : {QSize(300, 200), QSize(1280, 800), QSize(4000, 3000)}) {
        for (const qint64 seconds : {qint64{10}, kHour, qint64{100} * kSecondsPerDay}) {
            for (const bool hasTrace : {false, true}) {
                const PictureAxes axes = axesOf(size, kNoon, seconds, hasTrace);
                const QRect picture({0, 0}, size);
                for (const PlannedLine &line : axes.lines) {
                    EXPECT_TRUE(picture.contains(line.from));
                    EXPECT_TRUE(picture.adjusted(0, 0, 1, 1).contains(line.to));
                }
                EXPECT_TRUE(
                    std::all_of(axes.labels.begin(), axes.labels.end(),
                                [&](const auto &label) { return picture.contains(label.at); }));
            }
        }
    }
}

TEST(PictureAxes, caption_saysAsMuchAsHasRoom) {
    const auto captionOf = [](int width) {
        return axesOf({width, 300}, kNoon, 600).labels.back().text;
    };
    EXPECT_EQ(captionOf(600),
              "2005-03-21 12:00:00 to 2005-03-21 12:09:59, local time of the recording; Hz");
    EXPECT_EQ(captionOf(400), "2005-03-21 12:00:00 to 2005-03-21 12:09:59");
    EXPECT_EQ(captionOf(200), "2005-03-21 12:00:00");
    EXPECT_EQ(captionOf(120), "");
}

TEST(PictureAxes, trace_takesAThirdAndHasLevels) {
    const PictureLayout layout = PictureLayout::of({800, 400}, true, true);
    EXPECT_EQ(layout.trace.height(), 346 / 3);
    EXPECT_GT(layout.fall.top(), layout.trace.bottom() + 5);
    EXPECT_EQ(layout.fall.bottom(), 369);
    EXPECT_TRUE(textsOf(axesOf({800, 400}, kNoon, 600, true), PictureAxes::Label::Anchor::Right)
                    .contains("-90 dB"));
    EXPECT_EQ(PictureLayout::of({80, 40}, false, false).fall, QRect(0, 0, 80, 40));
}

} // namespace
} // namespace veldron
