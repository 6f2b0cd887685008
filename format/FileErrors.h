// SPDX-License-Identifier: MIT
// The errors that the content of a file can give, with their texts. A file that can't be opened,
// read or written is told of in common/TextFile.h.
//
// Each function makes the error without a place; at() adds file and line where the error is met.
#pragma once

#include "common/UntrappedError.h"

#include <QString>

namespace veldron::FileErrors {

/// \a error with the place where it was met: "Line 3 of the file "/some/file": what is wrong."
[[nodiscard]] UntrappedError at(const QString &path, qint64 line, const UntrappedError &error);

// Values of settings lines.
[[nodiscard]] UntrappedError numberOutOfRange(const QString &value); ///< kind Overflow
[[nodiscard]] UntrappedError notAFrequency(const QString &value);    ///< kind BadValue
[[nodiscard]] UntrappedError notAPollRate(const QString &value);     ///< kind OutOfRange
[[nodiscard]] UntrappedError tooManyChannelLines();                  ///< kind Overflow

// Scan lines.
[[nodiscard]] UntrappedError scanWithoutTime();   ///< no blank in it; kind OutOfRange
[[nodiscard]] UntrappedError scanWithoutLevels(); ///< begins with a blank; kind OutOfRange
/// What stands behind the scan is \a timeText, which is no time of day; kind BadValue.
[[nodiscard]] UntrappedError notATimeOfScan(const QString &timeText);

// A recording as a whole.
[[nodiscard]] UntrappedError noDate(); ///< no StartSettings line above a scan; kind BadValue
/// The value of a StartSettings line is \a date, which is no date; kind BadValue.
[[nodiscard]] UntrappedError notADate(const QString &date);
[[nodiscard]] UntrappedError noSize();       ///< the file was empty; kind DivideByZero
[[nodiscard]] UntrappedError noTimePassed(); ///< since the first scan; kind DivideByZero
[[nodiscard]] UntrappedError tooFarBack();   ///< behind the last scan read; kind Overflow

} // namespace veldron::FileErrors
