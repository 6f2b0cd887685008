// SPDX-License-Identifier: MIT
#include "tests/fuzz/FuzzEntry.h"

#include "settings/SettingsFiles.h"
#include "tests/support/HistoryBench.h"

#include <QBuffer>

#include <stdexcept>
#include <sys/mman.h>
#include <unistd.h>

namespace veldron {

namespace {

constexpr int kSteps = 12;

/// One bench for all runs, since making one costs more than a run; each run begins with the same
/// values.
HistoryBench &freshBench() {
    // Never taken down: the application that its windows need is gone before statics are.
    static HistoryBench &bench = *new HistoryBench;
    static const QStringList startState = [] {
        bench.ctlChartSpectrum1.resize(120, 80);
        // Every look at the clock is a second and a half later, so that no wait takes long.
        bench.clock.setStepPerReading(1.5);
        return bench.state();
    }();
    bench.session = SessionState();
    bench.clock.setTimeOfDay(36000.0);
    bool found = false;
    bench.stream.LoadSettings(QStringLiteral("StartSettings"), found);
    if (bench.state() != startState) {
        bench.setUp();
    }
    bench.log.clear();
    return bench;
}

/// A file in memory with a path to open it by.
class MemoryFile {
public:
    MemoryFile(const std::uint8_t *bytes, std::size_t size)
        : m_descriptor(memfd_create("history", MFD_CLOEXEC)) {
        if (m_descriptor < 0 || ::write(m_descriptor, bytes, size) != static_cast<ssize_t>(size)) {
            throw std::runtime_error("no file in memory");
        }
    }
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;
    ~MemoryFile() { ::close(m_descriptor); }
    [[nodiscard]] QString path() const {
        return QStringLiteral("/proc/self/fd/%1").arg(m_descriptor);
    }

private:
    int m_descriptor;
};

qint16 direction(int step) {
    constexpr int kBackEvery = 5;
    constexpr int kFarBackEvery = 9;
    if (step % kFarBackEvery == kFarBackEvery - 1) {
        return -3;
    }
    return step % kBackEvery == kBackEvery - 1 ? qint16{-1} : qint16{1};
}

void play(HistoryBench &bench) {
    bench.playback.mnuFilePlayback();
    for (int step = 0; step < kSteps && !bench.log.contains(QStringLiteral("StopPlay")); ++step) {
        bench.playback.Step(direction(step));
    }
}

} // namespace

void loadSettingsBytes(const std::uint8_t *bytes, std::size_t size) {
    HistoryBench &bench = freshBench();
    auto file = std::make_unique<QBuffer>();
    file->setData(reinterpret_cast<const char *>(bytes), static_cast<int>(size));
    file->open(QIODevice::ReadOnly);
    TextFileReader reader(std::move(file));
    try {
        (void)reader.readLine();
        while (!reader.atEnd()) {
            bool found = false;
            loadLineOf(reader, bench.stream, reader.readLine(), found);
        }
    } catch (const UntrappedError &) {
        // The way out that a bad line has.
    }
    LineList block;
    bench.stream.SaveSettings(block);
}

void playHistoryBytes(const std::uint8_t *bytes, std::size_t size) {
    HistoryBench &bench = freshBench();
    const MemoryFile file(bytes, size);
    bench.dialogs.answer = file.path();
    try {
        play(bench);
    } catch (const UntrappedError &) {
        // The way out that a bad line has.
    }
    bench.playback.Quit();
}

} // namespace veldron
