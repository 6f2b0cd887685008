// SPDX-License-Identifier: MIT
// On real pseudo-terminals, found through a folder of links; never on the machine's own ports.
#include "link/QtSerialControl.h"

#include "link/frmVDR.h"
#include "tests/link/PseudoTerminal.h"
#include "tests/support/PlainUser.h"
#include "tests/support/RecordingLinkHost.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <fcntl.h>
#include <functional>
#include <optional>
#include <set>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <time.h>
#include <unistd.h>

inline void PrintTo(const QString &text, std::ostream *out) {
    *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QByteArray &bytes, std::ostream *out) {
    *out << bytes.toPercentEncoding(" ?").toStdString();
}

namespace veldron {
namespace {

/// Serial ports need an application object, whether its loop runs or not.
class CoreApplication : public testing::Environment {
public:
    void SetUp() override { m_application.emplace(m_count, m_arguments); }
    void TearDown() override { m_application.reset(); }

private:
    char m_name[5] = "test";
    char *m_arguments[2] = {m_name, nullptr};
    int m_count = 1;
    std::optional<QCoreApplication> m_application;
};
[[maybe_unused]] testing::Environment *const kApplication =
    testing::AddGlobalTestEnvironment(new CoreApplication); // owned by the test framework

/// The machine's time, for exchanges with a real descriptor.
class RealClock : public Clock {
public:
    float timeOfDay() override { return static_cast<float>(m_timer.elapsed()) / 1000.0F; }
    QDateTime now() override { return QDateTime::currentDateTime(); }
    qint64 steadyMilliseconds() override { return m_timer.elapsed(); }
    void rest(int milliseconds) override {
        QThread::msleep(static_cast<unsigned long>(milliseconds));
    }

private:
    QElapsedTimer m_timer = [] {
        QElapsedTimer timer;
        timer.start();
        return timer;
    }();
};

/// Processor time of this process in seconds.
double processorSeconds() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval &time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// A terminal on COM 3 of a folder of ports, and the control in front of it.
class QtSerialControlTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_folder.isValid());
        terminal.emplace();
        plug(*terminal);
    }
    void plug(const PseudoTerminal &device) {
        QFile::remove(link());
        ASSERT_TRUE(QFile::link(device.path(), link()));
    }
    [[nodiscard]] QString link() const { return m_folder.filePath("COM3"); }
    SerialControl::Result open(qint16 port = 3) {
        if (SerialControl::Result failure = control.setCommPort(port)) {
            return failure;
        }
        return control.setPortOpen(true);
    }
    /// Waits, two seconds at most, until \a count bytes have arrived.
    QByteArray read(qsizetype count) {
        QByteArray bytes;
        for (int turn = 0; turn < 400 && bytes.size() < count; ++turn) {
            bytes += control.Input();
            if (bytes.size() < count && !control.waitForInput(5)) {
                break;
            }
        }
        return bytes;
    }
    /// Takes the terminal away and lets the control find out.
    void unplug() {
        terminal->unplug();
        QFile::remove(link());
        static_cast<void>(control.Input());
    }

private:
    QTemporaryDir m_folder;

protected:
    const ErrorGuard guard{[](const UntrappedError &error) {
        ADD_FAILURE() << error.message().toStdString();
    }};
    std::optional<PseudoTerminal> terminal;
    QtSerialControl control{guard, PortMap::ofFolder(m_folder.path())};
};

TEST_F(QtSerialControlTest, startsClosedWithoutAPort) {
    EXPECT_EQ(control.CommPort(), 0);
    EXPECT_FALSE(control.PortOpen());
    EXPECT_EQ(control.InBufferCount(), 0);
    EXPECT_EQ(control.Input(), "");
    EXPECT_FALSE(control.waitForInput(5));
}

TEST_F(QtSerialControlTest, pseudoTerminal_opensWithTheUnitsLineSettings) {
    control.setHandshaking(2);
    control.setSettings("9600,n,8,2");
    EXPECT_FALSE(open().has_value());
    EXPECT_TRUE(control.PortOpen());
    EXPECT_EQ(control.CommPort(), 3);
}

