// SPDX-License-Identifier: MIT
// Benchmarks of the chart at 1280 x 800. A case whose picture stays blank fails.
#include "chart/PictureBox.h"
#include "chart/ScreenCursor.h"
#include "chart/ctlChartSpectrum.h"
#include "tests/support/ManualClock.h"

#include <QApplication>
#include <QTimer>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>

namespace veldron {
namespace {

constexpr int kScans = 32;
constexpr double kNoon = 43200.0;

// Receiver noise with its real statistics and a few steady carriers: each scan differs from the
// one before in nearly every bin.
std::vector<LevelScan> makeScans(std::size_t bins) {
    std::mt19937 random(7);
    std::exponential_distribution<double> power(1.0);
    std::vector<LevelScan> scans(kScans, LevelScan(bins));
    for (LevelScan &scan : scans) {
        for (std::size_t i = 0; i < bins; ++i) {
            const double noise = 55.0 + 10.0 * std::log10(power(random) + 1e-3);
            const double carrier = i % (bins / 8) < 3 ? 90.0 : 0.0;
            scan[i] = static_cast<std::uint8_t>(std::clamp(std::max(noise, carrier), 0.0, 255.0));
        }
    }
    return scans;
}

class Bench {
public:
    explicit Bench(Hertz resolution = Hertz::fromWhole(31250))
        : chart(guard, clock, texts, cursor) {
        // Rows are closed by the cases alone, not by the timer.
        chart.findChild<QTimer *>(QStringLiteral("Timer1"))->stop();
        chart.resize(1280, 800);
        chart.show();
        QApplication::processEvents();
        chart.setDataResolution(resolution);
        chart.setUpdate(1);
        chart.setPalette(3);
        chart.setPeak(true);
        scans = makeScans(static_cast<std::size_t>(10000000 / (resolution.units() / 10000) + 1));
    }

    void feed() {
        chart.SetData(scans[next]);
        chart.Refresh();
        next = (next + 1) % scans.size();
    }
    void closeRow() {
        clock.advance(1.0);
        chart.onTimer1();
    }
    void fillHistory() {
        chart.setDisplayType(DisplayTypeCode::Trace);
        for (int row = 0; row < 10050; ++row) {
            chart.SetData(scans[static_cast<std::size_t>(row) % scans.size()]);
            closeRow();
        }
        chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
        feed();
    }

    // Share of the picture that isn't black.
    [[nodiscard]] double litShare() const {
        const PixelSurface &shown =
            chart.findChild<PictureBox *>(QStringLiteral("Picture1"))->surface();
        int lit = 0;
        for (int y = 0; y < shown.height(); ++y) {
            for (int x = 0; x < shown.width(); ++x) {
                lit += shown.pixel(x, y) != 0 ? 1 : 0;
            }
        }
        return static_cast<double>(lit) / (shown.width() * shown.height());
    }
    void finish(benchmark::State &state, const std::string &drawn, double atLeast) const {
        const double lit = litShare();
        if (lit < atLeast) {
            state.SkipWithError("the picture is blank");
            return;
        }
        state.SetLabel(drawn + ", " + std::to_string(std::lround(lit * 100.0)) +
                       " % of the picture lit");
    }

    ManualClock clock{kNoon};
    DateTimeText texts{QLocale::c()};
    ScreenCursor cursor;
    ErrorGuard guard{[](const UntrappedError &error) {
        qFatal("%s", error.what());
    }};
    ctlChartSpectrum chart;
    std::vector<LevelScan> scans;
    std::size_t next = 0;
};

void scanSpread(benchmark::State &state) {
    Bench bench;
    for (auto _ : state) {
        bench.feed();
    }
    bench.finish(state, "321 bins spread over 1225 columns, 760 rows, peaks", 0.1);
}

void scanGather(benchmark::State &state) {
    Bench bench(Hertz::fromWhole(6250));
    for (auto _ : state) {
        bench.feed();
    }
    bench.finish(state, "1601 bins gathered into 1225 columns, 760 rows, peaks", 0.1);
}

void scanWaterfall(benchmark::State &state) {
    Bench bench;
    bench.fillHistory();
    for (auto _ : state) {
        bench.feed();
    }
    bench.finish(state, "321 bins spread, peaks, 390 rows of waterfall", 0.4);
}

void scanShown(benchmark::State &state) {
    Bench bench;
    bench.fillHistory();
    for (auto _ : state) {
        bench.feed();
        QApplication::processEvents();
    }
    bench.finish(state, "as scanWaterfall, and brought to the window", 0.4);
}

void closedRow(benchmark::State &state) {
    Bench bench;
    bench.fillHistory();
    for (auto _ : state) {
        bench.closeRow();
    }
    bench.finish(state, "10,000 rows pushed down, axes with labels, trace, waterfall", 0.2);
}

void paletteChange(benchmark::State &state) {
    Bench bench;
    bench.fillHistory();
    qint16 scheme = 0;
    for (auto _ : state) {
        scheme = static_cast<qint16>((scheme + 1) % 6);
        bench.chart.setPalette(scheme);
    }
    bench.chart.setPalette(3);
    bench.finish(state, "256 colours, 390 rows of waterfall", 0.4);
}

void rewindStep(benchmark::State &state) {
    Bench bench;
    bench.chart.setPoll(1000);
    bench.chart.setPlayback(true);
    bench.chart.setDisplayType(DisplayTypeCode::Trace);
    for (int row = 0; row < 10050; ++row) {
        const QTime time = QTime(0, 0).addSecs(10000 + row);
        bench.chart.SetPlaybackTime(time.toString(QStringLiteral("HH:mm:ss")), time);
        bench.chart.SetData(bench.scans[static_cast<std::size_t>(row) % bench.scans.size()]);
    }
    bench.chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    bool back = true;
    for (auto _ : state) {
        if (!bench.chart.Rewind(back ? qint16{-1} : qint16{1})) {
            back = !back;
        }
    }
    bench.finish(state, "axes, the stored row's trace, 390 rows of waterfall", 0.4);
}

void updateOneToTwo(benchmark::State &state) {
    Bench bench;
    bench.fillHistory();
    for (auto _ : state) {
        bench.chart.setUpdate(2);
        state.PauseTiming();
        bench.chart.setUpdate(1);
        state.ResumeTiming();
    }
    bench.finish(state, "10,000 rows resampled, full redraw", 0.4);
}

BENCHMARK(scanSpread)->Unit(benchmark::kMicrosecond);
BENCHMARK(scanGather)->Unit(benchmark::kMicrosecond);
BENCHMARK(scanWaterfall)->Unit(benchmark::kMicrosecond);
BENCHMARK(scanShown)->Unit(benchmark::kMicrosecond);
BENCHMARK(paletteChange)->Unit(benchmark::kMicrosecond);
BENCHMARK(closedRow)->Unit(benchmark::kMicrosecond);
BENCHMARK(rewindStep)->Unit(benchmark::kMicrosecond);
BENCHMARK(updateOneToTwo)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace veldron
