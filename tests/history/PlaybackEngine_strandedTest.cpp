// SPDX-License-Identifier: MIT
// The state that a file without a line behind its first scan leaves: the transport over the live
// poll.
#include "history/PlaybackEngine.h"

#include "tests/support/HistoryFiles.h"

#include <QFile>
#include <QImage>

namespace veldron {
namespace {

using Kind = UntrappedError::Kind;

const QStringList kNoScan = {"VELDRONv1 History file", "StartSettings 21/03/2005", "RBW 3",
                             "EndSettings "};
const QStringList kOneScan = {"VELDRONv1 History file", "StartSettings 21/03/2005", "EndSettings ",
                              "Data ab 10:00:00"};

std::vector<QStringList> strandingFiles() {
    return {{"header only"}, kNoScan, kNoScan + QStringList{"Data ab 10:00:00"}};
}

class PlaybackEngineStrandedTest : public PlaybackTest {
protected:
    /// Five rows of live scans, each other than the one before.
    void bringLiveRows() {
        for (int row = 0; row < 5; ++row) {
            chart().SetData(LevelScan(321, static_cast<std::uint8_t>(40 + 10 * row)));
            chart().Refresh();
            m_fixture.clock.advance(chart().Update());
            chart().onTimer1();
        }
    }
    void appendLine(const QString &line) const {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::Append));
        file.write((line + "\r\n").toLatin1());
    }
};

TEST_F(PlaybackEngineStrandedTest, fileThatEndsBeforeOrAtItsFirstScan_isStranded) {
    for (const QStringList &lines : strandingFiles()) {
        m_fixture.log.clear();
        open(lines);
        EXPECT_FALSE(m_fixture.session.InPlayback);
        EXPECT_FALSE(chart().Playback());
        EXPECT_EQ(m_fixture.log.mid(0, 2),
                  (QStringList{"transport visible on", "SetControlsEnabled off"}));
        EXPECT_TRUE(m_fixture.log.filter("poll timer").isEmpty());
        EXPECT_TRUE(m_fixture.log.filter("record enabled").isEmpty());
        EXPECT_TRUE(m_fixture.log.filter("panel 1").isEmpty());
        EXPECT_TRUE(m_fixture.log.filter("place").isEmpty());
    }
}

// ---- steps over the live chart

TEST_F(PlaybackEngineStrandedTest, stepForward_pausesAtTheEndOfTheFile) {
    for (const QStringList &lines : strandingFiles()) {
        open(lines);
        (void)takeLog();
        step(1, 2);
        EXPECT_EQ(takeLog(), (QStringList{"StopPlay", "StopPlay"}));
        m_fixture.playback.Quit();
    }
}

TEST_F(PlaybackEngineStrandedTest, stepBackOnAnEmptyChart_showsThePlaceAgain) {
    open(kOneScan);
    (void)takeLog();
    step(-1);
    EXPECT_EQ(takeLog(), QStringList{"place: 21/03/2005 10:00:00 / 100.00%"});
}

TEST_F(PlaybackEngineStrandedTest, stepsBack_moveTheLiveChartAndCountFromTheOnlyScan) {
    bringLiveRows();
    open(kOneScan);
    const QImage newest = chart().grab().toImage();
    (void)takeLog();
    step(-1, 2);
    // The playback counts as begun in 1899, so that two seconds don't show in the share.
    EXPECT_EQ(takeLog(), (QStringList{"place: 21/03/2005 09:59:59 / 100.00%",
                                      "place: 21/03/2005 09:59:58 / 100.00%"}));
    EXPECT_NE(chart().grab().toImage(), newest);
}

TEST_F(PlaybackEngineStrandedTest, stepForwardOverRewoundRows_movesAndThenPauses) {
    bringLiveRows();
    open(kOneScan);
    step(-1, 2);
    (void)takeLog();
    step(1, 3);
    EXPECT_EQ(takeLog(), (QStringList{"place: 21/03/2005 09:59:59 / 100.00%",
                                      "place: 21/03/2005 10:00:00 / 100.00%", "StopPlay"}));
}

TEST_F(PlaybackEngineStrandedTest, startOfAnEarlierPlayback_stillCounts) {
    open(head() + scans(2)); // from 10:00:00 on
    m_fixture.playback.Quit();
    bringLiveRows();
    open({"header", "StartSettings 21/03/2005", data("10:00:10")});
    step(-1);
    EXPECT_EQ(m_fixture.place, "21/03/2005 10:00:09 / 90.00%");
    m_fixture.playback.Quit();
    put(kOneScan);
    open();
    expectStepError(-1, Kind::DivideByZero,
                    atLine(4, "the scan has the same time as the first one of the file, so there "
                              "is no telling how far the playback has come"));
}

TEST_F(PlaybackEngineStrandedTest, rewindOfAnEarlierPlayback_doesNotCountForTheNextFile) {
    open(head() + scans(4));
    step(1, 2);
    step(-1);
    m_fixture.playback.Quit();
    open({"header", "StartSettings 21/03/2005", data("10:00:10")});
    step(0);
    EXPECT_EQ(m_fixture.place, "21/03/2005 10:00:10 / 100.00%");
}

