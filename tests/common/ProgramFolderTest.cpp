// SPDX-License-Identifier: MIT
#include "common/ProgramFolder.h"

#include <QDir>
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

} // namespace
} // namespace veldron
