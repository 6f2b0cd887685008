// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/DateForms.h"

#include <QByteArrayView>
#include <QDate>
#include <QtGlobal>

#include <optional>

namespace veldron {

/// Gives each scan of a recording its date, in one pass: that of the last StartSettings line, one
/// day on where the time of day falls back over midnight, until the next such line says better.
///
/// A fall back of up to two hours is a clock that was put back (summer time ends so), and keeps the
/// date.
class RecordingDates {
public:
    struct Rules {
        /// The order that the user knows; dates of the other one are no dates then.
        std::optional<DateOrder> given;
        /// The order that is assumed as long as day and month can't be told apart.
        DateOrder assumed = DateOrder::DayMonthYear;
    };
    enum class Outcome {
        Read,
        ReadAsAssumed, ///< and this is the first date that needed the assumption
        Refuted,       ///< read, but dates before were read by the wrong order
        NoDate,        ///< no date of a form that agrees with those before
    };

    RecordingDates() : RecordingDates(Rules()) {}
    explicit RecordingDates(const Rules &rules);

    /// Takes the value of a StartSettings line.
    [[nodiscard]] Outcome takeBlock(QByteArrayView text);
    /// The date of the next scan, which was written at \a second of its day.
    [[nodiscard]] std::optional<QDate> takeScan(qint32 second);

    /// The date that counts at this place; nothing above the first one.
    [[nodiscard]] std::optional<QDate> date() const { return m_date; }
    /// The forms that all dates so far have, all forms ahead of the first one.
    [[nodiscard]] DateForms::Set forms() const { return m_forms; }

private:
    DateForms::Set m_forms;
    /// Given or assumed: which reading counts where a text has several.
    DateOrder m_order;
    bool m_assumed = false; ///< a date was read by the assumption
    std::optional<QDate> m_date;
    bool m_dateIsNew = false; ///< since the last scan
    qint32 m_second = -1;     ///< of the last scan
};

} // namespace veldron
