// SPDX-License-Identifier: MIT
#include "recordings/DateForms.h"

#include <algorithm>
#include <string_view>

namespace veldron {

namespace {

/// How a part of a date is written.
enum class Part { Day, PaddedDay, Month, PaddedMonth, NamedMonth, Year };

/// One form: three parts with texts between and behind them.
struct Form {
    std::array<Part, 3> parts{};
    std::array<std::string_view, 3> after;
};

using Parts = std::array<Part, 3>;
constexpr Parts kPaddedDayFirst{Part::PaddedDay, Part::PaddedMonth, Part::Year};
constexpr Parts kDayFirst{Part::Day, Part::Month, Part::Year};
constexpr Parts kHalfPadded{Part::Day, Part::PaddedMonth, Part::Year};
constexpr Parts kPaddedYearFirst{Part::Year, Part::PaddedMonth, Part::PaddedDay};
constexpr Parts kYearFirst{Part::Year, Part::Month, Part::Day};

/// What DateTimeText writes under the locales of the system. A test holds the table to them.
constexpr std::array kForms{
    Form{kPaddedYearFirst, {"-", "-", ""}}, // the plain form
    Form{kPaddedDayFirst, {"/", "/", ""}},
    Form{kPaddedDayFirst, {".", ".", ""}},
    Form{kPaddedDayFirst, {"-", "-", ""}},
    Form{kHalfPadded, {". ", ". ", ""}},
    Form{kPaddedDayFirst, {". ", ". ", "."}},
    Form{kPaddedDayFirst, {"/", " ", ""}},
    Form{kDayFirst, {"/", "/", ""}},
    Form{kDayFirst, {".", ".", ""}},
    Form{kDayFirst, {"-", "-", ""}},
    Form{kDayFirst, {".", ".", "."}},
    Form{kDayFirst, {". ", ". ", ""}},
    Form{kDayFirst, {". ", ". ", "."}},
    Form{kHalfPadded, {"/", "/", ""}},
    Form{kHalfPadded, {".", ".", ""}},
    Form{{Part::Day, Part::NamedMonth, Part::Year}, {" ", " ", ""}}, // without any locale
    Form{{Part::Month, Part::Day, Part::Year}, {"/", "/", ""}},
    Form{{Part::PaddedMonth, Part::PaddedDay, Part::Year}, {"/", "/", ""}},
    Form{kPaddedYearFirst, {"/", "/", ""}},
    Form{kPaddedYearFirst, {".", ".", ""}},
    Form{kPaddedYearFirst, {". ", ". ", "."}},
    Form{kYearFirst, {"/", "/", ""}},
    Form{kYearFirst, {". ", ". ", "."}},
};
static_assert(kForms.size() <= 32, "a bit a form");

constexpr std::array<std::string_view, 12> kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

DateOrder orderOf(const Form &form) {
    switch (form.parts[0]) {
    case Part::Year:
        return DateOrder::YearMonthDay;
    case Part::Month:
    case Part::PaddedMonth:
    case Part::NamedMonth:
        return DateOrder::MonthDayYear;
    default:
        return DateOrder::DayMonthYear;
    }
}

bool isDay(Part part) {
    return part == Part::Day || part == Part::PaddedDay;
}

/// The number that \a rest begins with, of \a least to \a most digits and without a zero in front
/// where the digits may be fewer; -1 if there is none.
int takeNumber(std::string_view &rest, std::size_t least, std::size_t most) {
    std::size_t digits = 0;
    int number = 0;
    while (digits < most && digits < rest.size() && rest[digits] >= '0' && rest[digits] <= '9') {
        number = number * 10 + (rest[digits++] - '0');
    }
    if (digits < least || (least < most && rest[0] == '0')) {
        return -1;
    }
    rest.remove_prefix(digits);
    return number;
}

int takeName(std::string_view &rest) {
    const auto *const found = std::find(kMonths.begin(), kMonths.end(), rest.substr(0, 3));
    if (found == kMonths.end()) {
        return -1;
    }
    rest.remove_prefix(found->size());
    return static_cast<int>(found - kMonths.begin()) + 1;
}

int takePart(Part part, std::string_view &rest) {
    switch (part) {
    case Part::Year:
        return takeNumber(rest, 4, 4);
    case Part::NamedMonth:
        return takeName(rest);
    case Part::PaddedDay:
    case Part::PaddedMonth:
        return takeNumber(rest, 2, 2);
    default:
        return takeNumber(rest, 1, 2);
    }
}

std::optional<QDate> readForm(const Form &form, std::string_view rest) {
    int year = 0;
    int month = 0;
    int day = 0;
    for (std::size_t place = 0; place < form.parts.size(); ++place) {
        const Part part = form.parts.at(place);
        const int number = takePart(part, rest);
        if (number < 0 || !rest.starts_with(form.after.at(place))) {
            return std::nullopt;
        }
        rest.remove_prefix(form.after.at(place).size());
        (part == Part::Year ? year : isDay(part) ? day : month) = number;
    }
    const QDate date(year, month, day);
    return rest.empty() && date.isValid() ? std::optional(date) : std::nullopt;
}

QByteArray digits(int number, int count) {
    return QByteArray::number(number).rightJustified(count, '0');
}

QByteArray writePart(Part part, QDate date) {
    switch (part) {
    case Part::Year:
        return digits(date.year(), 4);
    case Part::NamedMonth:
        return kMonths.at(static_cast<std::size_t>(date.month() - 1)).data();
    case Part::PaddedDay:
        return digits(date.day(), 2);
    case Part::PaddedMonth:
        return digits(date.month(), 2);
    case Part::Day:
        return digits(date.day(), 1);
    default:
        return digits(date.month(), 1);
    }
}

} // namespace

bool DateForms::Reading::isAmbiguous() const {
    const std::optional<QDate> dayFirst = by(DateOrder::DayMonthYear);
    const std::optional<QDate> monthFirst = by(DateOrder::MonthDayYear);
    return dayFirst && monthFirst && *dayFirst != *monthFirst;
}

DateForms::Set DateForms::all() {
    return static_cast<Set>((std::uint64_t{1} << kForms.size()) - 1);
}

DateForms::Set DateForms::of(DateOrder order) {
    Set forms = 0;
    for (std::size_t number = 0; number < kForms.size(); ++number) {
        forms |= orderOf(kForms.at(number)) == order ? Set{1} << number : Set{0};
    }
    return forms;
}

DateForms::Reading DateForms::read(QByteArrayView text, Set among) {
    const std::string_view whole(text.data(), static_cast<std::size_t>(text.size()));
    Reading reading;
    for (std::size_t number = 0; number < kForms.size(); ++number) {
        const Set bit = Set{1} << number;
        const Form &form = kForms.at(number);
        if (const auto date = (among & bit) == 0 ? std::nullopt : readForm(form, whole)) {
            reading.forms |= bit;
            reading.byOrder.at(static_cast<std::size_t>(orderOf(form))) = date;
        }
    }
    return reading;
}

DateForms::Set DateForms::formsOf(QByteArrayView text, const QDate &date) {
    Set forms = 0;
    for (const DateOrder order :
         {DateOrder::DayMonthYear, DateOrder::MonthDayYear, DateOrder::YearMonthDay}) {
        const Reading reading = read(text, of(order));
        forms |= reading.by(order) == date ? reading.forms : Set{0};
    }
    return forms;
}

QByteArray DateForms::write(QDate date, Set form) {
    QByteArray text;
    for (std::size_t number = 0; number < kForms.size() && text.isEmpty(); ++number) {
        if ((form & (Set{1} << number)) != 0) {
            for (std::size_t place = 0; place < kForms.at(number).parts.size(); ++place) {
                text += writePart(kForms.at(number).parts.at(place), date);
                text += kForms.at(number).after.at(place).data();
            }
        }
    }
    return text;
}

} // namespace veldron
