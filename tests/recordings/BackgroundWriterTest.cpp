// SPDX-License-Identifier: MIT
#include "recordings/BackgroundWriter.h"

#include "tests/support/FullDisk.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryFile>

#include <array>
#include <cerrno>
#include <future>
#include <unistd.h>

namespace veldron {
namespace {

constexpr std::size_t kBlock = 300000;

class BackgroundWriterTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_file.open()); }
    [[nodiscard]] QByteArray content() const {
        QFile file(m_file.fileName());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }
    QTemporaryFile m_file;
};

TEST_F(BackgroundWriterTest, blocks_arriveOnceAndInTheirOrder) {
    QByteArray expected;
    std::vector<char> block(kBlock);
    BackgroundWriter writer(m_file.handle(), BackgroundWriter::Target::Disk);
    for (int number = 0; number < 40; ++number) {
        const std::size_t size = kBlock - static_cast<std::size_t>(number) * 7001;
        std::fill(block.begin(), block.end(), static_cast<char>('A' + number));
        expected += QByteArray(static_cast<qsizetype>(size), static_cast<char>('A' + number));
        EXPECT_FALSE(writer.give(block, size));
        EXPECT_EQ(block.size(), kBlock);
    }
    EXPECT_FALSE(writer.finish());
    EXPECT_TRUE(content() == expected);
}

TEST_F(BackgroundWriterTest, blockThatNobodyReadsYet_holdsNobodyUp) {
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    std::vector<char> block(kBlock, 'a');
    {
        BackgroundWriter writer(pipe[1], BackgroundWriter::Target::Any);
        // More than a pipe holds.
        EXPECT_FALSE(writer.give(block, kBlock));
        auto read = std::async(std::launch::async, [&] {
            QByteArray all(static_cast<qsizetype>(kBlock), 0);
            qsizetype done = 0;
            while (done < all.size()) {
                done +=
                    ::read(pipe[0], all.data() + done, static_cast<std::size_t>(all.size() - done));
            }
            return all;
        });
        EXPECT_FALSE(writer.finish());
        EXPECT_TRUE(read.get() == QByteArray(static_cast<qsizetype>(kBlock), 'a'));
    }
    ::close(pipe[0]);
    ::close(pipe[1]);
}

TEST_F(BackgroundWriterTest, fullDisk_tellsWhatArrivedAndEndsTheWriting) {
    constexpr int kFits = 2 * static_cast<int>(kBlock) + 5;
    const FullDisk full(kFits);
    std::vector<char> block(kBlock, 'a');
    BackgroundWriter writer(m_file.handle(), BackgroundWriter::Target::Disk);
    for (int number = 0; number < 3; ++number) {
        EXPECT_FALSE(writer.give(block, kBlock));
    }
    for (const auto &failure : {writer.give(block, kBlock), writer.finish()}) {
        ASSERT_TRUE(failure);
        EXPECT_EQ(failure->code, EFBIG);
        EXPECT_EQ(failure->written, kFits);
    }
    EXPECT_EQ(content().size(), kFits);
}

TEST_F(BackgroundWriterTest, writingOnTheSpot_failsTheSameWay) {
    const FullDisk full(4);
    EXPECT_FALSE(BackgroundWriter::writeAll(m_file.handle(), "abc"));
    const auto failure = BackgroundWriter::writeAll(m_file.handle(), "def");
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->code, EFBIG);
    EXPECT_EQ(failure->written, 1);
    EXPECT_EQ(content(), "abcd");
}

} // namespace
} // namespace veldron
