// SPDX-License-Identifier: MIT
#pragma once

#include <QChar>
#include <QString>
#include <QtGlobal>

#include <compare>
#include <limits>
#include <optional>

namespace veldron {

/// A frequency, or a difference of two, in hertz: signed 64-bit fixed point with four decimals.
///
/// The range is about +-9.2e14 Hz; sums, products and conversions from floating point that leave it
/// saturate. Comparison is exact: a frequency that was summed up from steps equals the same one
/// read from the unit or from a file, which a floating-point number would not promise.
class Hertz {
public:
    /// Units of the fixed-point number in one hertz.
    static constexpr qint64 kUnitsPerHertz = 10000;

    constexpr Hertz() = default;
    /// Every number of 64 bits is a frequency.
    [[nodiscard]] static constexpr Hertz fromUnits(qint64 units) {
        Hertz value;
        value.m_units = units;
        return value;
    }
    /// \a hertz is a whole number of hertz.
    [[nodiscard]] static constexpr Hertz fromWhole(qint64 hertz) {
        return fromUnits(product(hertz, kUnitsPerHertz));
    }
    /// Nearest to \a hertz, ties to even, saturated; NaN gives 0.
    [[nodiscard]] static Hertz fromDouble(double hertz);
    /// Strict reading of plain decimal text: optional sign, digits, at most one \a decimalMark,
    /// blanks around allowed, decimals past the fourth rounded half to even. Nothing on any other
    /// text or out of range.
    [[nodiscard]] static std::optional<Hertz> fromText(const QString &text, QChar decimalMark);

    /// The fixed-point number itself, 10,000 to the hertz.
    [[nodiscard]] constexpr qint64 units() const { return m_units; }
    /// In hertz; exact up to about 9e11 Hz, nearest beyond.
    [[nodiscard]] double toDouble() const;
    /// Nearest whole hertz, ties to even.
    [[nodiscard]] qint64 rounded() const;
    /// Nearest whole hertz, ties to even, saturated to 32 bits: for spans and steps, which panels
    /// and unit hold in so many.
    [[nodiscard]] qint32 roundedTo32() const;
    /// A part of it: nearest unit, ties to even. \a divisor is not 0.
    [[nodiscard]] Hertz dividedBy(qint64 divisor) const;
    /// Shortest decimal text in hertz: no trailing zeros, no thousands mark, "-" in front.
    [[nodiscard]] QString toText(QChar decimalMark = QLatin1Char('.')) const;

    /// Sums and differences saturate at the end of the range on their side.
    constexpr Hertz &operator+=(Hertz other) {
        if (__builtin_add_overflow(m_units, other.m_units, &m_units)) {
            m_units = limit(other.m_units < 0);
        }
        return *this;
    }
    constexpr Hertz &operator-=(Hertz other) {
        if (__builtin_sub_overflow(m_units, other.m_units, &m_units)) {
            m_units = limit(other.m_units > 0);
        }
        return *this;
    }
    friend constexpr Hertz operator+(Hertz a, Hertz b) { return a += b; }
    friend constexpr Hertz operator-(Hertz a, Hertz b) { return a -= b; }
    friend constexpr Hertz operator-(Hertz a) { return Hertz() - a; }
    friend constexpr Hertz operator*(Hertz a, qint64 factor) {
        return fromUnits(product(a.m_units, factor));
    }
    friend constexpr Hertz operator*(qint64 factor, Hertz a) { return a * factor; }
    friend constexpr auto operator<=>(Hertz a, Hertz b) = default;

private:
    /// The end of the range on the side of the sign.
    [[nodiscard]] static constexpr qint64 limit(bool negative) {
        return negative ? std::numeric_limits<qint64>::min() : std::numeric_limits<qint64>::max();
    }
    [[nodiscard]] static constexpr qint64 product(qint64 a, qint64 b) {
        qint64 result = 0;
        return __builtin_mul_overflow(a, b, &result) ? limit((a < 0) != (b < 0)) : result;
    }

    qint64 m_units = 0;
};

} // namespace veldron
