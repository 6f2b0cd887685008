// SPDX-License-Identifier: MIT
#include "simulator/UnitLine.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace veldron {
namespace {

/// The program's end: opened through the link, as a serial port would be.
class FarEnd {
public:
    explicit FarEnd(const QString &path)
        : m_descriptor(
              ::open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK)) {}
    FarEnd(const FarEnd &) = delete;
    FarEnd &operator=(const FarEnd &) = delete;
    ~FarEnd() { close(); }

    [[nodiscard]] int descriptor() const { return m_descriptor; }
    bool send(const QByteArray &bytes) {
        return ::write(m_descriptor, bytes.constData(), std::size_t(bytes.size())) == bytes.size();
    }
    /// All that has come; waits a little for \a atLeast bytes, which are on their way already.
    QByteArray receive(qsizetype atLeast) {
        QByteArray all;
        std::array<char, 4096> buffer{};
        while (all.size() < atLeast) {
            pollfd watched{m_descriptor, POLLIN, 0};
            if (::poll(&watched, 1, 1000) <= 0) {
                break;
            }
            const ssize_t length = ::read(m_descriptor, buffer.data(), buffer.size());
            if (length <= 0) {
                break;
            }
            all.append(buffer.data(), length);
        }
        return all;
    }
    void close() {
        if (m_descriptor >= 0) {
            ::close(m_descriptor);
        }
        m_descriptor = -1;
    }

private:
    int m_descriptor;
};

class UnitLineTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_line.plug()) << qPrintable(m_line.error()); }

    /// Waits until the kernel has what was sent, then serves it.
    void serve(double now) {
        pollfd watched{m_line.descriptor(), POLLIN, 0};
        ::poll(&watched, 1, 1000);
        m_line.serve(now);
    }
    QByteArray exchange(FarEnd &end, const QByteArray &line, qsizetype size) {
        EXPECT_TRUE(end.send(line));
        serve(1.0);
        return end.receive(size);
    }

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath("COM3");
    Unit m_unit;
    Faults m_faults;
    UnitLine m_line{m_unit, m_faults, m_path, 0};
};

TEST_F(UnitLineTest, programThroughTheLink_isAnswered) {
    FarEnd end(m_path);
    EXPECT_EQ(exchange(end, "RUMD\r\n", 7), "UMD1 \r\n");
}

TEST_F(UnitLineTest, terminal_isRawFromTheStart) {
    const FarEnd end(m_path);
    termios settings{};
    ASSERT_EQ(::tcgetattr(end.descriptor(), &settings), 0);
    EXPECT_EQ(settings.c_lflag & tcflag_t(ICANON | ECHO | ISIG), 0U);
    EXPECT_EQ(settings.c_oflag & tcflag_t(OPOST), 0U);
    EXPECT_EQ(settings.c_iflag & tcflag_t(ICRNL | INLCR | IXON), 0U);
}

TEST_F(UnitLineTest, programThatClosesAndOpensAgain_isAnswered) {
    for (int i = 0; i < 3; ++i) {
        FarEnd end(m_path);
        EXPECT_EQ(exchange(end, "RSBW\r\n", 7), "SBW2 \r\n");
        end.close();
        m_line.serve(1.0);
    }
}

TEST_F(UnitLineTest, replyThatNobodyRead_isGoneAfterTheClose) {
    {
        FarEnd end(m_path);
        ASSERT_TRUE(end.send("RSBW\r\n"));
        serve(1.0);
    }
    m_line.serve(2.0);
    FarEnd next(m_path);
    EXPECT_EQ(exchange(next, "RUMD\r\n", 7), "UMD1 \r\n");
}

TEST_F(UnitLineTest, lockOfAProgramThatDied_isLifted) {
    {
        const FarEnd end(m_path);
        ASSERT_EQ(::ioctl(end.descriptor(), TIOCEXCL), 0);
        m_line.serve(1.0);
    }
    m_line.serve(2.0);
    const FarEnd next(m_path);
    ASSERT_GE(next.descriptor(), 0);
    int locked = 1;
    ASSERT_EQ(::ioctl(next.descriptor(), TIOCGEXCL, &locked), 0);
    EXPECT_EQ(locked, 0);
}

