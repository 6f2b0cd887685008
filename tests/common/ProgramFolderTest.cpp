// SPDX-License-Identifier: MIT
#include "common/ProgramFolder.h"

#include "tests/support/PlainUser.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace veldron {
namespace {

TEST(ProgramFolder, writableExecutableFolder_isTheOne) {
    const QTemporaryDir folder;
    EXPECT_EQ(ProgramFolder::choose(folder.path(), QStringLiteral("/nowhere")), folder.path());
}

TEST(ProgramFolder, executableFolderThatIsNotWritable_givesTheUsersFolderAndMakesIt) {
    const QTemporaryDir folder;
    const QString users = folder.filePath(QStringLiteral("a/b"));
    EXPECT_EQ(ProgramFolder::choose(folder.filePath(QStringLiteral("absent")), users), users);
    EXPECT_TRUE(QDir(users).exists());
}

TEST(ProgramFolder, executableFolderWithoutTheRightToWrite_givesTheUsersFolder) {
    const QTemporaryDir folder;
    ASSERT_TRUE(QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::ExeOwner |
                                                         QFile::ReadOther | QFile::ExeOther));
    const QTemporaryDir home;
    ASSERT_TRUE(QFile::setPermissions(home.path(), QFile::Permissions(0x7777)));
    const PlainUser user;
    const QString users = home.filePath(QStringLiteral("VELDRON"));
    EXPECT_EQ(ProgramFolder::choose(folder.path(), users), users);
    EXPECT_TRUE(QDir(users).exists());
}

TEST(ProgramFolder, installedProgram_hasTheUsersFolderThoughItsOwnIsWritable) {
    const QTemporaryDir prefix;
    ASSERT_TRUE(QDir(prefix.path()).mkpath(QStringLiteral("bin")));
    ASSERT_TRUE(QDir(prefix.path()).mkpath(QStringLiteral("share/veldron")));
    const QString users = prefix.filePath(QStringLiteral("home"));
    EXPECT_EQ(ProgramFolder::choose(prefix.filePath(QStringLiteral("bin")), users), users);
    EXPECT_TRUE(QDir(users).exists());
}

} // namespace
} // namespace veldron
