// SPDX-License-Identifier: MIT
#include "common/TextFile.h"

#include "common/UntrappedError.h"
#include "tests/support/FullDisk.h"
#include "tests/support/NoCreation.h"
#include "tests/support/PlainUser.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veldron {
namespace {

/// A disk that notes its calls and breaks when it is told to.
class BreakingDisk : public Disk {
public:
    QString force(QFileDevice & /*file*/) override {
        calls += QStringLiteral("content");
        return contentError;
    }
    QString forceName(const QString &path) override {
        calls += QStringLiteral("name");
        names += path;
        return nameError;
    }
    QStringList calls;
    QStringList names;
    QString contentError;
    QString nameError;
};

class TextFileTest : public testing::Test {
protected:
    static TextFileReader reading(const QByteArray &bytes) {
        auto buffer = std::make_unique<QBuffer>();
        buffer->setData(bytes);
        buffer->open(QIODevice::ReadOnly);
        return TextFileReader(std::move(buffer));
    }
    static QStringList linesOf(const QByteArray &bytes) {
        TextFileReader reader = reading(bytes);
        QStringList lines;
        while (!reader.atEnd()) {
            lines += reader.readLine();
        }
        return lines;
    }
    [[nodiscard]] QString path(const char *name) const {
        return m_folder.filePath(QString::fromLatin1(name));
    }
    static QByteArray bytesOf(const QString &path) {
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        return file.readAll();
    }