TEST_F(UnitLineTest, scanAtThePaceOfTheLine_arrivesWhole) {
    UnitLine paced(m_unit, m_faults, m_folder.filePath("COM4"), 9600);
    ASSERT_TRUE(paced.plug());
    FarEnd end(m_folder.filePath("COM4"));
    ASSERT_TRUE(end.send("RIFD\r\n"));
    pollfd watched{paced.descriptor(), POLLIN, 0};
    ASSERT_EQ(::poll(&watched, 1, 1000), 1);
    double now = 5.0;
    paced.serve(now);
    QByteArray all;
    while (const std::optional<double> due = paced.nextDue()) {
        now = *due;
        paced.serve(now);
        all += end.receive(1);
    }
    EXPECT_NEAR(now, 5.0 + double(all.size()) * 11.0 / 9600.0, 1e-6);
    EXPECT_EQ(all.size(), 9 + 324);
}

TEST_F(UnitLineTest, imageLargerThanTheTerminal_arrivesWhole) {
    FarEnd end(m_path);
    ASSERT_TRUE(end.send("RVIM\r\n"));
    serve(1.0);
    QByteArray all = end.receive(6);
    double now = 1.3;
    for (int turn = 0; turn < 10000 && all.size() < 6 + Unit::kImageSize; ++turn) {
        m_line.serve(now);
        now += 0.0001;
        all += end.receive(1);
    }
    EXPECT_EQ(all.size(), 6 + Unit::kImageSize);
}

TEST_F(UnitLineTest, programThatReadsNothing_losesItsReplies) {
    FarEnd end(m_path);
    ASSERT_TRUE(end.send("RVIM\r\n"));
    serve(1.0);
    m_line.serve(1.3);
    EXPECT_TRUE(m_line.isBlocked());
    m_line.serve(2.0);
    EXPECT_TRUE(m_line.isBlocked());
    for (int i = 0; i < 200 && m_line.isBlocked(); ++i) {
        m_line.serve(3.0 + 2.0 * i);
    }
    EXPECT_FALSE(m_line.isBlocked());
}

TEST_F(UnitLineTest, unplug_removesLinkAndTerminal) {
    FarEnd end(m_path);
    m_line.unplug();
    EXPECT_FALSE(QFileInfo(m_path).isSymLink());
    char byte = 0;
    EXPECT_LE(::read(end.descriptor(), &byte, 1), 0);
    EXPECT_EQ(m_line.descriptor(), -1);
    m_line.serve(1.0);
}

TEST_F(UnitLineTest, plugAfterUnplug_bringsItBackWithItsSettings) {
    ASSERT_TRUE(m_unit.setByHand("WSBW4"));
    m_line.unplug();
    ASSERT_TRUE(m_line.plug());
    FarEnd end(m_path);
    EXPECT_EQ(exchange(end, "RSBW\r\n", 7), "SBW4 \r\n");
}

TEST_F(UnitLineTest, plugTwice_changesNothing) {
    const int before = m_line.descriptor();
    EXPECT_TRUE(m_line.plug());
    EXPECT_EQ(m_line.descriptor(), before);
}

TEST_F(UnitLineTest, end_removesItsOwnLinkOnly) {
    const QString path = m_folder.filePath("COM5");
    {
        UnitTerminal first(path);
        ASSERT_TRUE(first.plug());
        UnitTerminal second(path);
        ASSERT_TRUE(second.plug()) << "a link that is there is replaced";
        first.unplug();
        EXPECT_TRUE(QFileInfo(path).isSymLink());
    }
    EXPECT_FALSE(QFileInfo(path).isSymLink());
}

TEST_F(UnitLineTest, pathThatIsTakenOrMissing_isRefusedWithAReason) {
    const QString path = m_folder.filePath("file");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    UnitTerminal onFile(path);
    EXPECT_FALSE(onFile.plug());
    EXPECT_FALSE(onFile.error().isEmpty());
    EXPECT_TRUE(QFileInfo(path).isFile());
    UnitTerminal nowhere(m_folder.filePath("none/COM3"));
    EXPECT_FALSE(nowhere.plug());
    EXPECT_FALSE(nowhere.isPlugged());
}

} // namespace
} // namespace veldron
