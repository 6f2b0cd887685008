// SPDX-License-Identifier: MIT
// On pseudo-terminals and with lock files in a folder of the test's own.
#include "link/PortLock.h"
#include "tests/link/PseudoTerminal.h"
#include "tests/support/PlainUser.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace veldron {
namespace {

/// Another process, which does nothing but hold a flock on \a path if one is given.
class OtherProcess {
public:
    explicit OtherProcess(const QString &path = {}) {
        const QByteArray device = path.toLocal8Bit();
        m_pid = ::fork();
        if (m_pid == 0) {
            // Taken by the process itself: the kernel lists a flock under the process that took it.
            if (device.isEmpty() ||
                ::flock(::open(device.constData(), O_RDWR | O_NOCTTY), LOCK_EX) == 0) {
                ::execl("/bin/sleep", "sleep", "60", nullptr);
            }
            ::_exit(1);
        }
        waitUntilItIsSleep();
    }
    OtherProcess(const OtherProcess &) = delete;
    OtherProcess &operator=(const OtherProcess &) = delete;
    ~OtherProcess() { end(); }

    [[nodiscard]] qint64 pid() const { return m_pid; }
    void end() {
        if (m_pid > 0) {
            ::kill(m_pid, SIGKILL);
            ::waitpid(m_pid, nullptr, 0);
            m_pid = -1;
        }
    }

private:
    void waitUntilItIsSleep() const {
        const QString link = QStringLiteral("/proc/%1/exe").arg(m_pid);
        for (int turn = 0; turn < 2000; ++turn) {
            if (!QFile::symLinkTarget(link).contains(QLatin1String("test_"))) {
                return;
            }
            ::usleep(1000);
        }
    }

