// SPDX-License-Identifier: MIT
#include "recordings/DateForms.h"

#include "common/DateTimeText.h"

#include <gtest/gtest.h>

#include <QLocale>

namespace veldron {
namespace {

QList<QLocale> systemLocales() {
    return QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry);
}

bool holds(const DateForms::Reading &reading, const QDate &date) {
    return std::find(reading.byOrder.begin(), reading.byOrder.end(), std::optional(date)) !=
           reading.byOrder.end();
}

TEST(DateForms, everyLocale_itsDatesAreReadAndWrittenAgain) {
    for (const QLocale &locale : systemLocales()) {
        const DateTimeText texts(locale);
        DateForms::Set forms = DateForms::all();
        for (QDate date(2023, 12, 30); date < QDate(2025, 1, 3); date = date.addDays(5)) {
            const QByteArray text = texts.dateText(date).toLatin1();
            const DateForms::Reading reading = DateForms::read(text, forms);
            ASSERT_TRUE(holds(reading, date))
                << locale.name().toStdString() << ": " << text.constData();
            forms = reading.forms;
            ASSERT_EQ(DateForms::read(DateForms::write(date, forms), forms).forms & forms,
                      DateForms::read(text, forms).forms);
        }
        const QDate late(2024, 11, 28);
        EXPECT_EQ(DateForms::write(late, forms), texts.dateText(late).toLatin1());
    }
}

TEST(DateForms, everyForm_isOneOfSomeLocale) {
    DateForms::Set used = 0;
    for (const QLocale &locale : systemLocales()) {
        const DateTimeText texts(locale);
        DateForms::Set forms = DateForms::all();
        for (const QDate date : {QDate(2005, 3, 21), QDate(2005, 12, 4)}) {
            forms = DateForms::read(texts.dateText(date).toLatin1(), forms).forms;
        }
        used |= forms;
    }
    EXPECT_EQ(used, DateForms::all());
}

TEST(DateForms, dayAndMonthThatFitBothWays_giveTwoDates) {
    const DateForms::Reading reading = DateForms::read("03/02/2005", DateForms::all());
    EXPECT_TRUE(reading.isAmbiguous());
    EXPECT_EQ(reading.by(DateOrder::DayMonthYear), QDate(2005, 2, 3));
    EXPECT_EQ(reading.by(DateOrder::MonthDayYear), QDate(2005, 3, 2));
    EXPECT_FALSE(DateForms::read("21/03/2005", DateForms::all()).isAmbiguous());
    EXPECT_FALSE(DateForms::read("03/03/2005", DateForms::all()).isAmbiguous());
    EXPECT_FALSE(DateForms::read("03.02.2005", DateForms::all()).isAmbiguous());
}

TEST(DateForms, textsThatAreNoDate_areRefused) {
    for (const char *text : {"", "tomorrow", "32/01/2005", "30/02/2005", "21/03/05", "21/03/2005 ",
                             "21/3/205", "2005-3-21", "2005-03-32", "4 Dez 2005"}) {
        EXPECT_EQ(DateForms::read(text, DateForms::all()).forms, 0U) << text;
    }
}

TEST(DateForms, formsOfOneOrder_readNothingElse) {
    EXPECT_EQ(DateForms::read("13/02/2005", DateForms::of(DateOrder::MonthDayYear)).forms, 0U);
    EXPECT_NE(DateForms::read("02/13/2005", DateForms::of(DateOrder::MonthDayYear)).forms, 0U);
    EXPECT_NE(DateForms::read("2005-02-13", DateForms::of(DateOrder::YearMonthDay)).forms, 0U);
}

} // namespace
} // namespace veldron
