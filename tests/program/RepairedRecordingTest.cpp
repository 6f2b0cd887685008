// SPDX-License-Identifier: MIT
// A recording at four scans a second with everything in it that ends playback: found by
// veldron-history, repaired by it, and then played to its end.
#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/ProgramRun.h"
#include "tests/program/RecordedFile.h"

#include <gtest/gtest.h>

#include <QProcess>

#include <vector>

namespace veldron {

using namespace std::chrono_literals;

namespace {

/// What stands between scans that play, on line 16, and how it is told and mended.
struct StumblingBlock {
    const char *name;
    QByteArray bytes;
    const char *found;
    const char *mended;
};

const QByteArray kStart = "StartSettings 21 Mar 2005\r\n";
const QByteArray kSettings = "Poll 1000\r\nMonitorMode 1\r\nSpan 10000000\r\nCentre 100000000\r\n"
                             "Receiver VK3900\r\nRXMode WFM\r\nRXStep 100000\r\nRXAtten False\r\n"
                             "RBW 2\r\nAmp -30\r\nDataMode 1\r\nEndSettings \r\n";

QByteArray scanLine(const QByteArray &levels, const char *time) {
    return "Data " + levels + ' ' + time + "\r\n";
}

QByteArray withLevel(char level) {
    const QByteArray levels(100, 'a');
    return scanLine(levels + level + levels, "10:00:01");
}

const char *const kRaised = "16: levels of 10, 13 or 32 raised by one: 1\n";
const char *const kNoTime = "16: playback would end: a scan line has no time behind its scan";
const char *const kWrongTime = "16: playback would end: no time of day stands behind the scan but";

const std::vector<StumblingBlock> kStumblingBlocks{
    {"level 10", withLevel('\n'), kNoTime, kRaised},
    {"level 13", withLevel('\r'), kNoTime, kRaised},
    {"level 32", withLevel(' '), kWrongTime, kRaised},
    {"first second", scanLine("aaa", "10:00:00"),
     "16: playback would end: the scan has the same time as the first one",
     "16: scan left out: it has the time of the first scan\n"},
    {"325 zeros", scanLine(QByteArray(325, '\0'), "10:00:01"), kWrongTime,
     "16: scan left out: 325 levels are more than playback reads\n"},
    {"too long", scanLine(QByteArray(324, 'a'), "10:00:01"), kWrongTime,
     "16: scan left out: 324 levels are more than playback reads\n"},
    // Playback takes these values, and sets what it shows by them.
    {"values of -1", kStart + QByteArray(kSettings).replace("RBW 2", "RBW -1"), "",
     "17: setting left out: its block holds values that the unit didn't answer with\n"},
    {"no number", "RBW 99999\r\n", "16: playback would end: the number \"99999\" is out of range",
     "16: setting left out:"},
};

class RepairedRecording : public testing::Test {
protected:
    struct Outcome {
        int code;
        QByteArray out;
    };

