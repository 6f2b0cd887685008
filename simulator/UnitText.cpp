// SPDX-License-Identifier: MIT
#include "simulator/UnitText.h"

#include "common/Numbers.h"

namespace veldron::UnitText {

namespace {

constexpr qsizetype kMostWholeDigits = 9;
/// Decimals kept beyond the scale, to round on.
constexpr int kGuardDecimals = 3;

bool isDigits(const QByteArray &text) {
    for (const char c : text) {
        if (c < '0' || c > '9') {
            return false;
        }
    }
    return true;
}

} // namespace

std::optional<qint64> readScaled(const QByteArray &text, int decimals) {
    const bool negative = text.startsWith('-');
    const QByteArray number = text.mid(negative ? 1 : 0);
    const qsizetype point = number.indexOf('.');
    const QByteArray whole = point < 0 ? number : number.left(point);
    QByteArray fraction = point < 0 ? QByteArray() : number.mid(point + 1);
    if (whole.size() + fraction.size() == 0 || whole.size() > kMostWholeDigits ||
        !isDigits(whole) || !isDigits(fraction)) {
        return std::nullopt;
    }
    fraction =
        fraction.left(decimals + kGuardDecimals).leftJustified(decimals + kGuardDecimals, '0');
    qint64 guard = 1;
    for (int i = 0; i < kGuardDecimals; ++i) {
        guard *= 10;
    }
    const qint64 magnitude = Numbers::divideHalfEven((whole + fraction).toLongLong(), guard);
    return negative ? -magnitude : magnitude;
}

std::optional<int> readWhole(const QByteArray &text) {
    if (text.contains('.')) {
        return std::nullopt;
    }
    const std::optional<qint64> value = readScaled(text, 0);
    if (!value) {
        return std::nullopt;
    }
    return static_cast<int>(*value);
}

QByteArray writeFixed(qint64 value, int decimals) {
    const QByteArray digits = QByteArray::number(qAbs(value)).rightJustified(decimals + 1, '0');
    QByteArray text = value < 0 ? "-" : "";
    text += digits.left(digits.size() - decimals);
    if (decimals > 0) {
        text += "." + digits.right(decimals);
    }
    return text;
}

QByteArray writeShort(qint64 value, int decimals) {
    QByteArray text = writeFixed(value, decimals);
    if (decimals > 0) {
        while (text.endsWith('0')) {
            text.chop(1);
        }
        if (text.endsWith('.')) {
            text.chop(1);
        }
    }
    return text;
}

} // namespace veldron::UnitText
