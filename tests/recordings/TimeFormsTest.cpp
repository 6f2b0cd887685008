// SPDX-License-Identifier: MIT
#include "recordings/TimeForms.h"

#include "common/DateTimeText.h"
#include "common/TimeOfDay.h"

#include <gtest/gtest.h>

#include <QLocale>
#include <QTime>

namespace veldron {
namespace {

QList<QLocale> systemLocales() {
    return QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry);
}

qint32 read(QByteArrayView text, TimeForms::Set among = TimeForms::all()) {
    const auto reading = TimeForms::read(text, among);
    return reading ? reading->second : -1;
}

TEST(TimeForms, everyLocale_itsTimesAreReadAndShareAForm) {
    for (const QLocale &locale : systemLocales()) {
        const DateTimeText texts(locale);
        TimeForms::Set forms = TimeForms::all();
        for (int second = 7; second < kSecondsPerDay; second += 1799) {
            const QByteArray text = texts.timeText(QTime(0, 0).addSecs(second)).toLatin1();
            const auto reading = TimeForms::read(text, forms);
            ASSERT_TRUE(reading) << locale.name().toStdString() << ": " << text.constData();
            ASSERT_EQ(reading->second, second) << text.constData();
            ASSERT_LE(text.size(), TimeForms::kLongest);
            forms = reading->forms;
        }
    }
}

TEST(TimeForms, everyForm_isOneOfSomeLocale) {
    TimeForms::Set used = 0;
    for (const QLocale &locale : systemLocales()) {
        const DateTimeText texts(locale);
        used |= TimeForms::read(texts.timeText(QTime(1, 4, 7)).toLatin1(), TimeForms::all())->forms;
    }
    EXPECT_EQ(used, TimeForms::all());
}

TEST(TimeForms, textsThatAreNoTime_areRefused) {
    for (const char *text : {"", "1", "24:00:00", "10:60:00", "10:00:60", "1:2:03", "10:00:0",
                             "10:00:00 ", " 10:00:00", "10.00:00", "0:00:00 AM", "13:00:00 AM",
                             "10:00:00 XM", "010:00:00", "10:00", "10:00:00AM"}) {
        EXPECT_EQ(read(text), -1) << text;
    }
}

TEST(TimeForms, halvesOfTheDay_beginAtTwelve) {
    EXPECT_EQ(read("12:00:00 AM"), 0);
    EXPECT_EQ(read("1:00:00 AM"), 3600);
    EXPECT_EQ(read("12:00:00 PM"), 43200);
    EXPECT_EQ(read("11:59:59 PM"), kSecondsPerDay - 1);
}

TEST(TimeForms, formThatATextExcludes_isNotReadAgain) {
    const auto padded = TimeForms::read("09:00:00", TimeForms::all());
    EXPECT_EQ(read("9:00:01", padded->forms), -1);
    EXPECT_EQ(read("09:00:01", padded->forms), 32401);
    // Ten o'clock fits both and decides nothing.
    EXPECT_EQ(read("9:00:01", TimeForms::read("10:00:00", TimeForms::all())->forms), 32401);
}

TEST(TimeForms, beginningOfALongerText_isTold) {
    const TimeForms::Set all = TimeForms::all();
    EXPECT_TRUE(TimeForms::mayGoOn("10:00:00", all)); // AM or PM may be missing
    EXPECT_TRUE(TimeForms::mayGoOn("10:00:0", all));
    EXPECT_TRUE(TimeForms::mayGoOn("", all));
    const TimeForms::Set plain = TimeForms::read("09:00:00", all)->forms;
    EXPECT_FALSE(TimeForms::mayGoOn("abc", all));
    const TimeForms::Set dotted = TimeForms::read("09.00.00", all)->forms;
    EXPECT_FALSE(TimeForms::mayGoOn("10.00.00", dotted));
    EXPECT_TRUE(TimeForms::mayGoOn("10.00.0", dotted));
    EXPECT_TRUE(TimeForms::mayGoOn("10:00:0", plain));
}

} // namespace
} // namespace veldron
