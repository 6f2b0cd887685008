// SPDX-License-Identifier: MIT
#include "format/SettingsValue.h"

namespace veldron::SettingsValue {

namespace {

const QLatin1String kTrue("True");
const QLatin1String kFalse("False");

} // namespace

QString ofFlag(bool flag) {
    return flag ? kTrue : kFalse;
}

QString ofWhole(qint64 number) {
    return QString::number(number);
}

QString ofFrequency(Hertz frequency, QChar decimalMark) {
    return frequency.toText(decimalMark);
}

bool flag(const QString &value) {
    return value == kTrue;
}

Hertz frequency(const QString &value, QChar decimalMark) {
    const auto hertz = Hertz::fromText(value, decimalMark);
    if (!hertz) {
        throw FileErrors::notAFrequency(value);
    }
    return *hertz;
}

Hertz numberOfHertz(const QString &value) {
    const double hertz = leadingNumber(value);
    // Asked here, because the conversion below saturates in silence.
    if (!Numbers::roundToExact<qint64>(hertz * static_cast<double>(Hertz::kUnitsPerHertz))) {
        throw FileErrors::numberOutOfRange(value);
    }
    return Hertz::fromDouble(hertz);
}

} // namespace veldron::SettingsValue
