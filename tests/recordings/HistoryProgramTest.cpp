// SPDX-License-Identifier: MIT
#include "recordings/HistoryProgram.h"

#include "recordings/Commands.h"
#include "tests/recordings/HistoryRun.h"
#include "tests/recordings/Recordings.h"

#include <QDir>
#include <QRegularExpression>

#include <algorithm>
#include <csignal>

namespace veldron {
namespace {

using HistoryProgram = HistoryRun;

QByteArray recordingFromTen() {
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

TEST_F(HistoryProgram, help_listsWhatCommandsShareInTheSameOrder) {
    for (const CommandRow &row : commandRows()) {
        const QByteArray help = run({QString::fromLatin1(row.name), "--help"}).out;
        qsizetype before = 0;
        for (const char *option : {"--help", "--from ", "--to ", "--output ", "--force ",
                                   "--date-order ", "--locale "}) {
            const qsizetype place = help.indexOf(option);
            EXPECT_TRUE(place < 0 || place > before) << row.name << ' ' << option;
            before = std::max(before, place);
        }
    }
}

TEST_F(HistoryProgram, completion_offersEveryCommandAndOption) {
    const QString complete = "PATH=\"$(dirname %1):$PATH\"; . %2/veldron-history; "
                             "COMP_WORDS=(veldron-history %3); COMP_CWORD=%4; _veldron_history; "
                             "printf '%s\\n' \"${COMPREPLY[@]}\"";
    const auto offered = [&](const QString &words, int word) {
        return shell(complete.arg(program(), VELDRON_COMPLETIONS, words).arg(word)).out.split('\n');
    };
    const QList<QByteArray> commands = offered("''", 1);
    const QRegularExpression option("(?<![\\w-])--[a-z][a-z-]*");
    for (const CommandRow &row : commandRows()) {
        EXPECT_TRUE(commands.contains(row.name)) << row.name;
        const QList<QByteArray> options = offered(QString::fromLatin1(row.name) + " --", 2);
        auto matches = option.globalMatch(run({row.name, "--help"}).out);
        EXPECT_TRUE(matches.hasNext());
        while (matches.hasNext()) {
            const QByteArray text = matches.next().captured().toLatin1();
            EXPECT_TRUE(options.contains(text)) << row.name << ' ' << text.constData();
        }
    }
}

TEST_F(HistoryProgram, manPage_hasEveryCommandAndExitCode) {
    const Result page = shell(VELDRON_DOCS "/man/make-history-page " + program() + " 1 2026-01-01");
    EXPECT_EQ(page.code, 0);
    const QByteArray text = QByteArray(page.out).replace('\\', "").replace('\n', ' ');
    for (const CommandRow &row : commandRows()) {
        EXPECT_TRUE(text.contains(QByteArray(".SS ") + row.name + ' ')) << row.name;
        EXPECT_TRUE(text.contains(row.example)) << row.name;
    }
    const QByteArray codes = text.mid(text.indexOf(".SH EXIT STATUS")).chopped(10);
    for (const char *code :
         {" 0 done (check: the recording plays to its end)",
          " 1 parts were skipped (check: playback would end early)", " 2 not a recording",
          " 3 a file can(aqt be read or written", " 64 wrong command line."}) {
        EXPECT_TRUE(codes.contains(code)) << code << " in " << codes.constData();
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
    put("a.rec", recordingFromTen());
    Result piped = run({"info", "-"}, recordingFromTen());
    EXPECT_EQ(piped.code, 0);
    EXPECT_EQ(piped.out.replace("standard input", "a.rec"), run({"info", "a.rec"}).out);
}

TEST_F(HistoryProgram, skippedBytes_areToldWithFileAndLine) {
    put("a.rec", recordingFromTen() + "Data cut");
    const Result result = run({"info", "a.rec"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.error, "a.rec:15: the file ends in the middle of a scan (8 bytes at offset " +
                                QByteArray::number(recordingFromTen().size()) + " skipped)\n");
}

TEST_F(HistoryProgram, fullOutput_isAnError) {
    put("a.rec", recordingFromTen());
    const Result result = shell(program() + " info a.rec >/dev/full");
    EXPECT_EQ(result.code, 3);
    EXPECT_TRUE(result.error.contains("No space left on device")) << result.error.constData();
}

TEST_F(HistoryProgram, progress_isShownOnATerminalOnly) {
    put("a.rec", recordingFromTen());
    // Both are fed until the one on the terminal has drawn its bar, as late as that may be.
    put("slow.py", "import os, pty, select, subprocess, sys, time\n"
                   "ours, terminal = pty.openpty()\n"
                   "runs = [subprocess.Popen([sys.argv[1], 'check', '-'], stderr=error,\n"
                   "                         stdin=subprocess.PIPE, stdout=subprocess.DEVNULL)\n"
                   "        for error in (subprocess.PIPE, terminal)]\n"
                   "part = open('a.rec', 'rb').read()\n"
                   "for tries in range(200):\n"
                   "    for run in runs:\n"
                   "        run.stdin.write(part)\n"
                   "        run.stdin.flush()\n"
                   "    part = b'RBW 2\\r\\n'\n"
                   "    if select.select([ours], [], [], 0.1)[0]:\n"
                   "        break\n"
                   "time.sleep(0.3)\n"
                   "piped = runs[0].communicate(part)[1]\n"
                   "runs[1].communicate()\n"
                   "print(os.read(ours, 1000), piped)\n");
    const QByteArray shown = shell(VELDRON_PYTHON " slow.py " + program()).out;
    EXPECT_TRUE(shown.startsWith("b'\\r0 MB\\x1b[K")) << shown.constData();
    EXPECT_TRUE(shown.endsWith("\\r\\x1b[K' b''\n")) << shown.constData();
}

TEST_F(HistoryProgram, interrupt_leavesNoHalfFile) {
    put("a.rec", recordingFromTen());
    const QDir folder(m_folder.path());
    const QDir::Filters all = QDir::Files | QDir::Hidden;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        QProcess process;
        process.setWorkingDirectory(folder.path());
        // One that is ignored where the tests run, as under nohup, stays ignored in the program.
        process.setChildProcessModifier([signal] { ::signal(signal, SIG_DFL); });
        process.start(program(), {"cut", "-", "-o", "b.rec"});
        ASSERT_TRUE(process.waitForStarted());
        // The input stays open, so that the program waits for more when the signal comes.
        process.write(recordingFromTen());
        while (folder.entryList(all).size() < 2 && process.state() == QProcess::Running) {
            process.waitForBytesWritten(10);
        }
        ::kill(static_cast<pid_t>(process.processId()), signal);
        ASSERT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitStatus(), QProcess::CrashExit);
        EXPECT_EQ(process.exitCode(), signal);
        EXPECT_EQ(folder.entryList(all), QStringList{"a.rec"});
    }
}

TEST_F(HistoryProgram, fileThatIsThere_isKeptWithoutForce) {
    put("a.rec", recordingFromTen());
    put("b.rec", "old");
    EXPECT_EQ(run({"cut", "a.rec", "-o", "b.rec"}).code, 3);
    EXPECT_EQ(content("b.rec"), "old");
    EXPECT_EQ(run({"cut", "a.rec", "-o", "b.rec", "--force"}).code, 0);
    EXPECT_EQ(content("b.rec"), recordingFromTen());
}

TEST_F(HistoryProgram, fullDisk_tellsHowManyScansArrived) {
    RecordingText text;
    put("a.rec", text.block(QDate(2005, 3, 21)).scans(QTime(10, 0), 1000).bytes);
    const Result result = shell(program() + " cut a.rec -o /dev/full");
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.error, "/dev/full: No space left on device (0 of the scans arrived)\n");
    const Result limited =
        shell("trap '' XFSZ; ulimit -f 100; " + program() + " cut a.rec -o b.rec");
    EXPECT_EQ(limited.code, 3);
    EXPECT_EQ(limited.error, "b.rec: File too large (303 of the scans arrived)\n");
    EXPECT_EQ(content("b.rec"), "no file");
}

TEST_F(HistoryProgram, readerThatGoesAway_endsItQuietly) {
    put("a.rec", recordingFromTen());
    const Result result =
        shell("trap '' PIPE; { sleep 0.2; " + program() + " info a.rec; echo $? >code; } | true");
    EXPECT_TRUE(result.error.isEmpty()) << result.error.constData();
    EXPECT_EQ(content("code"), "141\n");
}

} // namespace
} // namespace veldron
