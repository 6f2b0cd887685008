// SPDX-License-Identifier: MIT
// The whole form over a simulated unit at 9600 baud: from a key's Enter to the confirmed value, and
// from the start to the first scan, each beside what the line itself takes for the answers to the
// very commands that were sent.
#include "app/SystemClock.h"
#include "app/frmDisplay.h"
#include "bench/BenchDialogs.h"
#include "bench/LineTime.h"
#include "bench/NotingSerialControl.h"
#include "bench/SimulatorProcess.h"
#include "common/DateTimeText.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include <chrono>

namespace veldron {
namespace {

using SteadyClock = std::chrono::steady_clock;

double milliseconds(SteadyClock::duration duration) {
    return std::chrono::duration<double, std::milli>(duration).count();
}

double lineMilliseconds(const QByteArrayList &commands) {
    return lineSeconds(commands) * 1000.0;
}

/// Everything that the program puts together, with the unit on COM 1 and no settings of a last run.
class Program {
public:
    Program()
        : m_simulator(QStringLiteral("9600")),
          control(ErrorGuard([](const UntrappedError & /*error*/) {}),
                  PortMap::ofFolder(m_simulator.portsFolder())),
          form(frmDisplay::Dependencies{control, m_clock, m_dialogs, m_texts, m_simulator.folder(),
                                        QStringLiteral("1.0.0")}),
          ready(m_simulator.isReady()) {}

private:
    SimulatorProcess m_simulator;
    SystemClock m_clock;
    BenchDialogs m_dialogs;
    DateTimeText m_texts{QLocale::c()};

public:
    NotingSerialControl control;
    frmDisplay form;
    bool ready = false;
};

void enterToConfirmed(benchmark::State &state) {
    Program program;
    program.form.load();
    auto *field = program.form.findChild<QLineEdit *>(QStringLiteral("txtFreq"));
    if (!program.ready || field == nullptr) {
        state.SkipWithError("the form did not come up");
        return;
    }
    // No poll may come in between; an entry waits for a poll that runs as any other event does.
    for (QTimer *timer : program.form.findChildren<QTimer *>()) {
        timer->stop();
    }
    double total = 0.0;
    double line = 0.0;
    int megahertz = 100;
    for (auto _ : state) {
        megahertz = megahertz == 101 ? 102 : 101;
        field->setFocus();
        QTest::keyClicks(field, QString::number(megahertz));
        program.control.takeSent();
        const auto start = SteadyClock::now();
        QTest::keyClick(field, Qt::Key_Return);
        QApplication::processEvents();
        const double passed = milliseconds(SteadyClock::now() - start);
        const QByteArrayList sent = program.control.takeSent();
        if (!field->text().startsWith(QStringLiteral("%1.").arg(megahertz)) || sent.size() != 2) {
            state.SkipWithError("the value was not confirmed");
            return;
        }
        state.SetIterationTime(passed / 1000.0);
        total += passed;
        line += lineMilliseconds(sent);
    }
    const auto runs = static_cast<double>(state.iterations());
    state.counters["line_ms"] = line / runs;
    state.counters["above_line_ms"] = (total - line) / runs;
    state.SetLabel("Enter in RX Frequency until the unit's value is painted: WSCF, RSCF");
}
BENCHMARK(enterToConfirmed)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(20);

/// The parts of one start, in milliseconds.
struct Start {
    double load = 0.0;
    double loadLine = 0.0;
    double wait = 0.0; ///< for the poll timer's first tick, a poll period after the start
    double tick = 0.0;
    double tickLine = 0.0;
};

Start startOnce(Program &program) {
    Start start;
    const auto begin = SteadyClock::now();
    program.form.load();
    const auto loaded = SteadyClock::now();
    start.load = milliseconds(loaded - begin);
    start.loadLine = lineMilliseconds(program.control.takeSent());
    QByteArrayList tick;
    auto due = loaded;
    while (tick.isEmpty() && milliseconds(SteadyClock::now() - loaded) < 5000.0) {
        due = SteadyClock::now();
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        tick = program.control.takeSent();
    }
    QApplication::processEvents();
    start.wait = milliseconds(due - loaded);
    start.tick = milliseconds(SteadyClock::now() - due);
    start.tickLine = lineMilliseconds(tick);
    return start;
}

void startToFirstScan(benchmark::State &state) {
    Start sum;
    for (auto _ : state) {
        Program program;
        const Start start = startOnce(program);
        if (!program.ready || start.tickLine <= 0.0) {
            state.SkipWithError("no scan came");
            return;
        }
        state.SetIterationTime((start.load + start.wait + start.tick) / 1000.0);
        sum.load += start.load - start.loadLine;
        sum.loadLine += start.loadLine;
        sum.wait += start.wait;
        sum.tick += start.tick - start.tickLine;
        sum.tickLine += start.tickLine;
    }
    const auto runs = static_cast<double>(state.iterations());
    state.counters["load_line_ms"] = sum.loadLine / runs;
    state.counters["load_above_line_ms"] = sum.load / runs;
    state.counters["wait_for_poll_ms"] = sum.wait / runs;
    state.counters["scan_line_ms"] = sum.tickLine / runs;
    state.counters["scan_above_line_ms"] = sum.tick / runs;
    state.SetLabel("start until the first scan is painted; the poll waits out its first period");
}
BENCHMARK(startToFirstScan)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(5);

} // namespace
} // namespace veldron
