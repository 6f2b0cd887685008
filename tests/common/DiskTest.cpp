// SPDX-License-Identifier: MIT
#include "common/Disk.h"

#include "tests/support/PlainUser.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

namespace veldron {
namespace {

class DiskTest : public testing::Test {
protected:
    [[nodiscard]] QString path(const char *name) const {
        return folder.filePath(QString::fromLatin1(name));
    }

    QTemporaryDir folder;
    Disk &disk = systemDisk();
};

TEST_F(DiskTest, openFile_isFlushedWithAllItsBytes) {
    QFile file(path("scans"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    file.write("bytes");
    EXPECT_EQ(disk.force(file), "");
    EXPECT_EQ(QFileInfo(file).size(), 5);
}

TEST_F(DiskTest, pipe_cannotBeFlushedWithoutBeingAnError) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    QFile pipe;
    ASSERT_TRUE(pipe.open(ends[1], QIODevice::WriteOnly, QFileDevice::AutoCloseHandle));
    EXPECT_EQ(disk.force(pipe), "");
    ::close(ends[0]);
}

TEST_F(DiskTest, descriptorTakenAway_isAnErrorInWords) {
    QFile file(path("scans"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ::close(file.handle());
    EXPECT_EQ(disk.force(file), "Bad file descriptor");
}

TEST_F(DiskTest, folderOfAName_isFlushedWithoutAnError) {
    EXPECT_EQ(disk.forceName(path("scans")), "");
}

TEST_F(DiskTest, folderThatMayNotBeRead_isNoError) {
    QFile::setPermissions(folder.path(), QFile::WriteOwner | QFile::ExeOwner);
    QString error;
    {
        const PlainUser user;
        error = disk.forceName(path("scans"));
    }
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_EQ(error, "");
}

void flushBehindTheDestructors() {
    const QString why = systemDisk().forceName(QDir::temp().filePath(QStringLiteral("name")));
    std::fprintf(stderr, "flushed %s\n", qPrintable(why));
}

TEST(DiskDeathTest, exitHandlerOlderThanTheDisk_stillFlushes) {
    // In a process of its own, where nobody has asked for the disk yet.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            std::atexit(flushBehindTheDestructors);
            (void)systemDisk();
            std::exit(0);
        },
        testing::ExitedWithCode(0), "flushed \n");
}

} // namespace
} // namespace veldron
