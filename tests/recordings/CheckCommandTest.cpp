// SPDX-License-Identifier: MIT
#include "recordings/CheckCommand.h"

#include "tests/recordings/HistoryRun.h"
#include "tests/recordings/Recordings.h"

namespace veldron {
namespace {

class CheckCommandTest : public HistoryRun {
protected:
    /// Under Britain's locale, which the recordings are made under.
    [[nodiscard]] Result check(const QStringList &files) const {
        return run(QStringList{"check", "--locale", "en_GB"} + files);
    }
    [[nodiscard]] static RecordingText begun() {
        RecordingText text;
        return text.block(QDate(2005, 3, 21));
    }
};

TEST_F(CheckCommandTest, recordingThatPlays_givesNothing) {
    put("a.rec", begun().scans(QTime(10, 0), 3).bytes);
    const Result result = check({"a.rec"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out + result.error, "");
}

TEST_F(CheckCommandTest, recordingThatEndsEarly_givesALineAFinding) {
    RecordingText text = begun();
    text.scan(QTime(10, 0)).scan(QTime(10, 0)).scan(QTime(10, 0, 1), {97, 10, 98});
    put("a.rec", text.bytes + "Data cut");
    const Result result = check({"a.rec"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out,
              "a.rec:13: playback would end: the scan has the same time as the first one of the "
              "file, so there is no telling how far the playback has come\n"
              "a.rec:14: playback would end: a scan line has no time behind its scan (a level of "
              "10, 13 or 32 in a recording does this)\n"
              "a.rec:16: playback would end: the file ends in the middle of a scan\n");
}

TEST_F(CheckCommandTest, whatPlaybackPassesOver_isToldAndPlays) {
    RecordingText text = begun();
    put("a.rec", text.scans(QTime(10, 0), 2).line("a remark").scans(QTime(10, 1), 2).bytes);
    const Result result = check({"a.rec"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, "a.rec:14: neither a scan nor a setting (10 bytes at offset " +
                              QByteArray::number(begun().scans(QTime(10, 0), 2).bytes.size()) +
                              " skipped)\n");
}

TEST_F(CheckCommandTest, localeOfAnotherCountry_doesNotPlay) {
    put("a.rec", begun().scans(QTime(10, 0), 3).bytes);
    const Result result = run({"check", "--locale", "en_US", "a.rec"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out, "a.rec:2: playback would end: \"21/03/2005\" is not a date\n");
    EXPECT_EQ(run({"check", "--locale", "xx_YY", "a.rec"}).code, 64);
}

TEST_F(CheckCommandTest, severalFiles_giveTheWorstCode) {
    put("good.rec", begun().scans(QTime(10, 0), 3).bytes);
    put("bad.rec", begun().bytes);
    put("text", "abc");
    EXPECT_EQ(check({"good.rec", "good.rec"}).code, 0);
    EXPECT_EQ(check({"bad.rec", "good.rec"}).code, 1);
    const Result result = check({"text", "bad.rec"});
    EXPECT_EQ(result.code, 2);
    EXPECT_TRUE(result.out.contains("bad.rec:11: "));
    EXPECT_EQ(result.error, "text: this is not a recording\n");
    EXPECT_EQ(check({"bad.rec", "none.rec"}).code, 3);
}

} // namespace
} // namespace veldron
