// SPDX-License-Identifier: MIT
// Files with something wrong in them, and what the user is told of it.
#include "history/PlaybackEngine.h"

#include "tests/support/HistoryFiles.h"

#include <QProcess>
#include <QTest>

#include <algorithm>

namespace veldron {
namespace {

using Kind = UntrappedError::Kind;

class PlaybackEngineBadFileTest : public PlaybackTest {
protected:
    /// What is told of a scan that is followed by \a rest.
    static QString noTimeBut(const QString &rest) {
        return "no time of day stands behind the scan but \"" + rest +
               "\" (a level of 10, 13 or 32 in a recording does this, and so do more than 323 "
               "levels)";
    }
    static QString brokenLine(const QString &what) {
        return what + " (a level of 10, 13 or 32 in a recording does this)";
    }
};

// ---- in the opening

TEST_F(PlaybackEngineBadFileTest, missingFile_isUntrapped) {
    const auto error = errorOf([this] { open(); });
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(error->kind(), Kind::File);
    EXPECT_TRUE(error->message().contains(path()));
    EXPECT_TRUE(m_fixture.log.isEmpty());
}

TEST_F(PlaybackEngineBadFileTest, emptyFile_isAFileError) {
    putBytes("");
    expectOpenError(Kind::File, "Can't read the file \"" + path() + "\": the file is empty");
}

TEST_F(PlaybackEngineBadFileTest, fileCutInsideItsLastLine_isToldToEndThere) {
    const QByteArray whole = (head() + scans(2)).join("\r\n").toLatin1();
    // The line is "Data abc 10:00:01": inside the scan, behind it, and inside the time.
    for (const int cut : {10, 9, 8, 2}) {
        putBytes(whole.chopped(cut));
        open();
        expectStepError(1, Kind::OutOfRange, atLine(11, "the file ends in the middle of a scan"));
        m_fixture.playback.Quit();
    }
}

TEST_F(PlaybackEngineBadFileTest, fileWhoseFirstScanIsCut_isToldToEndThere) {
    putBytes(head().join("\r\n").toLatin1() + "\r\nData abc");
    expectOpenError(Kind::OutOfRange, atLine(10, "the file ends in the middle of a scan"));
}

TEST_F(PlaybackEngineBadFileTest, folderAndDevice_areRefused) {
    for (const QString &name : {m_folder.path(), QString("/dev/zero")}) {
        m_fixture.dialogs.answer = name;
        const auto error = errorOf([this] { m_fixture.playback.mnuFilePlayback(); });
        ASSERT_TRUE(error.has_value());
        EXPECT_EQ(error->kind(), Kind::File);
        EXPECT_FALSE(m_fixture.session.InPlayback);
    }
}

/// Files of some file systems tell no size. Here it is the list of a process's arguments, of which
/// the last is a recording.
TEST_F(PlaybackEngineBadFileTest, fileWithoutASize_isUntrappedAtItsFirstScan) {
    QProcess process;
    process.start("/bin/sh", {"-c", "read line", '\n' + (head().mid(1) + scans(3)).join('\n')});
    ASSERT_TRUE(process.waitForStarted());
    m_fixture.dialogs.answer = QString("/proc/%1/cmdline").arg(process.processId());
    // A process has started a moment before the system knows its arguments.
    ASSERT_TRUE(QTest::qWaitFor([this] {
        QFile arguments(*m_fixture.dialogs.answer);
        return arguments.open(QIODevice::ReadOnly) && !arguments.readAll().isEmpty();
    }));
    expectError(errorOf([this] { m_fixture.playback.mnuFilePlayback(); }), Kind::DivideByZero,
                "Line 10 of the file \"" + *m_fixture.dialogs.answer +
                    "\": the file had no size when it was opened.");
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished());
}

TEST_F(PlaybackEngineBadFileTest, fileWithoutAStartLine_hasNoDate) {
    put(QStringList{"header"} + scans(2));
    expectOpenError(Kind::BadValue, atLine(2, "there is no StartSettings line with a date"));
}

TEST_F(PlaybackEngineBadFileTest, dateOfAnEarlierFile_isNotUsed) {
    open(head() + scans(2));
    m_fixture.playback.Quit();
    put(QStringList{"header"} + scans(2));
    expectOpenError(Kind::BadValue, atLine(2, "there is no StartSettings line with a date"));
}

TEST_F(PlaybackEngineBadFileTest, dateOfAnotherLocale_isReadByThisOnesRules) {
    put(head("03/21/2005") + scans(2));
    expectOpenError(Kind::BadValue, atLine(2, "\"03/21/2005\" is not a date"));
    m_fixture.playback.Quit();
    open(head("03/02/2005") + scans(2)); // the third of February elsewhere
    step(1);
    EXPECT_TRUE(m_fixture.place.startsWith("03/02/2005 10:00:01"));
}

TEST_F(PlaybackEngineBadFileTest, firstScanWithABlank_leavesNoTime) {
    put(head() + QStringList{data("10:00:00", "a b")} + scans(1));
    expectOpenError(Kind::BadValue, atLine(10, noTimeBut("b 10:00:00")));
}

TEST_F(PlaybackEngineBadFileTest, scanLineWithoutABlankOrWithOneFirst_isUntrapped) {
    put(head() + QStringList{"Data abc"} + scans(1));
    expectOpenError(Kind::OutOfRange,
                    atLine(10, brokenLine("a scan line has no time behind its scan")));
    m_fixture.playback.Quit();
    put(head() + QStringList{"Data  10:00:00"} + scans(1));
    expectOpenError(Kind::OutOfRange, atLine(10, brokenLine("a scan line has no scan in it")));
}

TEST_F(PlaybackEngineBadFileTest, badValueInTheBlock_isUntrapped) {
    QStringList lines = head();
    lines.replaceInStrings("Centre 145500000", "Centre 145,5");
    put(lines + scans(2));
    expectOpenError(Kind::BadValue, atLine(6, "\"145,5\" is not a frequency in hertz"));
}

TEST_F(PlaybackEngineBadFileTest, rawBytesInTheBlock_areShortAndPrintableInTheReport) {
    const QString bytes(100, QChar(1));
    QStringList lines = head();
    lines.replaceInStrings("Centre 145500000", "Centre " + bytes);
    put(lines + scans(2));
    expectOpenError(Kind::BadValue,
                    atLine(6, '"' + QString(40, '?') + "\"... is not a frequency in hertz"));
    m_fixture.playback.Quit();
    lines = head();
    lines.replaceInStrings("RBW 2", "RBW 99999" + bytes);
    put(lines + scans(2));
    expectOpenError(Kind::Overflow,
                    atLine(8, "the number \"99999" + QString(35, '?') + "\"... is out of range"));
}

// ---- in a step

TEST_F(PlaybackEngineBadFileTest, secondScanInTheFirstSecond_hasNoShareAndIsUntrapped) {
    put(head() + QStringList{data("10:00:00"), data("10:00:00")} + scans(1));
    open();
    expectStepError(1, Kind::DivideByZero,
                    atLine(11, "the scan has the same time as the first one of the file, so there "
                               "is no telling how far the playback has come"));
}

TEST_F(PlaybackEngineBadFileTest, stepBackOnTheFirstScan_isUntrapped) {
    open(head() + scans(2));
    const auto error = errorOf([this] { step(-1); });
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(error->kind(), Kind::DivideByZero);
}

TEST_F(PlaybackEngineBadFileTest, scanWithABlank_spoilsTheTime) {
    put(head() + scans(1) + QStringList{data("10:00:01", "ab cd")});
    open();
    expectStepError(1, Kind::BadValue, atLine(11, noTimeBut("cd 10:00:01")));
}

TEST_F(PlaybackEngineBadFileTest, scanOfMoreThan323Bytes_isCutAndSpoilsTheTime) {
    put(head() + scans(1) + QStringList{data("10:00:01", QString(326, 'x'))});
    open();
    expectStepError(1, Kind::BadValue, atLine(11, noTimeBut("xx 10:00:01")));
}

TEST_F(PlaybackEngineBadFileTest, scanWithALineBreak_isTwoLines) {
    for (const char *lineBreak : {"\r", "\n"}) {
        put(head() + scans(1) + QStringList{data("10:00:01", QString("ab") + lineBreak + "cd")});
        open();
        expectStepError(1, Kind::OutOfRange,
                        atLine(11, brokenLine("a scan line has no time behind its scan")));
        m_fixture.playback.Quit();
    }
}

TEST_F(PlaybackEngineBadFileTest, secondHalfOfABrokenScan_isAnUnknownKeyOrAValidOne) {
    open(head() + scans(1) +
         QStringList{data("10:00:01", "ab") + "\rcd 10:00:01", data("10:00:02") + "\nRBW 4",
                     data("10:00:03")});
    step(1);
    EXPECT_EQ(chartStatus(), "10:00:01");
    step(1);
    EXPECT_EQ(chartStatus(), "10:00:02");
    EXPECT_EQ(m_fixture.ctlDataMode1.RBW(), 2);
    step(1);
    EXPECT_EQ(chartStatus(), "10:00:03");
    EXPECT_EQ(m_fixture.ctlDataMode1.RBW(), 4);
}

TEST_F(PlaybackEngineBadFileTest, badDateOfALaterBlock_isUntrapped) {
    put(head() + scans(1) + QStringList{"StartSettings tomorrow", data("10:00:01")});
    open();
    expectStepError(1, Kind::BadValue, atLine(11, "\"tomorrow\" is not a date"));
}

TEST_F(PlaybackEngineBadFileTest, badDateInTheMiddleOfAFile_isFoundAtItsOwnLine) {
    put(head() + scans(2) +
        QStringList{"StartSettings tomorrow", "RBW 3", "EndSettings ", data("10:00:02")} +
        scans(1));
    open();
    step(1);
    expectStepError(1, Kind::BadValue, atLine(12, "\"tomorrow\" is not a date"));
}

TEST_F(PlaybackEngineBadFileTest, blockWithoutItsDate_isUntrapped) {
    put(head("") + scans(2));
    expectOpenError(Kind::BadValue, atLine(2, "the StartSettings line has no date"));
}

TEST_F(PlaybackEngineBadFileTest, scanOfAUnitThatAnsweredAndSentNothing_cannotBePlayed) {
    m_fixture.clock.setTimeOfDay(36000.0);
    m_fixture.dialogs.answer = path();
    m_fixture.recorder.mnuFileRecord();
    m_fixture.recorder.writeScan(LevelScan(321, 'a'));
    m_fixture.clock.advance(1.0);
    m_fixture.recorder.writeScan(LevelScan(325));
    m_fixture.recorder.mnuFileRecord();
    open();
    EXPECT_EQ(chartStatus(), "10:00:00");
    // 323 zeros are the scan, one is passed over, and the last is taken for the time.
    const auto error = errorOf([this] { step(1); });
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(error->kind(), Kind::BadValue);
    EXPECT_TRUE(error->message().endsWith(noTimeBut("? 10:00:01") + '.'));
}

TEST_F(PlaybackEngineBadFileTest, pauseOfMoreRowsThanTheWaterfallHolds_isPlayedOn) {
    const struct {
        const char *poll;
        const char *behind;
    } cases[] = {{"Poll 1000", "09:06:10"},
                 {"Poll 1000", "11:59:59"},
                 {"Poll 500", "04:33:06"},
                 {"Poll 250", "02:16:34"}};
    for (const auto &item : cases) {
        QStringList lines = head();
        lines.replaceInStrings("Poll 1000", item.poll);
        put(lines + QStringList{data("00:00:00"), data(item.behind)});
        open();
        EXPECT_FALSE(errorOf([this] { step(1); }).has_value()) << item.poll << ' ' << item.behind;
        m_fixture.playback.Quit();
    }
}

TEST_F(PlaybackEngineBadFileTest, rawLevelsInAReport_areFewAndPrintable) {
    QString scan(320, QLatin1Char('\x01'));
    scan[10] = QLatin1Char(' ');
    put(head() + scans(1) + QStringList{data("10:00:01", scan)} + scans(1));
    open();
    const auto error = errorOf([this] { step(1); });
    ASSERT_TRUE(error.has_value());
    const QString &message = error->message();
    EXPECT_TRUE(message.contains("scan but \"" + QString(40, '?') + "\"... (a level"));
    EXPECT_TRUE(std::all_of(message.begin(), message.end(),
                            [](QChar character) { return character.isPrint(); }));
}

TEST_F(PlaybackEngineBadFileTest, badValueOfALaterBlock_isUntrapped) {
    put(head() + scans(1) + QStringList{"RBW 99999", data("10:00:01")});
    open();
    expectStepError(1, Kind::Overflow, atLine(11, "the number \"99999\" is out of range"));
}

} // namespace
} // namespace veldron
