// SPDX-License-Identifier: MIT
// The forms that values of settings lines have, to text and back:
//
// - flag: "True" or "False"; any other text reads as false;
// - whole number: decimal digits with a leading minus if it is negative; read as the number that
//   the text begins with (0 if there is none), rounded half to even;
// - frequency: hertz with at most four decimals, in the shortest form, with the locale's decimal
//   mark; read strictly, by the mark of the locale that the reader runs in;
// - number of hertz: written like a frequency, but read as the number that the text begins with,
//   whose decimal mark is always the point. So decimals written with a comma are lost in reading.
//
// A text that can't be read, and a number out of its range, are UntrappedErrors.
#pragma once

#include "common/Hertz.h"
#include "common/LeadingNumber.h"
#include "common/Numbers.h"
#include "format/FileErrors.h"

#include <QChar>
#include <QString>

namespace veldron::SettingsValue {

[[nodiscard]] QString ofFlag(bool flag);
[[nodiscard]] QString ofWhole(qint64 number);
[[nodiscard]] QString ofFrequency(Hertz frequency, QChar decimalMark);

[[nodiscard]] bool flag(const QString &value);

/// The whole number that \a value begins with. UntrappedError(Overflow) past the range of T.
template <typename T>
[[nodiscard]] T whole(const QString &value) {
    const auto number = Numbers::roundToExact<T>(leadingNumber(value));
    if (!number) {
        throw FileErrors::numberOutOfRange(value);
    }
    return *number;
}

/// UntrappedError(BadValue) where the whole text is no frequency.
[[nodiscard]] Hertz frequency(const QString &value, QChar decimalMark);
/// UntrappedError(Overflow) past the range of Hertz.
[[nodiscard]] Hertz numberOfHertz(const QString &value);

} // namespace veldron::SettingsValue