/// Speed, stop bits and handshake of the terminal. A pseudo-terminal has 8 data bits and no parity
/// whatever is asked for, so that those two only show that nothing asked for others in vain.
QString lineText(const PseudoTerminal &terminal) {
    const termios line = terminal.lineSettings();
    const auto speedText = [](speed_t speed) {
        return speed == B9600 ? "9600" : speed == B115200 ? "115200" : "other";
    };
    return QStringLiteral("%1/%2 %3 bits %4 %5 stop %6")
        .arg(speedText(::cfgetispeed(&line)))
        .arg(speedText(::cfgetospeed(&line)))
        .arg((line.c_cflag & CSIZE) == CS8 ? 8 : 0)
        .arg((line.c_cflag & PARENB) == 0 ? "no parity" : "parity")
        .arg((line.c_cflag & CSTOPB) != 0 ? 2 : 1)
        .arg((line.c_cflag & CRTSCTS) != 0 ? "RTS/CTS" : "no handshake");
}
const char *const kTextLine = "9600/9600 8 bits no parity 2 stop RTS/CTS";
const char *const kImageLine = "115200/115200 8 bits no parity 1 stop RTS/CTS";

TEST_F(QtSerialControlTest, terminal_hasTheSettingsAfterEachOpen) {
    control.setHandshaking(2);
    for (const char *settings :
         {"9600,n,8,2", "115200,N,8,1", "9600,N,8,2", "115200,N,8,1", "9600,n,8,2"}) {
        control.setSettings(settings);
        ASSERT_FALSE(open().has_value());
        EXPECT_EQ(lineText(*terminal), settings[0] == '9' ? kTextLine : kImageLine);
        control.setPortOpen(false);
    }
}

TEST_F(QtSerialControlTest, handshaking_isOnTheTerminal) {
    for (const bool on : {true, false}) {
        control.setHandshaking(on ? 2 : 0);
        ASSERT_FALSE(open().has_value());
        EXPECT_EQ((terminal->lineSettings().c_cflag & CRTSCTS) != 0, on);
        control.setPortOpen(false);
    }
}

TEST_F(QtSerialControlTest, bytes_goBothWaysUnchanged) {
    control.setHandshaking(2);
    ASSERT_FALSE(open().has_value());
    QByteArray all;
    for (int value = 0; value < 256; ++value) {
        all.append(static_cast<char>(value));
    }
    terminal->send(all);
    EXPECT_EQ(read(256), all);
    control.setOutput(all);
    QByteArray received;
    while (received.size() < 256 && terminal->waitForBytes(2000)) {
        received += terminal->receive();
    }
    EXPECT_EQ(received, all);
}

TEST_F(QtSerialControlTest, readOfOneByte_fetchesWhatHasJustCome) {
    ASSERT_FALSE(open().has_value());
    control.setInputLen(1);
    terminal->deliver("ab");
    EXPECT_EQ(control.Input(), "a");
    EXPECT_EQ(control.Input(), "b");
    EXPECT_EQ(control.Input(), "");
}

TEST_F(QtSerialControlTest, inputLength_limitsOneRead) {
    ASSERT_FALSE(open().has_value());
    terminal->send("abcd");
    EXPECT_TRUE(control.waitForInput(1000));
    control.setInputLen(1);
    EXPECT_EQ(control.Input(), "a");
    EXPECT_EQ(control.InBufferCount(), 3);
    control.setInputLen(0);
    EXPECT_EQ(control.Input(), "bcd");
    EXPECT_EQ(control.Input(), "");
}

TEST_F(QtSerialControlTest, bytesInTheKernel_areSeenWithoutAWait) {
    ASSERT_FALSE(open().has_value());
    terminal->send("stale");
    EXPECT_EQ(control.InBufferCount(), 5);
    terminal->send("more");
    EXPECT_EQ(control.Input(), "stalemore");
}

TEST_F(QtSerialControlTest, bytesSentBeforeTheOpening_areGone) {
    terminal->send("old");
    ASSERT_FALSE(open().has_value());
    EXPECT_EQ(control.Input(), "");
}

TEST_F(QtSerialControlTest, closing_dropsWhatWaits) {
    ASSERT_FALSE(open().has_value());
    terminal->send("waiting");
    EXPECT_EQ(control.InBufferCount(), 7);
    EXPECT_FALSE(control.setPortOpen(false).has_value());
    EXPECT_FALSE(control.PortOpen());
    EXPECT_EQ(control.InBufferCount(), 0);
    ASSERT_FALSE(control.setPortOpen(true).has_value());
    EXPECT_EQ(control.Input(), "");
}

