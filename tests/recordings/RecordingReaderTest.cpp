// SPDX-License-Identifier: MIT
#include "recordings/RecordingReader.h"

#include "tests/recordings/Recordings.h"

#include <gtest/gtest.h>

#include <random>

namespace veldron {
namespace {

class RecordingReaderTest : public testing::Test {
protected:
    const Collector &read(const RecordingText &text, const RecordingDates::Rules &rules = {}) {
        return readInto(m_collector, text.bytes, rules);
    }
    Collector m_collector;
};

TEST_F(RecordingReaderTest, recording_isDeliveredInItsOrder) {
    RecordingText text;
    text.block(kDay).scan(kTen, {1, 2, 3}).scan(kTen.addSecs(1), {4}).block(kDay.addDays(1));
    text.scan(QTime(0, 0, 1), {5, 6});
    const Collector &got = read(text);
    EXPECT_EQ(got.first, "VELDRONv1 History file\r\n");
    ASSERT_EQ(got.scans.size(), 3U);
    EXPECT_EQ(got.scans[0].levels, (LevelScan{1, 2, 3}));
    EXPECT_EQ(got.scans[1].levels, (LevelScan{4}));
    EXPECT_EQ(got.scans[2].date, kDay.addDays(1));
    EXPECT_EQ(got.scans[2].second, 1);
    ASSERT_EQ(got.blocks.size(), 2U);
    EXPECT_TRUE(got.blocks[0].isWhole);
    EXPECT_TRUE(got.findings.empty());
    EXPECT_EQ(got.all, text.bytes);
}

TEST_F(RecordingReaderTest, places_areThoseOfTheFile) {
    RecordingText text;
    text.block(kDay);
    const qint64 offset = text.bytes.size();
    const Collector &got = read(text.scan(kTen, {1, 10, 13}).scan(kTen, {7}));
    ASSERT_EQ(got.scans.size(), 2U);
    EXPECT_EQ(got.blocks[0].place.line, 2);
    EXPECT_EQ(got.blocks[0].place.offset, 24);
    EXPECT_EQ(got.scans[0].place.line, 12);
    EXPECT_EQ(got.scans[0].place.offset, offset);
    EXPECT_EQ(got.scans[1].place.line, 15); // the levels end two lines
}

TEST_F(RecordingReaderTest, everyLevelAtEveryPosition_isRead) {
    for (int shift = 0; shift < 256; ++shift) {
        LevelScan levels(321);
        for (std::size_t i = 0; i < levels.size(); ++i) {
            levels[i] = static_cast<std::uint8_t>(i * 3 + static_cast<std::size_t>(shift));
        }
        RecordingText text;
        text.block(kDay).scan(kTen, levels).scan(kTen, levels);
        Collector collector;
        const Collector &got = readInto(collector, text.bytes);
        ASSERT_EQ(got.scans.size(), 2U) << shift;
        ASSERT_EQ(got.scans[0].levels, levels);
        ASSERT_EQ(got.scans[1].levels, levels);
        ASSERT_TRUE(got.findings.empty());
    }
}

TEST_F(RecordingReaderTest, scansOfAnyLengthAndLevels_areRead) {
    std::mt19937 random(14);
    RecordingText text;
    text.block(kDay);
    std::vector<LevelScan> written;
    for (int i = 0; i < 2000; ++i) {
        LevelScan levels(1 + random() % 325);
        for (std::uint8_t &level : levels) {
            level = static_cast<std::uint8_t>(random());
        }
        text.scan(kTen.addSecs(i), levels);
        written.push_back(levels);
    }
    const Collector &got = read(text);
    for (const RecordingFinding &finding : got.findings) {
        ADD_FAILURE() << finding.place.offset << ": " << finding.what.toStdString();
    }
    ASSERT_EQ(got.scans.size(), written.size());
    for (std::size_t i = 0; i < written.size(); ++i) {
        ASSERT_EQ(got.scans[i].levels, written[i]) << i;
        ASSERT_EQ(got.scans[i].second, 36000 + static_cast<int>(i));
    }
    EXPECT_TRUE(got.findings.empty());
}

TEST_F(RecordingReaderTest, levelsThatLookLikeABlankATimeOrALine_areLevels) {
    const QByteArray tricks[] = {" 10:00:00\r\nData ", " 10:00:00\r\n", "\r\nData ",
                                 "\r\nRBW 3\r\n",      "          ",    " 10:00:00\r\nXata ",
                                 "\r\n\r\n\r\n"};
    for (const QByteArray &trick : tricks) {
        LevelScan levels(321, 'a');
        std::copy(trick.begin(), trick.end(), levels.begin() + 100);
        RecordingText text;
        text.block(kDay).scans(kTen, 3).scan(kTen, levels).scan(kTen);
        Collector collector;
        const Collector &got = readInto(collector, text.bytes);
        ASSERT_EQ(got.scans.size(), 5U) << trick.constData();
        EXPECT_EQ(got.scans[3].levels, levels);
        EXPECT_TRUE(got.findings.empty());
    }
}

TEST_F(RecordingReaderTest, piecesOfAPipe_changeNothing) {
    RecordingText text;
    text.block(kDay).scans(kTen, 100);
    for (const qint64 piece : {1, 7, 330, 4096}) {
        Collector collector;
        EXPECT_EQ(readInto(collector, text.bytes, {}, piece).scans.size(), 100U);
        EXPECT_EQ(collector.all, text.bytes);
    }
}

TEST_F(RecordingReaderTest, lineEndsOfOtherSystems_areRead) {
    for (const char *lineEnd : {"\n", "\r"}) {
        RecordingText text;
        text.lineEnd = lineEnd;
        text.bytes = QByteArray(kHistoryFile.firstLine) + lineEnd;
        text.block(kDay).scans(kTen, 5);
        Collector collector;
        const Collector &got = readInto(collector, text.bytes);
        EXPECT_EQ(got.scans.size(), 5U);
        EXPECT_TRUE(got.findings.empty());
        EXPECT_TRUE(got.blocks[0].isWhole);
    }
}

TEST_F(RecordingReaderTest, missingLastLineEnd_losesNothing) {
    RecordingText text;
    text.block(kDay).scans(kTen, 3);
    text.bytes.chop(2);
    EXPECT_EQ(read(text).scans.size(), 3U);
    EXPECT_TRUE(m_collector.findings.empty());
}

TEST_F(RecordingReaderTest, everyLocalesRecording_isReadWithItsDates) {
    for (const QLocale &locale :
         QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry)) {
        RecordingText text(locale);
        text.block(kDay).scan(QTime(9, 0, 1)).scan(QTime(23, 59, 59)).scan(QTime(0, 0));
        text.block(kDay.addDays(1)).scan(QTime(12, 30));
        Collector collector;
        const Collector &got = readInto(collector, text.bytes);
        ASSERT_EQ(got.scans.size(), 4U) << locale.name().toStdString();
        EXPECT_TRUE(got.findings.empty()) << locale.name().toStdString();
        EXPECT_EQ(got.scans[1].second, 86399);
        EXPECT_EQ(got.scans[2].date, kDay.addDays(1));
        EXPECT_EQ(got.scans[3].date, kDay.addDays(1));
        EXPECT_EQ(got.scans[3].second, 45000);
    }
}

TEST_F(RecordingReaderTest, ambiguousDate_isToldAndReadByTheRules) {
    RecordingText text;
    text.block(QDate(2005, 2, 3)).scans(kTen, 2);
    EXPECT_EQ(read(text, {std::nullopt, DateOrder::MonthDayYear}).scans[0].date, QDate(2005, 3, 2));
    ASSERT_EQ(m_collector.findings.size(), 1U);
    EXPECT_EQ(m_collector.findings[0].kind, RecordingFinding::Kind::DateOrderAssumed);
    EXPECT_EQ(m_collector.findings[0].what,
              "day and month of \"03/02/2005\" can't be told apart, taken for 2005-03-02");
    Collector known;
    EXPECT_EQ(readInto(known, text.bytes, {DateOrder::DayMonthYear, {}}).scans[0].date,
              QDate(2005, 2, 3));
    EXPECT_TRUE(known.findings.empty());
}

TEST_F(RecordingReaderTest, fileOfSomethingElse_isNoRecording) {
    for (const QByteArray &bytes :
         {QByteArray(), QByteArray(1000000, 'x'), QByteArray("VELDRONv1 Settings\r\nRBW 1\r\n")}) {
        MemorySource source(bytes);
        Collector collector;
        RecordingReader reader(source, collector);
        reader.read();
        EXPECT_FALSE(reader.isRecording());
        EXPECT_EQ(collector.all, bytes);
    }
}

TEST_F(RecordingReaderTest, missingFirstLine_isToldAndNothingElse) {
    RecordingText text;
    text.bytes.clear();
    text.block(kDay).scans(kTen, 2);
    const Collector &got = read(text);
    EXPECT_EQ(got.scans.size(), 2U);
    EXPECT_TRUE(got.blocks[0].isWhole);
    ASSERT_EQ(got.findings.size(), 1U);
    EXPECT_EQ(got.findings[0].kind, RecordingFinding::Kind::FirstLine);
}

} // namespace
} // namespace veldron
