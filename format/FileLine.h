// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace veldron {

/// A line of a file ends at the first of these, and may have both.
[[nodiscard]] constexpr bool endsLine(char byte) {
    return byte == '\r' || byte == '\n';
}

/// A line of either file: a key, one blank and a value.
///
/// The key ends at the first blank; the value is all that follows it, further blanks included
/// ("RXMode  AM" has the value " AM"). A line without a blank is a key with an empty value. No line
/// is bad as such: what isn't meant for the program has a key that nobody knows.
struct FileLine {
    QString key;
    QString value;

    /// Takes \a line, which has no line end any more, apart.
    [[nodiscard]] static FileLine of(const QString &line);
    /// The line as it is written; with an empty value it ends in the blank.
    [[nodiscard]] QString text() const;
};

} // namespace veldron
