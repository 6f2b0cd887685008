// SPDX-License-Identifier: MIT
// Numbers as the unit reads and writes them on its line: plain decimal ASCII, "." as the mark.
#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <optional>

namespace veldron::UnitText {

/// \a text times ten to the power of \a decimals, so that "145.125" with 6 is 145125000. Further
/// decimals are rounded, ties to even. The whole text must be a number: an optional "-", digits and
/// at most one point. Nothing on any other text, or with more than nine digits before the point.
[[nodiscard]] std::optional<qint64> readScaled(const QByteArray &text, int decimals);

/// As readScaled, but the text must be a whole number.
[[nodiscard]] std::optional<int> readWhole(const QByteArray &text);

/// \a value over ten to the power of \a decimals, with all those decimals: "10.000000".
[[nodiscard]] QByteArray writeFixed(qint64 value, int decimals);

/// The same without trailing zeros, and without the point where none is needed: "12.5", "144".
[[nodiscard]] QByteArray writeShort(qint64 value, int decimals);

} // namespace veldron::UnitText
