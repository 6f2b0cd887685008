// SPDX-License-Identifier: MIT
// The readers' rules once more, by the plainest means: what the product reads is held against this.
// Shares no code with the product.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QtGlobal>

#include <optional>
#include <vector>

namespace veldron::PlainText {

struct Line {
    QByteArray bytes; ///< without the end
    bool ended;       ///< false for a last line without an end
};

/// The lines of a file, taken apart byte by byte.
[[nodiscard]] std::vector<Line> linesOf(QByteArrayView file);

/// The number that \a text begins with, behind blanks: sign, digits, at most one point. 0 where
/// there is none, infinite past the range of a double.
[[nodiscard]] double leadingNumber(QByteArrayView text);

/// \a text without the blanks of Latin-1 around it.
[[nodiscard]] QByteArrayView trimmed(QByteArrayView text);

/// What a strict decimal text gives, in ten-thousandths, ties to even.
struct Decimal {
    enum class Kind { None, TooLarge, Fits };
    Kind kind;
    qint64 units;
};
[[nodiscard]] Decimal strictDecimal(QByteArrayView text, char mark);

/// Seconds of the day in a text of the form HH:mm:ss; nothing for any other text.
[[nodiscard]] std::optional<qint32> plainTime(QByteArrayView text);

} // namespace veldron::PlainText
