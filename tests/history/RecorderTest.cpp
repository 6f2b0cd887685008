// SPDX-License-Identifier: MIT
#include "history/Recorder.h"

#include "common/UntrappedError.h"
#include "tests/support/FullDisk.h"
#include "tests/support/HistoryFixture.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <functional>
#include <unistd.h>
#include <utility>

namespace veldron {
namespace {

const QByteArray kHead = "VELDRONv1 History file\r\n"
                         "StartSettings 21/03/2005\r\n"
                         "PersistenceOn False\r\n"
                         "Persistence 5\r\n"
                         "WaterfallOn False\r\n"
                         "Palette 0\r\n"
                         "Update 10\r\n"
                         "MarkerOn False\r\n";
const QByteArray kUnitLines = "Poll 1000\r\n"
                              "MonitorMode 1\r\n"
                              "Span 10000000\r\n"
                              "Centre 145500000\r\n"
                              "Receiver VK3700(10M)\r\n"
                              "RXMode NFM\r\n"
                              "RXStep 25000\r\n"
                              "RXAtten False\r\n"
                              "RBW 1\r\n"
                              "Amp 0\r\n"
                              "DataMode 1\r\n"
                              "EndSettings \r\n";
const QStringList kStopped = {"caption Record", "SetControlsEnabled on"};

class RecorderTest : public testing::Test {
protected:
    RecorderTest() { m_fixture.dialogs.answer = path(); }
    [[nodiscard]] QString path() const { return m_folder.filePath("scans.rec"); }
    [[nodiscard]] QByteArray bytes() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }
    /// What stands behind the first block.
    [[nodiscard]] QByteArray tail() const { return bytes().mid((kHead + kUnitLines).size()); }
    void click() { m_fixture.recorder.mnuFileRecord(); }
    void start() {
        click();
        m_fixture.log.clear();
    }
    void scan(const LevelScan &levels) { m_fixture.recorder.writeScan(levels); }
    [[nodiscard]] QStringList takeLog() { return std::exchange(m_fixture.log, {}); }
    /// The recorder's file descriptor is taken away from under it.
    void breakDescriptor() const {
        const QDir folder("/proc/self/fd");
        for (const QString &name : folder.entryList(QDir::Files | QDir::System)) {
            if (QFileInfo(folder.filePath(name)).symLinkTarget() == path()) {
                ::close(name.toInt());
            }
        }
    }

    QTemporaryDir m_folder;
    HistoryFixture m_fixture;
};

TEST_F(RecorderTest, click_asksWithItsTexts) {
    m_fixture.dialogs.answer.reset();
    click();
    ASSERT_EQ(m_fixture.dialogs.saveRequests.size(), 1U);
    const FileRequest &request = m_fixture.dialogs.saveRequests[0];
    EXPECT_EQ(request.title, "Record to file");
    EXPECT_EQ(request.filter, "VELDRON History (*.rec)");
    EXPECT_EQ(request.folder, "the/program/folder");
    EXPECT_EQ(request.suffix, "rec");
}

TEST_F(RecorderTest, cancelInTheDialog_changesNothing) {
    m_fixture.dialogs.answer.reset();
    click();
    EXPECT_TRUE(m_fixture.log.isEmpty());
    EXPECT_FALSE(m_fixture.session.Recording);
    EXPECT_EQ(bytes(), "no file");
}

TEST_F(RecorderTest, start_writesHeaderAndFullBlockAndLocksTheForm) {
    click();
    EXPECT_EQ(bytes(), kHead + kUnitLines);
    EXPECT_TRUE(m_fixture.session.Recording);
    EXPECT_EQ(m_fixture.log, (QStringList{"caption Stop recording", "SetControlsEnabled off"}));
}

TEST_F(RecorderTest, existingFile_isReplaced) {
    {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(100000, 'x'));
    }
    click();
    EXPECT_EQ(bytes(), kHead + kUnitLines);
}

TEST_F(RecorderTest, stop_closesAndUnlocksTheForm) {
    start();
    click();
    EXPECT_FALSE(m_fixture.session.Recording);
    EXPECT_EQ(m_fixture.log, kStopped);
    EXPECT_EQ(m_fixture.dialogs.saveRequests.size(), 1U);
}

TEST_F(RecorderTest, scanOfNBytes_givesALineOfFiveAndNAndOneAndTheTime) {
    start();
    LevelScan levels;
    for (int level = 0; level < 321; ++level) {
        levels.push_back(static_cast<std::uint8_t>(level));
    }
    scan(levels);
    QByteArray expected = "Data ";
    for (int level = 0; level < 321; ++level) {
        expected += static_cast<char>(level);
    }
    expected += " 10:00:00\r\n";
    EXPECT_EQ(tail(), expected);
    EXPECT_EQ(expected.size(), 5 + 321 + 1 + 8 + 2);
}

TEST_F(RecorderTest, blanksAndLineBreaksInAScan_areWrittenAsTheyAre) {
    start();
    scan({'a', 32, 'b', 13, 'c', 10, 'd'});
    EXPECT_EQ(tail(), "Data a b\rc\nd 10:00:00\r\n");
}