    void writeOld() const {
        QFile file(path("s.set"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("old\r\n");
    }
    void expectOldFileAlone() const {
        EXPECT_EQ(bytesOf(path("s.set")), "old\r\n");
        EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList{"s.set"});
    }

    QTemporaryDir m_folder;
};

TEST_F(TextFileTest, eachKindOfLineEnd_endsALine) {
    const struct {
        QByteArray bytes;
        QStringList lines;
    } cases[] = {{"a\r\nb\r\n", {"a", "b"}},
                 {"a\rb\r", {"a", "b"}},
                 {"a\nb\n", {"a", "b"}},
                 {"a\n\rb", {"a", "", "b"}},
                 {"a\r\n\r\nb", {"a", "", "b"}},
                 {"a", {"a"}},
                 {"\r\n", {""}},
                 {"", {}}};
    for (const auto &item : cases) {
        EXPECT_EQ(linesOf(item.bytes), item.lines) << item.bytes.toStdString();
    }
}

TEST_F(TextFileTest, lineEndSplitByTheReadBuffer_isOneLineEnd) {
    QByteArray bytes(32767, 'x');
    bytes += "\r\nlast";
    EXPECT_EQ(linesOf(bytes).size(), 2);
    EXPECT_EQ(linesOf(bytes)[1], QStringLiteral("last"));
}

TEST_F(TextFileTest, everyByteValueButLineEnds_survivesWritingAndReading) {
    QString line;
    for (int value = 0; value < 256; ++value) {
        if (value != '\r' && value != '\n') {
            line += QLatin1Char(static_cast<char>(value));
        }
    }
    {
        TextFileWriter writer(path("bytes.txt"));
        writer.writeLine(line);
    }
    TextFileReader reader(path("bytes.txt"));
    EXPECT_EQ(reader.readLine(), line);
    EXPECT_EQ(reader.lastLineLength(), 254);
    EXPECT_TRUE(reader.atEnd());
}

TEST_F(TextFileTest, newReader_hasReadNoLine) {
    const TextFileReader reader = reading("one\r\ntwo");
    EXPECT_EQ(reader.lastLineLength(), 0);
    EXPECT_EQ(reader.lineNumber(), 0);
    EXPECT_FALSE(reader.lastLineEnded());
}

TEST_F(TextFileTest, veryLongLine_keepsItsStartAndTellsItsLength) {
    TextFileReader reader = reading(QByteArray(200000, 'y') + "\r\nnext");
    EXPECT_EQ(reader.readLine().size(), TextFileReader::kLongestLine);
    EXPECT_EQ(reader.lastLineLength(), 200000);
    EXPECT_EQ(reader.readLine(), QStringLiteral("next"));
    EXPECT_EQ(reader.lineNumber(), 2);
}

TEST_F(TextFileTest, readingAtTheEnd_isAFileError) {
    TextFileReader reader = reading("only");
    EXPECT_EQ(reader.readLine(), QStringLiteral("only"));
    EXPECT_THROW((void)reader.readLine(), UntrappedError);
}

TEST_F(TextFileTest, closedTwice_isAtItsEnd) {
    TextFileReader reader = reading("a\r\nb");
    reader.close();
    reader.close();
    EXPECT_TRUE(reader.atEnd());
    EXPECT_THROW((void)reader.readLine(), UntrappedError);
}

TEST_F(TextFileTest, missingFile_isAFileErrorThatNamesIt) {
    try {
        const TextFileReader reader(path("absent"));
        FAIL();
    } catch (const UntrappedError &error) {
        EXPECT_EQ(error.kind(), UntrappedError::Kind::File);
        EXPECT_TRUE(error.message().contains(QStringLiteral("absent")));
    }
}

TEST_F(TextFileTest, fileThatFailsWhileItIsRead_isAFileErrorThatNamesIt) {
    // A file for the system, which can be opened, and whose first page nobody can read.
    const QString path = QStringLiteral("/proc/self/mem");
    TextFileReader reader(path);
    try {
        (void)reader.readLine();
        FAIL();
    } catch (const UntrappedError &error) {
        EXPECT_EQ(error.kind(), UntrappedError::Kind::File);
        EXPECT_EQ(error.message(), "Can't read the file \"" + path + "\": Input/output error");
    }
}

TEST_F(TextFileTest, writer_replacesWhatStoodThereAndWritesEachLineAtOnce) {
    { TextFileWriter(path("w.txt")).writeLine(QStringLiteral("an older and longer line")); }
    TextFileWriter writer(path("w.txt"));
    writer.writeLine(QStringLiteral("one"));
    EXPECT_EQ(bytesOf(path("w.txt")), "one\r\n");
    writer.writeLine(QStringLiteral("two"));
    EXPECT_EQ(bytesOf(path("w.txt")), "one\r\ntwo\r\n");
}

TEST_F(TextFileTest, writerClosedTwice_refusesFurtherLines) {
    TextFileWriter writer(path("w.txt"));
    writer.close();
    writer.close();
    EXPECT_THROW(writer.writeLine(QStringLiteral("x")), UntrappedError);
}

TEST_F(TextFileTest, writerOnAFullDevice_isAFileError) {
    TextFileWriter writer(QStringLiteral("/dev/full"));
    EXPECT_THROW(writer.writeLine(QStringLiteral("x")), UntrappedError);
}

TEST_F(TextFileTest, lineThatDoesNotFitOnTheDisk_isTakenBackWhole) {
    TextFileWriter writer(path("w.txt"));
    writer.writeLine(QStringLiteral("whole"));
    {
        const FullDisk disk(20);
        EXPECT_THROW(writer.writeLine(QString(60, QLatin1Char('x'))), UntrappedError);
    }
    EXPECT_EQ(bytesOf(path("w.txt")), "whole\r\n");
    writer.writeLine(QStringLiteral("next"));
    EXPECT_EQ(bytesOf(path("w.txt")), "whole\r\nnext\r\n");
}

TEST_F(TextFileTest, linesForcedOntoTheRealDisk_stayAsTheyAre) {
    TextFileWriter writer(path("w.txt"));
    writer.writeLine(QStringLiteral("one"));
    writer.sync();
    writer.writeLine(QStringLiteral("two"));
    writer.sync();
    EXPECT_EQ(bytesOf(path("w.txt")), "one\r\ntwo\r\n");
}

TEST_F(TextFileTest, targetThatCannotBeForced_isNoError) {
    TextFileWriter writer(QStringLiteral("/dev/null"));
    writer.writeLine(QStringLiteral("x"));
    EXPECT_NO_THROW(writer.sync());
}

TEST_F(TextFileTest, forcingAClosedFile_isAFileError) {
    TextFileWriter writer(path("w.txt"));
    writer.close();
    EXPECT_THROW(writer.sync(), UntrappedError);
}

TEST_F(TextFileTest, descriptorTakenAway_isAFileErrorOfTheDisk) {
    QFile file(path("w.txt"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    EXPECT_EQ(systemDisk().force(file), QString());
    ::close(file.handle());
    EXPECT_NE(systemDisk().force(file), QString());
}

TEST_F(TextFileTest, writerIntoAMissingFolder_isAFileError) {
    EXPECT_THROW(TextFileWriter(path("no/such/folder.txt")), UntrappedError);
}

TEST_F(TextFileTest, replacingWriter_keepsTheOldFileUntilTheCommit) {
    { TextFileWriter(path("s.set")).writeLine(QStringLiteral("old")); }
    {
        ReplacingTextFileWriter writer(path("s.set"));
        writer.writeLine(QStringLiteral("half"));
        EXPECT_EQ(bytesOf(path("s.set")), "old\r\n");
    }
    EXPECT_EQ(bytesOf(path("s.set")), "old\r\n");
    ReplacingTextFileWriter writer(path("s.set"));
    writer.writeLine(QStringLiteral("new"));
    writer.commit();
    EXPECT_EQ(bytesOf(path("s.set")), "new\r\n");
}

TEST_F(TextFileTest, replacingWriterOnAFullDisk_tellsItAtTheLineAndKeepsTheOldFile) {
    for (const rlim_t room : {0U, 100U}) {
        writeOld();
        {
            const FullDisk disk(room);
            ReplacingTextFileWriter writer(path("s.set"));
            if (room > 0) {
                writer.writeLine(QString(60, QLatin1Char('a')));
            }
            EXPECT_THROW(writer.writeLine(QString(60, QLatin1Char('b'))), UntrappedError);
        }
        expectOldFileAlone();
    }
}

TEST_F(TextFileTest, commitAfterAFailedLine_isAFileErrorAndKeepsTheOldFile) {
    for (const rlim_t room : {0U, 100U}) {
        writeOld();
        {
            ReplacingTextFileWriter writer(path("s.set"));
            {
                const FullDisk disk(room);
                EXPECT_THROW(writer.writeLine(QString(200, QLatin1Char('x'))), UntrappedError);
            }
            EXPECT_THROW(writer.writeLine(QStringLiteral("more")), UntrappedError);
            EXPECT_THROW(writer.commit(), UntrappedError);
            EXPECT_THROW(writer.commit(), UntrappedError);
        }
        expectOldFileAlone();
    }
}

TEST_F(TextFileTest, fullDisk_isNamedInTheError) {
    for (const rlim_t room : {0U, 100U}) {
        const FullDisk disk(room);
        try {
            ReplacingTextFileWriter(path("s.set")).writeLine(QString(200, QLatin1Char('x')));
            ADD_FAILURE() << "written to a full disk";
        } catch (const UntrappedError &error) {
            EXPECT_EQ(error.kind(), UntrappedError::Kind::File);
            EXPECT_TRUE(error.message().contains(QStringLiteral("s.set\": File too large")))
                << qPrintable(error.message());
        }
    }
}

TEST_F(TextFileTest, replacingWriter_forcesContentAndThenTheNameOntoTheDisk) {
    BreakingDisk disk;
    ReplacingTextFileWriter writer(path("s.set"), disk);
    writer.writeLine(QStringLiteral("new"));
    EXPECT_EQ(disk.calls, QStringList());
    writer.commit();
    EXPECT_EQ(disk.calls, (QStringList{"content", "name"}));
    EXPECT_EQ(bytesOf(path("s.set")), "new\r\n");
}

TEST_F(TextFileTest, contentThatCanNotBeForced_isAFileErrorAndKeepsTheOldFile) {
    writeOld();
    {
        BreakingDisk disk;
        disk.contentError = QStringLiteral("the disk is gone");
        ReplacingTextFileWriter writer(path("s.set"), disk);
        writer.writeLine(QStringLiteral("new"));
        EXPECT_THROW(writer.commit(), UntrappedError);
        EXPECT_EQ(disk.calls, QStringList{"content"});
        disk.contentError.clear();
        EXPECT_THROW(writer.commit(), UntrappedError)
            << "a second time, on a disk that works again";
    }
    expectOldFileAlone();
}

TEST_F(TextFileTest, nameThatCanNotBeForced_isAFileErrorAfterTheChange) {
    writeOld();
    BreakingDisk disk;
    disk.nameError = QStringLiteral("the disk is gone");
    ReplacingTextFileWriter writer(path("s.set"), disk);
    writer.writeLine(QStringLiteral("new"));
    EXPECT_THROW(writer.commit(), UntrappedError);
    EXPECT_EQ(bytesOf(path("s.set")), "new\r\n");
}

TEST_F(TextFileTest, replacingWriterIntoAMissingFolder_isAFileError) {
    EXPECT_THROW(ReplacingTextFileWriter(path("no/such.set")), UntrappedError);
}

TEST_F(TextFileTest, noDescriptorLeftForTheNewFile_isAFileErrorWithTheReason) {
    writeOld();
    const int next = ::dup(STDIN_FILENO); // the lowest number that is free
    ::close(next);
    rlimit old{};
    ::getrlimit(RLIMIT_NOFILE, &old);
    const rlimit few{static_cast<rlim_t>(next), old.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    QString told;
    try {
        ReplacingTextFileWriter writer(path("s.set"));
    } catch (const UntrappedError &error) {
        EXPECT_EQ(error.kind(), UntrappedError::Kind::File);
        told = error.message();
    }
    ::setrlimit(RLIMIT_NOFILE, &old);
    EXPECT_TRUE(told.endsWith("s.set\": Too many open files")) << qPrintable(told);
    expectOldFileAlone();
}

// ---- what is no file

TEST_F(TextFileTest, folderPipeAndDevice_areRefusedForReading) {
    ASSERT_EQ(::mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(path("pipe"), path("link")));
    const struct {
        QString path;
        const char *why;
    } cases[] = {{m_folder.path(), "it is a folder"},
                 {path("pipe"), "it is a pipe or a device and not a file"},
                 {path("link"), "it is a pipe or a device and not a file"},
                 {"/dev/zero", "it is a pipe or a device and not a file"}};
    for (const auto &item : cases) {
        try {
            const TextFileReader reader(item.path);
            ADD_FAILURE() << item.path.toStdString();
        } catch (const UntrappedError &error) {
            EXPECT_EQ(error.kind(), UntrappedError::Kind::File);
            EXPECT_EQ(error.message(), "Can't read the file \"" + item.path + "\": " + item.why);
        }
    }
}

TEST_F(TextFileTest, lineWithoutAnEnd_isTold) {
    TextFileReader reader = reading("a\r\nb");
    (void)reader.readLine();
    EXPECT_TRUE(reader.lastLineEnded());
    (void)reader.readLine();
    EXPECT_FALSE(reader.lastLineEnded());
}

// ---- links, folders that may not be written, files of others

/// A link in one folder to a link in a second one to a file in a third.
class TextFileLinkTest : public TextFileTest {
protected:
    TextFileLinkTest() {
        for (const char *name : {"first", "second", "third"}) {
            QDir(m_folder.path()).mkdir(name);
        }
        QFile::link(path("third/target"), path("second/link"));
        // A relative one: it starts from its own folder.
        EXPECT_EQ(::symlink("../second/link", QFile::encodeName(path("first/link")).constData()),
                  0);
    }
    void write(const QString &path, const char *content) const {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    /// The target belongs neither to us nor to the owner of its folder, which has the sticky bit.
    void writeFileOfAThirdUser() const {
        const auto local = [this](const char *name) {
            return QFile::encodeName(path(name));
        };
        write(path("third/target"), "old");
        ASSERT_EQ(::chown(local("third/target").constData(), 1234, 1234), 0);
        ASSERT_EQ(::chmod(local("third/target").constData(), 0666), 0);
        ASSERT_EQ(::chmod(local("third").constData(), 01777), 0);
        ASSERT_EQ(::chmod(QFile::encodeName(m_folder.path()).constData(), 0777), 0);
    }
    void expectReplaced(BreakingDisk &disk) {
        ReplacingTextFileWriter writer(path("first/link"), disk);
        writer.writeLine(QStringLiteral("new"));
        writer.commit();
        EXPECT_EQ(bytesOf(path("third/target")), "new\r\n");
        EXPECT_TRUE(QFileInfo(path("first/link")).isSymLink());
        EXPECT_TRUE(QFileInfo(path("second/link")).isSymLink());
    }
};

TEST_F(TextFileLinkTest, renameBehindLinks_flushesTheFolderOfTheTarget) {
    for (const bool exists : {false, true}) {
        if (exists) {
            write(path("third/target"), "old");
        }
        BreakingDisk disk;
        expectReplaced(disk);
        EXPECT_EQ(disk.names, QStringList{path("third/target")});
    }
}

TEST_F(TextFileLinkTest, newFileBehindLinks_flushesTheFolderOfTheTarget) {
    BreakingDisk disk;
    TextFileWriter writer(path("first/link"), disk);
    writer.writeLine(QStringLiteral("new"));
    writer.sync();
    EXPECT_EQ(disk.names, QStringList{path("third/target")});
}

TEST_F(TextFileLinkTest, linksInACircle_areRefused) {
    QFile::link(path("round"), path("and"));
    QFile::link(path("and"), path("round"));
    EXPECT_THROW(ReplacingTextFileWriter(path("round")), UntrappedError);
}

TEST_F(TextFileLinkTest, folderThatForbidsARename_hasItsFileOverwritten) {
    write(path("third/target"), "a longer old content");
    QFile::setPermissions(path("third/target"), QFile::Permissions(0x6666));
    QFile::setPermissions(path("third"), QFile::Permissions(0x5555));
    QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7777));
    BreakingDisk disk;
    {
        const PlainUser user;
        EXPECT_EQ(FileReplacement::of(path("first/link")).way, FileReplacement::Way::InPlace);
        expectReplaced(disk);
    }
    QFile::setPermissions(path("third"), QFile::Permissions(0x7777));
    EXPECT_EQ(disk.calls, QStringList{"content"});
}

TEST_F(TextFileLinkTest, stickyFolderWithAFileOfSomebodyElse_hasItOverwritten) {
    if (::getuid() != 0) {
        return; // nobody else's file can be made
    }
    writeFileOfAThirdUser();
    BreakingDisk disk;
    const PlainUser user;
    EXPECT_EQ(FileReplacement::of(path("first/link")).way, FileReplacement::Way::InPlace);
    expectReplaced(disk);
}

/// Where the system forbids to create over such a file, it can still be opened as it is.
TEST_F(TextFileLinkTest, stickyFolderOfACarefulSystem_hasTheFileOfSomebodyElseOverwritten) {
    if (::getuid() != 0) {
        return; // nobody else's file can be made
    }
    writeFileOfAThirdUser();
    const auto overwrite = [this](auto makeWriter) {
        const PlainUser user;
        forbidCreation();
        makeWriter();
        std::_Exit(bytesOf(path("third/target")) == "new\r\n" ? 0 : 1);
    };
    EXPECT_EXIT(overwrite([this] {
                    ReplacingTextFileWriter writer(path("first/link"));
                    writer.writeLine(QStringLiteral("new"));
                    writer.commit();
                }),
                testing::ExitedWithCode(0), "");
    EXPECT_EXIT(overwrite([this] {
                    TextFileWriter writer(path("first/link"));
                    writer.writeLine(QStringLiteral("new"));
                    writer.sync();
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(TextFileLinkTest, fullDiskInPlace_bringsTheOldBytesBack) {
    write(path("third/target"), "old");
    QFile::setPermissions(path("third/target"), QFile::Permissions(0x6666));
    QFile::setPermissions(path("third"), QFile::Permissions(0x5555));
    QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7777));
    {
        const PlainUser user;
        ReplacingTextFileWriter writer(path("third/target"));
        writer.writeLine(QString(200, QLatin1Char('x')));
        const FullDisk disk(100);
        EXPECT_THROW(writer.commit(), UntrappedError);
    }
    QFile::setPermissions(path("third"), QFile::Permissions(0x7777));
    EXPECT_EQ(bytesOf(path("third/target")), "old");
}

TEST_F(TextFileLinkTest, pipeUnderTheName_isRefused) {
    ASSERT_EQ(::mkfifo(QFile::encodeName(path("third/target")).constData(), 0600), 0);
    EXPECT_EQ(FileReplacement::of(path("first/link")).way, FileReplacement::Way::Refused);
    EXPECT_THROW(ReplacingTextFileWriter(path("first/link")), UntrappedError);
}

/// A file of root in a folder that nobody else may change: it is written in place.
class TextFileInPlaceTest : public TextFileLinkTest {
protected:
    void SetUp() override {
        write(path("third/target"), "old");
        QFile::setPermissions(path("third/target"), QFile::Permissions(0x6666));
        QFile::setPermissions(path("third"), QFile::Permissions(0x5555));
        QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7777));
        {
            const PlainUser user;
            writer.emplace(path("third/target"), disk);
        }
        writer->writeLine(QStringLiteral("new"));
    }
    void TearDown() override { QFile::setPermissions(path("third"), QFile::Permissions(0x7777)); }
    [[nodiscard]] QString errorOfTheCommit() {
        const PlainUser user;
        try {
            writer->commit();
        } catch (const UntrappedError &error) {
            EXPECT_EQ(error.kind(), UntrappedError::Kind::File);
            return error.message();
        }
        return QStringLiteral("no error");
    }
    BreakingDisk disk;
    std::optional<ReplacingTextFileWriter> writer;
};

TEST_F(TextFileInPlaceTest, fileThatBecomesReadOnly_keepsItsContent) {
    QFile::setPermissions(path("third/target"), QFile::Permissions(0x4444));
    EXPECT_EQ(errorOfTheCommit(),
              "Can't write the file \"" + path("third/target") + "\": Permission denied");
    EXPECT_EQ(bytesOf(path("third/target")), "old");
}

TEST_F(TextFileInPlaceTest, contentThatCanNotBeForced_isAFileError) {
    disk.contentError = QStringLiteral("the disk is gone");
    EXPECT_EQ(errorOfTheCommit(),
              "Can't write the file \"" + path("third/target") + "\": the disk is gone");
}

} // namespace
} // namespace veldron
