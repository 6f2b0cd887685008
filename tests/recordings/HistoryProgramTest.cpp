// SPDX-License-Identifier: MIT
#include "recordings/HistoryProgram.h"

#include "recordings/Commands.h"
#include "tests/recordings/HistoryRun.h"
#include "tests/recordings/Recordings.h"

namespace veldron {
namespace {

using HistoryProgram = HistoryRun;

QByteArray recording() {
    RecordingText text;
    text.block(QDate(2005, 3, 21)).scans(QTime(10, 0), 3);
    return text.bytes;
}

TEST_F(HistoryProgram, help_listsEveryCommandWithAnExample) {
    const Result help = run({"--help"});
    EXPECT_EQ(help.code, 0);
    for (const CommandRow &row : commandRows()) {
        EXPECT_TRUE(help.out.contains(row.name));
        const Result own = run({QString::fromLatin1(row.name), "--help"});
        EXPECT_EQ(own.code, 0);
        EXPECT_TRUE(own.out.contains(row.example)) << own.out.constData();
    }
}

TEST_F(HistoryProgram, version_isTheProjects) {
    EXPECT_EQ(run({"--version"}).out, "1.0.0\n");
}

TEST_F(HistoryProgram, wrongCommandLines_giveTheirCode) {
    for (const QStringList &arguments :
         {QStringList{}, QStringList{"bake"}, QStringList{"info"}, QStringList{"info", "a", "b"},
          QStringList{"info", "a", "--date-order", "xyz"}}) {
        const Result result = run(arguments);
        EXPECT_EQ(result.code, 64) << arguments.join(' ').toStdString();
        EXPECT_FALSE(result.error.isEmpty());
    }
}

TEST_F(HistoryProgram, fileThatCannotBeRead_givesItsCode) {
    const Result missing = run({"info", "none.rec"});
    EXPECT_EQ(missing.code, 3);
    EXPECT_EQ(missing.error, "none.rec: No such file or directory\n");
    EXPECT_EQ(run({"info", "."}).code, 3);
}

TEST_F(HistoryProgram, otherFile_isNotARecording) {
    put("text", "some text\n");
    const Result result = run({"info", "text"});
    EXPECT_EQ(result.code, 2);
    EXPECT_TRUE(result.error.endsWith("text: this is not a recording\n"));
}

TEST_F(HistoryProgram, standardInput_isReadLikeAFile) {
    put("a.rec", recording());
    EXPECT_EQ(run({"info", "-"}, recording()).out, run({"info", "a.rec"}).out);
    EXPECT_EQ(run({"info", "-"}, recording()).code, 0);
}

TEST_F(HistoryProgram, skippedBytes_areToldWithFileAndLine) {
    put("a.rec", recording() + "Data cut");
    const Result result = run({"info", "a.rec"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.error, "a.rec:15: the file ends in the middle of a scan (8 bytes skipped)\n");
}

TEST_F(HistoryProgram, fullOutput_isAnError) {
    put("a.rec", recording());
    const Result result = shell(program() + " info a.rec >/dev/full");
    EXPECT_EQ(result.code, 3);
    EXPECT_TRUE(result.error.contains("No space left on device")) << result.error.constData();
}

TEST_F(HistoryProgram, readerThatGoesAway_endsItQuietly) {
    put("a.rec", recording());
    const Result result =
        shell("trap '' PIPE; { sleep 0.2; " + program() + " info a.rec; echo $? >code; } | true");
    EXPECT_TRUE(result.error.isEmpty()) << result.error.constData();
    EXPECT_EQ(content("code"), "141\n");
}

} // namespace
} // namespace veldron
