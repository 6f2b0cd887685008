// SPDX-License-Identifier: MIT
// The fixed text forms of frequencies and of file sizes, and the way back from a text to a number.
//
// No function depends on the machine's language: the point is the only decimal mark. Number texts
// are rounded to nearest, halves away from zero; a shown zero has no minus.
#pragma once

#include "common/Hertz.h"

#include <QString>
#include <QtGlobal>

namespace veldron::GeneralUtilities {

/// A byte count with a letter, k for 1024 and M for 1048576 bytes: "   12.5k", "   1000k",
/// "   97.7M". The three blanks in front belong to it.
[[nodiscard]] QString FormatFileSize(qint64 Size);
/// The long form of the chart: groups of three digits down to 1 Hz, "145.500.000", "999.999".
[[nodiscard]] QString FrequencyText(Hertz Value);
/// The form of the panels' frequency fields, in MHz down to 10 Hz: "145.50000".
[[nodiscard]] QString FormatMHz(Hertz Value);
/// The form of the step fields, in kHz down to 1 Hz: "25.000".
[[nodiscard]] QString FormatKHz(Hertz Value);
/// \a Text without everything but the digits 0 to 9. The points in the texts above are no decimal
/// marks, so this comes before LeadingNumber where a list row is to become hertz again.
[[nodiscard]] QString DigitsOnly(const QString &Text);
/// The number that \a Text begins with, behind leading blanks: an optional sign and digits with at
/// most one point; 0 if there is none.
[[nodiscard]] double LeadingNumber(const QString &Text);

} // namespace veldron::GeneralUtilities
