// SPDX-License-Identifier: MIT
// Recording: the normal course, a kill, a full disk, a file that is removed.
#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/ProgramRun.h"
#include "tests/program/RecordedFile.h"
#include "tests/program/SmallDisk.h"

#include <gtest/gtest.h>

#include <QFile>

namespace veldron {

using namespace std::chrono_literals;

namespace {

/// A recording with four scans a second.
class Recording : public testing::Test {
protected:
    void openProgram() {
        ASSERT_TRUE(run.plugUnit());
        ASSERT_TRUE(run.open());
        ASSERT_TRUE(run.pollFourTimesASecond());
    }

    void askToRecord(const QString &path) {
        run.choose("File", "Record");
        ASSERT_TRUE(run.answerFileDialog("Record to file", path));
        Desk::focus("VELDRON");
    }

    void record(const QString &path) {
        askToRecord(path);
        ASSERT_TRUE(eventually(5s, [this] { return run.statusText().startsWith("Recording"); }))
            << qPrintable(run.statusText());
    }

    void startRecording() {
        openProgram();
        record(run.path(kBandFile));
        awaitScans(4);
    }

    RecordedFile recorded() { return RecordedFile::read(run.content(kBandFile)); }

    void awaitScans(qsizetype scans) {
        ASSERT_TRUE(eventually(20s, [&] { return recorded().scans.size() >= scans; }));
    }

    /// The recorder has stopped by itself: the link's status is back, and the controls work.
    void expectStopped() {
        EXPECT_TRUE(run.awaitStatus("VELDRON connected on COM 3", 15s))
            << qPrintable(run.statusText());
        EXPECT_TRUE(run.isEnabled("Span"));
        EXPECT_EQ(Desk::windows(), QStringList{"VELDRON"});
    }

    /// Playback of the file shows its first scan. With four scans a second it goes no further.
    void expectOpens(const QString &path, const RecordedFile &file) {
        run.choose("File", "Playback");
        ASSERT_TRUE(run.answerFileDialog("History playback", path));
        Desk::focus("VELDRON");
        EXPECT_TRUE(eventually(5s, [&] { return run.statusText().startsWith("Playback from "); }))
            << qPrintable(run.statusText());
        EXPECT_TRUE(run.panel(1).endsWith(' ' + QString::fromLatin1(file.scans.first().time)));
        run.clickButton("Stop playback");
        expectStopped();
    }

    ProgramRun run;
};

TEST_F(Recording, whileItRuns_panelsAreHeldAndTheSizeIsShown) {
    startRecording();
    EXPECT_FALSE(run.isEnabled("Span"));
    EXPECT_FALSE(run.isEnabled("RX Frequency"));
    const QString status = run.statusText();
    EXPECT_TRUE(status.startsWith("Recording to file " + run.path(kBandFile) + "   "))
        << qPrintable(status);
    run.choose("File", "Stop recording");
    expectStopped();
    expectRecorded(recorded(), run.unit().events());
    EXPECT_TRUE(recorded().rest.isEmpty());
}

TEST_F(Recording, windowClosed_asksFirstAndCancelGoesOn) {
    startRecording();
    Desk::pressCloseBox("VELDRON");
    ASSERT_TRUE(Desk::awaitWindow("Exit VELDRON?", 5s));
    EXPECT_TRUE(run.named("label", "You are still recording.\r\n"
                                   " Do you want to stop recording and exit?"));
    // Cancel is what Enter presses.
    Desk::focus("Exit VELDRON?");
    Desk::key("Return");
    ASSERT_TRUE(eventually(5s, [] { return !Desk::hasWindow("Exit VELDRON?"); }));
    awaitScans(recorded().scans.size() + 4);
    EXPECT_TRUE(run.isRunning());

    Desk::pressCloseBox("VELDRON");
    ASSERT_TRUE(Desk::awaitWindow("Exit VELDRON?", 5s));
    Desk::focus("Exit VELDRON?");
    run.clickButton("OK");
    ASSERT_TRUE(run.ends());
    EXPECT_EQ(run.exitCode(), 0);
    expectRecorded(recorded(), run.unit().events());
    EXPECT_TRUE(recorded().rest.isEmpty());
    // The defaults of such an exit leave out how things are displayed.
    EXPECT_FALSE(run.content("VELDRON.set").contains("PersistenceOn"));
    EXPECT_TRUE(run.content("VELDRON.set").contains("\r\nPoll 250\r\n"));
}

TEST_F(Recording, terminated_endsInOrderWithoutAQuestion) {
    startRecording();
    run.sendTerminate();
    ASSERT_TRUE(run.ends());
    EXPECT_EQ(run.exitCode(), 0);
    expectRecorded(recorded(), run.unit().events());
    EXPECT_TRUE(recorded().rest.isEmpty());
}

TEST_F(Recording, killed_everyCompleteLineIsThere) {
    startRecording();
    run.sendKill();
    ASSERT_TRUE(run.ends());
    EXPECT_TRUE(run.hasCrashed());
    const RecordedFile file = recorded();
    EXPECT_GE(file.scans.size(), 4);
    expectRecorded(file, run.unit().events());
    EXPECT_EQ(file.blocks.size(), 1);
    // All that the unit has sent but, at the most, the one in hand.
    const qsizetype sent = sentFromFirstOf(file, run.unit().events()).size();
    EXPECT_GE(file.scans.size(), sent - 1);
}

TEST_F(Recording, fileTakenAway_recorderStopsByItself) {
    startRecording();
    ASSERT_TRUE(QFile::remove(run.path(kBandFile)));
    expectStopped();
    EXPECT_FALSE(run.exists(kBandFile));
}

TEST_F(Recording, diskFull_recorderStopsAndWhatWasWrittenStays) {
    constexpr qint64 kRoom = 8192;
    const SmallDisk disk(run.path("disk"), "8k");
    if (!disk.isMounted()) {
        run.limitFiles(kRoom);
    }
    openProgram();
    record(run.path("disk/band.rec"));
    expectStopped();
    const RecordedFile file = RecordedFile::read(run.content("disk/band.rec"));
    EXPECT_LE(file.size, kRoom);
    EXPECT_GE(file.scans.size(), 20);
    EXPECT_TRUE(file.rest.isEmpty()) << file.rest.constData();
    expectRecorded(file, run.unit().events());
    expectOpens(run.path("disk/band.rec"), file);
}

TEST_F(Recording, fileLimitReached_recorderStopsAndWhatWasWrittenStays) {
    constexpr qint64 kLimit = 4000;
    run.limitFiles(kLimit);
    openProgram();
    askToRecord(run.path(kBandFile));
    // Three seconds fill the file: on a busy machine nobody may have seen the status of a
    // recording.
    awaitScans(9);
    expectStopped();
    const RecordedFile file = recorded();
    EXPECT_LE(file.size, kLimit);
    EXPECT_GE(file.scans.size(), 9);
    EXPECT_TRUE(file.rest.isEmpty()) << file.rest.constData();
    expectRecorded(file, run.unit().events());
    expectOpens(run.path(kBandFile), file);
}

} // namespace

} // namespace veldron
