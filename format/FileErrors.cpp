// SPDX-License-Identifier: MIT
#include "format/FileErrors.h"

#include "common/ReportText.h"
#include "format/FileLine.h"
#include "format/ScanLine.h"

namespace veldron::FileErrors {

namespace {

using Kind = UntrappedError::Kind;

/// What breaks a scan line in a recording that the program has written itself.
const QString kLevelBytes = QStringLiteral("a level of 10, 13 or 32 in a recording does this");

} // namespace

UntrappedError at(const QString &path, qint64 line, const UntrappedError &error) {
    QString what = error.message();
    if (what.endsWith(QLatin1Char('.'))) {
        what.chop(1);
    }
    // One call for all three: a place mark in a path or a value is never filled in.
    return {
        error.kind(),
        QStringLiteral("Line %1 of the file \"%2\": %3.").arg(QString::number(line), path, what)};
}

UntrappedError inLastLine(const TextFileReader &reader, const QString &line,
                          const UntrappedError &error) {
    const bool cut = FileLine::of(line).key == ScanLine::kKey && !reader.lastLineEnded();
    return at(reader.path(), reader.lineNumber(), cut ? cutScan() : error);
}

UntrappedError noScan() {
    return {Kind::BadValue, QStringLiteral("there is no scan in the file")};
}

UntrappedError cutScan() {
    return {Kind::OutOfRange, QStringLiteral("the file ends in the middle of a scan")};
}

UntrappedError numberOutOfRange(const QString &value) {
    return {Kind::Overflow,
            QStringLiteral("the number %1 is out of range").arg(quotedForReport(value))};
}

UntrappedError notAFrequency(const QString &value) {
    return {Kind::BadValue,
            QStringLiteral("%1 is not a frequency in hertz").arg(quotedForReport(value))};
}

UntrappedError notAPollRate(const QString &value) {
    return {Kind::OutOfRange,
            QStringLiteral("%1 is no poll rate in milliseconds").arg(quotedForReport(value))};
}

UntrappedError tooManyChannelLines() {
    return {Kind::Overflow, QStringLiteral("there are too many channel lines in one block")};
}

UntrappedError scanWithoutTime() {
    return {Kind::OutOfRange,
            QStringLiteral("a scan line has no time behind its scan (%1)").arg(kLevelBytes)};
}

UntrappedError scanWithoutLevels() {
    return {Kind::OutOfRange,
            QStringLiteral("a scan line has no scan in it (%1)").arg(kLevelBytes)};
}

UntrappedError notATimeOfScan(const QString &timeText) {
    if (timeText.isEmpty()) {
        return {Kind::BadValue, QStringLiteral("no time of day stands behind the scan")};
    }
    return {Kind::BadValue, QStringLiteral("no time of day stands behind the scan but %1 (%2, and "
                                           "so do more than %3 levels)")
                                .arg(quotedForReport(timeText), kLevelBytes,
                                     QString::number(ScanLine::kMostLevels))};
}

UntrappedError noDate() {
    return {Kind::BadValue, QStringLiteral("there is no StartSettings line with a date")};
}

UntrappedError notADate(const QString &date) {
    return {Kind::BadValue, date.isEmpty()
                                ? QStringLiteral("the StartSettings line has no date")
                                : quotedForReport(date) + QStringLiteral(" is not a date")};
}

UntrappedError noSize() {
    return {Kind::DivideByZero, QStringLiteral("the file had no size when it was opened")};
}

UntrappedError noTimePassed() {
    return {Kind::DivideByZero,
            QStringLiteral("the scan has the same time as the first one of the file, so there is "
                           "no telling how far the playback has come")};
}

UntrappedError tooFarBack() {
    return {Kind::Overflow, QStringLiteral("the display stands too far from the last scan")};
}

} // namespace veldron::FileErrors
