// SPDX-License-Identifier: MIT
#pragma once

#include <QChar>

namespace veldron {

/// One of the ten digits of ASCII, which are the only ones that the line and the files have.
[[nodiscard]] inline bool isDigit(QChar character) {
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

} // namespace veldron
