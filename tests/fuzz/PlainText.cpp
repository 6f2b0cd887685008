// SPDX-License-Identifier: MIT
#include "tests/fuzz/PlainText.h"

#include <charconv>
#include <limits>
#include <string>
#include <system_error>

namespace veldron::PlainText {

namespace {

/// Units of a strict decimal in one.
constexpr int kDecimals = 4;

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

/// Blanks as Latin-1 knows them.
bool isSpace(char byte) {
    const auto code = static_cast<unsigned char>(byte);
    return code == 0x20 || (code >= 0x09 && code <= 0x0D) || code == 0x85 || code == 0xA0;
}

/// Takes a sign off the front of \a text; true for a minus.
bool takeSign(QByteArrayView &text) {
    const char sign = text.isEmpty() ? '\0' : text.front();
    if (sign == '-' || sign == '+') {
        text = text.sliced(1);
    }
    return sign == '-';
}

} // namespace

std::vector<Line> linesOf(QByteArrayView file) {
    std::vector<Line> lines;
    bool open = false;
    char previous = 0;
    for (const char byte : file) {
        const bool isSecondHalf = byte == '\n' && previous == '\r';
        previous = byte;
        if (isSecondHalf) {
            continue;
        }
        if (!open) {
            lines.push_back({{}, false});
        }
        open = byte != '\r' && byte != '\n';
        if (open) {
            lines.back().bytes.append(byte);
        }
        lines.back().ended = !open;
    }
    return lines;
}

double leadingNumber(QByteArrayView text) {
    while (text.startsWith(' ')) {
        text = text.sliced(1);
    }
    const bool negative = takeSign(text);
    std::string digits;
    bool hasPoint = false;
    for (const char byte : text) {
        if (!isDigit(byte) && (byte != '.' || hasPoint)) {
            break;
        }
        hasPoint = hasPoint || byte == '.';
        digits += byte;
    }
    const bool isNumber = digits.find_first_of("0123456789") != std::string::npos;
    double number = 0.0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (isNumber && result.ec == std::errc::result_out_of_range) {
        // Too large, unless the point stands in front of all that isn't nought.
        const bool isLarge = digits.find_first_not_of('0') < digits.find('.');
        number = isLarge ? std::numeric_limits<double>::infinity() : 0.0;
    }
    return negative ? -number : number;
}

QByteArrayView trimmed(QByteArrayView text) {
    while (!text.isEmpty() && isSpace(text.front())) {
        text = text.sliced(1);
    }
    while (!text.isEmpty() && isSpace(text.back())) {
        text.chop(1);
    }
    return text;
}

Decimal strictDecimal(QByteArrayView text, char mark) {
    const bool negative = takeSign(text);
    quint64 units = 0;
    bool isTooLarge = false;
    const auto append = [&](int digit) {
        constexpr quint64 kMost = (std::numeric_limits<quint64>::max() - 9) / 10;
        isTooLarge = isTooLarge || units > kMost;
        units = isTooLarge ? units : units * 10 + static_cast<quint64>(digit);
    };
    int digits = 0;
    int decimals = -1;
    int first = 0;       // the first digit behind those that count
    bool isMore = false; // whether anything stands behind that one
    for (const char byte : text) {
        if (byte == mark && decimals < 0) {
            decimals = 0;
            continue;
        }
        if (!isDigit(byte)) {
            return {Decimal::Kind::None, 0};
        }
        ++digits;
        if (decimals >= 0 && ++decimals > kDecimals) {
            isMore = isMore || (decimals > kDecimals + 1 && byte != '0');
            first = decimals == kDecimals + 1 ? byte - '0' : first;
        } else {
            append(byte - '0');
        }
    }
    if (digits == 0) {
        return {Decimal::Kind::None, 0};
    }
    for (int missing = qMax(decimals, 0); missing < kDecimals; ++missing) {
        append(0);
    }
    if (first > 5 || (first == 5 && (isMore || units % 2 != 0))) {
        ++units;
    }
    if (isTooLarge || units > static_cast<quint64>(std::numeric_limits<qint64>::max())) {
        return {Decimal::Kind::TooLarge, 0};
    }
    const auto size = static_cast<qint64>(units);
    return {Decimal::Kind::Fits, negative ? -size : size};
}

std::optional<qint32> plainTime(QByteArrayView text) {
    constexpr qsizetype kLength = 8;
    if (text.size() != kLength || text[2] != ':' || text[5] != ':') {
        return std::nullopt;
    }
    const auto pair = [&](qsizetype place) {
        const bool digits = isDigit(text[place]) && isDigit(text[place + 1]);
        return digits ? (text[place] - '0') * 10 + (text[place + 1] - '0') : 100;
    };
    const int hour = pair(0);
    const int minute = pair(3);
    const int second = pair(6);
    const bool isTime = hour < 24 && minute < 60 && second < 60;
    return isTime ? std::optional(hour * 3600 + minute * 60 + second) : std::nullopt;
}

} // namespace veldron::PlainText
