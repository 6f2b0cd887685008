// SPDX-License-Identifier: MIT
// The simulated unit as a program: sleeps until the line or standard input has something to read,
// or the next byte is due.
#include "simulator/Faults.h"
#include "simulator/SimulatorOptions.h"
#include "simulator/TrafficLog.h"
#include "simulator/Unit.h"
#include "simulator/UnitConsole.h"
#include "simulator/UnitLine.h"

#include <QDateTime>
#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <optional>

#include <poll.h>
#include <unistd.h>

namespace {

using veldron::SimulatorOptions;
using veldron::UnitConsole;
using veldron::UnitLine;

volatile std::sig_atomic_t endWanted = 0;

void wantEnd(int /*signal*/) {
    endWanted = 1;
}

/// Blocks the ending signals except while the program waits: otherwise one that comes between the
/// check and the wait would be missed. Returns the signal mask to wait with.
sigset_t catchSignals() {
    sigset_t ending;
    sigset_t before;
    sigemptyset(&ending);
    struct sigaction action {};
    action.sa_handler = wantEnd;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        sigaddset(&ending, signal);
        sigaction(signal, &action, nullptr);
    }
    std::signal(SIGPIPE, SIG_IGN);
    sigprocmask(SIG_BLOCK, &ending, &before);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        sigdelset(&before, signal);
    }
    return before;
}

void print(const QByteArray &text) {
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

/// Seconds since the program began.
double elapsed() {
    using std::chrono::steady_clock;
    static const steady_clock::time_point kBegin = steady_clock::now();
    return std::chrono::duration<double>(steady_clock::now() - kBegin).count();
}

/// Standard input in lines. Never blocks.
class InputLines {
public:
    /// The lines that are complete; ended() may become true.
    QList<QByteArray> take() {
        std::array<char, 4096> buffer{};
        const ssize_t length = ::read(STDIN_FILENO, buffer.data(), buffer.size());
        if (length > 0) {
            m_rest.append(buffer.data(), length);
        } else if (length == 0 || errno != EINTR) {
            m_ended = true;
            m_rest += '\n';
        }
        QList<QByteArray> lines = m_rest.split('\n');
        m_rest = lines.takeLast();
        return lines;
    }
    [[nodiscard]] bool ended() const { return m_ended; }

private:
    QByteArray m_rest;
    bool m_ended = false;
};

/// How long to wait until \a due; nothing means without a limit.
std::optional<timespec> waitingTime(std::optional<double> due, bool blocked) {
    if (blocked) {
        due = elapsed() + UnitLine::kStall / 2.0;
    }
    if (!due) {
        return std::nullopt;
    }
    const double seconds = std::max(0.0, *due - elapsed());
    const double whole = std::floor(seconds);
    return timespec{static_cast<time_t>(whole), static_cast<long>((seconds - whole) * 1e9)};
}

void run(UnitLine &line, UnitConsole &console, bool exitOnEof, const sigset_t &mask) {
    InputLines input;
    while (endWanted == 0 && !console.wantsToQuit() && !(exitOnEof && input.ended())) {
        const short lineEvents = line.isBlocked() ? POLLIN | POLLOUT : POLLIN;
        // poll ignores a negative descriptor.
        std::array<pollfd, 3> watched = {pollfd{line.descriptor(), lineEvents, 0},
                                         pollfd{line.watchDescriptor(), POLLIN, 0},
                                         pollfd{input.ended() ? -1 : STDIN_FILENO, POLLIN, 0}};
        const std::optional<timespec> wait = waitingTime(line.nextDue(), line.isBlocked());
        ::ppoll(watched.data(), watched.size(), wait ? &*wait : nullptr, &mask);
        if (watched[2].revents != 0) {
            for (const QByteArray &text : input.take()) {
                const QByteArray answer = console.execute(text, elapsed());
                if (!answer.isEmpty()) {
                    print(answer);
                }
            }
        }
        line.serve(elapsed());
    }
}

veldron::TrafficLog::Sink sinkInto(QFile &file) {
    return [&file](const QByteArray &line) {
        const QString stamp = QDateTime::currentDateTime().toString(Qt::ISODateWithMs);
        file.write(stamp.toLatin1() + " " + line + "\n");
    };
}

int fail(const QString &reason) {
    std::fprintf(stderr, "veldron-simulator: %s\n", qPrintable(reason));
    return EXIT_FAILURE;
}

int simulate(const SimulatorOptions &options) {
    QFile logFile(options.logFile);
    if (!options.logFile.isEmpty() &&
        !logFile.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) {
        return fail(options.logFile + QStringLiteral(": ") + logFile.errorString());
    }
    veldron::Unit unit(options.seed);
    unit.setAnyByte(options.anyByte);
    veldron::Faults faults;
    UnitLine line(unit, faults, options.port, options.baud, options.bunch);
    if (logFile.isOpen()) {
        line.traffic().setLog({sinkInto(logFile), options.logScans});
    }
    UnitConsole console(unit, faults, line);
    const sigset_t mask = catchSignals();
    if (!line.plug()) {
        return fail(line.error());
    }
    print("ready " + options.port.toLocal8Bit());
    run(line, console, options.exitOnEof, mask);
    line.unplug();
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char **argv) {
    elapsed();
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments << QString::fromLocal8Bit(argv[i]);
    }
    QString error;
    const std::optional<SimulatorOptions> options = SimulatorOptions::read(arguments, error);
    if (!options) {
        return fail(error + QStringLiteral("; --help tells more"));
    }
    if (options->help) {
        print(SimulatorOptions::helpText());
        return EXIT_SUCCESS;
    }
    return simulate(*options);
}
