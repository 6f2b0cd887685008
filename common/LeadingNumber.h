// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace veldron {

/// The number that \a text begins with, behind leading blanks: an optional sign and digits with at
/// most one point; 0 if there is none. The point is the decimal mark in every locale. A number
/// beyond the range of a double is the largest double of its sign.
[[nodiscard]] double leadingNumber(const QString &text);

} // namespace veldron
