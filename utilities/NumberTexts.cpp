// SPDX-License-Identifier: MIT
#include "utilities/NumberTexts.h"

#include "common/LeadingNumber.h"

namespace veldron::GeneralUtilities {

namespace {

/// \a numerator / \a denominator to nearest, halves away from zero. \a denominator is above 0.
qint64 divideHalfAway(qint64 numerator, qint64 denominator) {
    const qint64 quotient = numerator / denominator;
    const qint64 rest = numerator % denominator;
    // The rest is compared with what is missing, because twice the rest could leave the range.
    if (qAbs(rest) < denominator - qAbs(rest)) {
        return quotient;
    }
    return numerator < 0 ? quotient - 1 : quotient + 1;
}

/// \a number with at least one digit more than \a places, and a point before each group of
/// \a groupSize of its last \a places digits.
QString pointedText(qint64 number, int places, int groupSize) {
    const quint64 size =
        number < 0 ? 0U - static_cast<quint64>(number) : static_cast<quint64>(number);
    QString text = QString::number(size).rightJustified(places + 1, QLatin1Char('0'));
    for (qsizetype group = groupSize; group <= places; group += groupSize) {
        // Each point that is already in stands to the right of the next.
        text.insert(text.size() - group - (group / groupSize - 1), QLatin1Char('.'));
    }
    return number < 0 ? QLatin1Char('-') + text : text;
}

qint64 wholeHertz(Hertz value) {
    return divideHalfAway(value.units(), Hertz::kUnitsPerHertz);
}

/// \a size in units of \a unit bytes, in tenths. Whole units and rest apart, because ten times the
/// size could leave the range.
qint64 tenthsOf(qint64 size, qint64 unit) {
    return size / unit * 10 + divideHalfAway(size % unit * 10, unit);
}

QString sizeText(qint64 number, const QString &digits, QLatin1Char letter) {
    return QLatin1String(number < 0 ? "-   " : "   ") + digits + letter;
}

} // namespace

QString FormatFileSize(qint64 Size) {
    constexpr qint64 kilo = 1024;
    constexpr qint64 mega = kilo * kilo;
    // The sizes are compared before they are rounded, so "1000.0k" can come out of the first case.
    if (Size < 1000 * kilo) {
        const qint64 tenths = tenthsOf(Size, kilo);
        return sizeText(tenths, pointedText(qAbs(tenths), 1, 1), QLatin1Char('k'));
    }
    if (Size < 100000 * kilo) {
        const qint64 whole = divideHalfAway(Size, kilo);
        return sizeText(whole, QString::number(whole), QLatin1Char('k'));
    }
    const qint64 tenths = tenthsOf(Size, mega);
    return sizeText(tenths, pointedText(tenths, 1, 1), QLatin1Char('M'));
}

QString FrequencyText(Hertz Value) {
    constexpr Hertz limit = Hertz::fromWhole(1'000'000);
    const bool isShort = Value < limit && -limit < Value;
    return pointedText(wholeHertz(Value), isShort ? 3 : 6, 3);
}

QString FormatMHz(Hertz Value) {
    return pointedText(divideHalfAway(Value.units(), 10 * Hertz::kUnitsPerHertz), 5, 5);
}

QString FormatKHz(Hertz Value) {
    return pointedText(wholeHertz(Value), 3, 3);
}

QString DigitsOnly(const QString &Text) {
    QString digits;
    for (const QChar character : Text) {
        if (character >= QLatin1Char('0') && character <= QLatin1Char('9')) {
            digits.append(character);
        }
    }
    return digits;
}

double LeadingNumber(const QString &Text) {
    return leadingNumber(Text);
}

} // namespace veldron::GeneralUtilities
