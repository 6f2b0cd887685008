// SPDX-License-Identifier: MIT
#include "common/DateTimeText.h"

#include <algorithm>

namespace veldron {

namespace {

const QString kPlainDate = QStringLiteral("yyyy-MM-dd");
const QString kPlainTime = QStringLiteral("HH:mm:ss");

bool isPrintableAscii(const QString &text) {
    return std::all_of(text.begin(), text.end(), [](QChar character) {
        return character >= QChar(0x20) && character < QChar(0x7F);
    });
}

/// Two-digit years would read back as 19xx.
QString withFourDigitYear(QString format) {
    if (!format.contains(QStringLiteral("yyyy"))) {
        format.replace(QStringLiteral("yy"), QStringLiteral("yyyy"));
    }
    return format;
}

/// The format with every zone field ("t") outside quotes taken out, and the blanks that it leaves:
/// no text that holds a zone's name reads back.
QString withoutZone(const QString &format) {
    QString kept;
    bool quoted = false;
    for (const QChar character : format) {
        if (character == QLatin1Char('\'')) {
            quoted = !quoted;
        }
        if (quoted || character != QLatin1Char('t')) {
            kept += character;
        }
    }
    kept.replace(QStringLiteral("()"), QString());
    return kept.trimmed();
}

/// A format serves when what it writes is ASCII and reads back as it was.
bool datesSurvive(const QLocale &locale, const QString &format) {
    for (int month = 1; month <= 12; ++month) {
        // Above 12, so that a format which swaps day and month in reading is found out.
        const QDate date(2009, month, month == 2 ? 28 : 30);
        const QString text = locale.toString(date, format);
        if (!isPrintableAscii(text) || locale.toDate(text, format) != date) {
            return false;
        }
    }
    return true;
}

bool timesSurvive(const QLocale &locale, const QString &format) {
    for (int hour = 0; hour < 24; ++hour) {
        const QTime time(hour, 4, 59);
        const QString text = locale.toString(time, format);
        if (!isPrintableAscii(text) || locale.toTime(text, format) != time) {
            return false;
        }
    }
    return true;
}

} // namespace

DateTimeText::DateTimeText(const QLocale &locale)
    : m_locale(locale), m_dateFormat(withFourDigitYear(locale.dateFormat(QLocale::ShortFormat))),
      m_timeFormat(withoutZone(locale.timeFormat(QLocale::LongFormat))),
      m_decimalMark(locale.decimalPoint() == QStringLiteral(",") ? QLatin1Char(',')
                                                                 : QLatin1Char('.')) {
    if (!datesSurvive(m_locale, m_dateFormat)) {
        m_dateFormat = kPlainDate;
    }
    if (!timesSurvive(m_locale, m_timeFormat)) {
        m_timeFormat = kPlainTime;
    }
}

QString DateTimeText::dateText(QDate date) const {
    // The plain form is written with plain digits, whatever the locale's own are.
    return m_dateFormat == kPlainDate ? QLocale::c().toString(date, kPlainDate)
                                      : m_locale.toString(date, m_dateFormat);
}

QString DateTimeText::timeText(QTime time) const {
    return m_timeFormat == kPlainTime ? QLocale::c().toString(time, kPlainTime)
                                      : m_locale.toString(time, m_timeFormat);
}

std::optional<QDate> DateTimeText::readDate(const QString &text) const {
    for (const QDate date :
         {m_locale.toDate(text, m_dateFormat), QLocale::c().toDate(text, kPlainDate)}) {
        if (date.isValid()) {
            return date;
        }
    }
    return std::nullopt;
}

std::optional<QTime> DateTimeText::readTime(const QString &text) const {
    for (const QTime time :
         {m_locale.toTime(text, m_timeFormat), QLocale::c().toTime(text, kPlainTime)}) {
        if (time.isValid()) {
            return time;
        }
    }
    return std::nullopt;
}

QString DateTimeText::percentText(double share) const {
    QString text = QString::number(share * 100.0, 'f', 2);
    if (text == QLatin1String("-0.00")) {
        text.remove(0, 1); // nothing has no sign
    }
    text.replace(QLatin1Char('.'), m_decimalMark);
    return text + QLatin1Char('%');
}

} // namespace veldron
