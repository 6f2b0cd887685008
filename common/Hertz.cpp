// SPDX-License-Identifier: MIT
#include "common/Hertz.h"

#include "common/Digits.h"
#include "common/Numbers.h"

#include <limits>

namespace veldron {

namespace {

constexpr int kDecimals = 4;

/// The digits of a number, before and behind its mark, with the sign taken off.
struct DecimalParts {
    QString whole;
    QString fraction;
    bool negative = false;
};

std::optional<DecimalParts> splitDecimal(const QString &text, QChar decimalMark) {
    DecimalParts parts;
    bool afterMark = false;
    qsizetype i = 0;
    if (!text.isEmpty() && (text[0] == QLatin1Char('-') || text[0] == QLatin1Char('+'))) {
        parts.negative = text[0] == QLatin1Char('-');
        i = 1;
    }
    for (; i < text.size(); ++i) {
        if (text[i] == decimalMark && !afterMark) {
            afterMark = true;
        } else if (isDigit(text[i])) {
            (afterMark ? parts.fraction : parts.whole).append(text[i]);
        } else {
            return std::nullopt;
        }
    }
    if (parts.whole.isEmpty() && parts.fraction.isEmpty()) {
        return std::nullopt;
    }
    return parts;
}

/// One more unit where the digits past the fourth decimal say so, half to even.
bool roundsUp(const QString &rest, qint64 units) {
    if (rest.isEmpty() || rest[0] < QLatin1Char('5')) {
        return false;
    }
    if (rest[0] > QLatin1Char('5')) {
        return true;
    }
    for (const QChar digit : rest.mid(1)) {
        if (digit != QLatin1Char('0')) {
            return true;
        }
    }
    return units % 2 != 0;
}

} // namespace

Hertz Hertz::fromDouble(double hertz) {
    return fromUnits(Numbers::roundTo<qint64>(hertz * static_cast<double>(kUnitsPerHertz)));
}

std::optional<Hertz> Hertz::fromText(const QString &text, QChar decimalMark) {
    const auto parts = splitDecimal(text.trimmed(), decimalMark);
    if (!parts) {
        return std::nullopt;
    }
    const QString digits =
        parts->whole + parts->fraction.left(kDecimals).leftJustified(kDecimals, QLatin1Char('0'));
    qint64 units = 0;
    for (const QChar digit : digits) {
        const qint64 next = digit.unicode() - u'0';
        // Leaves room for this digit and for rounding up by one.
        if (units > (std::numeric_limits<qint64>::max() - 10) / 10) {
            return std::nullopt;
        }
        units = units * 10 + next;
    }
    if (roundsUp(parts->fraction.mid(kDecimals), units)) {
        ++units;
    }
    return fromUnits(parts->negative ? -units : units);
}

double Hertz::toDouble() const {
    return static_cast<double>(m_units) / static_cast<double>(kUnitsPerHertz);
}

qint64 Hertz::rounded() const {
    return Numbers::divideHalfEven(m_units, kUnitsPerHertz);
}

qint32 Hertz::roundedTo32() const {
    constexpr qint64 lowest = std::numeric_limits<qint32>::min();
    constexpr qint64 highest = std::numeric_limits<qint32>::max();
    return static_cast<qint32>(qBound(lowest, rounded(), highest));
}

Hertz Hertz::dividedBy(qint64 divisor) const {
    return fromUnits(Numbers::divideHalfEven(m_units, divisor));
}

QString Hertz::toText(QChar decimalMark) const {
    // Unsigned, because the lowest number has no positive counterpart.
    const quint64 size =
        m_units < 0 ? 0U - static_cast<quint64>(m_units) : static_cast<quint64>(m_units);
    constexpr auto unitsPerHertz = static_cast<quint64>(kUnitsPerHertz);
    QString text = QString::number(size / unitsPerHertz);
    QString fraction =
        QString::number(size % unitsPerHertz).rightJustified(kDecimals, QLatin1Char('0'));
    while (fraction.endsWith(QLatin1Char('0'))) {
        fraction.chop(1);
    }
    if (!fraction.isEmpty()) {
        text += decimalMark + fraction;
    }
    return m_units < 0 ? QLatin1Char('-') + text : text;
}

} // namespace veldron
