// SPDX-License-Identifier: MIT
#include "recordings/RepairCommand.h"

#include "tests/recordings/HistoryRun.h"
#include "tests/recordings/Recordings.h"

namespace veldron {
namespace {

class RepairCommandTest : public HistoryRun {
protected:
    Result repair(const QByteArray &bytes, const QString &locale = "en_GB") {
        put("a.rec", bytes);
        return run({"repair", "--locale", locale, "a.rec", "b.rec", "--force"});
    }
    static RecordingText begun() {
        RecordingText text;
        return text.block(kDay);
    }
};

TEST_F(RepairCommandTest, goodRecording_isCopied) {
    const QByteArray bytes = begun().scans(kTen, 3).bytes;
    const Result result = repair(bytes);
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out + result.error, "");
    EXPECT_EQ(content("b.rec"), bytes);
    EXPECT_EQ(content("a.rec"), bytes);
}

TEST_F(RepairCommandTest, levelsThatBreakLines_becomeTheirNeighbours) {
    const Result result =
        repair(begun().scan(kTen, {10, 13, 32, 31, 0}).scan(kTen.addSecs(1)).bytes);
    EXPECT_EQ(result.out, "a.rec:12: levels of 10, 13 or 32 raised by one: 3\n");
    EXPECT_EQ(content("b.rec"),
              begun().scan(kTen, {11, 14, 33, 31, 0}).scan(kTen.addSecs(1)).bytes);
}

TEST_F(RepairCommandTest, scansThatPlaybackCannotShow_areLeftOut) {
    RecordingText text = begun();
    text.scan(kTen).scan(kTen).scan(kTen.addSecs(1), LevelScan(325)).scan(kTen.addSecs(2));
    const Result result = repair(text.bytes + "Data cut");
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out,
              "a.rec:13: scan left out: it has the time of the first scan\n"
              "a.rec:14: scan left out: 325 levels are more than playback reads\n"
              "a.rec:16: left out: the file ends in the middle of a scan (8 bytes at offset " +
                  QByteArray::number(text.bytes.size()) + " skipped)\n");
    EXPECT_EQ(content("b.rec"), begun().scan(kTen).scan(kTen.addSecs(2)).bytes);
}

TEST_F(RepairCommandTest, blockOfFailedReadings_keepsOnlyItsDate) {
    RecordingText text = begun();
    text.scan(kTen).block(kDay, {"Poll 1000", "Span -1", "Centre -1"}).scan(kTen.addSecs(1));
    const Result result = repair(text.bytes);
    EXPECT_TRUE(result.out.startsWith("a.rec:14: setting left out: its block holds values"));
    EXPECT_EQ(content("b.rec"), begun().scan(kTen).block(kDay, {}).scan(kTen.addSecs(1)).bytes);
    const QByteArray persistence = begun().line("Persistence -1").scans(kTen, 2).bytes;
    EXPECT_EQ(repair(persistence).out, "");
}

TEST_F(RepairCommandTest, valuesThatCannotBeRead_areLeftOut) {
    const Result result = repair(begun().scan(kTen).line("RBW 99999").scan(kTen.addSecs(1)).bytes);
    EXPECT_EQ(result.out, "a.rec:13: setting left out: its value can't be read\n");
    EXPECT_EQ(content("b.rec"), begun().scans(kTen, 2).bytes);
}

TEST_F(RepairCommandTest, recordingOfAnotherLocale_isWrittenInPlainForm) {
    RecordingText text(QLocale(QLocale::English, QLocale::UnitedStates));
    text.block(kDay, {"Centre 145500000.5"}).scan(QTime(21, 0)).scan(QTime(21, 0, 1));
    const Result result = repair(text.bytes, "de_DE");
    EXPECT_EQ(result.out, "a.rec:2: value written as 2005-03-21\n"
                          "a.rec:3: value written as 145500000,5\n"
                          "a.rec:5: time written as 21:00:00\n"
                          "a.rec:6: time written as 21:00:01\n");
    EXPECT_EQ(run({"check", "--locale", "de_DE", "b.rec"}).code, 0);
}

TEST_F(RepairCommandTest, onlyScan_getsALineBehindIt) {
    EXPECT_EQ(repair(begun().scan(kTen).bytes).out,
              "a.rec:12: a line added behind the only scan\n");
    EXPECT_EQ(content("b.rec"), begun().scan(kTen).line("EndSettings ").bytes);
}

TEST_F(RepairCommandTest, nothingToShow_makesNoFile) {
    const Result result = repair(begun().bytes);
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.error, "a.rec: no scan is left that playback could show\n");
    EXPECT_EQ(content("b.rec"), "no file");
}

TEST_F(RepairCommandTest, recordingItself_isNeverTouched) {
    put("a.rec", begun().scan(kTen, {10}).bytes);
    const QByteArray before = content("a.rec");
    const Result result = run({"repair", "a.rec", "a.rec", "--force"});
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.error, "a.rec: this is the recording itself\n");
    EXPECT_EQ(content("a.rec"), before);
}

TEST_F(RepairCommandTest, copyToStandardOutput_leavesTheListToStandardError) {
    put("a.rec", begun().scan(kTen, {10}).scan(kTen.addSecs(1)).bytes);
    const Result result = run({"repair", "--locale", "en_GB", "a.rec", "-"});
    EXPECT_EQ(result.out, begun().scan(kTen, {11}).scan(kTen.addSecs(1)).bytes);
    EXPECT_EQ(result.error, "a.rec:12: levels of 10, 13 or 32 raised by one: 1\n");
}

} // namespace
} // namespace veldron