/// On a real line the close itself would wait half a minute for bytes that nobody takes.
TEST_F(QtSerialControlTest, closingWithUnreadOutput_flushesTheKernelsBufferFirst) {
    control.setHandshaking(2);
    ASSERT_FALSE(open().has_value());
    terminal->watchFlushes();
    control.setOutput("unread");
    (void)terminal->outputWasFlushed();
    control.setOutput("next");
    EXPECT_TRUE(terminal->outputWasFlushed());
    control.setPortOpen(false);
    EXPECT_TRUE(terminal->outputWasFlushed());
}

TEST_F(QtSerialControlTest, closing_dropsUnsentOutput) {
    ASSERT_FALSE(open().has_value());
    control.setOutput(QByteArray(60000, 'x'));
    control.setPortOpen(false);
    QByteArray received;
    while (terminal->waitForBytes(50)) {
        received += terminal->receive();
    }
    EXPECT_LT(received.size(), 8000);
}

TEST_F(QtSerialControlTest, closingAClosedPort_isNoFailure) {
    EXPECT_FALSE(control.setPortOpen(false).has_value());
}

TEST_F(QtSerialControlTest, absentPort_is8002) {
    const SerialControl::Result failure = open(4);
    ASSERT_TRUE(failure.has_value());
    EXPECT_EQ(failure->number, 8002);
    EXPECT_FALSE(control.PortOpen());
}

TEST_F(QtSerialControlTest, linkThatLeadsNowhere_is8002) {
    const QString path = terminal->path();
    terminal->unplug();
    ASSERT_FALSE(QFile::exists(path));
    const SerialControl::Result failure = open();
    ASSERT_TRUE(failure.has_value());
    EXPECT_EQ(failure->number, 8002);
}

TEST_F(QtSerialControlTest, portZeroOrOutside_is8002) {
    for (const qint16 port : {qint16{0}, qint16{-3}, qint16{17}}) {
        const SerialControl::Result failure = open(port);
        ASSERT_TRUE(failure.has_value());
        EXPECT_EQ(failure->number, 8002) << port;
    }
}

TEST_F(QtSerialControlTest, entryThatIsNoTerminal_is8012WithTheSystemsText) {
    QFile::remove(link());
    QFile file(link());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const SerialControl::Result failure = open();
    ASSERT_TRUE(failure.has_value());
    EXPECT_EQ(failure->number, 8012);
    EXPECT_FALSE(failure->description.isEmpty());
    EXPECT_FALSE(control.PortOpen());
}

TEST_F(QtSerialControlTest, terminalWithoutTheRightToUseIt_is70) {
    ASSERT_EQ(::chmod(QFile::encodeName(terminal->path()).constData(), 0), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(QFileInfo(link()).path()).constData(), 0755), 0);
    const PlainUser user;
    const SerialControl::Result failure = open();
    ASSERT_TRUE(failure.has_value());
    EXPECT_EQ(failure->number, 70);
    EXPECT_TRUE(failure->description.startsWith("Permission denied for " + terminal->path()));
    EXPECT_FALSE(control.PortOpen());
}

TEST_F(QtSerialControlTest, portHeldByAnother_is8005UntilItIsFree) {
    QtSerialControl other(guard, PortMap::ofDevices({terminal->path()}));
    other.setCommPort(1);
    ASSERT_FALSE(other.setPortOpen(true).has_value());
    const SerialControl::Result failure = open();
    ASSERT_TRUE(failure.has_value());
    EXPECT_EQ(failure->number, 8005);
    other.setPortOpen(false);
    EXPECT_FALSE(open().has_value());
}

