// SPDX-License-Identifier: MIT
#include "settings/SettingsFiles.h"

#include "common/UntrappedError.h"
#include "tests/support/FullDisk.h"
#include "tests/support/SettingsFixture.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <functional>
#include <stdexcept>

namespace veldron {
namespace {

const QByteArray kWholeFile = "VELDRONv1 Settings\r\n"
                              "StartSettings 21/03/2005\r\n"
                              "PersistenceOn False\r\n"
                              "Persistence 5\r\n"
                              "WaterfallOn False\r\n"
                              "Palette 0\r\n"
                              "Update 10\r\n"
                              "MarkerOn False\r\n"
                              "Poll 1000\r\n"
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

class SettingsFilesTest : public testing::Test {
protected:
    [[nodiscard]] QString path(const char *name) const {
        return m_folder.filePath(QString::fromLatin1(name));
    }
    void put(const char *name, const QByteArray &bytes) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    [[nodiscard]] QByteArray bytesOf(const char *name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }
    void answer(const char *name) { m_dialogs.answer = path(name); }

    QTemporaryDir m_folder;
    SettingsFixture m_fixture;
    ScriptedFileDialogs m_dialogs;
    SettingsFiles m_files{m_fixture.lines, m_dialogs, m_folder.path()};
};

TEST_F(SettingsFilesTest, saveClick_writesHeaderAndBlock) {
    answer("mine.set");
    m_files.mnuFileSaveSettings();
    EXPECT_EQ(bytesOf("mine.set"), kWholeFile);
}

TEST_F(SettingsFilesTest, saveClick_asksWithItsTexts) {
    m_files.mnuFileSaveSettings();
    ASSERT_EQ(m_dialogs.saveRequests.size(), 1U);
    const FileRequest &request = m_dialogs.saveRequests[0];
    EXPECT_EQ(request.title, "Save Settings");
    EXPECT_EQ(request.filter, "VELDRON Settings (*.set)");
    EXPECT_EQ(request.folder, m_folder.path());
    EXPECT_EQ(request.suffix, "set");
}

TEST_F(SettingsFilesTest, loadClick_asksWithItsTexts) {
    m_files.mnuFileLoadSettings();
    ASSERT_EQ(m_dialogs.openRequests.size(), 1U);
    const FileRequest &request = m_dialogs.openRequests[0];
    EXPECT_EQ(request.title, "Load Settings");
    EXPECT_EQ(request.filter, "VELDRON Settings (*.set)");
    EXPECT_EQ(request.folder, m_folder.path());
}

TEST_F(SettingsFilesTest, cancelInEitherDialog_changesNothing) {
    const QStringList before = m_fixture.state();
    m_files.mnuFileSaveSettings();
    m_files.mnuFileLoadSettings();
    EXPECT_TRUE(QDir(m_folder.path()).isEmpty());
    EXPECT_EQ(m_fixture.state(), before);
    EXPECT_TRUE(m_fixture.log.isEmpty());
}

TEST_F(SettingsFilesTest, saveWhileRecording_writesTheShortBlock) {
    m_fixture.session.Recording = true;
    m_files.SaveDefaultSettings();
    EXPECT_TRUE(bytesOf("VELDRON.set")
                    .startsWith("VELDRONv1 Settings\r\n"
                                "StartSettings 21/03/2005\r\n"
                                "Poll 1000\r\n"));
}

TEST_F(SettingsFilesTest, saveInPlayback_writesThePanelsAsTheyStand) {
    m_fixture.session.InPlayback = true;
    m_fixture.load("RBW 4");
    m_files.SaveDefaultSettings();
    EXPECT_TRUE(bytesOf("VELDRON.set").contains("RBW 4\r\n"));
}

TEST_F(SettingsFilesTest, loadClick_appliesAllLinesButTheFirst) {
    put("mine.set", "RBW 2\r\nAmp -10\r\nRBW 3\r\nEndSettings ");
    answer("mine.set");
    m_fixture.connectUnit();
    m_files.mnuFileLoadSettings();
    EXPECT_EQ(m_fixture.log, (QStringList{"WSGN-10", "WSBW3", "ReadBackSettings"}));
}

TEST_F(SettingsFilesTest, everyLineEnd_isRead) {
    put("mine.set", "header\nRBW 2\rAmp -10\r\nDataMode 3");
    answer("mine.set");
    m_files.mnuFileLoadSettings();
    EXPECT_EQ(m_fixture.ctlDataMode1.RBW(), 2);
    EXPECT_EQ(m_fixture.ctlDataMode1.Amp(), -10);
    EXPECT_EQ(m_fixture.ctlDataMode1.DataMode(), DataModeCode::Max);
}

TEST_F(SettingsFilesTest, twoBlocksInOneFile_areBothAppliedWithTheirWaits) {
    put("mine.set", "h\r\nMonitorMode 1\r\nEndSettings \r\nMonitorMode 2\r\nEndSettings \r\n");
    answer("mine.set");
    m_fixture.connectUnit();
    m_files.mnuFileLoadSettings();
    EXPECT_EQ(m_fixture.log, (QStringList{"wait 1.0", "WUOM1", "ReadBackSettings", "wait 1.0",
                                          "WUOM2", "ReadBackSettings"}));
}

TEST_F(SettingsFilesTest, historyFileInTheLoadDialog_loadsWithAllItsBlocks) {
    put("scans.rec", "VELDRONv1 History file\r\nRBW 2\r\nEndSettings \r\nData ab 10:00:00\r\n"
                     "RBW 4\r\nEndSettings \r\nData cd 10:00:01\r\n");
    answer("scans.rec");
    m_fixture.connectUnit();
    m_files.mnuFileLoadSettings();
    EXPECT_EQ(m_fixture.log,
              (QStringList{"WSBW2", "ReadBackSettings", "WSBW4", "ReadBackSettings"}));
}

TEST_F(SettingsFilesTest, fileOfTheHeaderAlone_changesNothing) {
    put("mine.set", "VELDRONv1 Settings\r\n");
    answer("mine.set");
    const QStringList before = m_fixture.state();
    m_files.mnuFileLoadSettings();
    EXPECT_EQ(m_fixture.state(), before);
}

TEST_F(SettingsFilesTest, emptyFileInAMenuLoad_isAFileError) {
    put("mine.set", "");
    answer("mine.set");
    EXPECT_THROW(m_files.mnuFileLoadSettings(), UntrappedError);
}

TEST_F(SettingsFilesTest, cutRecordingInTheLoadDialog_isToldToEndInAScan) {
    put("scans.rec", "VELDRONv1 History file\r\nRBW 2\r\nData ab");
    answer("scans.rec");
    try {
        m_files.mnuFileLoadSettings();
        FAIL();
    } catch (const UntrappedError &error) {
        EXPECT_EQ(error.message(), "Line 3 of the file \"" + path("scans.rec") +
                                       "\": the file ends in the middle of a scan.");
    }
}

TEST_F(SettingsFilesTest, folderAndDeviceInTheLoadDialog_areRefused) {
    for (const QString &name : {m_folder.path(), QString("/dev/zero")}) {
        m_dialogs.answer = name;
        EXPECT_THROW(m_files.mnuFileLoadSettings(), UntrappedError) << name.toStdString();
    }
}

TEST_F(SettingsFilesTest, fileErrorAfterADialog_isUntrapped) {
    answer("no/such.set");
    EXPECT_THROW(m_files.mnuFileSaveSettings(), UntrappedError);
    EXPECT_THROW(m_files.mnuFileLoadSettings(), UntrappedError);
}

TEST_F(SettingsFilesTest, badValueInAMenuLoad_tellsFileAndLineAndKeepsWhatWasApplied) {
    put("mine.set", "header\r\nRBW 2\r\nCentre here\r\nAmp -10\r\n");
    answer("mine.set");
    try {
        m_files.mnuFileLoadSettings();
        FAIL();
    } catch (const UntrappedError &error) {
        EXPECT_EQ(error.kind(), UntrappedError::Kind::BadValue);
        EXPECT_EQ(error.message(), "Line 3 of the file \"" + path("mine.set") +
                                       "\": \"here\" is not a frequency in hertz.");
    }
    EXPECT_EQ(m_fixture.ctlDataMode1.RBW(), 2);
    EXPECT_EQ(m_fixture.ctlDataMode1.Amp(), 0);
}

TEST_F(SettingsFilesTest, placeMarksInTheNameOrTheValue_areLeftAlone) {
    put("50%1%2.set", "header\r\nCentre %3\r\n");
    answer("50%1%2.set");
    try {
        m_files.mnuFileLoadSettings();
        FAIL();
    } catch (const UntrappedError &error) {
        EXPECT_EQ(error.message(), "Line 2 of the file \"" + path("50%1%2.set") +
                                       "\": \"%3\" is not a frequency in hertz.");
    }
}

TEST_F(SettingsFilesTest, defaultFile_isTheOneInTheProgramFolder) {
    m_files.SaveDefaultSettings();
    EXPECT_EQ(bytesOf("VELDRON.set"), kWholeFile);
}

TEST_F(SettingsFilesTest, lastConnectedFile_hasTheFormOfTheDefaultFileAndANameOfItsOwn) {
    put("VELDRON.set", "old");
    m_files.saveLastConnected(m_fixture.lines.block());
    EXPECT_EQ(bytesOf("VELDRON-last-connected.set"), kWholeFile);
    EXPECT_EQ(bytesOf("VELDRON.set"), "old");
}

TEST_F(SettingsFilesTest, defaultSaveAndLoad_leaveTheLastConnectedFileAlone) {
    put("VELDRON-last-connected.set", "header\r\nRBW 4\r\n");
    m_files.SaveDefaultSettings();
    m_files.LoadDefaultSettings();
    EXPECT_EQ(bytesOf("VELDRON-last-connected.set"), "header\r\nRBW 4\r\n");
    EXPECT_EQ(m_fixture.ctlDataMode1.RBW(), 1);
}

TEST_F(SettingsFilesTest, lastConnectedFile_comesBackByLoadSettings) {
    m_fixture.loadAll({"Palette 4", "RBW 3", "Centre 7000000"});
    m_files.saveLastConnected(m_fixture.lines.block());
    SettingsFixture next;
    answer("VELDRON-last-connected.set");
    SettingsFiles(next.lines, m_dialogs, m_folder.path()).mnuFileLoadSettings();
    EXPECT_EQ(next.saved(), m_fixture.saved());
}

TEST_F(SettingsFilesTest, lastConnectedFileThatCannotBeWritten_isSilentAndKeepsTheOldOne) {
    SettingsFiles(m_fixture.lines, m_dialogs, path("missing"))
        .saveLastConnected(m_fixture.lines.block());
    EXPECT_FALSE(QFile::exists(path("missing")));
    put("VELDRON-last-connected.set", "old");
    {
        const FullDisk disk(100);
        m_files.saveLastConnected(m_fixture.lines.block());
    }
    EXPECT_EQ(bytesOf("VELDRON-last-connected.set"), "old");
}

TEST_F(SettingsFilesTest, defaultFile_comesBackAtTheNextStart) {
    m_fixture.loadAll({"Palette 4", "RBW 3", "Centre 7000000"});
    m_files.SaveDefaultSettings();
    SettingsFixture next;
    SettingsFiles(next.lines, m_dialogs, m_folder.path()).LoadDefaultSettings();
    EXPECT_EQ(next.saved(), m_fixture.saved());
}

TEST_F(SettingsFilesTest, noDefaultFile_isSilent) {
    const QStringList before = m_fixture.state();
    m_files.LoadDefaultSettings();
    EXPECT_EQ(m_fixture.state(), before);
}

TEST_F(SettingsFilesTest, badLineInTheDefaultFile_endsTheLoadSilentlyThere) {
    put("VELDRON.set", "header\r\nRBW 2\r\nData nothing\r\nAmp -10\r\n");
    m_files.LoadDefaultSettings();
    EXPECT_EQ(m_fixture.ctlDataMode1.RBW(), 2);
    EXPECT_EQ(m_fixture.ctlDataMode1.Amp(), 0);
}

TEST_F(SettingsFilesTest, defaultFileThatCannotBeWritten_isSilent) {
    SettingsFiles files(m_fixture.lines, m_dialogs, path("missing"));
    files.SaveDefaultSettings();
    EXPECT_FALSE(QFile::exists(path("missing")));
}

/// Runs onNow when it is asked for the date, which is the first thing in writing a block.
class WatchingClock : public ManualClock {
public:
    using ManualClock::ManualClock;
    std::function<void()> onNow;
    QDateTime now() override {
        onNow();
        return ManualClock::now();
    }
};

TEST_F(SettingsFilesTest, oldFile_standsUntilTheNewOneIsWhole) {
    put("VELDRON.set", "old");
    QByteArray seen;
    WatchingClock clock(0.0);
    clock.onNow = [&] {
        seen = bytesOf("VELDRON.set");
    };
    SettingsLines lines(m_fixture.holders, m_fixture.session, m_fixture, clock, m_fixture.texts);
    SettingsFiles(lines, m_dialogs, m_folder.path()).SaveDefaultSettings();
    EXPECT_EQ(seen, "old");
    EXPECT_TRUE(bytesOf("VELDRON.set").startsWith("VELDRONv1 Settings\r\n"));
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList{"VELDRON.set"});
}

TEST_F(SettingsFilesTest, errorInTheMiddleOfASave_keepsTheOldFile) {
    put("VELDRON.set", "old");
    WatchingClock clock(0.0);
    clock.onNow = [] {
        throw UntrappedError(UntrappedError::Kind::File, "the disk is full");
    };
    SettingsLines lines(m_fixture.holders, m_fixture.session, m_fixture, clock, m_fixture.texts);
    SettingsFiles(lines, m_dialogs, m_folder.path()).SaveDefaultSettings();
    EXPECT_EQ(bytesOf("VELDRON.set"), "old");
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList{"VELDRON.set"});
}

