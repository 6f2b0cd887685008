// SPDX-License-Identifier: MIT
#include "bench/ChartBench.h"

#include "chart/PictureBox.h"

#include <QApplication>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstring>
#include <random>

namespace veldron {

namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr QSize kSize(1280, 800);
constexpr int kScanCount = 32;
constexpr int kRounds = 7;
constexpr qint64 kSpan = 10000000;

std::vector<LevelScan> makeScans(std::size_t bins, double noiseLevel) {
    std::mt19937 random(7);
    std::exponential_distribution<double> power(1.0);
    std::vector<LevelScan> scans(kScanCount, LevelScan(bins));
    for (LevelScan &scan : scans) {
        for (std::size_t i = 0; i < bins; ++i) {
            const double noise = noiseLevel + 10.0 * std::log10(power(random) + 1e-3);
            const double carrier = i % (bins / 8) < 3 ? 90.0 : 0.0;
            scan[i] = static_cast<std::uint8_t>(std::clamp(std::max(noise, carrier), 0.0, 255.0));
        }
    }
    return scans;
}

double seconds(SteadyClock::duration duration) {
    return std::chrono::duration<double>(duration).count();
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

ChartBench::ChartBench(benchmark::State &state, Hertz resolution, Levels levels)
    : m_state(state), chart(m_guard, m_clock, m_texts, m_cursor) {
    const double density = static_cast<double>(state.range(0)) / 100.0;
    chart.findChild<QTimer *>(QStringLiteral("Timer1"))->stop();
    chart.resize(kSize);
    chart.move(100 + static_cast<int>((density - 1.0) * 40000.0), 50); // as in screens.json
    chart.show();
    show();
    chart.setDataResolution(resolution);
    chart.setUpdate(1);
    chart.setPalette(3);
    chart.setPeak(true);
    // The scale begins at a level of 42.
    m_scans = makeScans(static_cast<std::size_t>(kSpan / (resolution.units() / 10000) + 1),
                        levels == Levels::OnTheScale ? 55.0 : 40.0);
    if (chart.devicePixelRatioF() != density) {
        state.SkipWithError("no screen of this density");
    }
}

void ChartBench::feed() {
    chart.SetData(m_scans[m_nextScan]);
    chart.Refresh();
    m_nextScan = (m_nextScan + 1) % m_scans.size();
}

void ChartBench::closeRow() {
    m_clock.advance(1.0);
    chart.onTimer1();
}

void ChartBench::show() {
    QApplication::processEvents();
}

void ChartBench::resizeBy20() {
    constexpr int kStepsOneWay = 8;
    const int at = ++m_resizes % (2 * kStepsOneWay);
    const int steps = std::min(at, 2 * kStepsOneWay - at) - kStepsOneWay / 2;
    chart.resize(kSize + QSize(20, 20) * steps);
}

void ChartBench::fillHistory() {
    // Drawn without a waterfall, and each row of ten seconds becomes ten rows: that is quicker.
    chart.setDisplayType(DisplayTypeCode::Trace);
    chart.setUpdate(10);
    for (int row = 0; row < 1010; ++row) {
        chart.SetData(m_scans[static_cast<std::size_t>(row) % m_scans.size()]);
        m_clock.advance(10.0);
        chart.onTimer1();
    }
    chart.setUpdate(1);
    for (int row = 0; row < 1000; ++row) {
        chart.SetData(m_scans[static_cast<std::size_t>(row) % m_scans.size()]);
        closeRow();
    }
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    feed();
    closeRow();
    show();
}

void ChartBench::fillPlayback() {
    chart.setPoll(1000);
    chart.setPlayback(true);
    chart.setDisplayType(DisplayTypeCode::Trace);
    for (int row = 0; row < 10050; ++row) {
        const QTime time = QTime(0, 0).addSecs(10000 + row);
        chart.SetPlaybackTime(time.toString(QStringLiteral("HH:mm:ss")), time);
        chart.SetData(m_scans[static_cast<std::size_t>(row) % m_scans.size()]);
    }
    chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    show();
}

void ChartBench::measure(int steps, double litShare, const std::function<void()> &step,
                         const std::function<void()> &prepare) {
    if (m_state.error_occurred()) {
        return;
    }
    std::vector<double> rounds;
    std::vector<double> floors;
    for (auto _ : m_state) {
        for (int round = 0; round < kRounds; ++round) {
            SteadyClock::duration passed{};
            for (int i = 0; i < steps; ++i) {
                if (prepare) {
                    prepare();
                }
                const auto start = SteadyClock::now();
                step();
                passed += SteadyClock::now() - start;
            }
            rounds.push_back(seconds(passed) / steps);
            floors.push_back(memcpySeconds());
        }
        m_state.SetIterationTime(median(rounds));
    }
    m_state.counters["floor_ms"] = median(floors) * 1000.0;
    m_state.counters["floors"] = median(rounds) / median(floors);
    if (this->litShare() < litShare) {
        m_state.SkipWithError("the picture is blank");
    }
}

// The least that a whole picture can cost: its pixels brought from one place to another.
double ChartBench::memcpySeconds() {
    constexpr int kCopies = 10;
    const QSizeF device = QSizeF(chart.size()) * chart.devicePixelRatioF();
    const auto count = static_cast<std::size_t>(device.width() * device.height());
    m_pixels.resize(count, 1);
    m_copy.resize(count, 2);
    const auto start = SteadyClock::now();
    for (int i = 0; i < kCopies; ++i) {
        std::memcpy(m_copy.data(), m_pixels.data(), count * sizeof(quint32));
        benchmark::DoNotOptimize(m_copy.data());
        benchmark::ClobberMemory();
    }
    return seconds(SteadyClock::now() - start) / kCopies;
}

double ChartBench::litShare() const {
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

} // namespace veldron
