// SPDX-License-Identifier: MIT
// Opening, leaving, and the states between.
#include "history/PlaybackEngine.h"

#include "tests/support/HistoryFiles.h"

namespace veldron {
namespace {

using Kind = UntrappedError::Kind;
using PlaybackEngineTest = PlaybackTest;

TEST_F(PlaybackEngineTest, click_asksWithItsTexts) {
    m_bench.playback.mnuFilePlayback();
    ASSERT_EQ(m_bench.dialogs.openRequests.size(), 1U);
    const FileRequest &request = m_bench.dialogs.openRequests[0];
    EXPECT_EQ(request.title, "History playback");
    EXPECT_EQ(request.filter, "VELDRON History (*.rec)");
    EXPECT_EQ(request.folder, "the/program/folder");
}

TEST_F(PlaybackEngineTest, cancelInTheDialog_changesNothing) {
    const QStringList before = m_bench.state();
    m_bench.playback.mnuFilePlayback();
    EXPECT_TRUE(m_bench.log.isEmpty());
    EXPECT_FALSE(m_bench.session.InPlayback);
    EXPECT_EQ(m_bench.state(), before);
}

TEST_F(PlaybackEngineTest, opening_goesThroughItsStepsInOrder) {
    open(head() + scans(2));
    const qint64 used = sizeOf(head()) + sizeOf(scans(1));
    EXPECT_EQ(takeLog(), (QStringList{"transport visible on", "SetControlsEnabled off",
                                      "UpdateChartSettings", "poll timer off", "record enabled off",
                                      "panel 1: Playback from " + path() + "   0.2k",
                                      "place: " + place("10:00:00", used)}));
    EXPECT_TRUE(m_bench.session.InPlayback);
    EXPECT_EQ(m_bench.playback.HistoryPosition(), used);
    EXPECT_EQ(m_bench.playback.HistoryFileSize(), m_size);
}

TEST_F(PlaybackEngineTest, opening_showsTheFirstScanOnTheChart) {
    open(head() + scans(2));
    EXPECT_TRUE(chart().Playback());
    EXPECT_EQ(chart().statusText(), "10:00:00");
    EXPECT_EQ(m_bench.session.ScanData, (LevelScan{'a', 'b', 'c'}));
}

TEST_F(PlaybackEngineTest, opening_fillsThePanelsAndLeavesDialogsAndUnit) {
    m_bench.connectUnit();
    m_bench.displaySettings.setPaletteIndex(4);
    QStringList lines = head();
    lines.insert(2, "Palette 1");
    lines.insert(2, "PersistenceOn True");
    lines.replaceInStrings("Poll 1000", "Poll 250");
    open(lines + scans(2));
    EXPECT_EQ(m_bench.ctlDataMode1.RBW(), 2);
    EXPECT_EQ(m_bench.ctlFrequency1.RX(), 1);
    EXPECT_EQ(chart().Poll(), 250);
    EXPECT_EQ(m_bench.commSettings.Poll(), 1000);
    EXPECT_EQ(m_bench.displaySettings.PaletteIndex(), 4);
    EXPECT_FALSE(m_bench.displaySettings.PersistenceEnable());
    EXPECT_FALSE(chart().Peak()); // the dialog's settings win at the block's end
    EXPECT_TRUE(m_bench.line.commands().filter("W").isEmpty());
}

TEST_F(PlaybackEngineTest, anyFirstLine_isTaken) {
    for (const char *first : {"", "nonsense", "StartSettings 1/1/1999", "Data ab 09:00:00"}) {
        PlaybackEngine &playback = m_bench.playback;
        QStringList lines = head();
        lines[0] = first;
        open(lines + scans(2));
        EXPECT_EQ(m_bench.session.ScanTime, "10:00:00") << first;
        EXPECT_EQ(playback.HistoryPosition(), sizeOf(lines + scans(1))) << first;
        playback.Quit();
    }
}

TEST_F(PlaybackEngineTest, unknownKeys_areIgnoredAndCounted) {
    const QStringList lines = head() + QStringList{"Comment 1", "", "Datum x"} + scans(2);
    open(lines);
    EXPECT_EQ(m_bench.playback.HistoryPosition(), sizeOf(lines) - sizeOf(scans(1)));
}

TEST_F(PlaybackEngineTest, missingFile_isUntrapped) {
    const auto error = errorOf([this] { open(); });
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(error->kind(), Kind::File);
    EXPECT_TRUE(error->message().contains(path()));
    EXPECT_TRUE(m_bench.log.isEmpty());
}

TEST_F(PlaybackEngineTest, emptyFile_isAFileError) {
    putBytes("");
    const auto error = errorOf([this] { open(); });
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(error->kind(), Kind::File);
}

TEST_F(PlaybackEngineTest, fileWithoutAStartLine_hasNoDate) {
    put(QStringList{"header"} + scans(2));
    expectOpenError(Kind::BadValue, atLine(2, "there is no StartSettings line with a date"));
}

TEST_F(PlaybackEngineTest, dateOfAnEarlierFile_isNotUsed) {
    open(head() + scans(2));
    m_bench.playback.Quit();
    put(QStringList{"header"} + scans(2));
    expectOpenError(Kind::BadValue, atLine(2, "there is no StartSettings line with a date"));
}

TEST_F(PlaybackEngineTest, dateOfAnotherLocale_isReadByThisOnesRules) {
    put(head("03/21/2005") + scans(2));
    expectOpenError(Kind::BadValue, atLine(10, "\"03/21/2005\" is not a date"));
    m_bench.playback.Quit();
    open(head("03/02/2005") + scans(2)); // the third of February elsewhere
    step(1);
    EXPECT_TRUE(m_bench.place.startsWith("03/02/2005 10:00:01"));
}

TEST_F(PlaybackEngineTest, firstScanWithABlank_leavesNoTime) {
    put(head() + QStringList{data("10:00:00", "a b")} + scans(1));
    expectOpenError(Kind::BadValue, atLine(10, "\"b 10:00:00\" is not a time of day"));
}

TEST_F(PlaybackEngineTest, scanLineWithoutABlankOrWithOneFirst_isUntrapped) {
    put(head() + QStringList{"Data abc"} + scans(1));
    expectOpenError(Kind::OutOfRange, atLine(10, "a scan line has no time behind its scan"));
    m_bench.playback.Quit();
    put(head() + QStringList{"Data  10:00:00"} + scans(1));
    expectOpenError(Kind::OutOfRange, atLine(10, "a scan line has no scan in it"));
}

TEST_F(PlaybackEngineTest, badValueInTheBlock_isUntrapped) {
    QStringList lines = head();
    lines.replaceInStrings("Centre 145500000", "Centre 145,5");
    put(lines + scans(2));
    expectOpenError(Kind::BadValue, atLine(6, "\"145,5\" is not a frequency in hertz"));
}

// ---- the state that a file without a following line leaves

std::vector<QStringList> strandingFiles() {
    const QStringList whole = {"VELDRONv1 History file", "StartSettings 21/03/2005", "RBW 3",
                               "EndSettings "};
    return {{"header only"}, whole, whole + QStringList{"Data ab 10:00:00"}};
}

TEST_F(PlaybackEngineTest, fileThatEndsBeforeOrAtItsFirstScan_isStranded) {
    for (const QStringList &lines : strandingFiles()) {
        m_bench.log.clear();
        open(lines);
        EXPECT_FALSE(m_bench.session.InPlayback);
        EXPECT_FALSE(chart().Playback());
        EXPECT_EQ(m_bench.log.mid(0, 2),
                  (QStringList{"transport visible on", "SetControlsEnabled off"}));
        EXPECT_TRUE(m_bench.log.filter("poll timer").isEmpty());
        EXPECT_TRUE(m_bench.log.filter("record enabled").isEmpty());
        EXPECT_TRUE(m_bench.log.filter("panel 1").isEmpty());
        EXPECT_TRUE(m_bench.log.filter("place").isEmpty());
    }
}

TEST_F(PlaybackEngineTest, steppingWhileStranded_onlyPausesTheTransport) {
    for (const QStringList &lines : strandingFiles()) {
        open(lines);
        m_bench.log.clear();
        step(1);
        step(-1);
        EXPECT_EQ(m_bench.log, (QStringList{"StopPlay", "StopPlay"}));
    }
}

TEST_F(PlaybackEngineTest, quitWhileStranded_returnsToIdle) {
    open(strandingFiles()[2]);
    m_bench.log.clear();
    m_bench.playback.Quit();
    EXPECT_EQ(m_bench.log,
              (QStringList{"poll timer on", "SetControlsEnabled on", "record enabled on",
                           "transport visible off", "panel 1: ", "clock and activity"}));
}

TEST_F(PlaybackEngineTest, loadingSettingsWhileStranded_reachesTheUnitAgain) {
    m_bench.connectUnit();
    open(strandingFiles()[0]);
    m_bench.log.clear();
    m_bench.load("RBW 4");
    EXPECT_EQ(m_bench.log, QStringList{"WSBW4"});
}

TEST_F(PlaybackEngineTest, recordingStartedWhileStranded_outlivesTheQuit) {
    open(strandingFiles()[1]);
    m_bench.dialogs.answer = m_folder.filePath("new.rec");
    m_bench.recorder.mnuFileRecord();
    m_bench.log.clear();
    m_bench.playback.Quit();
    EXPECT_TRUE(m_bench.session.Recording);
    EXPECT_TRUE(m_bench.log.contains("SetControlsEnabled off"));
    EXPECT_FALSE(m_bench.log.contains("SetControlsEnabled on"));
    m_bench.recorder.writeScan({'z'});
    m_bench.recorder.mnuFileRecord();
    QFile file(m_folder.filePath("new.rec"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().endsWith("Data z 10:00:00\r\n"));
}

TEST_F(PlaybackEngineTest, recordingOverTheStrandedFileItself_doesNoHarm) {
    open(strandingFiles()[1]);
    m_bench.recorder.mnuFileRecord();
    m_bench.recorder.writeScan({'z'});
    step(1);
    m_bench.playback.Quit();
    m_bench.recorder.mnuFileRecord();
    open();
    EXPECT_EQ(m_bench.session.ScanTime, "10:00:00"); // one scan, the last line: stranded again
    EXPECT_FALSE(m_bench.session.InPlayback);
}

TEST_F(PlaybackEngineTest, anotherFileWhileStranded_isShown) {
    open(strandingFiles()[0]);
    m_bench.recorder.closeStream();
    open(head() + scans(2));
    EXPECT_TRUE(m_bench.session.InPlayback);
    EXPECT_TRUE(chart().Playback());
}

TEST_F(PlaybackEngineTest, streamClosedTwice_doesNoHarm) {
    open(head() + scans(3));
    m_bench.playback.closeStream();
    m_bench.playback.closeStream();
    m_bench.log.clear();
    step(1);
    EXPECT_EQ(m_bench.log, QStringList{"StopPlay"});
    m_bench.playback.Quit();
    m_bench.playback.Quit();
    EXPECT_FALSE(m_bench.session.InPlayback);
}

// ---- leaving

TEST_F(PlaybackEngineTest, quit_goesThroughItsStepsInOrder) {
    m_bench.connectUnit();
    open(head() + scans(2));
    m_bench.log.clear();
    m_bench.playback.Quit();
    EXPECT_EQ(m_bench.log,
              (QStringList{"poll timer on", "SetControlsEnabled on", "record enabled on",
                           "transport visible off", "ReadBackSettings",
                           "panel 1: VELDRON connected on COM 1", "clock and activity"}));
    EXPECT_FALSE(m_bench.session.InPlayback);
    EXPECT_FALSE(chart().Playback());
}

TEST_F(PlaybackEngineTest, quitWithoutALink_readsNothingBack) {
    open(head() + scans(2));
    m_bench.log.clear();
    m_bench.playback.Quit();
    EXPECT_FALSE(m_bench.log.contains("ReadBackSettings"));
}

TEST_F(PlaybackEngineTest, quit_givesTheChartThePollRateOfTheDialog) {
    QStringList lines = head();
    lines.replaceInStrings("Poll 1000", "Poll 250");
    open(lines + scans(2));
    EXPECT_EQ(chart().Poll(), 250);
    m_bench.commSettings.setPoll(5000);
    m_bench.playback.Quit();
    EXPECT_EQ(chart().Poll(), 5000);
}

TEST_F(PlaybackEngineTest, clickWhileRecordingOrPlaying_opensNothing) {
    put(head() + scans(2));
    for (bool SessionState::*flag : {&SessionState::Recording, &SessionState::InPlayback}) {
        m_bench.session = SessionState();
        m_bench.session.*flag = true;
        open();
        EXPECT_TRUE(m_bench.log.isEmpty());
    }
}

} // namespace
} // namespace veldron