    pid_t m_pid = -1;
};

class PortLockTest : public testing::Test {
protected:
    [[nodiscard]] QString lockFile() const {
        return folder.filePath("LCK..pts_" + terminal.path().section('/', -1));
    }
    void writeLockFile(const QByteArray &bytes) const {
        QFile file(lockFile());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    [[nodiscard]] QByteArray lockFileBytes() const {
        QFile file(lockFile());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }
    [[nodiscard]] static QByteArray asText(qint64 pid) {
        return QByteArray::number(pid).rightJustified(10) + '\n';
    }
    [[nodiscard]] static QByteArray asBinary(qint64 pid) {
        const auto number = static_cast<qint32>(pid);
        QByteArray bytes(sizeof number, '\0');
        std::memcpy(bytes.data(), &number, sizeof number);
        return bytes;
    }

    QTemporaryDir folder;
    PseudoTerminal terminal;
    PortLock lock{QStringList{folder.path()}};
};

TEST_F(PortLockTest, freeDevice_isLockedInBothWays) {
    EXPECT_FALSE(lock.take(terminal.path()).has_value());
    EXPECT_TRUE(lockFileBytes().startsWith(asText(::getpid())));
    const int other = ::open(terminal.path().toLocal8Bit().constData(), O_RDWR | O_NOCTTY);
    EXPECT_NE(::flock(other, LOCK_EX | LOCK_NB), 0);
    lock.release();
    EXPECT_EQ(::flock(other, LOCK_EX | LOCK_NB), 0);
    ::close(other);
    EXPECT_FALSE(QFile::exists(lockFile()));
}

TEST_F(PortLockTest, errorLeftBehindByAnEarlierCall_isNoHolder) {
    PortLock withoutFolders{QStringList{}};
    errno = EWOULDBLOCK;
    EXPECT_FALSE(withoutFolders.take(terminal.path()).has_value());
}

TEST_F(PortLockTest, endOfLife_releases) {
    {
        PortLock brief{QStringList{folder.path()}};
        ASSERT_FALSE(brief.take(terminal.path()).has_value());
    }
    EXPECT_FALSE(QFile::exists(lockFile()));
    EXPECT_FALSE(lock.take(terminal.path()).has_value());
}

TEST_F(PortLockTest, lockFileOfALivingProcess_namesTheHolderAndStays) {
    const OtherProcess other;
    for (const QByteArray &bytes :
         {asText(other.pid()), QByteArray::number(other.pid()),
          "      " + QByteArray::number(other.pid()) + " dialler root\n",
          QByteArray::number(other.pid()) + "\ndialler\nhost\n", asBinary(other.pid())}) {
        writeLockFile(bytes);
        const std::optional<PortHolder> holder = lock.take(terminal.path());
        ASSERT_TRUE(holder.has_value()) << bytes.toPercentEncoding().toStdString();
        EXPECT_EQ(holder->pid, other.pid());
        EXPECT_EQ(holder->text(), QStringLiteral("sleep (process %1)").arg(other.pid()));
        EXPECT_EQ(lockFileBytes(), bytes);
    }
}

TEST_F(PortLockTest, lockFileOfADeadProcess_neitherBlocksNorIsReplaced) {
    OtherProcess other;
    const qint64 pid = other.pid();
    other.end();
    for (const QByteArray &bytes :
         {asText(pid), asBinary(pid), QByteArray(), QByteArray("?"), QByteArray("-1\n"),
          QByteArray("0\n"), QByteArray("4294967295\n"), QByteArray("4294967297\n")}) {
        writeLockFile(bytes);
        EXPECT_FALSE(lock.take(terminal.path()).has_value());
        EXPECT_EQ(lockFileBytes(), bytes);
        lock.release();
        EXPECT_EQ(lockFileBytes(), bytes);
    }
}

/// The bytes of the binary form may be digits up to a NUL; here they would be process 1 as text.
TEST_F(PortLockTest, binaryLockFileThatBeginsWithADigit_isNotReadAsText) {
    const QByteArray bytes("1\0\0\0", 4);
    qint32 binary = 0;
    std::memcpy(&binary, bytes.constData(), sizeof binary);
    const bool isAlive = QFileInfo::exists(QStringLiteral("/proc/%1").arg(binary));
    writeLockFile(bytes);
    const std::optional<PortHolder> holder = lock.take(terminal.path());
    EXPECT_EQ(holder ? holder->pid : 0, isAlive ? binary : 0);
}

TEST_F(PortLockTest, ownLockFileLeftBehind_isReplacedAndRemoved) {
    ASSERT_FALSE(lock.take(terminal.path()).has_value());
    const QByteArray ours = lockFileBytes();
    lock.release();
    const OtherProcess other; // has got the number of the run that was killed
    QByteArray leftBehind = ours;
    leftBehind.replace(asText(::getpid()), asText(other.pid()));
    writeLockFile(leftBehind);
    EXPECT_FALSE(lock.take(terminal.path()).has_value());
    EXPECT_EQ(lockFileBytes(), ours);
    lock.release();
    EXPECT_FALSE(QFile::exists(lockFile()));
}

TEST_F(PortLockTest, flockOfAnotherProcess_namesItAndBlocksUntilItEnds) {
    OtherProcess other(terminal.path());
    const std::optional<PortHolder> holder = lock.take(terminal.path());
    ASSERT_TRUE(holder.has_value());
    EXPECT_EQ(holder->text(), QStringLiteral("sleep (process %1)").arg(other.pid()));
    EXPECT_FALSE(QFile::exists(lockFile()));
    other.end();
    EXPECT_FALSE(lock.take(terminal.path()).has_value());
}

TEST_F(PortLockTest, flockHolder_isFoundInTheKernelsList) {
    PortLock other{QStringList{}};
    ASSERT_FALSE(other.take(terminal.path()).has_value());
    const std::optional<PortHolder> holder = lock.take(terminal.path());
    ASSERT_TRUE(holder.has_value());
    EXPECT_EQ(holder->pid, ::getpid());
    EXPECT_TRUE(holder->text().startsWith(QLatin1String("test_link_qt (process ")));
}

/// The kernel keeps everybody but root out of a terminal that is taken for exclusive use.
TEST_F(PortLockTest, deviceTakenForExclusiveUse_isHeldByAnotherProgram) {
    const QByteArray device = terminal.path().toLocal8Bit();
    ASSERT_EQ(::chmod(device.constData(), 0666), 0);
    const int other = ::open(device.constData(), O_RDWR | O_NOCTTY);
    ASSERT_EQ(::ioctl(other, TIOCEXCL), 0);
    const PlainUser user;
    const std::optional<PortHolder> holder = lock.take(terminal.path());
    ASSERT_TRUE(holder.has_value());
    EXPECT_EQ(holder->text(), "another program");
    ::close(other);
}

TEST_F(PortLockTest, deviceThatDoesNotOpen_hasNoHolder) {
    EXPECT_FALSE(lock.take(QStringLiteral("/dev/no-such-device")).has_value());
}

TEST_F(PortLockTest, folderThatCantBeWritten_leavesTheFlock) {
    PortLock bare{QStringList{folder.filePath("missing")}};
    EXPECT_FALSE(bare.take(terminal.path()).has_value());
    EXPECT_TRUE(lock.take(terminal.path()).has_value());
}

TEST(PortHolder, unknownProcess_isAnotherProgram) {
    EXPECT_EQ(PortHolder{}.text(), "another program");
    EXPECT_EQ((PortHolder{12, {}}).text(), "another program (process 12)");
}

} // namespace
} // namespace veldron
