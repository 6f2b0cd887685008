// SPDX-License-Identifier: MIT
// veldron-history over recordings that are made while it reads them: the whole program, through a
// pipe, in seconds and in resident memory above that of a run which reads nothing.
#include "common/TimeOfDay.h"
#include "format/FileKind.h"

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QDate>
#include <QTime>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <random>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace veldron {
namespace {

constexpr int kLevels = 321;

/// A day of scans, one a second, without its settings.
QByteArray dayOfScans() {
    std::mt19937 random(3);
    std::vector<QByteArray> scans(500);
    for (QByteArray &scan : scans) {
        for (int bin = 0; bin < kLevels; ++bin) {
            scan += static_cast<char>(40 + random() % 100);
        }
    }
    QByteArray bytes;
    for (int second = 0; second < kSecondsPerDay; ++second) {
        bytes += "Data " + scans[static_cast<std::size_t>(second) % scans.size()] + ' ' +
                 QTime(0, 0).addSecs(second).toString("HH:mm:ss").toLatin1() + "\r\n";
    }
    return bytes;
}

QByteArray blockOf(const QDate &date) {
    return "StartSettings " + date.toString(Qt::ISODate).toLatin1() +
           "\r\nPoll 1000\r\nMonitorMode 1\r\nSpan 10000000\r\nCentre 100000000\r\nReceiver VK3900"
           "\r\nRBW 2\r\nAmp 0\r\nDataMode 1\r\nEndSettings \r\n";
}

/// One run of the program with a pipe as its standard input.
class HistoryProcess {
public:
    explicit HistoryProcess(const std::vector<const char *> &arguments) {
        std::array<int, 2> pipe{};
        if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
            return;
        }
        std::vector<char *> texts{const_cast<char *>(VELDRON_HISTORY)};
        for (const char *argument : arguments) {
            texts.push_back(const_cast<char *>(argument));
        }
        texts.push_back(nullptr);
        m_process = ::fork();
        if (m_process == 0) {
            ::dup2(pipe[0], STDIN_FILENO);
            ::dup2(::open("/dev/null", O_WRONLY), STDOUT_FILENO);
            ::execv(VELDRON_HISTORY, texts.data());
            ::_exit(127);
        }
        ::close(pipe[0]);
        m_input = pipe[1];
    }
    void write(const QByteArray &bytes) const {
        for (qsizetype done = 0; done < bytes.size();) {
            const ssize_t count = ::write(m_input, bytes.constData() + done,
                                          static_cast<std::size_t>(bytes.size() - done));
            if (count <= 0) {
                return;
            }
            done += count;
        }
    }
    /// The exit code. Afterwards residentKiB() has the most that it held.
    int wait() {
        ::close(m_input);
        int status = 0;
        rusage usage{};
        ::wait4(m_process, &status, 0, &usage);
        m_resident = static_cast<double>(usage.ru_maxrss);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    [[nodiscard]] double residentKiB() const { return m_resident; }

private:
    pid_t m_process = -1;
    int m_input = -1;
    double m_resident = 0;
};

double residentOfNothing() {
    HistoryProcess process({"--version"});
    (void)process.wait();
    return process.residentKiB();
}

/// `check` on so many days.
void checkDays(benchmark::State &state) {
    std::signal(SIGPIPE, SIG_IGN);
    static const QByteArray kDay = dayOfScans();
    const double nothing = residentOfNothing();
    double resident = 0;
    for (auto run : state) {
        HistoryProcess process({"check", "-"});
        process.write(QByteArray(kHistoryFile.firstLine) + "\r\n");
        for (int day = 0; day < state.range(0); ++day) {
            process.write(blockOf(QDate(2026, 3, 14).addDays(day)));
            process.write(kDay);
        }
        if (process.wait() != 0) {
            state.SkipWithError("the recording was not read to its end");
        }
        resident = process.residentKiB();
    }
    state.counters["MiB_above_nothing"] = (resident - nothing) / 1024.0;
    state.SetBytesProcessed(state.iterations() * state.range(0) * kDay.size());
}
BENCHMARK(checkDays)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(checkDays)->Arg(100)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

} // namespace
} // namespace veldron