/// A lock file for the terminal in the system's folder for them.
class QtSerialControlLockTest : public QtSerialControlTest {
protected:
    void SetUp() override {
        QtSerialControlTest::SetUp();
        m_path = "/run/lock/LCK..pts_" + terminal->path().section('/', -1);
    }
    void TearDown() override { QFile::remove(m_path); }
    void writeLockFile(const QByteArray &bytes) const {
        QFile file(m_path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    [[nodiscard]] QByteArray lockFile() const {
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QString m_path;
};

TEST_F(QtSerialControlLockTest, lockFileOfALivingProcess_is8005AndTheDeviceIsNotTouched) {
    for (const QByteArray &bytes : {QByteArray("         1\n"), QByteArray("\1\0\0\0", 4)}) {
        writeLockFile(bytes);
        const QString before = lineText(*terminal);
        const SerialControl::Result failure = open();
        ASSERT_TRUE(failure.has_value());
        EXPECT_EQ(failure->number, 8005);
        EXPECT_TRUE(failure->description.startsWith(terminal->path() + " is in use by "));
        EXPECT_TRUE(failure->description.endsWith(" (process 1)"));
        control.setOutput("RIVE\r\n");
        EXPECT_FALSE(terminal->waitForBytes(20));
        EXPECT_EQ(lineText(*terminal), before);
        EXPECT_EQ(lockFile(), bytes);
    }
}

TEST_F(QtSerialControlLockTest, lockFileOfADeadProcess_neitherBlocksNorIsReplaced) {
    // No process has so high a number.
    for (const QByteArray &bytes : {QByteArray("2000000000\n"), QByteArray("\0\0\0\x70", 4)}) {
        writeLockFile(bytes);
        EXPECT_FALSE(open().has_value());
        EXPECT_EQ(lockFile(), bytes);
        control.setPortOpen(false);
        EXPECT_EQ(lockFile(), bytes);
    }
}

TEST_F(QtSerialControlLockTest, openPort_hasALockFileForOthers) {
    ASSERT_FALSE(open().has_value());
    EXPECT_EQ(lockFile().trimmed().split('\n').first().toLongLong(), ::getpid());
    control.setPortOpen(false);
    EXPECT_EQ(lockFile(), "");
}

TEST_F(QtSerialControlTest, flockHeldElsewhere_is8005UntilItIsFree) {
    const int other = ::open(terminal->path().toLocal8Bit().constData(), O_RDWR | O_NOCTTY);
    ASSERT_EQ(::flock(other, LOCK_EX), 0);
    const SerialControl::Result failure = open();
    ASSERT_TRUE(failure.has_value());
    EXPECT_EQ(failure->number, 8005);
    ::close(other);
    EXPECT_FALSE(open().has_value());
}

TEST_F(QtSerialControlTest, openPort_holdsAFlockUntilItIsClosed) {
    ASSERT_FALSE(open().has_value());
    const int other = ::open(terminal->path().toLocal8Bit().constData(), O_RDWR | O_NOCTTY);
    EXPECT_NE(::flock(other, LOCK_EX | LOCK_NB), 0);
    control.setPortOpen(false);
    EXPECT_EQ(::flock(other, LOCK_EX | LOCK_NB), 0);
    ::close(other);
}

TEST_F(QtSerialControlTest, openPort_neitherOpensTwiceNorChangesItsNumber) {
    ASSERT_FALSE(open().has_value());
    EXPECT_EQ(control.setPortOpen(true)->number, 8005);
    EXPECT_TRUE(control.PortOpen());
    EXPECT_EQ(control.setCommPort(4)->number, 8000);
    EXPECT_EQ(control.CommPort(), 3);
}

TEST_F(QtSerialControlTest, unplugged_portStaysOpenAndReadsAsSilence) {
    ASSERT_FALSE(open().has_value());
    unplug();
    EXPECT_TRUE(control.PortOpen());
    EXPECT_EQ(control.InBufferCount(), 0);
    EXPECT_EQ(control.Input(), "");
    EXPECT_FALSE(control.waitForInput(5));
    control.setOutput("RIVE\r\n");
    EXPECT_TRUE(control.PortOpen());
    EXPECT_FALSE(control.waitForInput(5));
}

TEST_F(QtSerialControlTest, unpluggedWhileWaiting_endsTheWait) {
    ASSERT_FALSE(open().has_value());
    terminal->unplug();
    QElapsedTimer timer;
    timer.start();
    for (int turn = 0; turn < 100 && control.waitForInput(5); ++turn) {
    }
    EXPECT_FALSE(control.waitForInput(5));
    EXPECT_LT(timer.elapsed(), 400);
}

TEST_F(QtSerialControlTest, unpluggedBetweenExchanges_doesNotSpinTheEventLoop) {
    ASSERT_FALSE(open().has_value());
    terminal->unplug();
    const double before = processorSeconds();
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 200) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 20);
        QThread::msleep(5);
    }
    EXPECT_LT(processorSeconds() - before, 0.1);
    EXPECT_TRUE(control.PortOpen());
    EXPECT_FALSE(control.waitForInput(1));
}

