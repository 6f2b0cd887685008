// SPDX-License-Identifier: MIT
// Faults of the machine under a program that records: disks, folders, clocks, suspension. After
// each of them everything is as before.
#include "tests/prove/Promise.h"

#include <QDir>
#include <QFile>
#include <QThread>

#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/RecordedFile.h"
#include "tests/program/SmallDisk.h"

#include <gtest/gtest.h>

#include <csignal>
#include <functional>
#include <memory>

#include <sys/resource.h>

namespace veldron {

using namespace std::chrono_literals;

namespace {

const QString kFolder = QStringLiteral("disk");
const char *const kRoom = "4m";

/// A program that records four scans a second, on a disk and by a clock that faults can be put
/// into.
class Machine {
public:
    [[nodiscard]] bool open() {
        m_disk = std::make_unique<SmallDisk>(m_live.run().path(kFolder), kRoom);
        m_clock = &m_live.run().shareClock();
        m_live.run().slowDownDisk(0ms);
        m_live.run().obeyRights();
        // A write beyond the room must fail, and not end the process.
        m_live.run().ignoreSignal(SIGXFSZ);
        return m_live.open();
    }
    /// Goes on with the running recording, or begins one.
    [[nodiscard]] bool record() {
        if (!m_live.run().statusText().startsWith(QLatin1String("Recording"))) {
            m_file = QStringLiteral("disk/machine%1.rec").arg(++m_files);
            if (!m_live.startRecording(m_file)) {
                return false;
            }
        }
        return m_live.secondsToPolling(5.0).has_value();
    }
    /// Name of the recording in the program's folder.
    [[nodiscard]] const QString &file() const { return m_file; }

    [[nodiscard]] LiveProgram &live() { return m_live; }
    [[nodiscard]] ClockFile &clock() { return *m_clock; }
    [[nodiscard]] QString path(const QString &name) { return m_live.run().path(name); }

    /// Waits until the recorder has stopped by itself.
    void awaitStop() {
        EXPECT_TRUE(m_live.run().awaitStatus(QStringLiteral("VELDRON connected on COM 3"), 15s));
    }
    /// Waits until the unit has heard the next command for a scan.
    void awaitPoll() {
        const qsizetype place = m_live.unit().now();
        EXPECT_TRUE(eventually(5s, [&] { return m_live.unit().countSince(place, "RIFD") > 0; }));
    }
    /// Stops the process for a time, as a suspension does.
    void stopFor(std::chrono::milliseconds time) {
        m_live.run().sendSignal(SIGSTOP);
        QThread::msleep(static_cast<unsigned long>(time.count()));
    }
    void goOn() { m_live.run().sendSignal(SIGCONT); }

