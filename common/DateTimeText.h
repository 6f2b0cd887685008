// SPDX-License-Identifier: MIT
#pragma once

#include <QChar>
#include <QDate>
#include <QLocale>
#include <QString>
#include <QTime>

#include <optional>

namespace veldron {

/// The texts of dates, times and shares that files and the status bar hold.
///
/// Dates take the locale's short form with a four-digit year, times its long form without the zone
/// name (which can't be read back). Where such a text would hold anything but printable ASCII, or
/// would not read back as it was written, the plain forms yyyy-MM-dd and HH:mm:ss stand in for it.
class DateTimeText {
public:
    /// Chooses the forms once, by trying those of \a locale on a date in each month and on each
    /// hour of a day. A later change of the system's locale has no effect.
    explicit DateTimeText(const QLocale &locale);

    [[nodiscard]] QString dateText(QDate date) const;
    [[nodiscard]] QString timeText(QTime time) const;
    /// The whole text must be a date of the form written here, or of the plain form.
    [[nodiscard]] std::optional<QDate> readDate(const QString &text) const;
    /// The whole text must be a time of the form written here, or of the plain form.
    [[nodiscard]] std::optional<QTime> readTime(const QString &text) const;
    /// The locale's decimal mark, "." or ",".
    [[nodiscard]] QChar decimalMark() const { return m_decimalMark; }
    /// \a share (1 is the whole) in percent with two decimals and no blank: "39.06%".
    [[nodiscard]] QString percentText(double share) const;

private:
    QLocale m_locale;
    QString m_dateFormat;
    QString m_timeFormat;
    QChar m_decimalMark;
};

} // namespace veldron
