// SPDX-License-Identifier: MIT
#include "tests/fuzz/FuzzEntry.h"

#include "common/TextFile.h"
#include "common/UntrappedError.h"
#include "tests/fuzz/Demand.h"
#include "tests/fuzz/LiteralPlayback.h"
#include "tests/support/HistoryFixture.h"

#include <QBuffer>

#include <stdexcept>
#include <sys/mman.h>
#include <unistd.h>

namespace veldron {

namespace {

constexpr int kSteps = 12;

/// One fixture for all runs, since making one costs more than a run; each run begins with the same
/// values.
HistoryFixture &freshFixture() {
    // Never destroyed: statics outlive the application that its windows need.
    static HistoryFixture &fixture = *new HistoryFixture;
    static const QStringList startState = [] {
        fixture.ctlChartSpectrum1.resize(120, 80);
        // Each reading of the clock advances it by a second and a half, so that waits are short.
        fixture.clock.setStepPerReading(1.5);
        return fixture.state();
    }();
    fixture.session = SessionState();
    fixture.clock.setTimeOfDay(36000.0);
    fixture.lines.LoadSettings(QStringLiteral("StartSettings"));
    if (fixture.state() != startState) {
        fixture.setUp();
    }
    fixture.log.clear();
    return fixture;
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

void play(HistoryFixture &fixture) {
    fixture.playback.mnuFilePlayback();
    for (int step = 0; step < kSteps && !fixture.log.contains(QStringLiteral("StopPlay")); ++step) {
        fixture.step(direction(step));
    }
}

/// Plays forward up to the end of the file; false where nothing is shown.
bool playForward(HistoryFixture &fixture) {
    fixture.playback.mnuFilePlayback();
    while (fixture.session.InPlayback && !fixture.log.contains(QStringLiteral("StopPlay"))) {
        fixture.log.clear();
        fixture.step(1);
    }
    return fixture.session.InPlayback;
}

} // namespace

void loadSettingsBytes(const std::uint8_t *bytes, std::size_t size) {
    HistoryFixture &fixture = freshFixture();
    auto file = std::make_unique<QBuffer>();
    file->setData(reinterpret_cast<const char *>(bytes), static_cast<int>(size));
    file->open(QIODevice::ReadOnly);
    TextFileReader reader(std::move(file));
    try {
        (void)reader.readLine();
        while (!reader.atEnd()) {
            fixture.lines.LoadSettings(reader.readLine());
        }
    } catch (const UntrappedError &) {
        // What a bad line gives.
    }
    LineList block;
    fixture.lines.SaveSettings(block);
}

void playHistoryBytes(const std::uint8_t *bytes, std::size_t size) {
    HistoryFixture &fixture = freshFixture();
    const MemoryFile file(bytes, size);
    fixture.dialogs.answer = file.path();
    try {
        play(fixture);
    } catch (const UntrappedError &) {
        // What a bad line gives.
    }
    fixture.playback.Quit();
}

void playHistoryToItsEnd(const std::uint8_t *bytes, std::size_t size) {
    const QByteArray content(reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(size));
    HistoryFixture &fixture = freshFixture();
    const LiteralOutcome literal = playLiterally(content, fixture.texts);
    const MemoryFile file(bytes, size);
    fixture.dialogs.answer = file.path();
    try {
        demand(playForward(fixture) == literal.isShown && !literal.errorLine);
    } catch (const UntrappedError &error) {
        demand(literal.errorLine.has_value());
        const QString place = QStringLiteral("Line %1 of the file").arg(*literal.errorLine);
        demand(error.message().startsWith(place) || size == 0);
    }
    fixture.playback.Quit();
}

} // namespace veldron