TEST_F(QtSerialControlTest, pluggedInAgain_nextWriteOpensTheNewDevice) {
    ASSERT_FALSE(open().has_value());
    unplug();
    control.setOutput("lost\r\n");
    PseudoTerminal next;
    plug(next);
    EXPECT_FALSE(control.waitForInput(1));
    control.setOutput("RIVE\r\n");
    EXPECT_EQ(next.receiveLine(), "RIVE");
    next.send("IVE");
    EXPECT_EQ(read(3), "IVE");
}

TEST_F(QtSerialControlTest, pluggedInAgainButHeldByAnother_writeTellsByWhom) {
    ASSERT_FALSE(open().has_value());
    unplug();
    const SerialControl::Result gone = control.setOutput("lost\r\n");
    ASSERT_TRUE(gone.has_value());
    EXPECT_EQ(gone->number, 8002);
    const PseudoTerminal next;
    plug(next);
    QtSerialControl other(guard, PortMap::ofDevices({next.path()}));
    other.setCommPort(1);
    ASSERT_FALSE(other.setPortOpen(true).has_value());
    const SerialControl::Result held = control.setOutput("lost\r\n");
    ASSERT_TRUE(held.has_value());
    EXPECT_EQ(held->number, 8005);
    EXPECT_TRUE(held->description.startsWith(next.path() + " is in use by "))
        << held->description.toStdString();
    other.setPortOpen(false);
    EXPECT_FALSE(control.setOutput("RIVE\r\n").has_value());
    EXPECT_EQ(next.receiveLine(), "RIVE");
}

TEST_F(QtSerialControlTest, closedAfterUnplugging_writesNoLongerOpenIt) {
    ASSERT_FALSE(open().has_value());
    unplug();
    control.setPortOpen(false);
    PseudoTerminal next;
    plug(next);
    control.setOutput("RIVE\r\n");
    EXPECT_FALSE(control.PortOpen());
    EXPECT_EQ(next.receive(), "");
}

TEST_F(QtSerialControlTest, unpluggedThenOpenedByHand_works) {
    ASSERT_FALSE(open().has_value());
    unplug();
    control.setPortOpen(false);
    PseudoTerminal next;
    plug(next);
    ASSERT_FALSE(control.setPortOpen(true).has_value());
    next.send("x");
    EXPECT_EQ(read(1), "x");
}

TEST_F(QtSerialControlTest, unsentOutput_doesNotReachTheUnitLater) {
    ASSERT_FALSE(open().has_value());
    for (int block = 0; block < 8; ++block) {
        control.setOutput(QByteArray(65536, 'x'));
    }
    control.setOutput("RIVE\r\n");
    QByteArray received;
    while (terminal->waitForBytes(50)) {
        received += terminal->receive();
        static_cast<void>(control.waitForInput(1));
    }
    EXPECT_TRUE(received.endsWith("RIVE\r\n"));
    EXPECT_LT(received.size(), 65536);
}

TEST_F(QtSerialControlTest, deviceName_isTheDeviceBehindTheLink) {
    EXPECT_EQ(control.deviceName(3), terminal->path());
    EXPECT_EQ(control.deviceName(4), "");
    terminal->unplug();
    EXPECT_EQ(control.deviceName(3), link());
}

TEST_F(QtSerialControlTest, lineSettings_areTakenWhileOpenToo) {
    ASSERT_FALSE(open().has_value());
    for (const char *settings : {"115200,N,8,1", "9600,N,8,2", "rubbish", "9600,q,8,2", ""}) {
        control.setSettings(QString::fromLatin1(settings));
        terminal->send("k");
        EXPECT_EQ(read(1), "k") << settings;
    }
}

TEST_F(QtSerialControlTest, requestToSend_readsBackAsWritten) {
    ASSERT_FALSE(open().has_value());
    EXPECT_TRUE(control.RTSEnable());
    control.setRTSEnable(false);
    EXPECT_FALSE(control.RTSEnable());
    control.setRTSEnable(true);
    EXPECT_TRUE(control.RTSEnable());
    terminal->send("k");
    EXPECT_EQ(read(1), "k");
}

