// SPDX-License-Identifier: MIT
#include "recordings/RepeatableInput.h"

#include "common/UntrappedError.h"
#include "recordings/ByteSource.h"
#include "recordings/CommandError.h"
#include "tests/recordings/TestConsole.h"
#include "tests/support/FullDisk.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <array>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veldron {
namespace {

/// Has a standard input of its own.
class RepeatableInputTest : public testing::Test {
protected:
    ~RepeatableInputTest() override {
        ::dup2(m_before, STDIN_FILENO);
        ::close(m_before);
    }
    static void use(int descriptor) {
        ::dup2(descriptor, STDIN_FILENO);
        ::close(descriptor);
    }
    static void usePipeOf(const QByteArray &bytes) {
        std::array<int, 2> ends{};
        ASSERT_EQ(::pipe(ends.data()), 0);
        ASSERT_EQ(::write(ends[1], bytes.constData(), static_cast<std::size_t>(bytes.size())),
                  bytes.size());
        ::close(ends[1]);
        use(ends[0]);
    }
    [[nodiscard]] static QByteArray rest() {
        FileSource source("-");
        QByteArray all;
        std::array<char, 100> piece{};
        while (const qint64 count = source.read(piece.data(), piece.size())) {
            all.append(piece.data(), count);
        }
        return all;
    }
    QTemporaryDir m_folder;
    TestConsole m_console;
    int m_before = ::dup(STDIN_FILENO);
};

TEST_F(RepeatableInputTest, pipe_isReadAsOftenAsIsWanted) {
    const QByteArray bytes(50000, 'x');
    usePipeOf(bytes);
    const RepeatableInput input("-", m_console);
    EXPECT_EQ(rest(), bytes);
    EXPECT_EQ(rest(), "");
    for (int pass = 0; pass < 2; ++pass) {
        input.rewind();
        EXPECT_EQ(rest(), bytes);
    }
}

TEST_F(RepeatableInputTest, file_isReadFromWhereItStood) {
    QFile file(m_folder.filePath("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("taken rest");
    file.close();
    use(::open(file.fileName().toLocal8Bit().constData(), O_RDONLY));
    std::array<char, 6> taken{};
    ASSERT_EQ(::read(STDIN_FILENO, taken.data(), taken.size()), 6);
    const RepeatableInput input("-", m_console);
    EXPECT_EQ(rest(), "rest");
    input.rewind();
    EXPECT_EQ(rest(), "rest");
}

TEST_F(RepeatableInputTest, pipeUnderAName_isRefused) {
    const std::string path = m_folder.filePath("pipe").toStdString();
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    // Otherwise the reading end waits for it.
    const int writer = ::open(path.c_str(), O_RDWR);
    EXPECT_THROW(RepeatableInput(path, m_console), CommandError);
    ::close(writer);
}

TEST_F(RepeatableInputTest, folderWithoutRoomForTheCopy_isNamed) {
    usePipeOf(QByteArray(50000, 'x'));
    const FullDisk full(1000);
    try {
        const RepeatableInput input("-", m_console);
        ADD_FAILURE() << "no error";
    } catch (const UntrappedError &error) {
        EXPECT_EQ(error.message(), QDir::tempPath() + ": File too large");
    }
}

} // namespace
} // namespace veldron