TEST_F(SettingsFilesTest, otherExceptionInASilentSave_isTrappedToo) {
    WatchingClock clock(0.0);
    int blocks = 0;
    clock.onNow = [&blocks] {
        ++blocks;
        throw std::runtime_error("no memory");
    };
    SettingsLines lines(m_fixture.holders, m_fixture.session, m_fixture, clock, m_fixture.texts);
    SettingsFiles files(lines, m_dialogs, m_folder.path());
    files.SaveDefaultSettings();
    EXPECT_EQ(blocks, 1);
    EXPECT_TRUE(QDir(m_folder.path()).isEmpty());
}

/// Fails at the end of a block.
class FailingFixture : public SettingsFixture {
public:
    int blocks = 0;
    void UpdateChartSettings() override {
        ++blocks;
        throw std::runtime_error("no memory");
    }
};

TEST_F(SettingsFilesTest, otherExceptionInTheSilentLoad_isTrappedToo) {
    put("VELDRON.set", "header\r\nRBW 2\r\nEndSettings \r\nAmp -10\r\n");
    FailingFixture fixture;
    SettingsFiles(fixture.lines, m_dialogs, m_folder.path()).LoadDefaultSettings();
    EXPECT_EQ(fixture.blocks, 1);
    EXPECT_EQ(fixture.ctlDataMode1.RBW(), 2);
    EXPECT_EQ(fixture.ctlDataMode1.Amp(), 0);
}

TEST_F(SettingsFilesTest, menuSaveOnAFullDisk_isAnUntrappedFileErrorAndKeepsTheOldFile) {
    for (const rlim_t room : {0U, 100U}) {
        put("mine.set", "old");
        answer("mine.set");
        {
            const FullDisk disk(room);
            try {
                m_files.mnuFileSaveSettings();
                ADD_FAILURE() << "saved on a full disk";
            } catch (const UntrappedError &error) {
                EXPECT_EQ(error.kind(), UntrappedError::Kind::File);
            }
        }
        EXPECT_EQ(bytesOf("mine.set"), "old");
        EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList{"mine.set"});
    }
}

TEST_F(SettingsFilesTest, defaultSaveOnAFullDisk_isSilentAndKeepsTheOldFile) {
    for (const rlim_t room : {0U, 100U}) {
        put("VELDRON.set", "old");
        {
            const FullDisk disk(room);
            m_files.SaveDefaultSettings();
        }
        EXPECT_EQ(bytesOf("VELDRON.set"), "old");
        EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList{"VELDRON.set"});
    }
}

} // namespace
} // namespace veldron
