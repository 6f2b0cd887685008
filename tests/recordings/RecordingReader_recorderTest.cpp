// SPDX-License-Identifier: MIT
// What the recorder of the main program writes, read back scan by scan.
#include "recordings/RecordingReader.h"

#include "common/TimeOfDay.h"
#include "tests/recordings/Recordings.h"
#include "tests/support/HistoryFixture.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <algorithm>
#include <random>

namespace veldron {
namespace {

/// The recorder under a locale, with a list of all that it was given.
class RecorderRoundTrip {
public:
    explicit RecorderRoundTrip(const QLocale &locale = QLocale(QLocale::English,
                                                               QLocale::UnitedKingdom))
        : m_fixture(locale) {
        m_fixture.dialogs.answer = m_folder.filePath("a.rec");
        m_fixture.recorder.mnuFileRecord();
    }
    void setTimeOfDay(double second) { m_fixture.clock.setTimeOfDay(second); }
    void record(const LevelScan &levels, double secondsBefore) {
        m_fixture.clock.advance(secondsBefore);
        m_fixture.recorder.writeScan(levels);
        const QDateTime now = m_fixture.clock.now();
        m_written.push_back(
            {levels, {}, now.date(), QTime(0, 0).secsTo(now.time()), RecordedPlace()});
    }
    void recordSettings() { m_fixture.recorder.writeSettings(); }
    /// Ends the recording and reads it.
    void expectAllBack() {
        m_fixture.recorder.mnuFileRecord();
        ASSERT_FALSE(m_fixture.session.Recording);
        FileSource source(m_folder.filePath("a.rec").toStdString());
        Collector got;
        RecordingReader(source, got).read();
        ASSERT_EQ(got.scans.size(), m_written.size());
        for (std::size_t i = 0; i < m_written.size(); ++i) {
            ASSERT_TRUE(got.scans[i] == m_written[i]) << i;
        }
        EXPECT_TRUE(got.findings.empty()) << got.findings[0].what.toStdString();
        EXPECT_TRUE(std::all_of(got.blocks.begin(), got.blocks.end(),
                                [](const ReadBlock &block) { return block.isWhole; }));
    }

private:
    QTemporaryDir m_folder;
    HistoryFixture m_fixture;
    std::vector<ReadScan> m_written;
};

LevelScan randomScan(std::mt19937 &random, std::size_t size) {
    LevelScan levels(size);
    std::generate(levels.begin(), levels.end(), [&] { return static_cast<quint8>(random()); });
    return levels;
}

TEST(RecorderRoundTrip, everyLevelAtEveryPosition_comesBack) {
    RecorderRoundTrip trip;
    for (std::size_t shift = 0; shift < 256; ++shift) {
        LevelScan levels(321);
        for (std::size_t i = 0; i < levels.size(); ++i) {
            levels[i] = static_cast<quint8>(i + shift);
        }
        trip.record(levels, 0.25);
    }
    trip.expectAllBack();
}

TEST(RecorderRoundTrip, scansOfAllLengths_comeBack) {
    RecorderRoundTrip trip;
    std::mt19937 random(325);
    for (int i = 0; i < 3000; ++i) {
        trip.record(randomScan(random, 1 + random() % 325), 0.25);
        if (random() % 50 == 0) {
            trip.recordSettings();
        }
    }
    trip.expectAllBack();
}

TEST(RecorderRoundTrip, failedTransfersBetweenScans_comeBack) {
    RecorderRoundTrip trip;
    std::mt19937 random(3);
    for (int i = 0; i < 500; ++i) {
        trip.record(randomScan(random, 321), 1.0);
        trip.record(i % 2 == 0 ? LevelScan{0} : LevelScan(325), 0.25);
    }
    trip.expectAllBack();
}

TEST(RecorderRoundTrip, everyLocale_comesBackOverMidnight) {
    std::mt19937 random(14);
    for (const QLocale &locale :
         QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry)) {
        RecorderRoundTrip trip(locale);
        for (const double start : {3600.0, 43200.0, kSecondsPerDay - 2.0}) {
            trip.setTimeOfDay(start);
            for (int i = 0; i < 6; ++i) {
                trip.record(randomScan(random, 1 + random() % 325), 0.7);
            }
        }
        trip.recordSettings();
        trip.record(randomScan(random, 321), 1.0);
        trip.expectAllBack();
        ASSERT_FALSE(testing::Test::HasFailure()) << locale.name().toStdString();
    }
}

} // namespace
} // namespace veldron