TEST_F(QtSerialControlTest, receiveEvent_isRaisedFromTheThresholdOn) {
    int events = 0;
    control.setCommHandler([&] { ++events; });
    ASSERT_FALSE(open().has_value());
    terminal->send("abc");
    EXPECT_EQ(control.InBufferCount(), 3);
    EXPECT_EQ(events, 0);
    control.setRThreshold(3);
    terminal->send("d");
    EXPECT_EQ(control.Input(), "abcd");
    EXPECT_EQ(events, 1);
    EXPECT_EQ(control.CommEvent(), 2);
}

TEST_F(QtSerialControlTest, handlerThatThrows_isReportedToTheGuard) {
    const UntrappedError thrown(UntrappedError::Kind::Overflow, "too much");
    QString reported;
    QtSerialControl guarded(
        ErrorGuard([&reported](const UntrappedError &error) { reported = error.message(); }),
        PortMap::ofDevices({terminal->path()}));
    guarded.setCommPort(1);
    guarded.setCommHandler([&thrown] { throw thrown; });
    guarded.setRThreshold(1);
    ASSERT_FALSE(guarded.setPortOpen(true).has_value());
    terminal->send("x");
    EXPECT_EQ(guarded.InBufferCount(), 1);
    EXPECT_EQ(reported, "too much");
}

