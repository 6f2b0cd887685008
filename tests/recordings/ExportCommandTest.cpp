// SPDX-License-Identifier: MIT
#include "recordings/ExportCommand.h"

#include "tests/recordings/HistoryRun.h"
#include "tests/recordings/Recordings.h"

namespace veldron {
namespace {

using ExportCommandTest = HistoryRun;

QByteArray recording() {
    RecordingText text;
    return text.block(QDate(2005, 3, 21)).scans(QTime(9, 0), 3).bytes;
}

TEST_F(ExportCommandTest, wrongOptions_giveTheirCode) {
    put("a.rec", recording());
    for (const QStringList &options :
         {QStringList{}, QStringList{"--long"}, QStringList{"--csv", "--from", "noon"}}) {
        const Result result = run(QStringList{"export", "a.rec"} + options);
        EXPECT_EQ(result.code, 64) << options.join(' ').toStdString();
        EXPECT_EQ(result.out, "");
        EXPECT_FALSE(result.error.isEmpty());
    }
}

TEST_F(ExportCommandTest, windowWithoutScans_isTold) {
    put("a.rec", recording());
    const Result result = run({"export", "--csv", "a.rec", "--from", "10:00"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.error, "a.rec: no scan to export\n");
}

TEST_F(ExportCommandTest, skippedBytes_areToldAndGiveTheirCode) {
    put("a.rec", recording() + "Data cut");
    const Result result = run({"export", "--csv", "a.rec"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out.count('\n'), 3);
    EXPECT_TRUE(result.error.startsWith("a.rec:15: ")) << result.error.constData();
}

TEST_F(ExportCommandTest, otherFile_leavesNoOutput) {
    put("text", "some text\n");
    EXPECT_EQ(run({"export", "--csv", "text", "-o", "out"}).code, 2);
    EXPECT_EQ(content("out"), "no file");
}

} // namespace
} // namespace veldron
