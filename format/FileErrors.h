// SPDX-License-Identifier: MIT
// The errors that the content of a file can give, with their texts. A file that can't be opened,
// read or written is told of in common/TextFile.h.
//
// Each function makes the error without a place; at() adds file and line where the error is met.
#pragma once

#include "common/TextFile.h"
#include "common/UntrappedError.h"

#include <QString>

namespace veldron::FileErrors {

/// \a error with the place where it was met: "Line 3 of the file "/some/file": what is wrong."
[[nodiscard]] UntrappedError at(const QString &path, qint64 line, const UntrappedError &error);
/// The same for an error in the content of the last line that \a reader has read, which is \a line.
/// A scan line without a line end is reported as cut, whatever \a error says: the recorder writes
/// whole lines, so the file has lost its end.
[[nodiscard]] UntrappedError inLastLine(const TextFileReader &reader, const QString &line,
                                        const UntrappedError &error);

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
[[nodiscard]] UntrappedError noScan();  ///< where one is to be shown; kind BadValue
[[nodiscard]] UntrappedError cutScan(); ///< the file ends inside its last line; kind OutOfRange
[[nodiscard]] UntrappedError noDate();  ///< no StartSettings line above a scan; kind BadValue
/// The value of a StartSettings line is \a date, which is no date; kind BadValue.
[[nodiscard]] UntrappedError notADate(const QString &date);
[[nodiscard]] UntrappedError noSize();       ///< the file was empty; kind DivideByZero
[[nodiscard]] UntrappedError noTimePassed(); ///< since the first scan; kind DivideByZero
[[nodiscard]] UntrappedError tooFarBack();   ///< behind the last scan read; kind Overflow

} // namespace veldron::FileErrors