    void openAtFourScansASecond() {
        ASSERT_TRUE(run.plugUnit());
        ASSERT_TRUE(run.open());
        ASSERT_TRUE(run.pollFourTimesASecond());
    }
    void record(qsizetype scans) {
        run.choose("File", "Record");
        ASSERT_TRUE(run.answerFileDialog("Record to file", run.path("band.rec")));
        Desk::focus("VELDRON");
        ASSERT_TRUE(eventually(40s, [&] { return recorded("band.rec").scans.size() >= scans; }));
        run.choose("File", "Stop recording");
        ASSERT_TRUE(run.awaitStatus("VELDRON connected on COM 3"));
    }
    [[nodiscard]] RecordedFile recorded(const QString &name) const {
        return RecordedFile::read(run.content(name));
    }
    /// Everything at once that playback stumbles on, behind what was recorded.
    void damage() {
        const QByteArray time = ' ' + recorded("band.rec").scans.last().time + "\r\n";
        const QByteArray levels(100, 'a');
        QByteArray bytes = run.content("band.rec");
        for (const char level : {'\n', '\r', ' '}) {
            bytes += "Data " + levels + level + levels + time;
        }
        bytes += "Data " + QByteArray(325, '\0') + time + "RBW 99999\r\nSpan -1\r\n";
        bytes += "Data " + levels + ' ' + recorded("band.rec").scans.first().time + "\r\n";
        bytes += "Data " + levels + time + "Data " + levels;
        run.write("damaged.rec", bytes);
    }
    [[nodiscard]] Outcome history(const QStringList &arguments) const {
        QProcess process;
        process.setWorkingDirectory(run.path("."));
        process.start(QStringLiteral(VELDRON_HISTORY), arguments);
        EXPECT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.readAllStandardError().toStdString(), "");
        return {process.exitCode(), process.readAllStandardOutput()};
    }
    /// Has one.rec checked, repaired with \a code, and its repair played.
    void expectMended(const StumblingBlock &block, int code) {
        SCOPED_TRACE(block.name);
        const Outcome found = history({"check", "one.rec"});
        EXPECT_EQ(found.code, *block.found == '\0' ? 0 : 1);
        EXPECT_TRUE(found.out.startsWith(
            *block.found == '\0' ? QByteArray() : "one.rec:" + QByteArray(block.found)))
            << found.out.constData();
        EXPECT_LE(found.out.count('\n'), 1) << found.out.constData();
        const Outcome list = history({"repair", "--force", "one.rec", "mended.rec"});
        EXPECT_EQ(list.code, code);
        EXPECT_TRUE(list.out.startsWith("one.rec:" + QByteArray(block.mended)))
            << list.out.constData();
        EXPECT_EQ(history({"check", "mended.rec"}).code, 0);
        playToTheEnd("mended.rec");
        run.clickButton("Stop playback");
    }
    /// Plays the file at full speed, until the transport pauses at its end.
    void playToTheEnd(const QString &name) {
        run.choose("File", "Playback");
        ASSERT_TRUE(run.answerFileDialog("History playback", run.path(name)));
        Desk::focus("VELDRON");
        ASSERT_TRUE(eventually(5s, [this] { return run.statusText().startsWith("Playback"); }))
            << qPrintable(run.statusText());
        run.clickButton("Playback speed");
        Desk::key("End");
        run.clickButton("Continuous playback");
        EXPECT_TRUE(eventually(20s, [this] { return run.panel(2) == "100.00%"; }))
            << qPrintable(run.panel(2));
        EXPECT_TRUE(run.panel(1).endsWith(QString::fromLatin1(recorded(name).scans.last().time)));
        EXPECT_TRUE(eventually(3s, [this] {
            const auto button = run.named("push button", "Step back");
            return button && button->isEnabled;
        }));
        EXPECT_TRUE(run.isRunning());
    }

    ProgramRun run;
};

TEST_F(RepairedRecording, eachStumblingBlock_isFoundAndItsRepairPlaysToTheEnd) {
    ASSERT_TRUE(run.open());
    const QByteArray front =
        "VELDRONv1 History file\r\n" + kStart + kSettings + scanLine("aaaa", "10:00:00");
    const QByteArray behind = scanLine("aaaa", "10:00:02") + scanLine("aaaa", "10:00:03");
    for (const StumblingBlock &block : kStumblingBlocks) {
        run.write("one.rec", front + block.bytes + behind);
        expectMended(block, 0);
    }
    run.write("one.rec", front + behind + "Data aaaa");
    expectMended({"cut line",
                  {},
                  "18: playback would end: the file ends in the middle of a scan",
                  "18: left out: the file ends in the middle of a scan"},
                 1);
}

TEST_F(RepairedRecording, fourScansASecondWithEveryStumblingBlock_areFoundAndPlayToTheEnd) {
    openAtFourScansASecond();
    record(12);
    damage();
    const Outcome found = history({"check", "damaged.rec"});
    EXPECT_EQ(found.code, 1);
    EXPECT_EQ(found.out.count("no time behind its scan"), 2);
    EXPECT_EQ(found.out.count("no time of day stands behind the scan but"), 2);
    // Most recordings at this rate have more of them, right behind the first one.
    EXPECT_GE(found.out.count("the scan has the same time as the first one"), 1);
    EXPECT_EQ(found.out.count("the number \"99999\" is out of range"), 1);
    EXPECT_EQ(found.out.count("the file ends in the middle of a scan"), 1);

    const Outcome list = history({"repair", "damaged.rec", "mended.rec"});
    EXPECT_EQ(list.out.count("levels of 10, 13 or 32 raised by one: 1\n"), 3);
    EXPECT_EQ(list.out.count("325 levels are more than playback reads"), 1);
    EXPECT_EQ(history({"check", "mended.rec"}).code, 0);
    playToTheEnd("mended.rec");
}

} // namespace

} // namespace veldron
