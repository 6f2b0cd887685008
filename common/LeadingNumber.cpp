// SPDX-License-Identifier: MIT
#include "common/LeadingNumber.h"

#include <cmath>
#include <limits>

namespace veldron {

double leadingNumber(const QString &text) {
    qsizetype start = 0;
    while (start < text.size() && text[start] == QLatin1Char(' ')) {
        ++start;
    }
    qsizetype end = start;
    if (end < text.size() && (text[end] == QLatin1Char('-') || text[end] == QLatin1Char('+'))) {
        ++end;
    }
    bool afterPoint = false;
    bool hasDigit = false;
    for (; end < text.size(); ++end) {
        if (text[end] == QLatin1Char('.') && !afterPoint) {
            afterPoint = true;
        } else if (text[end] >= QLatin1Char('0') && text[end] <= QLatin1Char('9')) {
            hasDigit = true;
        } else {
            break;
        }
    }
    if (!hasDigit) {
        return 0.0;
    }
    // Only what was looked at above gets here. By itself toDouble takes exponents, "inf" and "nan"
    // for numbers too.
    bool ok = false;
    const double number = text.mid(start, end - start).toDouble(&ok);
    if (ok) {
        return number;
    }
    // Only a number beyond the range of a double gets here.
    return std::copysign(std::numeric_limits<double>::max(),
                         text[start] == QLatin1Char('-') ? -1.0 : 1.0);
}

} // namespace veldron
