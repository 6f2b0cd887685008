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

namespace veldron {

using namespace std::chrono_literals;

namespace {

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
