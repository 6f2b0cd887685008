// SPDX-License-Identifier: MIT
#include "simulator/UnitTerminal.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>
#include <utility>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace veldron {
namespace {

/// A terminal at "COM3" in a folder of its own, and a program's end of it.
class UnitTerminalTest : public testing::Test {
protected:
    ~UnitTerminalTest() override { closeProgram(); }

    void openProgram() {
        program = ::open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK);
        ASSERT_GE(program, 0);
    }
    void closeProgram() {
        if (program >= 0) {
            ::close(program);
        }
        program = -1;
    }
    [[nodiscard]] QByteArray readByProgram() const {
        std::array<char, 64> buffer{};
        const ssize_t length = ::read(program, buffer.data(), buffer.size());
        return length < 0 ? QByteArray() : QByteArray(buffer.data(), length);
    }

    QTemporaryDir folder;
    QString path = folder.filePath("COM3");
    UnitTerminal terminal{path};
    int program = -1;
};

TEST_F(UnitTerminalTest, plugged_bytesGoThroughUnchangedInBothDirections) {
    ASSERT_TRUE(terminal.plug());
    openProgram();
    const QByteArray bytes("\x00\x03\x0a\x0d\x11\x13\x1a\xff", 8);
    ASSERT_EQ(::write(program, bytes.constData(), 8), 8);
    EXPECT_EQ(terminal.read(), bytes);
    EXPECT_EQ(terminal.write(bytes), 8);
    EXPECT_EQ(readByProgram(), bytes);
}

TEST_F(UnitTerminalTest, unplugged_linkIsGoneAndTheProgramLosesTheLine) {
    ASSERT_TRUE(terminal.plug());
    openProgram();
    terminal.unplug();
    EXPECT_FALSE(QFileInfo(path).isSymLink());
    EXPECT_EQ(::write(program, "x", 1), -1);
    EXPECT_EQ(terminal.write("x"), 0);
    EXPECT_EQ(terminal.descriptor(), -1);
}

TEST_F(UnitTerminalTest, fileInTheLinksPlace_isRefusedAndLeftAlone) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("mine");
    file.close();
    EXPECT_FALSE(terminal.plug());
    EXPECT_TRUE(terminal.error().startsWith(path)) << terminal.error().toStdString();
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "mine");
}

TEST_F(UnitTerminalTest, noDescriptorsLeft_isToldAndLeavesNothing) {
    const int next = ::dup(STDIN_FILENO); // the lowest number that is free
    ::close(next);
    rlimit old{};
    ::getrlimit(RLIMIT_NOFILE, &old);
    // Enough for neither end, and for the unit's end alone.
    for (const auto &[room, what] :
         {std::pair(0, "no pseudo-terminal"), std::pair(1, "/dev/pts")}) {
        const rlimit few{static_cast<rlim_t>(next + room), old.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
        EXPECT_FALSE(terminal.plug());
        ::setrlimit(RLIMIT_NOFILE, &old);
        EXPECT_TRUE(terminal.error().startsWith(what)) << terminal.error().toStdString();
        EXPECT_TRUE(terminal.error().endsWith(": Too many open files"));
        EXPECT_FALSE(QFileInfo(path).isSymLink());
        EXPECT_EQ(terminal.descriptor(), -1);
    }
    EXPECT_TRUE(terminal.plug());
}

TEST_F(UnitTerminalTest, staleLink_isReplaced) {
    ASSERT_TRUE(QFile::link("/nonexistent", path));
    EXPECT_TRUE(terminal.plug());
    EXPECT_TRUE(QFileInfo(path).symLinkTarget().startsWith("/dev/pts/"));
}

TEST_F(UnitTerminalTest, folderMissing_isTold) {
    UnitTerminal lost(folder.filePath("nowhere/COM3"));
    EXPECT_FALSE(lost.plug());
    EXPECT_FALSE(lost.isPlugged());
    EXPECT_FALSE(lost.error().isEmpty());
}

TEST_F(UnitTerminalTest, linkTakenOverBySomebodyElse_isNotRemoved) {
    ASSERT_TRUE(terminal.plug());
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(QFile::link("/dev/null", path));
    terminal.unplug();
    EXPECT_EQ(QFileInfo(path).symLinkTarget(), "/dev/null");
}

TEST_F(UnitTerminalTest, lastProgramCloses_unreadBytesAndItsLockAreDropped) {
    ASSERT_TRUE(terminal.plug());
    openProgram();
    ASSERT_EQ(::ioctl(program, TIOCEXCL), 0);
    terminal.noticeOthers();
    ASSERT_EQ(terminal.write("stale"), 5);
    closeProgram();
    terminal.noticeOthers();
    openProgram();
    EXPECT_EQ(readByProgram(), QByteArray());
}

} // namespace
} // namespace veldron
