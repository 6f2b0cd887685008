// SPDX-License-Identifier: MIT
// Benchmarks of the exchange: with a unit that answers at once, and at 9600 baud, where the time
// that the line itself is busy is told apart from ours.
#include "app/SystemClock.h"
#include "bench/LineTime.h"
#include "bench/SimulatorProcess.h"
#include "link/QtSerialControl.h"
#include "link/frmVDR.h"

#include <benchmark/benchmark.h>

#include <chrono>

namespace veldron {
namespace {

constexpr std::size_t kFullScan = 321;

class SilentHost : public LinkHost {
public:
    void setHourglass(bool /*on*/) override {}
    void showMessage(const QString & /*title*/, const QString & /*text*/) override {}
};

/// The link over a simulated unit, connected.
class Link {
public:
    explicit Link(const char *pace)
        : m_simulator(QLatin1String(pace)),
          m_control(ErrorGuard([](const UntrappedError & /*error*/) {}),
                    PortMap::ofFolder(m_simulator.portsFolder())),
          unit(m_control, m_clock, m_host) {
        unit.setCommPort(1);
        ready = m_simulator.isReady() && unit.Connect() && !unit.Version().isEmpty();
    }

private:
    SimulatorProcess m_simulator;
    SystemClock m_clock;
    SilentHost m_host;
    QtSerialControl m_control;

public:
    frmVDR unit;
    bool ready = false;
};

void scanUnpaced(benchmark::State &state) {
    Link link("none");
    if (!link.ready) {
        state.SkipWithError("the simulated unit did not answer");
        return;
    }
    for (auto _ : state) {
        if (link.unit.GetData().size() != kFullScan) {
            state.SkipWithError("not a full scan");
            return;
        }
    }
    state.SetLabel("one RIFD exchange, 321 levels, no pace: all of it is above the line's time");
}
BENCHMARK(scanUnpaced)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(1.0);

void settingUnpaced(benchmark::State &state) {
    Link link("none");
    if (!link.ready) {
        state.SkipWithError("the simulated unit did not answer");
        return;
    }
    for (auto _ : state) {
        if (link.unit.VDRSpan() <= 0) {
            state.SkipWithError("no span");
            return;
        }
    }
    state.SetLabel("one RSSP exchange, no pace");
}
BENCHMARK(settingUnpaced)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(1.0);

void scanPaced(benchmark::State &state) {
    Link link("9600");
    if (!link.ready) {
        state.SkipWithError("the simulated unit did not answer");
        return;
    }
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        if (link.unit.GetData().size() != kFullScan) {
            state.SkipWithError("not a full scan");
            return;
        }
    }
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
    const double measured = passed.count() / static_cast<double>(state.iterations());
    const double line = lineSeconds({"RIFD"});
    state.counters["line_ms"] = line * 1000.0;
    state.counters["percent_of_line"] = line / measured * 100.0;
    state.SetLabel("one RIFD exchange at 9600 baud");
}
BENCHMARK(scanPaced)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(10);

} // namespace
} // namespace veldron
