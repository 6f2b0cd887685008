// SPDX-License-Identifier: MIT
// Benchmarks of the chart at 1280 x 800 on screens of density 1, 1.25, 1.5 and 2. The time of a
// case is the median of seven rounds; beside it stands the floor, a memcpy of the same pixels in
// the same rounds, and the time as a multiple of that.
#include "bench/ChartBench.h"

namespace veldron {
namespace {

constexpr Hertz kGathered = Hertz::fromWhole(6250); // 1601 bins into 1225 columns

void scanSpread(benchmark::State &state) {
    ChartBench bench(state);
    bench.measure(100, 0.1, [&] { bench.feed(); });
}

void scanGather(benchmark::State &state) {
    ChartBench bench(state, kGathered);
    bench.measure(100, 0.1, [&] { bench.feed(); });
}

void scanWaterfall(benchmark::State &state) {
    ChartBench bench(state);
    bench.fillHistory();
    bench.measure(100, 0.4, [&] { bench.feed(); });
}

void scanShown(benchmark::State &state) {
    ChartBench bench(state);
    bench.fillHistory();
    bench.measure(100, 0.4, [&] {
        bench.feed();
        ChartBench::show();
    });
}

void closedRow(benchmark::State &state) {
    ChartBench bench(state);
    bench.fillHistory();
    bench.measure(
        50, 0.4, [&] { bench.closeRow(); }, [&] { bench.feed(); });
}

// As the program runs: the scan comes in one pass of the event loop, the row in another.
void scanAndRow(ChartBench &bench) {
    bench.fillHistory();
    bench.measure(50, 0.2, [&] {
        bench.feed();
        ChartBench::show();
        bench.closeRow();
        ChartBench::show();
    });
}

void scanAndRowShown(benchmark::State &state) {
    ChartBench bench(state);
    scanAndRow(bench);
}

// The trace leaves the plot downwards there, and is covered by the waterfall.
void scanAndRowUnderScaleShown(benchmark::State &state) {
    ChartBench bench(state, Hertz::fromWhole(31250), ChartBench::Levels::UnderIt);
    bench.chart.resize(330, 800);
    scanAndRow(bench);
}

void resizeDrawn(benchmark::State &state) {
    ChartBench bench(state);
    bench.fillHistory();
    bench.measure(
        32, 0.4, [&] { bench.resizeBy20(); }, [] { ChartBench::show(); });
}

void resizeShown(benchmark::State &state) {
    ChartBench bench(state);
    bench.fillHistory();
    bench.measure(32, 0.4, [&] {
        bench.resizeBy20();
        ChartBench::show();
    });
}

void paletteChange(benchmark::State &state) {
    ChartBench bench(state);
    bench.fillHistory();
    qint16 scheme = 0;
    bench.measure(50, 0.4, [&] {
        scheme = static_cast<qint16>((scheme + 1) % 6);
        bench.chart.setPalette(scheme);
    });
}

void rewindStep(benchmark::State &state) {
    ChartBench bench(state);
    bench.fillPlayback();
    bool back = true;
    bench.measure(50, 0.4, [&] {
        if (!bench.chart.Rewind(back ? qint16{-1} : qint16{1})) {
            back = !back;
        }
    });
}

void updateOneToTwo(benchmark::State &state) {
    ChartBench bench(state);
    bench.fillHistory();
    bench.measure(
        10, 0.4, [&] { bench.chart.setUpdate(2); }, [&] { bench.chart.setUpdate(1); });
}

void atEachDensity(benchmark::internal::Benchmark *testCase) {
    testCase->ArgName("density")->Arg(100)->Arg(125)->Arg(150)->Arg(200);
    testCase->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(1);
}

BENCHMARK(scanSpread)->Apply(atEachDensity);
BENCHMARK(scanGather)->Apply(atEachDensity);
BENCHMARK(scanWaterfall)->Apply(atEachDensity);
BENCHMARK(scanShown)->Apply(atEachDensity);
BENCHMARK(closedRow)->Apply(atEachDensity);
BENCHMARK(scanAndRowShown)->Apply(atEachDensity);
BENCHMARK(scanAndRowUnderScaleShown)->Apply(atEachDensity);
BENCHMARK(resizeDrawn)->Apply(atEachDensity);
BENCHMARK(resizeShown)->Apply(atEachDensity);
BENCHMARK(paletteChange)->Apply(atEachDensity);
BENCHMARK(rewindStep)->Apply(atEachDensity);
BENCHMARK(updateOneToTwo)->Apply(atEachDensity);

} // namespace
} // namespace veldron
