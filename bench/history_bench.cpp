// SPDX-License-Identifier: MIT
// Recording and playback through the whole form with its chart at 1280 x 800, and what a day of
// either holds of memory.
#include "bench/BenchForm.h"
#include "chart/ctlChartSpectrum.h"
#include "common/TextFile.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QFile>
#include <QFileInfo>

#include <random>

namespace veldron {
namespace {

using UnitPresence = BenchForm::UnitPresence;

constexpr int kFullRaster = 10000;
constexpr int kSecondsPerDay = 86400;
constexpr int kFullScan = 321;

/// Resident memory of this process in KiB.
double residentKiB() {
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0.0;
    }
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith("VmRSS:")) {
            return line.simplified().split(' ').value(1).toDouble();
        }
    }
    return 0.0;
}

void writeBlock(TextFileWriter &file, const QString &date) {
    file.writeLine(QStringLiteral("StartSettings ") + date);
    for (const char *line : {"WaterfallOn True", "Poll 1000", "MonitorMode 1", "Span 10000000",
                             "Centre 100000000", "Receiver VK3900", "EndSettings "}) {
        file.writeLine(QLatin1String(line));
    }
}

/// Where settings stand: before the first scan only, or before each one behind the first 10,000.
enum class Blocks { FirstOnly, BeforeEachScan };

/// A recording of \a scans, one a second.
void writeRecording(const QString &path, int scans, Blocks blocks) {
    const DateTimeText texts{QLocale::c()};
    TextFileWriter file(path);
    file.writeLine(QStringLiteral("VELDRONv1 History file"));
    std::mt19937 random(3);
    std::uniform_int_distribution<int> level(45, 100);
    QDateTime moment(QDate(2026, 3, 14), QTime(0, 0, 10));
    for (int scan = 0; scan < scans; ++scan, moment = moment.addSecs(1)) {
        if (scan == 0 || moment.time() == QTime(0, 0) ||
            (blocks == Blocks::BeforeEachScan && scan > kFullRaster)) {
            writeBlock(file, texts.dateText(moment.date()));
        }
        QString levels;
        for (int i = 0; i < kFullScan; ++i) {
            levels += QLatin1Char(static_cast<char>(level(random)));
        }
        file.writeLine(QStringLiteral("Data ") + levels + QLatin1Char(' ') +
                       texts.timeText(moment.time()));
    }
}

/// False, with the case marked as failed, when the form has ended or is not in the state named.
bool stands(benchmark::State &state, const BenchForm &bench, bool inState, const char *otherwise) {
    if (bench.error().isEmpty() && inState) {
        return true;
    }
    state.SkipWithError(bench.error().isEmpty() ? otherwise : bench.error().toUtf8().constData());
    return false;
}

/// Starts a playback of \a scans scans and goes \a rows rows into it, drawing the last one only.
bool startPlayback(benchmark::State &state, BenchForm &bench, int scans, int rows,
                   Blocks blocks = Blocks::FirstOnly) {
    writeRecording(bench.file(), scans, blocks);
    bench.pick("mnuFilePlayback");
    bench.chart->setDisplayType(DisplayTypeCode::Trace);
    for (int row = 0; row < rows; ++row) {
        bench.playbackStep(1);
    }
    bench.chart->setDisplayType(DisplayTypeCode::TraceAndWaterfall);
    return stands(state, bench, bench.form.InPlayback(), "playback did not start");
}

void playbackStep(benchmark::State &state) {
    BenchForm bench(UnitPresence::None);
    if (!startPlayback(state, bench, 2 * kFullRaster, kFullRaster + 10)) {
        return;
    }
    for (auto _ : state) {
        bench.playbackStep(1);
    }
    if (stands(state, bench, bench.form.InPlayback(), "playback has ended")) {
        state.SetLabel("line read, scan, row and picture, 10,000 rows behind");
    }
}
BENCHMARK(playbackStep)->Unit(benchmark::kMillisecond)->Iterations(2000);

void playbackStepShown(benchmark::State &state) {
    BenchForm bench(UnitPresence::None);
    if (!startPlayback(state, bench, 2 * kFullRaster, kFullRaster + 10)) {
        return;
    }
    for (auto _ : state) {
        bench.playbackStep(1);
        QApplication::processEvents();
    }
    if (stands(state, bench, bench.form.InPlayback(), "playback has ended")) {
        state.SetLabel("as playbackStep, and brought to the window");
    }
}
BENCHMARK(playbackStepShown)->Unit(benchmark::kMillisecond)->Iterations(2000);

