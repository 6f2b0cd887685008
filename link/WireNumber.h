// SPDX-License-Identifier: MIT
// Numbers as they go over the line: plain decimal, "." as the mark, no exponent whatever the size,
// no blanks, no thousands mark, no trailing zeros, "-" before a negative value.
#pragma once

#include <QString>

#include <optional>

namespace veldron {

/// At most 15 significant digits. \a value is finite.
[[nodiscard]] QString wireNumber(double value);
/// At most 7 significant digits. \a value is finite.
[[nodiscard]] QString wireNumber(float value);

/// The number that the whole of \a text is: an optional sign and decimal digits with at most one
/// point, blanks around allowed. Nothing for any other text.
[[nodiscard]] std::optional<double> strictNumber(const QString &text);

} // namespace veldron