TEST_F(RecorderTest, failedTransfer_writesItsSingleZero) {
    start();
    scan({0});
    EXPECT_EQ(tail(), QByteArray("Data \0 10:00:00\r\n", 17));
}

TEST_F(RecorderTest, unitThatSentNothing_writes325Zeros) {
    start();
    scan(LevelScan(325));
    EXPECT_EQ(tail(), "Data " + QByteArray(325, '\0') + " 10:00:00\r\n");
}

TEST_F(RecorderTest, twoScansInOneSecond_haveTheSameTime) {
    start();
    scan({'a'});
    m_fixture.clock.advance(0.9);
    scan({'b'});
    m_fixture.clock.advance(0.2);
    scan({'c'});
    EXPECT_EQ(tail(), "Data a 10:00:00\r\nData b 10:00:00\r\nData c 10:00:01\r\n");
}

TEST_F(RecorderTest, scan_isInTheFileAtOnce) {
    start();
    scan({'a'});
    EXPECT_TRUE(bytes().endsWith("Data a 10:00:00\r\n"));
    EXPECT_TRUE(m_fixture.session.Recording);
}

TEST_F(RecorderTest, headScanAndBlock_areEachForcedOntoTheDisk) {
    start();
    EXPECT_EQ(m_fixture.disk.forced, 1);
    EXPECT_EQ(m_fixture.disk.namesForced, 1);
    scan({'a'});
    EXPECT_EQ(m_fixture.disk.forced, 2);
    m_fixture.recorder.writeSettings();
    EXPECT_EQ(m_fixture.disk.forced, 3);
    EXPECT_EQ(m_fixture.disk.namesForced, 1);
}

TEST_F(RecorderTest, panelOne_showsNameAndSizeAfterEachScan) {
    start();
    scan(LevelScan(321, 'a'));
    EXPECT_EQ(takeLog(), QStringList{"panel 1: Recording to file " + path() + "   0.6k"});
    for (int i = 0; i < 10; ++i) {
        scan(LevelScan(321, 'a'));
    }
    EXPECT_EQ(m_fixture.status, "Recording to file " + path() + "   3.9k");
}

TEST_F(RecorderTest, fileBeyondTwoGigabytes_hasItsSizeShown) {
    constexpr qint64 kSize = 3LL << 30;
    start();
    ASSERT_TRUE(QFile::resize(path(), kSize)); // takes no room on the disk
    scan({'a'});
    EXPECT_EQ(m_fixture.status, "Recording to file " + path() + "   3072.0M");
}

TEST_F(RecorderTest, settingsChange_addsAShortBlockBetweenTwoScans) {
    start();
    scan({'a'});
    m_fixture.load("RBW 4");
    m_fixture.ReadBackSettings();
    scan({'b'});
    QByteArray block = "StartSettings 21/03/2005\r\n" + kUnitLines;
    block.replace("RBW 1", "RBW 4");
    EXPECT_EQ(tail(), "Data a 10:00:00\r\n" + block + "Data b 10:00:00\r\n");
}

TEST_F(RecorderTest, readBackAfterMidnight_putsTheNewDateAheadOfTheNextScan) {
    m_fixture.clock.setTimeOfDay(86399.5);
    start();
    scan({'a'});
    m_fixture.clock.advance(1.0);
    m_fixture.ReadBackSettings();
    scan({'b'});
    EXPECT_EQ(tail(), "Data a 23:59:59\r\nStartSettings 22/03/2005\r\n" + kUnitLines +
                          "Data b 00:00:00\r\n");
}

TEST_F(RecorderTest, readBackWhileIdle_writesNothing) {
    start();
    click();
    m_fixture.recorder.writeSettings();
    EXPECT_EQ(tail(), "");
}

TEST_F(RecorderTest, secondRecording_startsInFullFormAgain) {
    start();
    click();
    click();
    EXPECT_EQ(bytes(), kHead + kUnitLines);
    EXPECT_TRUE(m_fixture.session.Recording);
}

TEST_F(RecorderTest, pathThatCannotBeMade_isUntrapped) {
    m_fixture.dialogs.answer = m_folder.filePath("no/such/folder.rec");
    EXPECT_THROW(click(), UntrappedError);
    EXPECT_FALSE(m_fixture.session.Recording);
    EXPECT_TRUE(m_fixture.log.isEmpty());
}

TEST_F(RecorderTest, headThatCannotBeWritten_isUntrapped) {
    m_fixture.dialogs.answer = "/dev/full";
    EXPECT_THROW(click(), UntrappedError);
    EXPECT_FALSE(m_fixture.session.Recording);
}

TEST_F(RecorderTest, blockThatCannotBeWrittenAtTheStart_isUntrapped) {
    const FullDisk disk(60);
    EXPECT_THROW(click(), UntrappedError);
    EXPECT_FALSE(m_fixture.session.Recording);
}