    /// Leaves no room on the disk: a file takes it, or a limit does where there is no mount.
    void fillDisk() {
        if (!m_disk->isMounted()) {
            limitFiles(static_cast<rlim_t>(QFile(path(m_file)).size()) + 2000);
            return;
        }
        QFile filler(path(QStringLiteral("disk/filler")));
        ASSERT_TRUE(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        while (filler.write(QByteArray(16 * 1024, 'x')) > 0) {
        }
    }
    void freeDisk() {
        limitFiles(RLIM_INFINITY);
        QFile::remove(path(QStringLiteral("disk/filler")));
    }
    void takeDiskAway() {
        m_kept = m_live.run().content(m_file);
        if (m_disk->isMounted()) {
            m_disk->takeAway();
        } else {
            QDir(path({})).rename(kFolder, QStringLiteral("gone"));
        }
    }
    void putDiskBack() {
        m_disk = std::make_unique<SmallDisk>(path(kFolder), kRoom);
        m_live.run().write(m_file, m_kept);
    }

private:
    void limitFiles(rlim_t bytes) {
        const rlimit limit{bytes, RLIM_INFINITY};
        ASSERT_EQ(
            ::prlimit(static_cast<pid_t>(m_live.run().processId()), RLIMIT_FSIZE, &limit, nullptr),
            0);
    }

    LiveProgram m_live;
    std::unique_ptr<SmallDisk> m_disk;
    ClockFile *m_clock = nullptr;
    QByteArray m_kept;
    QString m_file;
    int m_files = 0;
};

struct MachineFault {
    const char *name;
    /// From its beginning to its end.
    std::function<void(Machine &)> happen;
    /// How many scans it may cost.
    int lost = 1;
    /// It takes the recording's file away, or its room.
    bool stopsRecording = false;
    /// Part of the short form.
    bool isShort = false;
};

void PrintTo(const MachineFault &fault, std::ostream *out) {
    *out << fault.name;
}

QList<MachineFault> diskFaults() {
    return {
        {"diskFull",
         [](Machine &machine) {
             machine.fillDisk();
             machine.awaitStop();
             machine.freeDisk();
         },
         0, true, true},
        {"diskPulledOut",
         [](Machine &machine) {
             machine.takeDiskAway();
             machine.awaitStop();
             machine.putDiskBack();
         },
         0, true, true},
        {"fileMoved",
         [](Machine &machine) {
             const QString elsewhere = machine.path(QStringLiteral("disk/moved.rec"));
             ASSERT_TRUE(QFile::rename(machine.path(machine.file()), elsewhere));
             machine.awaitStop();
             ASSERT_TRUE(QFile::rename(elsewhere, machine.path(machine.file())));
         },
         0, true},
        {"folderMadeReadOnly",
         [](Machine &machine) {
             QFile::setPermissions(machine.path(kFolder), QFile::ReadOwner | QFile::ExeOwner);
             QThread::msleep(2000);
             QFile::setPermissions(machine.path(kFolder),
                                   QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
         },
         0, false, true},
        {"folderLocked",
         [](Machine &machine) {
             QFile::setPermissions(machine.path(kFolder), {});
             machine.awaitStop();
             QFile::setPermissions(machine.path(kFolder),
                                   QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
         },
         0, true},
        {"slowDisk",
         [](Machine &machine) {
             machine.live().run().slowDownDisk(400ms);
             QThread::msleep(5000);
             machine.live().run().slowDownDisk(0ms);
             QThread::msleep(400);
         },
         0, false, true},
        {"diskStallsForFiveSeconds",
         [](Machine &machine) {
             machine.live().run().slowDownDisk(5000ms);
             QThread::msleep(1000);
             machine.live().run().slowDownDisk(0ms);
             QThread::msleep(4500);
         },
         0},
    };
}

/// Turns the clock in the middle of an exchange that takes its time.
void turnInAnExchange(Machine &machine, std::chrono::milliseconds by) {
    machine.live().unit().tell("on RIFD delay 0.6");
    machine.awaitPoll();
    QThread::msleep(200);
    machine.clock().turn(by);
    QThread::msleep(500);
}

void turnToMidnight(Machine &machine, std::chrono::milliseconds before) {
    const QDateTime now = machine.clock().now();
    machine.clock().set(QDateTime(now.date().addDays(1), QTime(0, 0)).addMSecs(-before.count()));
}

QList<MachineFault> clockFaults() {
    return {
        {"clockForwardAnHour", [](Machine &machine) { machine.clock().turn(1h); }, 1, false, true},
        {"clockBackAnHour", [](Machine &machine) { machine.clock().turn(-1h); }, 1, false, true},
        {"clockForwardAWeek",
         [](Machine &machine) {
             machine.clock().turn(168h);
         }},
        {"clockBackAWeek",
         [](Machine &machine) {
             machine.clock().turn(-168h);
         }},
        {"clockForwardTwoSeconds",
         [](Machine &machine) {
             machine.clock().turn(2s);
         }},
        {"clockBackTwoSeconds",
         [](Machine &machine) {
             machine.clock().turn(-2s);
         }},
        {"clockForwardInAnExchange", [](Machine &machine) { turnInAnExchange(machine, 1h); }, 2},
        {"clockBackInAnExchange", [](Machine &machine) { turnInAnExchange(machine, -1h); }, 1},
        {"clockTurnedTenTimesASecond",
         [](Machine &machine) {
             for (int i = 0; i < 40; ++i) {
                 machine.clock().turn(i % 2 == 0 ? 17min : -17min);
                 QThread::msleep(100);
             }
         },
         20},
        {"midnight",
         [](Machine &machine) {
             turnToMidnight(machine, 2s);
             QThread::msleep(3000);
         },
         1, false, true},
        {"midnightInAnExchange",
         [](Machine &machine) {
             turnToMidnight(machine, 3s);
             QThread::msleep(2500);
             machine.live().unit().tell("on RIFD delay 0.8");
             QThread::msleep(1500);
         },
         1},
    };
}

QList<MachineFault> suspensions() {
    return {
        {"suspendedForFifteenSeconds",
         [](Machine &machine) {
             machine.stopFor(15s);
             machine.goOn();
         }},
        {"suspendedInAnExchange",
         [](Machine &machine) {
             machine.live().unit().tell("on RIFD delay 0.6");
             machine.awaitPoll();
             machine.stopFor(3s);
             machine.goOn();
         },
         1},
        {"suspendedForTenHours",
         [](Machine &machine) {
             machine.stopFor(1s);
             machine.clock().turn(10h);
             machine.goOn();
         },
         1, false, true},
    };
}

QList<MachineFault> chosenFaults() {
    QList<MachineFault> chosen;
    for (const MachineFault &fault : diskFaults() + clockFaults() + suspensions()) {
        if (provesLong() || fault.isShort) {
            chosen.append(fault);
        }
    }
    return chosen;
}

class MachineFaults : public testing::TestWithParam<MachineFault> {
protected:
    /// One program for all rows, and another only when a row has ended it.
    void SetUp() override {
        if (s_machine == nullptr || !s_machine->live().run().isRunning()) {
            s_machine = std::make_unique<Machine>();
            ASSERT_TRUE(s_machine->open());
        }
        ASSERT_TRUE(s_machine->record());
    }
    static void TearDownTestSuite() { s_machine.reset(); }

    /// Whole lines, and each of them as the unit sent it: none missing between two others.
    static void expectWhole(const QByteArray &content) {
        const RecordedFile file = RecordedFile::read(content);
        EXPECT_TRUE(file.rest.isEmpty());
        ASSERT_FALSE(file.scans.isEmpty());
        const QList<LineEvent> sent = sentFromFirstOf(file, s_machine->live().unit().events());
        ASSERT_GE(sent.size(), file.scans.size());
        for (qsizetype i = 0; i < file.scans.size(); ++i) {
            ASSERT_EQ(file.scans.at(i).samples, sent.at(i).samples) << "scan " << i;
        }
    }
    /// The newest line bears the time of the program's clock.
    static void expectTimeOfClock() {
        const RecordedFile file =
            RecordedFile::read(s_machine->live().run().content(s_machine->file()));
        const QTime now = s_machine->clock().now().time();
        const int late = file.timeOf(file.scans.size() - 1).secsTo(now);
        EXPECT_TRUE((late >= -1 && late <= 2) || late <= -86398) << late;
    }

    static std::unique_ptr<Machine> s_machine;
};

std::unique_ptr<Machine> MachineFaults::s_machine;

TEST_P(MachineFaults, afterTheFault_everythingIsAsBefore) {
    const MachineFault &fault = GetParam();
    Promise promise(s_machine->live(), s_machine->file());
    if (fault.stopsRecording) {
        promise.expectRecordingStopped();
    }
    fault.happen(*s_machine);
    promise.expectKept(fault.name, fault.lost);
    if (fault.stopsRecording) {
        expectWhole(s_machine->live().run().content(s_machine->file()));
    } else {
        expectTimeOfClock();
    }
}

INSTANTIATE_TEST_SUITE_P(Row, MachineFaults, testing::ValuesIn(chosenFaults()),
                         [](const testing::TestParamInfo<MachineFault> &item) {
                             return std::string(item.param.name);
                         });

} // namespace

} // namespace veldron