void playbackStepWithSettings(benchmark::State &state) {
    BenchForm bench(UnitPresence::None);
    if (!startPlayback(state, bench, 2 * kFullRaster, kFullRaster + 10, Blocks::BeforeEachScan)) {
        return;
    }
    for (auto _ : state) {
        bench.playbackStep(1);
    }
    if (stands(state, bench, bench.form.InPlayback(), "playback has ended")) {
        state.SetLabel("as playbackStep, with a block of settings loaded before each scan");
    }
}
BENCHMARK(playbackStepWithSettings)->Unit(benchmark::kMillisecond)->Iterations(2000);

void playbackStepBack(benchmark::State &state) {
    BenchForm bench(UnitPresence::None);
    if (!startPlayback(state, bench, kFullRaster + 100, kFullRaster + 10)) {
        return;
    }
    for (auto _ : state) {
        bench.playbackStep(-1);
    }
    if (stands(state, bench, bench.form.InPlayback(), "playback has ended")) {
        state.SetLabel("one stored row back, 10,000 rows");
    }
}
BENCHMARK(playbackStepBack)->Unit(benchmark::kMillisecond)->Iterations(2000);

void playbackDay(benchmark::State &state) {
    BenchForm bench(UnitPresence::None);
    if (!startPlayback(state, bench, kSecondsPerDay, kFullRaster)) {
        return;
    }
    const double before = residentKiB();
    for (auto _ : state) {
        for (int row = kFullRaster + 2; row < kSecondsPerDay; ++row) {
            bench.playbackStep(1);
        }
    }
    state.counters["grown_KiB"] = residentKiB() - before;
    state.counters["resident_KiB"] = residentKiB();
    if (stands(state, bench, bench.form.InPlayback(), "playback has ended")) {
        state.SetLabel("the rest of a day of scans after the first 10,000 rows");
    }
}
BENCHMARK(playbackDay)->Unit(benchmark::kSecond)->Iterations(1);

void takeScans(benchmark::State &state, BenchForm &bench) {
    for (auto _ : state) {
        bench.takeScan();
    }
}

void scanTaken(benchmark::State &state) {
    BenchForm bench(UnitPresence::OnCom1);
    takeScans(state, bench);
    state.SetLabel("one scan asked for, stored and drawn, no line in between");
}
BENCHMARK(scanTaken)->Unit(benchmark::kMicrosecond)->Iterations(5000);

void scanTakenAndRecorded(benchmark::State &state) {
    BenchForm bench(UnitPresence::OnCom1);
    bench.pick("mnuFileRecord");
    const qint64 head = QFileInfo(bench.file()).size();
    takeScans(state, bench);
    const double written = static_cast<double>(QFileInfo(bench.file()).size() - head);
    if (stands(state, bench, bench.form.Recording() && written > 0.0, "nothing was recorded")) {
        state.counters["bytes_a_scan"] = written / static_cast<double>(state.iterations());
        state.SetLabel("the same and recorded; the difference is the recording");
    }
}
BENCHMARK(scanTakenAndRecorded)->Unit(benchmark::kMicrosecond)->Iterations(5000);

void passSeconds(BenchForm &bench, int seconds) {
    constexpr int kPaintedEach = 60;
    for (int second = 0; second < seconds; ++second) {
        bench.passSecond();
        if (second % kPaintedEach == 0) {
            QApplication::processEvents();
        }
    }
}

void recordDay(benchmark::State &state) {
    BenchForm bench(UnitPresence::OnCom1);
    bench.pick("mnuFileRecord");
    passSeconds(bench, kFullRaster);
    const double before = residentKiB();
    for (auto _ : state) {
        passSeconds(bench, kSecondsPerDay - kFullRaster);
    }
    state.counters["grown_KiB"] = residentKiB() - before;
    state.counters["resident_KiB"] = residentKiB();
    state.counters["file_MB"] = static_cast<double>(QFileInfo(bench.file()).size()) / 1e6;
    if (stands(state, bench, bench.form.Recording(), "the recording has ended")) {
        state.SetLabel("the rest of a day of polls and rows after the first 10,000 seconds");
    }
}
BENCHMARK(recordDay)->Unit(benchmark::kSecond)->Iterations(1);

} // namespace
} // namespace veldron
