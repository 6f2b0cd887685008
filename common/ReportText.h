// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace veldron {

/// \a text, which comes out of a file, as an error report may show it: in double quotes, on one
/// line, with "?" for each character that can't be printed. Of more than 40 characters the first 40
/// are shown, with "..." behind the quotes.
[[nodiscard]] QString quotedForReport(const QString &text);

/// Writes \a text, which is one line, to standard error behind the program's name.
void writeReportLine(const QString &text);

} // namespace veldron
