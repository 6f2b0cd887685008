// SPDX-License-Identifier: MIT
// Opening, leaving, and the states between.
#include "history/PlaybackEngine.h"

#include "tests/support/HistoryFiles.h"

#include <QStatusBar>

namespace veldron {
namespace {

using PlaybackEngineTest = PlaybackTest;

TEST_F(PlaybackEngineTest, click_asksWithItsTexts) {
    m_fixture.playback.mnuFilePlayback();
    ASSERT_EQ(m_fixture.dialogs.openRequests.size(), 1U);
    const FileRequest &request = m_fixture.dialogs.openRequests[0];
    EXPECT_EQ(request.title, "History playback");
    EXPECT_EQ(request.filter, "VELDRON History (*.rec)");
    EXPECT_EQ(request.folder, "the/program/folder");
}

TEST_F(PlaybackEngineTest, cancelInTheDialog_changesNothing) {
    const QStringList before = m_fixture.state();
    m_fixture.playback.mnuFilePlayback();
    EXPECT_TRUE(m_fixture.log.isEmpty());
    EXPECT_FALSE(m_fixture.session.InPlayback);
    EXPECT_EQ(m_fixture.state(), before);
}

TEST_F(PlaybackEngineTest, opening_goesThroughItsStepsInOrder) {
    open(head() + scans(2));
    const qint64 used = sizeOf(head()) + sizeOf(scans(1));
    EXPECT_EQ(takeLog(),
              (QStringList{"transport visible on", "SetControlsEnabled off", "UpdateChartSettings",
                           "poll timer off", "record enabled off",
                           "panel 1: Playback from " + path() + "   0.2k", "no clock and activity",
                           "place: " + place("10:00:00", used)}));
    EXPECT_TRUE(m_fixture.session.InPlayback);
}

TEST_F(PlaybackEngineTest, opening_showsTheFirstScanOnTheChart) {
    open(head() + scans(2));
    EXPECT_TRUE(chart().Playback());
    EXPECT_EQ(chartStatus(), "10:00:00");
    EXPECT_TRUE(shows({'a', 'b', 'c'}));
}

TEST_F(PlaybackEngineTest, opening_fillsThePanelsAndLeavesDialogsAndUnit) {
    m_fixture.connectUnit();
    m_fixture.displaySettings.setValues({.PaletteIndex = 4});
    QStringList lines = head();
    lines.insert(2, "Palette 1");
    lines.insert(2, "PersistenceOn True");
    lines.replaceInStrings("Poll 1000", "Poll 250");
    open(lines + scans(2));
    EXPECT_EQ(m_fixture.ctlDataMode1.RBW(), 2);
    EXPECT_EQ(m_fixture.ctlFrequency1.RX(), 1);
    EXPECT_EQ(chart().Poll(), 250);
    EXPECT_EQ(m_fixture.commSettings.Poll(), 1000);
    EXPECT_EQ(m_fixture.displaySettings.values().PaletteIndex, 4);
    EXPECT_FALSE(m_fixture.displaySettings.values().PersistenceEnable);
    EXPECT_FALSE(chart().Peak()); // the dialog's settings win at the block's end
    EXPECT_TRUE(m_fixture.line.commands().filter("W").isEmpty());
}

TEST_F(PlaybackEngineTest, anyFirstLine_isTaken) {
    for (const char *first : {"", "nonsense", "StartSettings 1/1/1999", "Data ab 09:00:00"}) {
        QStringList lines = head();
        lines[0] = first;
        open(lines + scans(2));
        EXPECT_EQ(m_fixture.place, place("10:00:00", sizeOf(lines + scans(1)))) << first;
        m_fixture.playback.Quit();
    }
}

TEST_F(PlaybackEngineTest, unknownKeys_areIgnoredAndCounted) {
    const QStringList lines = head() + QStringList{"Comment 1", "", "Datum x"} + scans(2);
    open(lines);
    EXPECT_EQ(m_fixture.place, place("10:00:00", sizeOf(lines) - sizeOf(scans(1))));
}

TEST_F(PlaybackEngineTest, streamClosedTwice_doesNoHarm) {
    open(head() + scans(3));
    m_fixture.playback.closeStream();
    m_fixture.playback.closeStream();
    m_fixture.log.clear();
    step(1);
    EXPECT_EQ(m_fixture.log, QStringList{"StopPlay"});
    m_fixture.playback.Quit();
    m_fixture.playback.Quit();
    EXPECT_FALSE(m_fixture.session.InPlayback);
}

// ---- leaving

TEST_F(PlaybackEngineTest, quit_goesThroughItsStepsInOrder) {
    m_fixture.connectUnit();
    open(head() + scans(2));
    m_fixture.log.clear();
    m_fixture.playback.Quit();
    EXPECT_EQ(m_fixture.log,
              (QStringList{"poll timer on", "SetControlsEnabled on", "record enabled on",
                           "transport visible off", "ReadBackSettings",
                           "panel 1: VELDRON connected on COM 1", "clock and activity"}));
    EXPECT_FALSE(m_fixture.session.InPlayback);
    EXPECT_FALSE(chart().Playback());
}

/// Notes the session while the window is laid out anew, because slots run then and look at it.
class LayoutFixture : public HistoryFixture {
public:
    QList<bool> inPlayback;
    void showTransport(bool visible) override {
        HistoryFixture::showTransport(visible);
        inPlayback.append(session.InPlayback);
    }
};

TEST_F(PlaybackEngineTest, windowLaidOutAnew_isInPlaybackAsLongAsItShowsTheTransport) {
    put(head() + scans(2));
    LayoutFixture fixture;
    fixture.dialogs.answer = path();
    fixture.playback.mnuFilePlayback();
    fixture.playback.Quit();
    EXPECT_EQ(fixture.inPlayback, (QList<bool>{true, false}));
}

TEST_F(PlaybackEngineTest, quitWithoutALink_readsNothingBack) {
    open(head() + scans(2));
    m_fixture.log.clear();
    m_fixture.playback.Quit();
    EXPECT_FALSE(m_fixture.log.contains("ReadBackSettings"));
}

TEST_F(PlaybackEngineTest, quit_givesTheChartThePollRateOfTheDialog) {
    QStringList lines = head();
    lines.replaceInStrings("Poll 1000", "Poll 250");
    open(lines + scans(2));
    EXPECT_EQ(chart().Poll(), 250);
    m_fixture.commSettings.setPoll(5000);
    m_fixture.playback.Quit();
    EXPECT_EQ(chart().Poll(), 5000);
}

// ---- an error in a slot ends the program, and closes the file, below a call of the engine

/// Closes the file at the end of a block, as such an error does, and may throw there as well.
class EndingFixture : public HistoryFixture {
public:
    bool ends = true;
    std::optional<UntrappedError> error;
    void UpdateChartSettings() override {
        HistoryFixture::UpdateChartSettings();
        if (ends) {
            playback.closeStream();
        }
        if (error) {
            throw *error;
        }
    }
};

TEST_F(PlaybackEngineTest, fileClosedByABlockOfTheOpening_endsTheOpening) {
    put(head() + scans(2));
    EndingFixture fixture;
    fixture.dialogs.answer = path();
    fixture.playback.mnuFilePlayback();
    EXPECT_EQ(fixture.log, (QStringList{"transport visible on", "SetControlsEnabled off",
                                        "UpdateChartSettings"}));
}

TEST_F(PlaybackEngineTest, fileClosedByABlockOfAStep_endsTheStep) {
    put(head() + scans(1) + head() + scans(2));
    EndingFixture fixture;
    fixture.dialogs.answer = path();
    fixture.ends = false;
    fixture.playback.mnuFilePlayback();
    fixture.log.clear();
    fixture.ends = true;
    fixture.step(1);
    EXPECT_EQ(fixture.log, (QStringList{"UpdateChartSettings", "StopPlay"}));
}

TEST_F(PlaybackEngineTest, errorOfALineThatHasClosedTheFile_isPassedOnAsItIs) {
    put(head() + scans(2));
    EndingFixture fixture;
    fixture.dialogs.answer = path();
    fixture.error = UntrappedError(UntrappedError::Kind::BadValue, "it can't be shown");
    const auto error = errorOf([&] { fixture.playback.mnuFilePlayback(); });
    expectError(error, UntrappedError::Kind::BadValue, "it can't be shown");
}

TEST_F(PlaybackEngineTest, fileClosedWhileTheChartIsFed_endsTheOpening) {
    QObject::connect(chart().findChild<QStatusBar *>(), &QStatusBar::messageChanged, &chart(),
                     [this] { m_fixture.playback.closeStream(); });
    open(head() + scans(2));
    EXPECT_EQ(m_fixture.log.last(), "record enabled off");
    EXPECT_TRUE(m_fixture.place.isEmpty());
}

TEST_F(PlaybackEngineTest, fileClosedWhileTheChartIsFed_endsTheStep) {
    // The same time twice: to show the place would be an error in the file.
    open(head() + QStringList{data("10:00:00"), data("10:00:00")} + scans(1));
    chart().findChild<QStatusBar *>()->clearMessage();
    QObject::connect(chart().findChild<QStatusBar *>(), &QStatusBar::messageChanged, &chart(),
                     [this] { m_fixture.playback.closeStream(); });
    m_fixture.log.clear();
    step(1);
    EXPECT_TRUE(m_fixture.log.isEmpty());
}

TEST_F(PlaybackEngineTest, clickWhileRecordingOrPlaying_opensNothing) {
    put(head() + scans(2));
    for (bool SessionState::*flag : {&SessionState::Recording, &SessionState::InPlayback}) {
        m_fixture.session = SessionState();
        m_fixture.session.*flag = true;
        open();
        EXPECT_TRUE(m_fixture.log.isEmpty());
    }
}

} // namespace
} // namespace veldron
