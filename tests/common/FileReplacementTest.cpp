// SPDX-License-Identifier: MIT
#include "common/FileReplacement.h"

#include "tests/support/PlainUser.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace veldron {
namespace {

using Way = FileReplacement::Way;

/// Asks as a user to whom permissions apply. A folder of its own, open to everybody, with the file
/// "old", the folder "closed" that nobody may write to, and in it the file "kept".
class FileReplacementTest : public testing::Test {
protected:
    FileReplacementTest() {
        write("old");
        QDir(folder.path()).mkdir("closed");
        write("closed/kept");
        setMode("", 0777);
        setMode("closed", 0555);
    }
    ~FileReplacementTest() override { setMode("closed", 0777); }

    [[nodiscard]] QString path(const char *name) const {
        return folder.filePath(QString::fromLatin1(name));
    }
    void write(const char *name) const {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        setMode(name, 0666);
    }
    void setMode(const char *name, mode_t mode) const {
        EXPECT_EQ(::chmod(QFile::encodeName(path(name)).constData(), mode), 0);
    }
    [[nodiscard]] FileReplacement of(const char *name) const {
        const PlainUser user;
        return FileReplacement::of(path(name));
    }

    QTemporaryDir folder;
};

TEST_F(FileReplacementTest, fileInAFolderThatMayBeWritten_isRenamedOver) {
    const FileReplacement found = of("old");
    EXPECT_EQ(found.way, Way::Rename);
    EXPECT_EQ(found.target, path("old"));
    EXPECT_EQ(found.refusal, "");
}

TEST_F(FileReplacementTest, newFile_isRenamedIntoItsFolder) {
    EXPECT_EQ(of("new").way, Way::Rename);
}

TEST_F(FileReplacementTest, fileInAClosedFolder_isOverwrittenInPlace) {
    EXPECT_EQ(of("closed/kept").way, Way::InPlace);
}

TEST_F(FileReplacementTest, linkToAFile_leadsToItsTarget) {
    QFile::link(path("closed/kept"), path("link"));
    QFile::link(path("link"), path("second"));
    EXPECT_EQ(of("second").way, Way::InPlace);
    EXPECT_EQ(of("second").target, path("closed/kept"));
    EXPECT_EQ(endOfLinks(path("second")), path("closed/kept"));
}

TEST_F(FileReplacementTest, whatCannotBeReplaced_isRefusedWithItsReason) {
    QFile::link(path("round"), path("and"));
    QFile::link(path("and"), path("round"));
    setMode("old", 0444);
    const std::pair<const char *, QString> cases[] = {
        {"missing/new", "There is no folder \"" + path("missing") + "\"."},
        {"closed", "\"closed\" is not a file. Please choose another name."},
        {"old", "The file \"old\" is read-only. Please choose another name."},
        {"closed/new",
         "You may not write to the folder \"" + path("closed") + "\". Please choose another one."}};
    for (const auto &[name, reason] : cases) {
        EXPECT_EQ(of(name).way, Way::Refused) << name;
        EXPECT_EQ(of(name).refusal, reason);
    }
    EXPECT_TRUE(of("round").refusal.contains("go in a circle"));
}

} // namespace
} // namespace veldron
