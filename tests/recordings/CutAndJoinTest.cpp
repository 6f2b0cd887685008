// SPDX-License-Identifier: MIT
#include "recordings/CutCommand.h"
#include "recordings/JoinCommand.h"

#include "tests/recordings/HistoryRun.h"
#include "tests/recordings/Recordings.h"

#include <random>

namespace veldron {
namespace {

class CutAndJoin : public HistoryRun {
protected:
    QByteArray cut(const QString &name, const QStringList &window) {
        const Result result = run(QStringList{"cut", name, "--date-order", "dmy"} + window);
        EXPECT_EQ(result.code, 0) << result.error.constData();
        return result.out;
    }
    QByteArray join(const QStringList &names) {
        const Result result = run(QStringList{"join", "--date-order", "dmy"} + names);
        EXPECT_EQ(result.code, 0) << result.error.constData();
        return result.out;
    }
    /// Cuts \a whole at \a time and joins the parts.
    QByteArray cutAndJoined(const QByteArray &whole, const QString &time) {
        put("whole.rec", whole);
        put("a.rec", cut("whole.rec", {"--to", time}));
        put("b.rec", cut("whole.rec", {"--from", time}));
        return join({"a.rec", "b.rec"});
    }
    static RecordingText begun() {
        RecordingText text;
        return text.block(kDay,
                          QStringList{"Palette 2", "MarkerOn True"} + RecordingText::unitLines());
    }
};

TEST_F(CutAndJoin, part_hasTheSettingsInForceAndTheLinesAsTheyWere) {
    RecordingText text = begun();
    text.scans(QTime(10, 0), 3).block(kDay, {"Poll 500", "RBW 4"}).scans(QTime(10, 0, 3), 3);
    put("a.rec", text.bytes);
    RecordingText expected;
    expected.line("StartSettings 21/03/2005").line("Palette 2").line("MarkerOn True");
    expected.line("Poll 500").line("RBW 4").line("EndSettings ").scans(QTime(10, 0, 4), 2);
    EXPECT_EQ(cut("a.rec", {"--from", "10:00:04"}), expected.bytes);
    EXPECT_EQ(cut("a.rec", {"--to", "10:00:03"}), begun().scans(QTime(10, 0), 3).bytes);
    EXPECT_EQ(cut("a.rec", {}), text.bytes);
}

TEST_F(CutAndJoin, settingsByTheMegabyteBeforeTheFirstScan_leaveThoseInForce) {
    RecordingText text = begun();
    for (int i = 0; i < 110000; ++i) {
        text.line("Palette 4");
    }
    text.scans(QTime(10, 0), 2);
    put("a.rec", text.bytes);
    const QByteArray part = cut("a.rec", {});
    EXPECT_LT(part.size(), 1 << 20);
    EXPECT_TRUE(part.contains("Palette 4\r\n") && part.contains("StartSettings 21/03/2005\r\n"));
    EXPECT_EQ(run({"export", "--csv", "-"}, part).out, run({"export", "--csv", "a.rec"}).out);
}

TEST_F(CutAndJoin, partBehindMidnight_hasItsOwnDate) {
    RecordingText text(QLocale(QLocale::Spanish, QLocale::Spain)); // d/M/yyyy
    text.block(QDate(2005, 3, 5)).block(QDate(2005, 12, 31)).scan(QTime(23, 59, 59));
    text.scan(QTime(0, 0)).scan(QTime(0, 0, 1));
    put("a.rec", text.bytes);
    EXPECT_TRUE(cut("a.rec", {"--from", "2006-01-01"}).contains("\r\nStartSettings 1/1/2006\r\n"));
    EXPECT_EQ(cutAndJoined(text.bytes, "2006-01-01"), text.bytes);
}

TEST_F(CutAndJoin, blockWithADateAboveTheCut_leavesTheDateInFrontAsItWas) {
    RecordingText text = begun();
    text.scan(QTime(23, 59, 59)).block(kDay.addDays(1), {"Poll 500"}).scan(QTime(0, 0));
    put("a.rec", text.bytes);
    EXPECT_EQ(cut("a.rec", {"--from", "2005-03-22"}),
              begun().block(kDay.addDays(1), {"Poll 500"}).scan(QTime(0, 0)).bytes);
}

TEST_F(CutAndJoin, emptyWindow_makesNoFile) {
    put("a.rec", begun().scans(QTime(10, 0), 3).bytes);
    const Result result = run({"cut", "--from", "12:00", "a.rec", "-o", "b.rec"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.error, "a.rec: no scan lies in this time\n");
    EXPECT_EQ(content("b.rec"), "no file");
    EXPECT_EQ(run({"cut", "--from", "noon", "a.rec"}).code, 64);
}

TEST_F(CutAndJoin, partsInTwo_joinToTheWholeAgain) {
    std::mt19937 random(9);
    for (int i = 0; i < 40; ++i) {
        RecordingText text = begun();
        QTime time(22, 30);
        QDate date = kDay;
        for (int scan = 0; scan < 30; ++scan) {
            const int step = static_cast<int>(random() % 600);
            date = time.addSecs(step) < time ? date.addDays(1) : date;
            time = time.addSecs(step);
            if (random() % 5 == 0) {
                text.block(date, {"Poll 1000", "RBW " + QString::number(random() % 3)});
            }
            LevelScan levels(random() % 10 == 0 ? 1 : 321);
            for (std::uint8_t &level : levels) {
                level = static_cast<std::uint8_t>(random());
            }
            text.scan(time, levels);
        }
        if (random() % 2 == 0) {
            text.block(date);
        }
        const QString at = kDay.toString(Qt::ISODate) +
                           "T23:" + QString::number(random() % 60).rightJustified(2, '0');
        ASSERT_EQ(cutAndJoined(text.bytes, at), text.bytes) << i;
    }
}

TEST_F(CutAndJoin, otherSettings_areKeptWithoutTheDisplayLinesThatRepeat) {
    put("a.rec", begun().scans(QTime(10, 0), 2).bytes);
    RecordingText other;
    other.block(kDay.addDays(1), {"Palette 2", "MarkerOn False", "Poll 250"}).scans(QTime(9, 0), 2);
    put("b.rec", other.bytes);
    RecordingText expected = begun();
    expected.scans(QTime(10, 0), 2).block(kDay.addDays(1), {"MarkerOn False", "Poll 250"});
    EXPECT_EQ(join({"a.rec", "b.rec"}), expected.scans(QTime(9, 0), 2).bytes);
}

TEST_F(CutAndJoin, laterDayWithTheSameSettings_keepsItsDate) {
    put("a.rec", begun().scans(QTime(10, 0), 2).bytes);
    RecordingText other;
    other.block(kDay.addDays(3),
                QStringList{"Palette 2", "MarkerOn True"} + RecordingText::unitLines());
    put("b.rec", other.scans(QTime(11, 0), 2).bytes);
    EXPECT_TRUE(join({"a.rec", "b.rec"}).contains("StartSettings 24/03/2005\r\nPoll 1000"));
}

TEST_F(CutAndJoin, otherSettingsOfTheSameDay_areKept) {
    put("a.rec", begun().scans(QTime(10, 0), 2).bytes);
    RecordingText other;
    put("b.rec", other.block(kDay, {"Poll 250"}).scans(QTime(11, 0), 2).bytes);
    EXPECT_EQ(
        join({"a.rec", "b.rec"}),
        begun().scans(QTime(10, 0), 2).block(kDay, {"Poll 250"}).scans(QTime(11, 0), 2).bytes);
}

TEST_F(CutAndJoin, settingsWithoutAScanBehindThem_areKept) {
    put("a.rec", begun().scans(QTime(10, 0), 2).bytes);
    RecordingText other;
    put("b.rec", other.block(kDay, {"Poll 250"}).bytes);
    EXPECT_EQ(join({"a.rec", "b.rec"}),
              begun().scans(QTime(10, 0), 2).block(kDay, {"Poll 250"}).bytes);
    put("b.rec", begun().bytes);
    EXPECT_EQ(join({"a.rec", "b.rec"}), begun().scans(QTime(10, 0), 2).bytes);
}

TEST_F(CutAndJoin, timesOfTwoForms_areRefused) {
    put("a.rec", begun().scans(QTime(10, 0), 2).bytes);
    put("b.rec", begun().line("Data " + QString(321, 'a') + " 11.00.00").bytes);
    const Result result = run({"join", "a.rec", "b.rec", "-o", "c.rec"});
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.error,
              "b.rec:14: the times have another form than above, so these can't be joined\n");
    EXPECT_EQ(content("c.rec"), "no file");
}

TEST_F(CutAndJoin, lastLineWithoutEnd_getsOne) {
    put("a.rec", begun().scans(QTime(10, 0), 2).bytes.chopped(2));
    put("b.rec", begun().scans(QTime(10, 1), 2).bytes);
    EXPECT_EQ(join({"a.rec", "b.rec"}),
              begun().scans(QTime(10, 0), 2).scans(QTime(10, 1), 2).bytes);
}

TEST_F(CutAndJoin, recordingsOfTwoLocales_areRefused) {
    put("a.rec", begun().scans(QTime(10, 0), 2).bytes);
    RecordingText other(QLocale(QLocale::English, QLocale::UnitedStates));
    put("b.rec", other.block(kDay).scans(QTime(11, 0), 2).bytes);
    const Result result = run({"join", "a.rec", "b.rec", "-o", "c.rec"});
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.error,
              "b.rec:2: the dates have another form than above, so these can't be joined\n");
    EXPECT_EQ(content("c.rec"), "no file");
}

TEST_F(CutAndJoin, wrongOrder_isTold) {
    put("a.rec", begun().scans(QTime(10, 0), 2).bytes);
    put("b.rec", begun().scans(QTime(9, 0), 2).bytes);
    EXPECT_TRUE(run({"join", "a.rec", "b.rec"})
                    .error.endsWith("b.rec:14: begins before the end of the recording in front\n"));
}

TEST_F(CutAndJoin, blocksAndScansWithoutADate_areJoinedAsTheyAre) {
    RecordingText first;
    first.line("Poll 1000").line("EndSettings ").scans(QTime(10, 0), 2);
    RecordingText other;
    other.line("Poll 250").line("EndSettings ").scans(QTime(9, 0), 2);
    put("a.rec", first.bytes);
    put("b.rec", other.bytes);
    const Result result = run({"join", "a.rec", "b.rec"});
    RecordingText expected;
    expected.line("Poll 1000").line("EndSettings ").scans(QTime(10, 0), 2);
    expected.line("Poll 250").line("EndSettings ").scans(QTime(9, 0), 2);
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, expected.bytes);
    EXPECT_FALSE(result.error.contains("begins before")) << result.error.constData();
}

} // namespace
} // namespace veldron
