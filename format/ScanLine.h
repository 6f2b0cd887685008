// SPDX-License-Identifier: MIT
#pragma once

#include "common/DateTimeText.h"
#include "common/LevelScan.h"

#include <QString>
#include <QTime>

#include <optional>

namespace veldron {

/// A scan of a recording: "Data ", one character a level (its code is the level's byte, 0 to 255),
/// a blank, and the time of day at which the line was written, to the second.
///
/// Nothing is escaped, so the line isn't always read as it was written:
/// - a level of 32 is a blank, and ends the scan for the reader; the levels behind it are taken for
///   the beginning of the time;
/// - a level of 10 or 13 ends the line itself;
/// - only the first 323 levels are read. Of a longer scan level 324 is lost, and what follows it
///   is taken for the beginning of the time.
/// The unit sends 321 levels at most. A failed transfer is recorded as one level of 0, a transfer
/// that brought no level as 325 levels of 0.
///
/// The date is not in the line: it is that of the last StartSettings line above it.
struct ScanLine {
    /// The key of the line.
    static constexpr QLatin1String kKey{"Data"};
    /// Levels that are read; see above.
    static constexpr qsizetype kMostLevels = 323;

    /// In ascending frequency, at least one.
    LevelScan levels;
    /// All that stands behind the blank.
    QString timeText;
    /// The time that timeText tells; nothing where it is no time of day.
    std::optional<QTime> time;

    /// The scan in \a value, which is what a line of the key holds. UntrappedError(OutOfRange)
    /// without a blank in the value, and with one as its first character.
    [[nodiscard]] static ScanLine of(const QString &value, const DateTimeText &texts);
    /// The line for \a levels, taken down at \a time.
    [[nodiscard]] static QString lineFor(const LevelScan &levels, QTime time,
                                         const DateTimeText &texts);
};

} // namespace veldron
