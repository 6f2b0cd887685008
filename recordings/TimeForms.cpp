// SPDX-License-Identifier: MIT
#include "recordings/TimeForms.h"

#include <array>
#include <bit>
#include <string_view>

namespace veldron {

namespace {

constexpr qint32 kMinute = 60;
constexpr qint32 kHour = 3600;

/// One form. The texts before and behind come in two versions, for the two halves of the day.
struct Form {
    enum class Hour { Two24, One24, Two12, One12 };

    Hour hour = Hour::Two24;
    std::string_view afterHour = ":";
    std::string_view afterMinute = ":";
    std::array<std::string_view, 2> before{};
    std::array<std::string_view, 2> after{};
    bool oneDigitMinute = false;

    [[nodiscard]] constexpr bool isTwelve() const {
        return hour == Hour::Two12 || hour == Hour::One12;
    }
    [[nodiscard]] constexpr bool isPadded() const {
        return hour == Hour::Two24 || hour == Hour::Two12;
    }
};

using Hour = Form::Hour;

constexpr Form halves(Hour hour, std::string_view morning, std::string_view afternoon) {
    return {.hour = hour, .after = {morning, afternoon}};
}

/// What DateTimeText writes under the locales of the system. A test holds the table to them.
constexpr std::array kForms{
    Form{}, // the plain form, and that of most locales
    Form{.hour = Hour::One24},
    halves(Hour::One12, " AM", " PM"),
    Form{.afterHour = ".", .afterMinute = "."},
    Form{.hour = Hour::One24, .afterHour = ".", .afterMinute = "."},
    Form{.afterHour = " h ", .afterMinute = " min ", .after = {" s", " s"}},
    Form{.hour = Hour::One24, .afterHour = " h ", .afterMinute = " min ", .after = {" s", " s"}},
    Form{.afterHour = ".", .after = {" h", " h"}},
    Form{.after = {",", ","}},
    Form{.before = {"kl. ", "kl. "}},
    Form{.hour = Hour::One24, .afterHour = ".", .before = {"Klock ", "Klock "}},
    Form{.hour = Hour::One24, .afterHour = "-a horo kaj ", .oneDigitMinute = true},
    Form{.hour = Hour::One24, .before = {"B", "B"}, .after = {" []", " []"}},
    halves(Hour::Two12, " AM", " PM"),
    halves(Hour::One12, " A.M.", " P.M."),
    Form{.hour = Hour::One12, .before = {"AM ", "PM "}},
    halves(Hour::One12, " AN", " EW"),
    halves(Hour::One12, " GH", " GD"),
    halves(Hour::One12, " HENGIHENGI", " EFIAFI"),
    halves(Hour::One12, " N TUFAT", " N TMEDDIT"),
    halves(Hour::One12, " PG", " PTG"),
    halves(Hour::One12, " SAFIYA", " YAMMA"),
    halves(Hour::One12, " ULUCHELO", " AKASUBA"),
    halves(Hour::One12, " VM.", " NM."),
    halves(Hour::One12, " WD", " WB"),
};
static_assert(kForms.size() <= 32, "a bit a form");

/// Takes a text apart from its front. Once a piece is not there, nothing more is.
class Cursor {
public:
    explicit Cursor(QByteArrayView text)
        : m_rest(text.data(), static_cast<std::size_t>(text.size())) {}

    bool literal(std::string_view piece) {
        const std::string_view front = m_rest.substr(0, piece.size());
        m_ranOut = m_ranOut || (front.size() < piece.size() && piece.starts_with(front));
        if (front != piece) {
            return false;
        }
        m_rest.remove_prefix(piece.size());
        return true;
    }
    /// Two digits, or one where \a padded is false and the number has no more.
    bool number(bool padded, qint32 &value) {
        std::size_t digits = 0;
        value = 0;
        while (digits < 2 && digits < m_rest.size() && isDigit(m_rest[digits])) {
            value = value * 10 + (m_rest[digits++] - '0');
        }
        m_ranOut = m_ranOut || (digits < 2 && digits == m_rest.size());
        const bool leadingZero = digits == 2 && m_rest[0] == '0';
        if (digits == 0 || (padded ? digits < 2 : leadingZero)) {
            return false;
        }
        m_rest.remove_prefix(digits);
        return true;
    }
    [[nodiscard]] bool atEnd() const { return m_rest.empty(); }
    /// Whether the text ended inside a piece, or might have had one digit more.
    [[nodiscard]] bool ranOut() const { return m_ranOut; }

private:
    static bool isDigit(char byte) { return byte >= '0' && byte <= '9'; }

    std::string_view m_rest;
    bool m_ranOut = false;
};

struct Parts {
    qint32 hour = 0;
    qint32 minute = 0;
    qint32 second = 0;
};

bool readParts(const Form &form, std::size_t half, Cursor &cursor, Parts &parts) {
    return cursor.literal(form.before.at(half)) && cursor.number(form.isPadded(), parts.hour) &&
           cursor.literal(form.afterHour) && cursor.number(!form.oneDigitMinute, parts.minute) &&
           cursor.literal(form.afterMinute) && cursor.number(true, parts.second) &&
           cursor.literal(form.after.at(half)) && cursor.atEnd();
}

/// The second of the day, or -1 where the numbers are no time.
qint32 secondOf(const Form &form, std::size_t half, Parts parts) {
    constexpr qint32 kNoon = 12;
    constexpr qint32 kHours = 24;
    if (parts.minute >= kMinute || parts.second >= kMinute) {
        return -1;
    }
    if (form.isTwelve()) {
        if (parts.hour < 1 || parts.hour > kNoon) {
            return -1;
        }
        parts.hour = parts.hour % kNoon + static_cast<qint32>(half) * kNoon;
    }
    return parts.hour < kHours ? parts.hour * kHour + parts.minute * kMinute + parts.second : -1;
}

qint32 readForm(const Form &form, QByteArrayView text) {
    for (std::size_t half = 0; half < (form.isTwelve() ? 2U : 1U); ++half) {
        Cursor cursor(text);
        Parts parts;
        if (readParts(form, half, cursor, parts)) {
            return secondOf(form, half, parts);
        }
    }
    return -1;
}

template <typename Body>
void forEachForm(TimeForms::Set among, const Body &body) {
    // Few are left of them, behind the first scans.
    while (among != 0) {
        const auto number = static_cast<std::size_t>(std::countr_zero(among));
        const TimeForms::Set bit = TimeForms::Set{1} << number;
        body(kForms.at(number), bit);
        among &= ~bit;
    }
}

} // namespace

TimeForms::Set TimeForms::all() {
    return static_cast<Set>((std::uint64_t{1} << kForms.size()) - 1);
}

std::optional<TimeForms::Reading> TimeForms::read(QByteArrayView text, Set among) {
    Reading reading{0, -1};
    forEachForm(among, [&](const Form &form, Set bit) {
        if (const qint32 second = readForm(form, text); second >= 0) {
            reading.forms |= bit;
            reading.second = second;
        }
    });
    return reading.forms == 0 ? std::nullopt : std::optional(reading);
}

bool TimeForms::mayGoOn(QByteArrayView text, Set among) {
    bool goesOn = false;
    forEachForm(among, [&](const Form &form, Set /*bit*/) {
        for (std::size_t half = 0; half < (form.isTwelve() ? 2U : 1U); ++half) {
            Cursor cursor(text);
            Parts parts;
            goesOn = (!readParts(form, half, cursor, parts) && cursor.ranOut()) || goesOn;
        }
    });
    return goesOn;
}

} // namespace veldron
