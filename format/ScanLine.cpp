// SPDX-License-Identifier: MIT
#include "format/ScanLine.h"

#include "format/FileErrors.h"
#include "format/FileLine.h"

namespace veldron {

ScanLine ScanLine::of(const QString &value, const DateTimeText &texts) {
    const qsizetype blank = value.indexOf(QLatin1Char(' '));
    const qsizetype count = qMin(blank < 0 ? value.size() : blank, kMostLevels);
    if (blank < 0) {
        throw FileErrors::scanWithoutTime();
    }
    if (count == 0) {
        throw FileErrors::scanWithoutLevels();
    }
    ScanLine line;
    line.levels.reserve(static_cast<std::size_t>(count));
    // Latin-1 both ways: the code of a character is the byte in the file.
    for (const QChar level : value.left(count)) {
        line.levels.push_back(static_cast<std::uint8_t>(level.unicode()));
    }
    // One character is passed over, the blank as a rule.
    line.timeText = value.mid(count + 1);
    line.time = texts.readTime(line.timeText);
    return line;
}

QString ScanLine::lineFor(const LevelScan &levels, QTime time, const DateTimeText &texts) {
    QString value;
    value.reserve(static_cast<qsizetype>(levels.size()));
    for (const std::uint8_t level : levels) {
        value += QLatin1Char(static_cast<char>(level));
    }
    return FileLine{kKey, value + QLatin1Char(' ') + texts.timeText(time)}.text();
}

} // namespace veldron
