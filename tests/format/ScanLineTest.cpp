// SPDX-License-Identifier: MIT
#include "format/ScanLine.h"

#include "common/UntrappedError.h"
#include "format/FileLine.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

const DateTimeText kTexts{QLocale(QLocale::English, QLocale::UnitedKingdom)};

ScanLine read(const QString &value) {
    return ScanLine::of(value, kTexts);
}

LevelScan scanOf(std::size_t count) {
    return LevelScan(count, 'x');
}

TEST(ScanLine, lineOfAScan_isKeyLevelsBlankAndTime) {
    EXPECT_EQ(ScanLine::lineFor({1, 255, 128}, QTime(14, 3, 27), kTexts),
              QString::fromLatin1("Data \x01\xFF\x80 14:03:27"));
}

TEST(ScanLine, whatIsWritten_readsBack) {
    LevelScan levels;
    for (int level = 0; level < 256; ++level) {
        if (level != 32) {
            levels.push_back(static_cast<std::uint8_t>(level));
        }
    }
    const FileLine line = FileLine::of(ScanLine::lineFor(levels, QTime(23, 59, 59), kTexts));
    EXPECT_EQ(line.key, ScanLine::kKey);
    EXPECT_EQ(read(line.value).levels, levels);
    EXPECT_EQ(read(line.value).timeText, "23:59:59");
    EXPECT_EQ(read(line.value).time, QTime(23, 59, 59));
}

TEST(ScanLine, levelOf32_endsTheScan) {
    const ScanLine line = read("ab cd 10:00:00");
    EXPECT_EQ(line.levels, (LevelScan{'a', 'b'}));
    EXPECT_EQ(line.timeText, "cd 10:00:00");
    EXPECT_FALSE(line.time);
}

TEST(ScanLine, longScan_isCutAt323Levels) {
    for (const std::size_t length : {322U, 323U, 324U, 400U}) {
        const ScanLine line = read(QString(static_cast<qsizetype>(length), 'x') + " 10:00:00");
        EXPECT_EQ(line.levels, scanOf(std::min<std::size_t>(length, 323)));
        // One character at the place of the blank is lost; the rest is taken for the time.
        const QString rest =
            length <= 323 ? QString() : QString(static_cast<qsizetype>(length) - 324, 'x') + " ";
        EXPECT_EQ(line.timeText, rest + "10:00:00") << length;
        EXPECT_EQ(line.time.has_value(), length <= 323) << length;
    }
}

TEST(ScanLine, oneLevelOfZero_isAScan) {
    EXPECT_EQ(read(QString(QChar(0)) + " 10:00:00").levels, LevelScan{0});
}

TEST(ScanLine, noBlankOrNoLevel_isOutOfRange) {
    for (const QString &value :
         {QString(), QString("scan"), QString(400, 'x'), QString(" 10:00")}) {
        try {
            (void)read(value);
            ADD_FAILURE() << value.toStdString();
        } catch (const UntrappedError &error) {
            EXPECT_EQ(error.kind(), UntrappedError::Kind::OutOfRange) << value.toStdString();
        }
    }
}

} // namespace
} // namespace veldron