TEST_F(QtSerialControlTest, deviceThatSendsUnasked_doesNotFillTheMemory) {
    ASSERT_FALSE(open().has_value());
    for (int block = 0; block < 400; ++block) {
        terminal->send(QByteArray(4000, 'u'));
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    EXPECT_LT(control.InBufferCount(), 1 << 20);
    EXPECT_FALSE(control.Input().isEmpty());
    terminal->send("x");
    EXPECT_EQ(read(1), "x");
}

struct FailureCase {
    OpenFailure::Kind kind;
    bool accessible;
    int number;
};

TEST(QtSerialControlFailure, eachKind_hasItsNumber) {
    using Kind = OpenFailure::Kind;
    for (const FailureCase &each : {
             FailureCase{Kind::NotThere, true, 8002},
             FailureCase{Kind::NotThere, false, 8002},
             FailureCase{Kind::NotAllowed, true, 8005},
             FailureCase{Kind::NotAllowed, false, 70},
             FailureCase{Kind::AlreadyOpen, true, 8005},
             FailureCase{Kind::AlreadyOpen, false, 8005},
             FailureCase{Kind::Other, true, 8012},
             FailureCase{Kind::Other, false, 8012},
         }) {
        const OpenFailure failure{each.kind, "/dev/ttyUSB0", "dialout", each.accessible, "Broken"};
        EXPECT_EQ(QtSerialControl::describe(failure).number, each.number);
        EXPECT_FALSE(QtSerialControl::describe(failure).description.isEmpty());
    }
}

TEST(QtSerialControlFailure, noPermission_saysWhichGroupToJoin) {
    const SerialError error = QtSerialControl::describe(
        {OpenFailure::Kind::NotAllowed, "/dev/ttyUSB0", "dialout", false, "no"});
    EXPECT_TRUE(error.description.contains("\"dialout\""));
    EXPECT_TRUE(error.description.contains("/dev/ttyUSB0"));
}

TEST(QtSerialControlFailure, anythingElse_isTheSystemsText) {
    const SerialError error = QtSerialControl::describe(
        {OpenFailure::Kind::Other, "/dev/ttyUSB0", "dialout", true, "Input/output error"});
    EXPECT_EQ(error.description, "Input/output error");
}

/// A unit in a thread of its own: answers each line with what \a reply gives for it.
class AnsweringUnit {
public:
    using Reply = std::function<QByteArray(const QByteArray &)>;
    AnsweringUnit(const PseudoTerminal &terminal, Reply reply)
        : m_terminal(terminal), m_reply(std::move(reply)), m_thread([this] { run(); }) {}
    AnsweringUnit(const AnsweringUnit &) = delete;
    AnsweringUnit &operator=(const AnsweringUnit &) = delete;
    ~AnsweringUnit() {
        m_stop = true;
        m_thread.join();
    }

private:
    void run() {
        while (!m_stop) {
            if (m_terminal.waitForBytes(10)) {
                m_terminal.send(m_reply(m_terminal.receiveLine()));
            }
        }
    }

    const PseudoTerminal &m_terminal;
    Reply m_reply;
    std::atomic<bool> m_stop = false;
    std::thread m_thread;
};

QByteArray unitReply(const QByteArray &line) {
    if (line == "RIVE") {
        return "IVE Ver 1.00 \r\n";
    }
    if (line == "RIFD") {
        return "IFD \r\n" + QByteArray(321, 'Z') + " \r\n";
    }
    return line.startsWith('W') ? " \r\n" : "?\r\n";
}

/// The whole link over a terminal.
class LinkOnATerminal : public QtSerialControlTest {
protected:
    RealClock clock;
    RecordingLinkHost host;
    frmVDR vdr{control, clock, host};
};

TEST_F(LinkOnATerminal, search_findsTheUnit) {
    const AnsweringUnit unit(*terminal, unitReply);
    EXPECT_EQ(vdr.GetCommPorts(), QStringList({"COM 3"}));
    EXPECT_EQ(vdr.ComDefault(), 1);
    EXPECT_EQ(vdr.Version(), "Ver 1.00");
}

TEST_F(LinkOnATerminal, scan_comesWholeAndAtOnce) {
    const AnsweringUnit unit(*terminal, unitReply);
    vdr.setCommPort(3);
    vdr.Connect();
    constexpr std::size_t kScans = 51;
    std::vector<qint64> microseconds;
    while (microseconds.size() < kScans) {
        QElapsedTimer timer;
        timer.start();
        ASSERT_EQ(vdr.GetData(), LevelScan(321, 'Z'));
        microseconds.push_back(timer.nsecsElapsed() / 1000);
    }
    // Two milliseconds go by before the command is sent. A wait that only ended at its limit would
    // cost five more in every scan; one of the fastest scans shows that on a busy machine too.
    std::sort(microseconds.begin(), microseconds.end());
    EXPECT_LT(microseconds[kScans / 10], 6000);
}

TEST_F(LinkOnATerminal, terminal_hasTheUnitsSettingsAfterEachOpen) {
    vdr.setCommPort(3);
    EXPECT_EQ(lineText(*terminal), kTextLine);
    vdr.setCommPort(3);
    EXPECT_EQ(lineText(*terminal), kTextLine);
    vdr.Connect();
    std::thread observer;
    QString during;
    {
        const AnsweringUnit unit(*terminal, unitReply);
        observer = std::thread([&] {
            for (int turn = 0; turn < 200 && during != kImageLine; ++turn) {
                during = lineText(*terminal);
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
            }
        });
        vdr.GetGraphic();
        observer.join();
    }
    EXPECT_EQ(during, kImageLine);
    EXPECT_EQ(lineText(*terminal), kTextLine);
    unplug();
    const PseudoTerminal next;
    plug(next);
    vdr.Connect();
    EXPECT_EQ(lineText(next), kTextLine);
}

/// A line that goes on delivering what is left of an earlier reply: each wait of the link finds the
/// next block in the kernel, so that no pause of a busy machine looks like the end of it.
class StaleLine : public QtSerialControl {
public:
    StaleLine(const ErrorGuard &guard, const PseudoTerminal &terminal)
        : QtSerialControl(guard, PortMap::ofDevices({terminal.path()})), m_terminal(terminal) {}
    void leaveBehind(qsizetype bytes) {
        m_left = bytes;
        deliverNext();
    }
    [[nodiscard]] qsizetype left() const { return m_left; }
    /// Milliseconds of the waits while bytes were left.
    [[nodiscard]] const std::set<int> &waits() const { return m_waits; }
    [[nodiscard]] bool waitForInput(int milliseconds) override {
        if (m_left > 0) {
            m_waits.insert(milliseconds);
            deliverNext();
        }
        return QtSerialControl::waitForInput(milliseconds);
    }

private:
    void deliverNext() {
        const qsizetype count = std::min(m_left, qsizetype{2000});
        m_terminal.deliver(QByteArray(count, 's'));
        m_left -= count;
    }

    const PseudoTerminal &m_terminal;
    qsizetype m_left = 0;
    std::set<int> m_waits;
};

/// Its steady reading is the work of this thread: other programs' work brings no limit nearer.
class WorkClock : public RealClock {
public:
    qint64 steadyMilliseconds() override {
        timespec work{};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &work);
        return qint64{work.tv_sec} * 1000 + work.tv_nsec / 1000000;
    }
};

