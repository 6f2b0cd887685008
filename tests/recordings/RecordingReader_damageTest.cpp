// SPDX-License-Identifier: MIT
// Damaged recordings: what is whole is read, what isn't is told and never invented.
#include "recordings/RecordingReader.h"

#include "tests/recordings/Recordings.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>

namespace veldron {
namespace {

using Kind = RecordingFinding::Kind;
LevelScan numbered(int first, std::size_t count) {
    LevelScan levels(count);
    for (std::size_t i = 0; i < count; ++i) {
        levels[i] = static_cast<std::uint8_t>(static_cast<std::size_t>(first) + i * 5);
    }
    return levels;
}

/// Recordings of three kinds: as usual, with lengths that change, and of another locale.
std::vector<QByteArray> threeRecordings() {
    RecordingText usual;
    usual.block(kDay).scan(kTen, numbered(0, 321)).scan(kTen.addSecs(1), numbered(1, 321));
    usual.block(kDay).scan(kTen.addSecs(2), numbered(2, 321));
    RecordingText changing{QLocale(QLocale::English, QLocale::UnitedStates)};
    changing.block(kDay).scan(kTen, numbered(0, 1)).scan(kTen, numbered(7, 325));
    changing.scan(kTen, {0}).scan(kTen.addSecs(9000), numbered(30, 32));
    RecordingText french{QLocale(QLocale::French, QLocale::Canada)};
    french.lineEnd = "\n";
    french.block(kDay).scan(QTime(23, 59, 59), numbered(0, 100)).scan(QTime(0, 0), {10, 13, 32});
    return {usual.bytes, changing.bytes, french.bytes};
}

TEST(RecordingReaderDamage, fileCutAtAnyByte_givesTheScansThatAreWhole) {
    for (const QByteArray &whole : threeRecordings()) {
        Collector all;
        (void)readInto(all, whole);
        for (qsizetype size = 0; size <= whole.size(); ++size) {
            Collector got;
            (void)readInto(got, whole.first(size));
            const auto complete = static_cast<std::size_t>(
                std::count_if(all.scans.begin(), all.scans.end(), [&](const ReadScan &scan) {
                    return scan.place.offset + scan.bytes.size() <= size;
                }));
            ASSERT_GE(got.scans.size(), complete) << size;
            ASSERT_LE(got.scans.size(), complete + 1) << size; // without its line end
            for (std::size_t i = 0; i < got.scans.size(); ++i) {
                ASSERT_TRUE(got.scans[i] == all.scans[i]) << size << ' ' << i;
            }
            ASSERT_EQ(got.all.size(), size);
        }
    }
}

TEST(RecordingReaderDamage, cutScan_isToldWithItsPlace) {
    RecordingText text;
    text.block(kDay).scan(kTen);
    const qint64 place = text.bytes.size();
    text.scan(kTen);
    Collector got;
    (void)readInto(got, text.bytes.first(place + 100));
    ASSERT_EQ(got.findings.size(), 1U);
    EXPECT_EQ(got.findings[0].kind, Kind::CutScan);
    EXPECT_EQ(got.findings[0].place.offset, place);
    EXPECT_EQ(got.findings[0].place.line, 13);
    EXPECT_EQ(got.findings[0].skipped, 100);
}

TEST(RecordingReaderDamage, scanWithoutItsTime_isSkippedAndTheNextIsRead) {
    RecordingText text;
    text.block(kDay).scan(kTen, numbered(1, 321));
    const qint64 place = text.bytes.size();
    text.bytes += "Data " + QByteArray(321, 'x') + " no time\r\n";
    const qint64 end = text.bytes.size();
    text.scan(kTen.addSecs(1), numbered(2, 321));
    Collector got;
    (void)readInto(got, text.bytes);
    ASSERT_EQ(got.scans.size(), 2U);
    EXPECT_EQ(got.scans[1].levels, numbered(2, 321));
    ASSERT_EQ(got.findings.size(), 1U);
    EXPECT_EQ(got.findings[0].kind, Kind::BadScan);
    EXPECT_EQ(got.findings[0].place.offset, place);
    EXPECT_EQ(got.findings[0].skipped, end - place);
}

TEST(RecordingReaderDamage, lineThatBreaksOffInTheMiddle_doesNotTakeTheNextAlong) {
    RecordingText text;
    text.block(kDay).scan(kTen, numbered(1, 321));
    text.bytes += "Data " + QByteArray(200, 'x');
    text.scan(kTen.addSecs(1), numbered(2, 321));
    Collector got;
    (void)readInto(got, text.bytes);
    ASSERT_EQ(got.scans.size(), 2U);
    EXPECT_EQ(got.scans[1].levels, numbered(2, 321));
    EXPECT_EQ(got.findings.size(), 1U);
}

TEST(RecordingReaderDamage, scanAboveADamagedLine_isRead) {
    RecordingText text;
    text.block(kDay).scan(kTen);
    text.bytes += QByteArray(5000, '\0');
    text.scan(kTen.addSecs(1));
    Collector got;
    (void)readInto(got, text.bytes);
    EXPECT_EQ(got.scans.size(), 2U);
    ASSERT_EQ(got.findings.size(), 1U);
    EXPECT_EQ(got.findings[0].kind, Kind::UnknownLine);
    EXPECT_EQ(got.findings[0].skipped, 5000);
}

TEST(RecordingReaderDamage, blockBehindADamagedScan_isRead) {
    RecordingText text;
    text.block(kDay).scan(kTen).line("Data abc").block(kDay.addDays(1)).scan(kTen);
    Collector got;
    (void)readInto(got, text.bytes);
    EXPECT_EQ(got.blocks.size(), 2U);
    ASSERT_EQ(got.scans.size(), 2U);
    EXPECT_EQ(got.scans[1].date, kDay.addDays(1));
}

TEST(RecordingReaderDamage, emptyAndUnknownLines_areTold) {
    RecordingText text;
    text.block(kDay).scan(kTen).line("").scan(kTen).line("# a remark").scan(kTen);
    Collector got;
    (void)readInto(got, text.bytes);
    EXPECT_EQ(got.scans.size(), 3U);
    ASSERT_EQ(got.findings.size(), 2U);
    EXPECT_EQ(got.findings[0].skipped, 2);
    EXPECT_EQ(got.findings[1].skipped, 12);
}

TEST(RecordingReaderDamage, lineLongerThanAnyMemory_isSkipped) {
    RecordingText text;
    text.block(kDay).scan(kTen);
    text.bytes += QByteArray("RBW ") + QByteArray(3000000, '7') + "\r\n";
    text.scan(kTen.addSecs(1));
    Collector got;
    (void)readInto(got, text.bytes);
    EXPECT_EQ(got.scans.size(), 2U);
    ASSERT_EQ(got.findings.size(), 1U);
    EXPECT_EQ(got.findings[0].skipped, 3000006);
}

TEST(RecordingReaderDamage, settingsWithoutEnd_comeInPieces) {
    RecordingText text;
    for (int i = 0; i < 1000; ++i) {
        text.line("RBW 2");
    }
    Collector got;
    (void)readInto(got, text.bytes);
    EXPECT_EQ(got.blocks.size(), 4U);
    EXPECT_EQ(std::accumulate(
                  got.blocks.begin(), got.blocks.end(), qsizetype{0},
                  [](qsizetype sum, const ReadBlock &block) { return sum + block.bytes.size(); }),
              7000);
}

TEST(RecordingReaderDamage, timeOfAnotherForm_isNoScan) {
    RecordingText text;
    text.block(kDay).scan(QTime(9, 0)).line("Data " + QString(321, 'a') + " 9.00.01");
    text.scan(QTime(9, 0, 2));
    Collector got;
    (void)readInto(got, text.bytes);
    EXPECT_EQ(got.scans.size(), 2U);
    EXPECT_EQ(got.findings.size(), 1U);
}

TEST(RecordingReaderDamage, anyByteChanged_costsAtMostTwoScans) {
    std::mt19937 random(5);
    RecordingText text;
    text.block(kDay);
    for (int i = 0; i < 30; ++i) {
        text.scan(kTen.addSecs(i), numbered(i, 321));
    }
    for (int run = 0; run < 2000; ++run) {
        QByteArray bytes = text.bytes;
        bytes[static_cast<qsizetype>(random()) % bytes.size()] = static_cast<char>(random());
        Collector got;
        (void)readInto(got, bytes);
        ASSERT_GE(got.scans.size(), 28U) << run;
        ASSERT_LE(got.scans.size(), 30U) << run;
        ASSERT_EQ(got.all, bytes);
    }
}

} // namespace
} // namespace veldron
