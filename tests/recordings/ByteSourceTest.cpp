// SPDX-License-Identifier: MIT
#include "recordings/ByteSource.h"

#include "common/UntrappedError.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <array>
#include <unistd.h>

namespace veldron {
namespace {

class ByteSourceTest : public testing::Test {
protected:
    [[nodiscard]] std::string path(const QString &name) const {
        return m_folder.filePath(name).toStdString();
    }
    std::string put(const QString &name, const QByteArray &bytes) const {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path(name);
    }
    /// All bytes, asked for \a most at a time.
    [[nodiscard]] static QByteArray readAll(ByteSource &source, qint64 most) {
        QByteArray all;
        QByteArray piece(most, 0);
        while (const qint64 count = source.read(piece.data(), most)) {
            all.append(piece.first(count));
        }
        return all;
    }
    [[nodiscard]] static std::string errorOf(const std::string &path) {
        try {
            FileSource source(path);
        } catch (const UntrappedError &error) {
            EXPECT_EQ(error.kind(), UntrappedError::Kind::File);
            return error.message().toStdString();
        }
        return "no error";
    }
    QTemporaryDir m_folder;
};

TEST_F(ByteSourceTest, file_isReadToItsEndAndHasASize) {
    const QByteArray bytes = QByteArray("line\r\n\0\xff", 8).repeated(1000);
    FileSource source(put("a.rec", bytes));
    EXPECT_EQ(source.size(), 8000);
    EXPECT_TRUE(readAll(source, 333) == bytes);
    char byte = 0;
    EXPECT_EQ(source.read(&byte, 1), 0);
}

TEST_F(ByteSourceTest, pipe_isReadWithoutASize) {
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    ASSERT_EQ(::write(pipe[1], "some bytes", 10), 10);
    ::close(pipe[1]);
    FileSource source("/dev/fd/" + std::to_string(pipe[0]));
    ::close(pipe[0]);
    EXPECT_FALSE(source.size());
    EXPECT_EQ(readAll(source, 4), "some bytes");
}

TEST_F(ByteSourceTest, missingFileAndFolder_areErrors) {
    EXPECT_EQ(errorOf(path("none")), path("none") + ": No such file or directory");
    EXPECT_EQ(errorOf(m_folder.path().toStdString()),
              m_folder.path().toStdString() + ": Is a directory");
}

TEST_F(ByteSourceTest, fileIsTheSame_underEveryNameOfIt) {
    const std::string first = put("a.rec", "same");
    const std::string other = put("b.rec", "same");
    ASSERT_EQ(::symlink(first.c_str(), path("soft").c_str()), 0);
    ASSERT_EQ(::link(first.c_str(), path("hard").c_str()), 0);
    const FileSource source(first);
    EXPECT_TRUE(source.isFile(path("soft")));
    EXPECT_TRUE(source.isFile(path("hard")));
    EXPECT_FALSE(source.isFile(other));
    EXPECT_FALSE(source.isFile(path("none")));
}

TEST_F(ByteSourceTest, fileThatFailsWhileItIsRead_isAnErrorWithTheSystemsText) {
    // Its first page is one that nobody can read.
    FileSource source("/proc/self/mem");
    try {
        (void)readAll(source, 4);
        FAIL();
    } catch (const UntrappedError &error) {
        EXPECT_EQ(error.kind(), UntrappedError::Kind::File);
        EXPECT_EQ(error.message(), "/proc/self/mem: Input/output error");
    }
}

} // namespace
} // namespace veldron