TEST_F(LinkOnATerminal, staleBytes_areAllThrownAwayBeforeTheCommand) {
    StaleLine line(guard, *terminal);
    WorkClock work;
    frmVDR link(line, work, host);
    const AnsweringUnit unit(*terminal, unitReply);
    link.setCommPort(1);
    for (int turn = 0; turn < 10; ++turn) {
        line.leaveBehind(60000);
        EXPECT_TRUE(link.Connect());
        EXPECT_EQ(line.left(), 0) << turn;
        EXPECT_EQ(link.Version(), "Ver 1.00") << turn;
        EXPECT_EQ(link.GetData(), LevelScan(321, 'Z')) << turn;
    }
    EXPECT_EQ(line.waits(), std::set<int>{2});
}

TEST_F(LinkOnATerminal, exchange_doesNotRunTheEventLoop) {
    bool ran = false;
    const auto queueEvent = [&] {
        ran = false;
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [&ran] { ran = true; }, Qt::QueuedConnection);
    };
    vdr.setCommPort(3);
    queueEvent();
    vdr.Connect();
    EXPECT_FALSE(ran);
    const AnsweringUnit unit(*terminal, [](const QByteArray &line) {
        return line == "RIFD" ? QByteArray("IFD \r\nsome") : unitReply(line);
    });
    vdr.Connect();
    EXPECT_EQ(vdr.GetData().size(), 325U);
    EXPECT_FALSE(ran);
    vdr.GetGraphic();
    EXPECT_FALSE(ran);
    QCoreApplication::processEvents();
    EXPECT_TRUE(ran);
}

TEST_F(LinkOnATerminal, silence_costsASecondAndHardlyAnyProcessorTime) {
    vdr.setCommPort(3);
    QElapsedTimer timer;
    timer.start();
    const double before = processorSeconds();
    vdr.Connect();
    EXPECT_GE(timer.elapsed(), 990);
    EXPECT_LT(timer.elapsed(), 3000);
    EXPECT_LT(processorSeconds() - before, 0.2);
    EXPECT_EQ(vdr.Status(), "VELDRON not found on COM 3");
}

TEST_F(LinkOnATerminal, unpluggedAndPlugged_theLinkComesBackByItself) {
    {
        const AnsweringUnit unit(*terminal, unitReply);
        vdr.setCommPort(3);
        vdr.Connect();
        ASSERT_EQ(vdr.GetData().size(), 321U);
    }
    terminal->unplug();
    const double before = processorSeconds();
    EXPECT_EQ(vdr.GetData(), LevelScan({0}));
    EXPECT_FALSE(vdr.Connected());
    EXPECT_LT(processorSeconds() - before, 0.2);
    EXPECT_EQ(vdr.CommPort(), 3);
    const PseudoTerminal next;
    plug(next);
    const AnsweringUnit unit(next, unitReply);
    EXPECT_TRUE(vdr.Connect());
    EXPECT_EQ(vdr.Status(), "VELDRON connected on COM 3");
    EXPECT_EQ(vdr.GetData(), LevelScan(321, 'Z'));
}

TEST_F(LinkOnATerminal, portHeldByAnother_isReportedAndListed) {
    QtSerialControl other(guard, PortMap::ofDevices({terminal->path()}));
    other.setCommPort(1);
    ASSERT_FALSE(other.setPortOpen(true).has_value());
    EXPECT_EQ(vdr.GetCommPorts(), QStringList({"COM 3"}));
    EXPECT_EQ(vdr.ComDefault(), 0);
    vdr.setCommPort(3);
    ASSERT_EQ(host.messages().size(), 1U);
    EXPECT_EQ(host.messages().front().text, "COM  3 is in use by another application");
    EXPECT_EQ(vdr.portProblem(3), terminal->path() + " is in use by test_link_qt (process " +
                                      QString::number(::getpid()) + ')');
}

} // namespace
} // namespace veldron
