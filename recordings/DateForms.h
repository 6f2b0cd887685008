// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QDate>
#include <QtGlobal>

#include <array>
#include <cstdint>
#include <optional>

namespace veldron {

/// In which order a date text has its parts.
enum class DateOrder { DayMonthYear, MonthDayYear, YearMonthDay };

/// The forms of date texts that the recorder writes, over all locales of the system.
///
/// As with the times, a recording has one form and doesn't tell which, and a Set holds those that
/// are still possible. Unlike times, a text may be a date of two orders at once: 03/02/2005.
class DateForms {
public:
    using Set = std::uint32_t;
    struct Reading {
        Set forms = 0; ///< those that fit
        /// The date by each order, in the order of DateOrder; nothing where no form of it fits.
        std::array<std::optional<QDate>, 3> byOrder;

        [[nodiscard]] std::optional<QDate> by(DateOrder order) const {
            return byOrder.at(static_cast<std::size_t>(order));
        }
        /// Whether two orders give different dates.
        [[nodiscard]] bool isAmbiguous() const;
    };

    [[nodiscard]] static Set all();
    /// All forms of one order.
    [[nodiscard]] static Set of(DateOrder order);
    /// What the whole \a text is in the forms of \a among; no form fits where it is no date.
    [[nodiscard]] static Reading read(QByteArrayView text, Set among);
    /// The forms in which the whole \a text is \a date.
    [[nodiscard]] static Set formsOf(QByteArrayView text, const QDate &date);
    /// \a date in the first form of \a form.
    [[nodiscard]] static QByteArray write(QDate date, Set form);
};

} // namespace veldron
