// SPDX-License-Identifier: MIT
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace veldron {
namespace {

constexpr int kLimit = 20000; ///< milliseconds

/// The simulator as a shell runs it, with a unit at "COM3" in a folder of its own.
class SimulatorProgram : public testing::Test {
protected:
    ~SimulatorProgram() override {
        m_process.kill();
        m_process.waitForFinished();
    }
    void start(const QStringList &options = {}) {
        m_process.start(QStringLiteral(VELDRON_SIMULATOR),
                        QStringList{"--port", m_port, "--pace", "none"} + options);
        EXPECT_EQ(readLine(), "ready " + m_port.toLocal8Bit() + "\n");
    }
    QByteArray readLine() {
        while (!m_process.canReadLine() && m_process.waitForReadyRead(kLimit)) {
        }
        return m_process.readLine();
    }
    QByteArray type(const QByteArray &line) {
        m_process.write(line + "\n");
        return readLine();
    }
    /// What the unit answers to \a command, up to the end of a line.
    [[nodiscard]] QByteArray exchange(const QByteArray &command) const {
        const int line = ::open(QFile::encodeName(m_port).constData(), O_RDWR | O_NOCTTY);
        EXPECT_EQ(::write(line, command.constData(), static_cast<std::size_t>(command.size())),
                  command.size());
        QByteArray reply;
        pollfd watched{line, POLLIN, 0};
        std::array<char, 64> buffer{};
        while (!reply.endsWith('\n') && ::poll(&watched, 1, kLimit) > 0) {
            const ssize_t length = ::read(line, buffer.data(), buffer.size());
            if (length <= 0) {
                break;
            }
            reply.append(buffer.data(), length);
        }
        ::close(line);
        return reply;
    }
    [[nodiscard]] int code() {
        EXPECT_TRUE(m_process.waitForFinished(kLimit));
        return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }

    QTemporaryDir m_folder;
    QString m_port = m_folder.filePath("COM3");
    QProcess m_process;
};

TEST_F(SimulatorProgram, started_answersOnTheLineAndOnTheConsole) {
    start();
    EXPECT_EQ(exchange("RSBW\r\n"), "SBW2 \r\n");
    EXPECT_EQ(type("set bandwidth 4"), "ok\n");
    EXPECT_EQ(exchange("RSBW\r\n"), "SBW4 \r\n");
    EXPECT_TRUE(type("nonsense").startsWith("error: "));
}

TEST_F(SimulatorProgram, log_hasALineWithItsTimeForEachCommandAndReply) {
    start({"--log", m_folder.filePath("log")});
    EXPECT_EQ(exchange("RSBW\r\n"), "SBW2 \r\n");
    QFile log(m_folder.filePath("log"));
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    const QString text = QString::fromLatin1(log.readAll());
    const QRegularExpression lines(R"(^(\S+) > "RSBW\\r\\n"\n(\S+) < "SBW2 \\r\\n"\n$)");
    const QRegularExpressionMatch match = lines.match(text);
    EXPECT_TRUE(match.hasMatch()) << qPrintable(text);
    EXPECT_TRUE(QDateTime::fromString(match.captured(1), Qt::ISODateWithMs).isValid());
    EXPECT_TRUE(QDateTime::fromString(match.captured(2), Qt::ISODateWithMs).isValid());
}

TEST_F(SimulatorProgram, signalToEnd_takesThePortAway) {
    start();
    m_process.terminate();
    EXPECT_EQ(code(), 0);
    EXPECT_FALSE(QFileInfo(m_port).isSymLink());
}

TEST_F(SimulatorProgram, endOfInput_endsOnlyWhoAskedForIt) {
    start({"--exit-on-eof"});
    m_process.closeWriteChannel();
    EXPECT_EQ(code(), 0);
    start();
    m_process.closeWriteChannel();
    EXPECT_EQ(exchange("RSBW\r\n"), "SBW2 \r\n");
    EXPECT_EQ(m_process.state(), QProcess::Running);
}

TEST_F(SimulatorProgram, quit_ends) {
    start();
    EXPECT_EQ(type("quit"), "ok\n");
    EXPECT_EQ(code(), 0);
}

TEST_F(SimulatorProgram, wrongCommandLine_isRefusedWithAReason) {
    m_process.start(QStringLiteral(VELDRON_SIMULATOR), {"--what"});
    EXPECT_EQ(code(), 1);
    EXPECT_TRUE(m_process.readAllStandardError().startsWith("veldron-simulator: "));
}

TEST_F(SimulatorProgram, help_isPrintedWithoutAPort) {
    m_process.start(QStringLiteral(VELDRON_SIMULATOR), {"--help"});
    EXPECT_EQ(code(), 0);
    EXPECT_TRUE(m_process.readAllStandardOutput().contains("--exit-on-eof"));
}

TEST_F(SimulatorProgram, logOrPortThatCannotBeMade_isToldWithTheReason) {
    const struct {
        QStringList options;
        QString what;
    } cases[] = {{{"--port", m_port, "--log", m_folder.path()}, m_folder.path()},
                 {{"--port", m_folder.filePath("no/COM3")}, m_folder.filePath("no/COM3")}};
    for (const auto &item : cases) {
        m_process.start(QStringLiteral(VELDRON_SIMULATOR), item.options);
        m_process.closeWriteChannel();
        EXPECT_EQ(code(), 1);
        const QByteArray told = m_process.readAllStandardError();
        EXPECT_TRUE(told.startsWith("veldron-simulator: " + item.what.toLocal8Bit() + ": "))
            << told.constData();
        EXPECT_EQ(m_process.readAllStandardOutput(), "");
    }
}

TEST_F(SimulatorProgram, programThatReadsNothing_findsOnlyWhatTheTerminalHolds) {
    constexpr int kScans = 100;
    start();
    const int line = ::open(QFile::encodeName(m_port).constData(), O_RDWR | O_NOCTTY);
    for (int i = 0; i < kScans; ++i) {
        EXPECT_EQ(::write(line, "RIFD\r\n", 6), 6);
    }
    // Longer than the unit waits, with nothing that would wake it.
    ::usleep(2500000);
    qsizetype size = 0;
    pollfd watched{line, POLLIN, 0};
    std::array<char, 4096> buffer{};
    while (::poll(&watched, 1, 300) > 0) {
        size += ::read(line, buffer.data(), buffer.size());
    }
    ::close(line);
    EXPECT_GT(size, 321);
    EXPECT_LT(size, kScans * 321);
    EXPECT_EQ(exchange("RSBW\r\n"), "SBW2 \r\n");
}

} // namespace
} // namespace veldron
