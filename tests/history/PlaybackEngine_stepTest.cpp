// SPDX-License-Identifier: MIT
// Steps through a file, and what the status bar shows of them.
#include "history/PlaybackEngine.h"

#include "tests/support/HistoryFiles.h"

#include <QImage>

#include <fstream>
#include <malloc.h>
#include <string>

namespace veldron {
namespace {

using PlaybackEngineStepTest = PlaybackTest;

TEST_F(PlaybackEngineStepTest, stepForward_readsToTheNextScan) {
    open(head() + scans(3));
    (void)takeLog();
    step(1);
    EXPECT_EQ(takeLog(), QStringList{"place: " + place("10:00:01", sizeOf(head() + scans(2)))});
    EXPECT_EQ(chartStatus(), "10:00:01");
    step(1);
    EXPECT_EQ(m_fixture.place, place("10:00:02", sizeOf(head() + scans(3))));
}

TEST_F(PlaybackEngineStepTest, endOfTheFile_pausesAndKeepsTheStatus) {
    open(head() + scans(2));
    step(1);
    const QString last = m_fixture.place;
    (void)takeLog();
    step(1, 2);
    EXPECT_EQ(takeLog(), (QStringList{"StopPlay", "StopPlay"}));
    EXPECT_EQ(m_fixture.place, last);
    EXPECT_TRUE(m_fixture.session.InPlayback);
    EXPECT_TRUE(chart().Playback());
}

TEST_F(PlaybackEngineStepTest, blockBehindTheLastScan_isAppliedBeforeThePause) {
    open(head() + scans(2) + QStringList{"RBW 4", "EndSettings "});
    step(1);
    (void)takeLog();
    step(1);
    EXPECT_EQ(takeLog(), (QStringList{"UpdateChartSettings", "StopPlay"}));
    EXPECT_EQ(m_fixture.ctlDataMode1.RBW(), 4);
}

TEST_F(PlaybackEngineStepTest, percent_reachesOneHundredWithCrLfThroughout) {
    open(head() + scans(2));
    step(1);
    EXPECT_EQ(m_fixture.place, "21/03/2005 10:00:01 / 100.00%");
}

TEST_F(PlaybackEngineStepTest, otherLineEnds_areCountedAsTwoBytesToo) {
    for (const char *end : {"\n", "\r"}) {
        put(head() + scans(2), end);
        open();
        step(1);
        ASSERT_EQ(m_size, sizeOf(head() + scans(2)) - 11);
        EXPECT_EQ(m_fixture.place, place("10:00:01", sizeOf(head() + scans(2))));
        EXPECT_FALSE(m_fixture.place.endsWith(" 100.00%"));
        m_fixture.playback.Quit();
    }
}

TEST_F(PlaybackEngineStepTest, lastLineWithoutAnEnd_counts) {
    putBytes((head() + scans(2)).join("\r\n").toLatin1());
    open();
    step(1);
    EXPECT_EQ(m_fixture.place, place("10:00:01", m_size + 2));
}

// ---- back and forth within the chart's rows

TEST_F(PlaybackEngineStepTest, stepsBack_moveTheTimeAndScaleThePercent) {
    open(head() + scans(5));
    step(1, 3);
    const qint64 used = sizeOf(head() + scans(4));
    step(-1);
    EXPECT_EQ(m_fixture.place, place("10:00:02", used, 2.0 / 3.0));
    step(-1);
    EXPECT_EQ(m_fixture.place, place("10:00:01", used, 1.0 / 3.0));
}

TEST_F(PlaybackEngineStepTest, oldestScan_staysUnderAStepBack) {
    open(head() + scans(5));
    step(1, 2);
    step(-1, 2);
    const QString oldest = m_fixture.place;
    EXPECT_TRUE(oldest.startsWith("21/03/2005 10:00:00 / 0.00%"));
    step(-1, 3);
    EXPECT_EQ(m_fixture.place, oldest);
}

TEST_F(PlaybackEngineStepTest, asManyStepsForwardAsBack_readNothing) {
    open(head() + scans(6));
    step(1, 3);
    step(-1, 3);
    step(1, 3);
    EXPECT_EQ(m_fixture.place, place("10:00:03", sizeOf(head() + scans(4))));
    step(1);
    EXPECT_EQ(m_fixture.place, place("10:00:04", sizeOf(head() + scans(5))));
}

TEST_F(PlaybackEngineStepTest, newScan_resetsTheOffset) {
    open(head() + scans(6));
    step(1, 3);
    const qint64 used = sizeOf(head() + scans(4));
    step(-2); // a count: two scans at once
    EXPECT_EQ(m_fixture.place, place("10:00:01", used, 1.0 / 3.0));
    step(1);
    EXPECT_EQ(m_fixture.place, place("10:00:02", used, 2.0 / 3.0));
    step(1, 2);
    EXPECT_EQ(m_fixture.place, place("10:00:04", sizeOf(head() + scans(5))));
}

TEST_F(PlaybackEngineStepTest, stepForwardPastTheNewestScan_leavesAnOffsetThatTheNextScanClears) {
    open(head() + scans(6));
    step(1, 3);
    step(-2);
    step(3); // one more than there is: the chart stops at the newest scan, the count doesn't
    EXPECT_EQ(m_fixture.place, place("10:00:04", sizeOf(head() + scans(4)), 4.0 / 3.0));
    step(1);
    EXPECT_EQ(m_fixture.place, place("10:00:04", sizeOf(head() + scans(5))));
}

TEST_F(PlaybackEngineStepTest, stepOfZero_showsThePlaceAgain) {
    open(head() + scans(3));
    step(1);
    (void)takeLog();
    step(0);
    EXPECT_EQ(takeLog(), QStringList{"place: " + place("10:00:01", sizeOf(head() + scans(2)))});
}

TEST_F(PlaybackEngineStepTest, pollRateOtherThanTheFiles_putsRewoundTimesOffByTheRatio) {
    m_fixture.pollPeriod = 2000;
    open(head() + scans(6));
    step(1, 4);
    const qint64 used = sizeOf(head() + scans(5));
    step(-1);
    EXPECT_EQ(m_fixture.place, place("10:00:02", used, 0.5));
    step(-1);
    EXPECT_EQ(m_fixture.place, place("10:00:00", used, 0.0));
    step(-1);
    EXPECT_EQ(m_fixture.place, place("09:59:58", used, -0.5));
}

TEST_F(PlaybackEngineStepTest, partsOfASecond_countInThePercentAndRoundInTheTime) {
    m_fixture.pollPeriod = 250;
    open(head() + scans(6));
    step(1, 4);
    const qint64 used = sizeOf(head() + scans(5));
    step(-1);
    EXPECT_EQ(m_fixture.place, place("10:00:04", used, 1.0 - 0.25 / 4.0));
    step(-1, 2);
    EXPECT_EQ(m_fixture.place, place("10:00:03", used, 1.0 - 0.75 / 4.0));
}

TEST_F(PlaybackEngineStepTest, pollLineOfTheFile_doesNotChangeTheRewoundTimes) {
    QStringList lines = head();
    lines.replaceInStrings("Poll 1000", "Poll 2000");
    open(lines + scans(6));
    step(1, 4);
    step(-1);
    EXPECT_TRUE(m_fixture.place.startsWith("21/03/2005 10:00:03"));
}

// ---- dates

TEST_F(PlaybackEngineStepTest, blockAtMidnight_movesTheDateOn) {
    open(head() + QStringList{data("23:59:58"), data("23:59:59"), "StartSettings 22/03/2005",
                              "EndSettings ", data("00:00:00"), data("00:00:01"),
                              data("00:00:02")});
    step(1);
    EXPECT_TRUE(m_fixture.place.startsWith("21/03/2005 23:59:59"));
    step(1, 2);
    const qint64 used = m_size - sizeOf({data("00:00:02")});
    EXPECT_EQ(m_fixture.place, place("00:00:01", used, 1.0, "22/03/2005"));
    step(-1, 2);
    EXPECT_EQ(m_fixture.place, place("23:59:59", used, 1.0 / 3.0, "21/03/2005"));
}

TEST_F(PlaybackEngineStepTest, blockAheadOfTheFirstScanOfTheDay_givesRisingTimes) {
    m_fixture.clock.setTimeOfDay(86398.0);
    m_fixture.dialogs.answer = path();
    m_fixture.recorder.mnuFileRecord();
    for (int second = 0; second < 4; ++second) {
        if (second == 2) {
            m_fixture.ReadBackSettings(); // because of a change at the unit, say
        }
        m_fixture.recorder.writeScan(LevelScan(321, 'a'));
        m_fixture.clock.advance(1.0);
    }
    m_fixture.recorder.mnuFileRecord();
    open();
    QStringList times = {m_fixture.place.section(" / ", 0, 0)};
    for (int i = 0; i < 3; ++i) {
        step(1);
        times.append(m_fixture.place.section(" / ", 0, 0));
    }
    EXPECT_EQ(times, (QStringList{"21/03/2005 23:59:58", "21/03/2005 23:59:59",
                                  "22/03/2005 00:00:00", "22/03/2005 00:00:01"}));
    EXPECT_TRUE(m_fixture.place.endsWith("/ 100.00%"));
}

TEST_F(PlaybackEngineStepTest, blockBehindTheFirstScanOfTheDay_leavesThatScanInTheOldDay) {
    open(head() + QStringList{data("23:59:58"), data("23:59:59"), data("00:00:00"),
                              "StartSettings 22/03/2005", "EndSettings ", data("00:00:01")});
    step(1, 2);
    EXPECT_EQ(m_fixture.place, place("00:00:00", sizeOf(head() + scans(3)), 1.0, "21/03/2005"));
    step(1);
    EXPECT_EQ(m_fixture.place, "22/03/2005 00:00:01 / 100.00%");
}

TEST(PlaybackEngineStep, everyLocale_playsWhatItRecorded) {
    for (const QLocale &locale :
         {QLocale(QLocale::English, QLocale::UnitedStates),
          QLocale(QLocale::German, QLocale::Germany), QLocale(QLocale::Japanese, QLocale::Japan)}) {
        const QTemporaryDir folder;
        HistoryFixture fixture(locale);
        fixture.clock.setTimeOfDay(13.5 * 3600.0);
        fixture.dialogs.answer = folder.filePath("here.rec");
        fixture.recorder.mnuFileRecord();
        fixture.recorder.writeScan({'a'});
        fixture.clock.advance(1.0);
        fixture.recorder.writeScan({'b'});
        fixture.recorder.mnuFileRecord();
        fixture.playback.mnuFilePlayback();
        fixture.step(1);
        const QString mark = fixture.texts.decimalMark();
        EXPECT_EQ(fixture.place, fixture.texts.dateText(QDate(2005, 3, 21)) + ' ' +
                                     fixture.texts.timeText(QTime(13, 30, 1)) + " / 100" + mark +
                                     "00%");
    }
}

// ---- what goes into the chart

class PlaybackEngineChartTest : public PlaybackTest {
protected:
    /// Whether the step brings a new trace onto the chart.
    bool stepChangesThePicture() {
        const QImage before = chart().grab().toImage();
        step(1);
        return chart().grab().toImage() != before;
    }
    static QString level(int length, char value) { return QString(length, QLatin1Char(value)); }
};

TEST_F(PlaybackEngineChartTest, scanThatFits_isShown) {
    open(head() + QStringList{data("10:00:00", level(321, '0')), data("10:00:01", level(322, 'Z')),
                              data("10:00:02", level(323, 'A')),
                              data("10:00:03", level(321, 'A'))});
    EXPECT_TRUE(stepChangesThePicture());
    // 321 bins take an upper bound of 321 and not one more; the status goes on all the same.
    EXPECT_FALSE(stepChangesThePicture());
    EXPECT_EQ(chartStatus(), "10:00:02");
    EXPECT_TRUE(m_fixture.place.startsWith("21/03/2005 10:00:02"));
    EXPECT_TRUE(stepChangesThePicture());
}

TEST_F(PlaybackEngineChartTest, blockWithAnotherSpan_changesWhatFits) {
    open(head() + QStringList{data("10:00:00", level(321, '0')), "StartSettings 21/03/2005",
                              "MonitorMode 3", "Start 88000000", "Step 31250", "End 93000000",
                              "EndSettings ", data("10:00:01", level(161, 'Z')),
                              data("10:00:02", level(163, 'A')),
                              data("10:00:03", level(162, 'A'))});
    EXPECT_TRUE(stepChangesThePicture());
    EXPECT_EQ(chart().ScanStop(), Hertz::fromWhole(93000000));
    EXPECT_FALSE(stepChangesThePicture()); // 161 bins
    EXPECT_TRUE(stepChangesThePicture());
}

TEST_F(PlaybackEngineChartTest, stepBack_showsTheOlderScan) {
    open(head() + QStringList{data("10:00:00", level(321, '0')), data("10:00:01", level(321, 'Z')),
                              data("10:00:02", level(321, '0')),
                              data("10:00:03", level(321, '0'))});
    step(1);
    const QImage second = chart().grab().toImage();
    step(1);
    EXPECT_NE(chart().grab().toImage(), second);
    step(-1);
    EXPECT_EQ(chart().grab().toImage(), second);
}

// ---- long files

/// Bytes that this process has read from files so far.
qint64 bytesRead() {
    std::ifstream io("/proc/self/io");
    std::string key;
    qint64 value = 0;
    io >> key >> value;
    return value;
}

TEST_F(PlaybackEngineStepTest, fileOfAMillionLines_opensAtOnce) {
    QByteArray bytes = (head() + scans(1)).join("\r\n").toLatin1() + "\r\n";
    bytes += QByteArray("Data abcdefgh 10:00:01\r\n").repeated(1'000'000);
    putBytes(bytes);
    const qint64 before = bytesRead();
    open();
    EXPECT_GT(bytesRead(), before);
    EXPECT_LT(bytesRead() - before, 200'000);
    EXPECT_EQ(m_fixture.place, place("10:00:00", sizeOf(head() + scans(1))));
    step(1);
    EXPECT_LT(bytesRead() - before, 200'000);
}

TEST_F(PlaybackEngineStepTest, fileBeyondTwoGigabytes_isCountedExactly) {
    constexpr qint64 kHole = 2'200'000'000; // takes no room on the disk
    put(head() + scans(1));
    const QByteArray tail = "\r\n" + data("10:00:01").toLatin1() + "\r\n";
    {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.resize(m_size + kHole) && file.seek(m_size + kHole));
        file.write(tail);
    }
    m_size += kHole + tail.size();
    open();
    EXPECT_EQ(m_fixture.status, "Playback from " + path() + "   2098.1M");
    EXPECT_EQ(m_fixture.place, place("10:00:00", sizeOf(head() + scans(1))));
    step(1);
    EXPECT_EQ(m_fixture.place, "21/03/2005 10:00:01 / 100.00%");
}

TEST_F(PlaybackEngineStepTest, millionLinesInOneStep_takeNoMemory) {
    QByteArray bytes = (head() + scans(2)).join("\r\n").toLatin1() + "\r\n";
    bytes += QByteArray("Comment\r\n").repeated(1'000'000) + "Data abc 10:00:02\r\n";
    putBytes(bytes);
    bytes.clear();
    bytes.squeeze();
    open();
    step(1);
    const std::size_t before = mallinfo2().uordblks;
    step(1);
    const std::size_t after = mallinfo2().uordblks;
    EXPECT_LT(after, before + 200'000);
    EXPECT_EQ(m_fixture.place, "21/03/2005 10:00:02 / 100.00%");
}

TEST_F(PlaybackEngineStepTest, thousandsOfSteps_takeNoMemory) {
    open(head() + scans(3000));
    step(1, 500);
    const std::size_t before = mallinfo2().uordblks;
    step(1, 2000);
    EXPECT_LT(mallinfo2().uordblks, before + 400'000);
    EXPECT_TRUE(m_fixture.place.startsWith("21/03/2005 10:41:40"));
}

/// Its time counts though its levels don't: the peaks age by it, and the picture shows it.
TEST_F(PlaybackEngineStepTest, scanTooLongForTheSpan_refreshesThePictureAllTheSame) {
    const QStringList channels{"VELDRONv1 History file",
                               "StartSettings 21/03/2005",
                               "MonitorMode 3",
                               "Start 144000000",
                               "Step 25000",
                               "End 145000000",
                               "EndSettings "};
    m_fixture.displaySettings.setValues({.PersistenceEnable = true, .Persistence = 5});
    chart().resize(600, 300);
    chart().show(); // a hidden one is laid out, and refreshed, by each grab
    open(channels + QStringList{data("10:00:00", QString(41, 'z')),
                                data("10:00:01", QString(41, 'a')),
                                data("10:00:20", QString(321, 'b'))});
    m_fixture.playback.Step(1);
    const QImage withPeaks = chart().grab().toImage();
    m_fixture.playback.Step(1);
    EXPECT_NE(chart().grab().toImage(), withPeaks);
}

} // namespace
} // namespace veldron
