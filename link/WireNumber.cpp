// SPDX-License-Identifier: MIT
#include "link/WireNumber.h"

#include "common/Digits.h"

#include <QByteArray>

namespace veldron {

namespace {

constexpr int kDoubleDigits = 15;
constexpr int kSingleDigits = 7;

/// Decimal \a digits with the point behind the first one moved \a exponent places to the right.
QByteArray placePoint(QByteArray digits, int exponent) {
    if (exponent < 0) {
        return "0." + QByteArray(-exponent - 1, '0') + digits;
    }
    const qsizetype whole = exponent + 1;
    if (digits.size() <= whole) {
        return digits.leftJustified(whole, '0');
    }
    return digits.insert(whole, '.');
}

QString plainDecimal(double value, int significantDigits) {
    // "d.ddde+xx": the digits come rounded from here, only the layout is ours.
    const QByteArray scientific =
        QByteArray::number(value < 0 ? -value : value, 'e', significantDigits - 1);
    const qsizetype mark = scientific.indexOf('e');
    QByteArray digits = scientific.left(mark);
    digits.remove(1, 1);
    while (digits.size() > 1 && digits.endsWith('0')) {
        digits.chop(1);
    }
    if (digits == "0") {
        return QStringLiteral("0");
    }
    const QByteArray text = placePoint(digits, scientific.mid(mark + 1).toInt());
    return QString::fromLatin1(value < 0 ? "-" + text : text);
}

qsizetype skipDigits(const QString &text, qsizetype position) {
    while (position < text.size() && isDigit(text.at(position))) {
        ++position;
    }
    return position;
}

/// \a text is sign, digits and point in the one order that makes a number.
bool isPlainNumber(const QString &text) {
    qsizetype position = 0;
    if (text.startsWith(QLatin1Char('+')) || text.startsWith(QLatin1Char('-'))) {
        position = 1;
    }
    const qsizetype afterWhole = skipDigits(text, position);
    qsizetype digits = afterWhole - position;
    position = afterWhole;
    if (position < text.size() && text.at(position) == QLatin1Char('.')) {
        const qsizetype afterDecimals = skipDigits(text, position + 1);
        digits += afterDecimals - position - 1;
        position = afterDecimals;
    }
    return digits > 0 && position == text.size();
}

QString withoutBlanksAround(const QString &text) {
    qsizetype first = 0;
    qsizetype end = text.size();
    while (first < end && text.at(first) == QLatin1Char(' ')) {
        ++first;
    }
    while (end > first && text.at(end - 1) == QLatin1Char(' ')) {
        --end;
    }
    return text.mid(first, end - first);
}

} // namespace

QString wireNumber(double value) {
    return plainDecimal(value, kDoubleDigits);
}

QString wireNumber(float value) {
    return plainDecimal(static_cast<double>(value), kSingleDigits);
}

std::optional<double> strictNumber(const QString &text) {
    const QString number = withoutBlanksAround(text);
    if (!isPlainNumber(number)) {
        return std::nullopt;
    }
    bool fits = false;
    const double value = number.toLatin1().toDouble(&fits);
    return fits ? std::optional<double>(value) : std::nullopt;
}

} // namespace veldron