TEST_F(PlaybackEngineStrandedTest, stepBackWithoutADate_isUntrapped) {
    for (const bool live : {false, true}) {
        if (live) {
            bringLiveRows();
        }
        put({"header only", data("10:00:00")});
        open();
        expectStepError(-1, Kind::BadValue,
                        atLine(2, "there is no StartSettings line with a date"));
        m_fixture.playback.Quit();
    }
}

TEST_F(PlaybackEngineStrandedTest, stepBackWithoutAScan_isUntrapped) {
    put(kNoScan);
    open();
    expectStepError(-1, Kind::BadValue, atLine(4, "there is no scan in the file"));
}

TEST_F(PlaybackEngineStrandedTest, scanOfAnEarlierFile_isNotUsedForOneWithoutAScan) {
    open(head() + scans(2));
    m_fixture.playback.Quit();
    bringLiveRows();
    put(kNoScan);
    open();
    expectStepError(-1, Kind::BadValue, atLine(4, "there is no scan in the file"));
}

TEST_F(PlaybackEngineStrandedTest, fileThatHasGrownMeanwhile_isReadOnOverTheLivePoll) {
    open(kOneScan);
    appendLine(data("10:00:02", "xyz"));
    (void)takeLog();
    step(1);
    EXPECT_TRUE(shows({'x', 'y', 'z'}));
    EXPECT_EQ(chartStatus(), "10:00:02");
    EXPECT_FALSE(m_fixture.session.InPlayback);
    EXPECT_FALSE(chart().Playback());
    ASSERT_EQ(m_fixture.log.size(), 1);
    EXPECT_TRUE(m_fixture.log.first().startsWith("place: 21/03/2005 10:00:02 / "));
}

TEST_F(PlaybackEngineStrandedTest, stepDuringARecording_onlyPauses) {
    bringLiveRows();
    open(kOneScan);
    m_fixture.dialogs.answer = m_folder.filePath("new.rec");
    m_fixture.recorder.mnuFileRecord();
    (void)takeLog();
    step(-1);
    step(1);
    EXPECT_EQ(takeLog(), (QStringList{"StopPlay", "StopPlay"}));
    m_fixture.recorder.mnuFileRecord();
    step(0);
    EXPECT_EQ(m_fixture.place, "21/03/2005 10:00:00 / 100.00%"); // no step was counted
}

// ---- the way out, and what else goes on

TEST_F(PlaybackEngineStrandedTest, quitWhileStranded_returnsToIdle) {
    open(strandingFiles()[2]);
    m_fixture.log.clear();
    m_fixture.playback.Quit();
    EXPECT_EQ(m_fixture.log,
              (QStringList{"poll timer on", "SetControlsEnabled on", "record enabled on",
                           "transport visible off", "panel 1: ", "clock and activity"}));
}

TEST_F(PlaybackEngineStrandedTest, loadingSettingsWhileStranded_reachesTheUnitAgain) {
    m_fixture.connectUnit();
    open(strandingFiles()[0]);
    m_fixture.log.clear();
    m_fixture.load("RBW 4");
    EXPECT_EQ(m_fixture.log, QStringList{"WSBW4"});
}

TEST_F(PlaybackEngineStrandedTest, recordingStartedWhileStranded_outlivesTheQuit) {
    open(strandingFiles()[1]);
    m_fixture.dialogs.answer = m_folder.filePath("new.rec");
    m_fixture.recorder.mnuFileRecord();
    m_fixture.log.clear();
    m_fixture.playback.Quit();
    EXPECT_TRUE(m_fixture.session.Recording);
    EXPECT_TRUE(m_fixture.log.contains("SetControlsEnabled off"));
    EXPECT_FALSE(m_fixture.log.contains("SetControlsEnabled on"));
    m_fixture.recorder.writeScan({'z'});
    m_fixture.recorder.mnuFileRecord();
    QFile file(m_folder.filePath("new.rec"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().endsWith("Data z 10:00:00\r\n"));
}

TEST_F(PlaybackEngineStrandedTest, recordingOverTheStrandedFileItself_doesNoHarm) {
    open(strandingFiles()[1]);
    m_fixture.recorder.mnuFileRecord();
    m_fixture.recorder.writeScan({'z'});
    step(1);
    m_fixture.playback.Quit();
    m_fixture.recorder.mnuFileRecord();
    open();
    EXPECT_FALSE(m_fixture.session.InPlayback); // one scan, the last line: stranded again
    step(-1);
    EXPECT_TRUE(m_fixture.place.startsWith("21/03/2005 10:00:00"));
}

TEST_F(PlaybackEngineStrandedTest, anotherFileWhileStranded_isShown) {
    open(strandingFiles()[0]);
    m_fixture.recorder.closeStream();
    open(head() + scans(2));
    EXPECT_TRUE(m_fixture.session.InPlayback);
    EXPECT_TRUE(chart().Playback());
}

} // namespace
} // namespace veldron
