// SPDX-License-Identifier: MIT
#include "common/DateTimeText.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace veldron {
namespace {

const QDate kDate(2005, 3, 21);
const QTime kTime(14, 3, 27);

bool isPlain(const QString &text) {
    return std::all_of(text.begin(), text.end(),
                       [](QChar c) { return c >= QChar(0x20) && c < QChar(0x7F); });
}

TEST(DateTimeText, britishLocale_dayFirstFourDigitYearNoZone) {
    const DateTimeText texts(QLocale(QLocale::English, QLocale::UnitedKingdom));
    EXPECT_EQ(texts.dateText(kDate), QStringLiteral("21/03/2005"));
    EXPECT_EQ(texts.timeText(kTime), QStringLiteral("14:03:27"));
    EXPECT_EQ(texts.decimalMark(), QLatin1Char('.'));
}

TEST(DateTimeText, germanLocale_commaAndFourDigitYear) {
    const DateTimeText texts(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(texts.dateText(kDate), QStringLiteral("21.03.2005"));
    EXPECT_EQ(texts.decimalMark(), QLatin1Char(','));
    EXPECT_EQ(texts.percentText(0.39064), QStringLiteral("39,06%"));
}

TEST(DateTimeText, percent_twoDecimalsNoBlank) {
    const DateTimeText texts(QLocale::c());
    EXPECT_EQ(texts.percentText(0.3906), QStringLiteral("39.06%"));
    EXPECT_EQ(texts.percentText(1.0), QStringLiteral("100.00%"));
    EXPECT_EQ(texts.percentText(0.0), QStringLiteral("0.00%"));
    EXPECT_EQ(texts.percentText(-0.25), QStringLiteral("-25.00%"));
    EXPECT_EQ(texts.percentText(-0.00001), QStringLiteral("0.00%"));
}

TEST(DateTimeText, everyLocale_writesPlainAsciiThatReadsBack) {
    const auto locales =
        QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory);
    ASSERT_GT(locales.size(), 100);
    for (const QLocale &locale : locales) {
        const DateTimeText texts(locale);
        for (const QTime time : {QTime(0, 0, 0), kTime, QTime(23, 59, 59)}) {
            EXPECT_TRUE(isPlain(texts.timeText(time))) << locale.name().toStdString();
            EXPECT_EQ(texts.readTime(texts.timeText(time)), time) << locale.name().toStdString();
        }
        EXPECT_TRUE(isPlain(texts.dateText(kDate))) << locale.name().toStdString();
        EXPECT_EQ(texts.readDate(texts.dateText(kDate)), kDate) << locale.name().toStdString();
    }
}

TEST(DateTimeText, plainForms_areReadInEveryLocale) {
    const DateTimeText texts(QLocale(QLocale::English, QLocale::UnitedStates));
    EXPECT_EQ(texts.readDate(QStringLiteral("2005-03-21")), kDate);
    EXPECT_EQ(texts.readTime(QStringLiteral("14:03:27")), kTime);
}

TEST(DateTimeText, wholeTextMustMatch) {
    const DateTimeText texts(QLocale(QLocale::English, QLocale::UnitedKingdom));
    for (const char *bad : {"", "14:03:27 x", "x 14:03:27", "14:03", "25:00:00"}) {
        EXPECT_FALSE(texts.readTime(QString::fromLatin1(bad)).has_value()) << bad;
    }
    for (const char *bad : {"", "21/03/2005 ", "31/02/2005", "21/03"}) {
        EXPECT_FALSE(texts.readDate(QString::fromLatin1(bad)).has_value()) << bad;
    }
}

} // namespace
} // namespace veldron
