// SPDX-License-Identifier: MIT
#include "recordings/PlaybackJudge.h"

#include "tests/recordings/Recordings.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

const QLocale kBritain(QLocale::English, QLocale::UnitedKingdom);

struct Verdict {
    QStringList stumbles; ///< "line: what"
    bool plays = false;
};

Verdict judge(const QByteArray &bytes, qsizetype piece = 1 << 20,
              const QLocale &locale = kBritain) {
    Verdict verdict;
    PlaybackJudge judge(locale, [&verdict](const Stumble &stumble) {
        verdict.stumbles << QString::number(stumble.line) + ": " + stumble.what;
    });
    for (qsizetype place = 0; place < bytes.size(); place += piece) {
        judge.take(QByteArrayView(bytes).sliced(place, qMin(piece, bytes.size() - place)));
    }
    judge.finish();
    verdict.plays = judge.plays();
    return verdict;
}

/// Header and block: the first scan stands on line 12.
RecordingText begun() {
    RecordingText text;
    return text.block(kDay);
}

QStringList stumblesOf(const RecordingText &text) {
    return judge(text.bytes).stumbles;
}

TEST(PlaybackJudge, recordingAsWritten_plays) {
    RecordingText text = begun();
    text.scans(kTen, 5).block(kDay.addDays(1)).scans(QTime(0, 0), 2);
    for (const qsizetype piece : {1, 2, 50, 100000}) {
        EXPECT_TRUE(judge(text.bytes, piece).plays) << piece;
    }
}

TEST(PlaybackJudge, levelsThatBreakALine_areFoundAtTheirLine) {
    const QString why = " (a level of 10, 13 or 32 in a recording does this";
    EXPECT_EQ(
        stumblesOf(begun().scan(kTen).scan(kTen.addSecs(1), {97, 32, 98}).scan(kTen.addSecs(2))),
        QStringList{"13: no time of day stands behind the scan but \"b 10:00:01\"" + why +
                    ", and so do more than 323 levels)"});
    EXPECT_EQ(
        stumblesOf(begun().scan(kTen).scan(kTen.addSecs(1), {97, 10, 98}).scan(kTen.addSecs(2))),
        QStringList{"13: a scan line has no time behind its scan" + why + ")"});
    EXPECT_EQ(stumblesOf(begun().scan(kTen).scan(kTen.addSecs(1), {32, 98}).scan(kTen.addSecs(2))),
              QStringList{"13: a scan line has no scan in it" + why + ")"});
}

TEST(PlaybackJudge, scanLines_endAtTheLongestThatPlaybackKeeps) {
    EXPECT_TRUE(
        stumblesOf(begun().scan(kTen).scan(kTen.addSecs(1), LevelScan(323, 'a'))).isEmpty());
    EXPECT_EQ(stumblesOf(begun().scan(kTen).scan(kTen.addSecs(1), LevelScan(325))).size(), 1);
}

TEST(PlaybackJudge, scansOfTheFirstSecond_areFoundWhereverTheyStand) {
    const QStringList found =
        stumblesOf(begun().scan(kTen).scan(kTen).scan(kTen).scan(kTen.addSecs(1)).scan(kTen));
    ASSERT_EQ(found.size(), 3);
    EXPECT_TRUE(found[0].startsWith("13: the scan has the same time as the first one"));
    EXPECT_TRUE(found[2].startsWith("16: "));
}

TEST(PlaybackJudge, cutLastLine_isToldAsSuch) {
    RecordingText text = begun();
    text.scan(kTen).scan(kTen.addSecs(1));
    EXPECT_EQ(judge(text.bytes.chopped(4)).stumbles,
              QStringList{"13: the file ends in the middle of a scan"});
    EXPECT_TRUE(judge(text.bytes.chopped(2)).plays);
}

TEST(PlaybackJudge, filesWithoutASecondLineBehindTheFirstScan_showNothing) {
    EXPECT_EQ(stumblesOf(begun()), QStringList{"11: there is no scan in the file"});
    EXPECT_EQ(judge("").stumbles.size(), 1);
    EXPECT_EQ(stumblesOf(begun().scan(kTen)).size(), 1);
    EXPECT_TRUE(stumblesOf(begun().scan(kTen).line("")).isEmpty());
}

TEST(PlaybackJudge, dates_mustBeOfTheLocale) {
    RecordingText text;
    text.line("StartSettings 03/21/2005").scans(kTen, 3);
    EXPECT_EQ(stumblesOf(text), QStringList{"2: \"03/21/2005\" is not a date"});
    RecordingText none;
    EXPECT_EQ(stumblesOf(none.scans(kTen, 2)),
              (QStringList{"2: there is no StartSettings line with a date",
                           "3: there is no StartSettings line with a date"}));
}

TEST(PlaybackJudge, timesOfAnotherLocale_areToldOnce) {
    RecordingText text(QLocale(QLocale::English, QLocale::UnitedStates));
    text.line("StartSettings 2005-03-21").scans(kTen, 100);
    const Verdict verdict = judge(text.bytes);
    EXPECT_EQ(
        verdict.stumbles,
        QStringList{"3: \"10:00:00 AM\" is a time of another locale, as others may be further "
                    "down"});
    EXPECT_FALSE(verdict.plays);
}

TEST(PlaybackJudge, everyLocalesRecording_playsUnderIt) {
    for (const QLocale &locale :
         QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry)) {
        RecordingText text(locale);
        text.block(kDay).scan(QTime(0, 0)).scan(QTime(9, 5, 7)).scan(QTime(12, 0, 59));
        EXPECT_TRUE(judge(text.bytes, 1 << 20, locale).plays) << locale.name().toStdString();
    }
}

TEST(PlaybackJudge, valuesThatCannotBeRead_areFound) {
    for (const char *line : {"RBW 99999", "Poll 40000", "Centre 145,5", "Span 99999999999999999999",
                             "MonitorMode -70000", "RXStep 3000000000", "Start x"}) {
        EXPECT_EQ(stumblesOf(begun().scan(kTen).line(line).scan(kTen.addSecs(1))).size(), 1)
            << line;
    }
    for (const char *line : {"RBW x", "Palette 99999999", "PersistenceOn perhaps", "Receiver none",
                             "Unknown 5", "Amp -1", "Poll 32767"}) {
        EXPECT_TRUE(stumblesOf(begun().scan(kTen).line(line).scan(kTen.addSecs(1))).isEmpty())
            << line;
    }
}

TEST(PlaybackJudge, channelLines_areAsManyInABlockAsPlaybackCounts) {
    constexpr int kMost = 32767;
    for (const int count : {kMost, kMost + 1}) {
        RecordingText text = begun();
        text.scan(kTen).line("StartSettings 21/03/2005");
        for (int line = 0; line < count; ++line) {
            text.line("Start 0");
        }
        text.line("EndSettings ").scan(kTen.addSecs(1));
        const QStringList found = stumblesOf(text);
        EXPECT_EQ(found, count == kMost
                             ? QStringList()
                             : QStringList{QString::number(13 + count) +
                                           ": there are too many channel lines in one block"});
    }
}

} // namespace
} // namespace veldron