TEST_F(RecorderTest, diskFullAtAScan_stopsAndKeepsTheScansWrittenSoFar) {
    start();
    scan({'a'});
    (void)takeLog();
    {
        const FullDisk disk(static_cast<rlim_t>(QFileInfo(path()).size()) + 10);
        scan(LevelScan(321, 'b'));
    }
    EXPECT_FALSE(m_fixture.session.Recording);
    EXPECT_EQ(takeLog(), kStopped);
    EXPECT_EQ(tail(), "Data a 10:00:00\r\n");
}

TEST_F(RecorderTest, diskFullAtASettingsBlock_stopsTheRecording) {
    start();
    scan({'a'});
    (void)takeLog();
    {
        const FullDisk disk(static_cast<rlim_t>(QFileInfo(path()).size()) + 40);
        m_fixture.recorder.writeSettings();
    }
    EXPECT_EQ(takeLog(), kStopped);
    EXPECT_EQ(tail(), "Data a 10:00:00\r\nStartSettings 21/03/2005\r\nPoll 1000\r\n");
}

TEST_F(RecorderTest, diskThatFailsAfterAScanWasTaken_stopsAndKeepsTheScan) {
    start();
    m_fixture.disk.error = QStringLiteral("Input/output error");
    scan({'a'});
    EXPECT_FALSE(m_fixture.session.Recording);
    EXPECT_EQ(m_fixture.log, kStopped);
    EXPECT_EQ(tail(), "Data a 10:00:00\r\n");
}

TEST_F(RecorderTest, diskThatFailsAtTheStart_isUntrapped) {
    m_fixture.disk.error = QStringLiteral("Input/output error");
    EXPECT_THROW(click(), UntrappedError);
    EXPECT_FALSE(m_fixture.session.Recording);
}

TEST_F(RecorderTest, folderThatCannotBeForcedAtTheStart_isUntrapped) {
    m_fixture.disk.nameError = QStringLiteral("Input/output error");
    EXPECT_THROW(click(), UntrappedError);
    EXPECT_FALSE(m_fixture.session.Recording);
    EXPECT_EQ(m_fixture.disk.namesForced, 1);
    EXPECT_TRUE(m_fixture.log.isEmpty());
}

TEST_F(RecorderTest, fileRemovedUnderTheRecorder_stopsAtTheSecondOpen) {
    start();
    QFile::remove(path());
    scan({'a'});
    EXPECT_FALSE(m_fixture.session.Recording);
    EXPECT_EQ(m_fixture.log, kStopped);
}

TEST_F(RecorderTest, closeErrorInAStop_skipsTheRestAndShowsNothing) {
    start();
    breakDescriptor();
    click();
    EXPECT_TRUE(m_fixture.session.Recording);
    EXPECT_TRUE(m_fixture.log.isEmpty());
    click(); // the file is closed by now
    EXPECT_FALSE(m_fixture.session.Recording);
    EXPECT_EQ(m_fixture.log, kStopped);
}

TEST_F(RecorderTest, streamClosedUnderTheRecorder_stopsAtTheNextScan) {
    start();
    m_fixture.recorder.closeStream();
    m_fixture.recorder.closeStream();
    EXPECT_TRUE(m_fixture.session.Recording);
    scan({'a'});
    EXPECT_FALSE(m_fixture.session.Recording);
    EXPECT_EQ(m_fixture.log, kStopped);
    EXPECT_EQ(tail(), "");
}

/// A poll may start or stop things while the dialog is up.
class BusyDialogs : public ScriptedFileDialogs {
public:
    std::function<void()> meanwhile;
    std::optional<QString> saveFile(const FileRequest &request) override {
        meanwhile();
        return ScriptedFileDialogs::saveFile(request);
    }
};

TEST_F(RecorderTest, playbackOrRecordingBegunUnderTheDialog_leavesTheFileAlone) {
    for (bool SessionState::*flag : {&SessionState::Recording, &SessionState::InPlayback}) {
        BusyDialogs dialogs;
        dialogs.answer = path();
        dialogs.meanwhile = [&] {
            m_fixture.session.*flag = true;
        };
        m_fixture.session = SessionState();
        Recorder recorder({m_fixture.session, m_fixture.lines, m_fixture, dialogs, m_fixture.clock,
                           m_fixture.texts, QString()});
        recorder.mnuFileRecord();
        EXPECT_EQ(bytes(), "no file");
        EXPECT_TRUE(m_fixture.log.isEmpty());
    }
}

TEST(Recorder, americanTime_standsBehindTheScanWithItsBlank) {
    const QTemporaryDir folder;
    HistoryFixture fixture(QLocale(QLocale::English, QLocale::UnitedStates));
    fixture.dialogs.answer = folder.filePath("us.rec");
    fixture.recorder.mnuFileRecord();
    fixture.clock.setTimeOfDay(14.0 * 3600.0);
    fixture.recorder.writeScan({'a'});
    QFile file(folder.filePath("us.rec"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().endsWith("Data a 2:00:00 PM\r\n"));
}

} // namespace
} // namespace veldron
