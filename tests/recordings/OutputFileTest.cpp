// SPDX-License-Identifier: MIT
#include "recordings/OutputFile.h"

#include "common/UntrappedError.h"
#include "tests/support/FullDisk.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <functional>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace veldron {
namespace {

class OutputFileTest : public testing::Test {
protected:
    [[nodiscard]] std::string path() const { return m_folder.filePath("out").toStdString(); }
    [[nodiscard]] QByteArray content() const {
        QFile file(m_folder.filePath("out"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }
    void put(const QByteArray &bytes) const {
        QFile file(m_folder.filePath("out"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    [[nodiscard]] QStringList names() const {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden);
    }
    [[nodiscard]] static std::string errorOf(const std::function<void()> &body) {
        try {
            body();
        } catch (const UntrappedError &error) {
            return error.message().toStdString();
        }
        return "no error";
    }
    QTemporaryDir m_folder;
};

TEST_F(OutputFileTest, committedFile_isWholeAndAlone) {
    OutputFile out(path(), false);
    QByteArray expected;
    for (int i = 0; i < 30000; ++i) {
        out.write("some text\n");
        expected += "some text\n";
    }
    EXPECT_EQ(content(), "no file");
    out.commit();
    EXPECT_EQ(content(), expected);
    EXPECT_EQ(names(), QStringList{"out"});
}

TEST_F(OutputFileTest, fileThatIsGivenUp_leavesNothing) {
    {
        OutputFile out(path(), false);
        out.write("half");
    }
    EXPECT_TRUE(names().isEmpty());
}

TEST_F(OutputFileTest, fileThatIsThere_staysWithoutForce) {
    put("old");
    EXPECT_EQ(errorOf([this] { OutputFile out(path(), false); }),
              path() + ": the file is there already; --force replaces it");
    EXPECT_EQ(content(), "old");
    {
        OutputFile out(path(), true);
        out.write("given up");
    }
    EXPECT_EQ(content(), "old");
    OutputFile out(path(), true);
    out.write("new");
    out.commit();
    EXPECT_EQ(content(), "new");
}

TEST_F(OutputFileTest, link_staysALink) {
    put("old");
    const QString link = m_folder.filePath("link");
    ASSERT_TRUE(QFile::link(m_folder.filePath("out"), link));
    OutputFile out(link.toStdString(), true);
    out.write("new");
    out.commit();
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(content(), "new");
}

TEST_F(OutputFileTest, fullDevice_tellsHowManyScansArrived) {
    EXPECT_EQ(errorOf([] {
                  OutputFile out("/dev/full", false);
                  out.write("a scan");
                  out.countScan();
                  out.commit();
              }),
              "/dev/full: No space left on device (0 of the scans arrived)");
}

TEST_F(OutputFileTest, fullDisk_countsTheScansThatFitted) {
    const FullDisk full(1000);
    EXPECT_EQ(errorOf([this] {
                  OutputFile out(path(), false);
                  for (int i = 0; i < 20; ++i) {
                      out.write(QByteArray(100, 'x'));
                      out.countScan();
                  }
                  out.commit();
              }),
              path() + ": File too large (10 of the scans arrived)");
    EXPECT_TRUE(names().isEmpty());
}

TEST_F(OutputFileTest, diskThatFillsUpLater_countsTheScansThatFitted) {
    constexpr int kScan = 1000;
    // Somewhere in the third block, with the last of the file in memory still.
    const FullDisk full(700 * kScan + 1);
    EXPECT_EQ(errorOf([this] {
                  OutputFile out(path(), false);
                  for (int i = 0; i < 1000; ++i) {
                      out.write(QByteArray(kScan, 'x'));
                      out.countScan();
                  }
                  out.commit();
              }),
              path() + ": File too large (700 of the scans arrived)");
    EXPECT_TRUE(names().isEmpty());
}

TEST_F(OutputFileTest, bytesFilledInPlace_standBetweenThoseThatWereCopied) {
    OutputFile out(path(), false);
    QByteArray expected;
    for (int i = 0; i < 2000; ++i) {
        const QByteArray piece(i % 400, static_cast<char>('a' + i % 26));
        char *const room = out.room(400);
        out.writeUpTo(std::copy(piece.begin(), piece.end(), room));
        out.write("copied");
        expected += piece + "copied";
    }
    const QByteArray large(1000000, 'z');
    out.write(large);
    out.commit();
    EXPECT_TRUE(content() == expected + large);
}

TEST_F(OutputFileTest, folderAndMissingFolder_areErrors) {
    EXPECT_NE(errorOf([this] { OutputFile out(m_folder.path().toStdString(), true); }), "no error");
    EXPECT_NE(errorOf([] { OutputFile out("/no/such/folder/out", true); }), "no error");
}

TEST_F(OutputFileTest, pathForALibrary_isRenamedByTheCommit) {
    OutputFile out(path(), false);
    QFile file(QString::fromStdString(out.libraryPath()));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("by another hand");
    file.close();
    out.commit();
    EXPECT_EQ(content(), "by another hand");
}

TEST_F(OutputFileTest, pathForALibrary_ofAPipeIsCopiedByTheCommit) {
    const QString pipe = m_folder.filePath("pipe");
    ASSERT_EQ(::mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    // Open for both, so that neither end waits for the other.
    QFile reader(pipe);
    ASSERT_TRUE(reader.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    std::string standIn;
    {
        OutputFile out(pipe.toStdString(), false);
        standIn = out.libraryPath();
        QFile file(QString::fromStdString(standIn));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("by another hand");
        file.close();
        out.commit();
    }
    EXPECT_EQ(reader.read(15), "by another hand");
    EXPECT_FALSE(QFile::exists(QString::fromStdString(standIn)));
    {
        OutputFile out(pipe.toStdString(), false);
        standIn = out.libraryPath();
        EXPECT_TRUE(QFile::exists(QString::fromStdString(standIn)));
    }
    EXPECT_FALSE(QFile::exists(QString::fromStdString(standIn)));
}

TEST_F(OutputFileTest, socketUnderTheName_isAnErrorWithTheSystemsText) {
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path().size(), sizeof address.sun_path);
    path().copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    EXPECT_TRUE(QString::fromStdString(errorOf([this] {
                    OutputFile(path(), true);
                })).startsWith(QString::fromStdString(path() + ": No such device or address")));
    ::close(socket);
}

TEST_F(OutputFileTest, folderMadeUnderTheNameMeanwhile_isAnErrorAndLeavesNothing) {
    {
        OutputFile out(path(), false);
        out.write("some text\n");
        ASSERT_TRUE(QDir(m_folder.path()).mkdir("out"));
        EXPECT_TRUE(QString::fromStdString(errorOf([&out] {
                        out.commit();
                    })).startsWith(QString::fromStdString(path() + ": Is a directory")));
    }
    EXPECT_EQ(names(), QStringList());
}

} // namespace
} // namespace veldron
