// SPDX-License-Identifier: MIT
#include "tests/fuzz/RecordingEntry.h"

#include "common/TimeOfDay.h"
#include "recordings/RecordingReader.h"
#include "recordings/RecordingRepair.h"
#include "recordings/RecordingSummary.h"
#include "recordings/SummaryTexts.h"
#include "tests/fuzz/Demand.h"
#include "tests/fuzz/LiteralPlayback.h"
#include "tests/fuzz/PlainText.h"
#include "tests/recordings/Recordings.h"

#include <QJsonDocument>

#include <array>
#include <fcntl.h>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace veldron {

namespace {

/// Bytes that a pipe gives at a time, so that lines are cut anywhere.
constexpr qint64 kPiece = 61;

const DateTimeText &texts() {
    static const DateTimeText kTexts{QLocale(QLocale::English, QLocale::UnitedKingdom)};
    return kTexts;
}

/// Hands a recording on to the summary, and demands that what is delivered stands in the file, in
/// its order, once, and with nothing between.
class Auditor : public RecordingVisitor {
public:
    Auditor(QByteArrayView file, RecordingVisitor &target) : m_file(file), m_target(target) {}

    void bytes(QByteArrayView piece) override {
        demand(m_file.sliced(m_taken).startsWith(piece));
        m_taken += piece.size();
        m_target.bytes(piece);
    }
    void firstLine(QByteArrayView line) override {
        take({}, line);
        m_target.firstLine(line);
    }
    void scan(const RecordedScan &scan) override {
        demand(!scan.levels.isEmpty() && scan.levels.size() <= ScanFinder::kMostLevels);
        demand(scan.second >= 0 && scan.second < kSecondsPerDay);
        const auto plainSecond = PlainText::plainTime(scan.timeText);
        demand(!plainSecond || *plainSecond == scan.second);
        QByteArray line("Data ");
        line += scan.levels;
        line += ' ';
        line += scan.timeText;
        demand(scan.bytes.startsWith(line));
        const QByteArrayView end = scan.bytes.sliced(line.size());
        demand(end == "\r\n" || end == "\n" || end == "\r" ||
               (end.isEmpty() && m_taken == m_file.size()));
        take(scan.place, scan.bytes);
        ++m_scans;
        m_target.scan(scan);
    }
    void block(const RecordedBlock &block) override {
        demand(!block.lines.empty() && block.place.offset == block.lines.front().place.offset);
        for (const RecordedSetting &line : block.lines) {
            demand(line.bytes.startsWith(textOf(line.key).toLatin1()));
            take(line.place, line.bytes);
        }
        m_target.block(block);
    }
    void finding(const RecordingFinding &finding) override {
        demand(finding.skipped >= 0 && finding.place.offset + finding.skipped <= m_taken);
        demand(!finding.what.isEmpty());
        if (finding.kind == RecordingFinding::Kind::FirstLine) {
            m_hasFirstLine = false;
        }
        if (finding.skipped > 0) {
            take(finding.place, m_file.sliced(finding.place.offset, finding.skipped));
        }
        m_target.finding(finding);
    }
    [[nodiscard]] bool isDone() const { return m_taken == m_file.size() && m_end == m_taken; }
    [[nodiscard]] qint64 scanCount() const { return m_scans; }

private:
    /// Takes what must begin where the last thing ended. Only a first line that is none of a
    /// recording is passed over without a count.
    void take(RecordedPlace place, QByteArrayView bytes) {
        if (!m_hasFirstLine && m_end == 0) {
            m_end = place.offset;
            const auto lines = PlainText::linesOf(m_file.first(m_end));
            demand(lines.size() <= 1);
        }
        demand(place.offset == m_end && place.offset + bytes.size() <= m_taken);
        demand(m_file.sliced(place.offset, bytes.size()) == bytes);
        demand(place.line == 1 + lineEndsIn(m_file.first(place.offset), 0));
        m_end = place.offset + bytes.size();
    }

    QByteArrayView m_file;
    RecordingVisitor &m_target;
    qint64 m_taken = 0;
    qint64 m_end = 0;
    qint64 m_scans = 0;
    bool m_hasFirstLine = true;
};

/// A pipe that an output file is written into, so that nothing goes through the disk.
class Pipe {
public:
    Pipe() {
        if (::pipe2(m_ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
            throw std::runtime_error("no pipe");
        }
    }
    Pipe(const Pipe &) = delete;
    Pipe &operator=(const Pipe &) = delete;
    ~Pipe() {
        ::close(m_ends[0]);
        ::close(m_ends[1]);
    }
    [[nodiscard]] std::string path() const { return "/proc/self/fd/" + std::to_string(m_ends[1]); }
    /// What was written since the last call.
    [[nodiscard]] QByteArray take() {
        QByteArray all;
        std::array<char, 4096> piece{};
        ssize_t count = 0;
        while ((count = ::read(m_ends[0], piece.data(), piece.size())) > 0) {
            all.append(piece.data(), count);
        }
        return all;
    }

private:
    std::array<int, 2> m_ends{};
};

struct Repaired {
    QByteArray bytes;
    bool plays = false;
    qint64 changes = 0;
};

Repaired repaired(const QByteArray &file) {
    static Pipe pipe;
    Repaired copy;
    OutputFile out(pipe.path(), true);
    RecordingRepair repair(out, texts(), [&](qint64 line, const QString &what) {
        demand(line >= 1 && !what.isEmpty());
        ++copy.changes;
    });
    MemorySource source(file, kPiece);
    RecordingReader(source, repair).read();
    repair.finish();
    copy.plays = repair.plays();
    demand(copy.plays == (out.scanCount() > 0));
    out.commit();
    copy.bytes = pipe.take();
    return copy;
}

} // namespace

void readRecordingBytes(const std::uint8_t *bytes, std::size_t size) {
    const QByteArray file(reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(size));
    RecordingSummary summary(texts());
    Auditor auditor(file, summary);
    MemorySource source(file, kPiece);
    RecordingReader reader(source, auditor);
    reader.read();
    summary.finish();
    demand(auditor.isDone() || (!reader.isRecording() && summary.skipped() == 0));
    demand(summary.size() == file.size() && summary.scanCount() == auditor.scanCount());
    demand(reader.scanCount() == auditor.scanCount());

    const LiteralOutcome literal = playLiterally(file, texts());
    demand(literal.plays() == (summary.stumbleCount() == 0));
    if (literal.errorLine && !file.isEmpty()) {
        demand(summary.stumbles().front().line == *literal.errorLine);
    }
}

void repairRecordingBytes(const std::uint8_t *bytes, std::size_t size) {
    const QByteArray file(reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(size));
    const Repaired copy = repaired(file);
    demand(playLiterally(copy.bytes, texts()).plays() == copy.plays);
    if (copy.plays) {
        const Repaired again = repaired(copy.bytes);
        demand(again.plays && again.bytes == copy.bytes);
    }
    RecordingSummary summary(texts());
    MemorySource source(file);
    RecordingReader(source, summary).read();
    summary.finish();
    demand(QJsonDocument::fromJson(jsonOf(summary, QStringLiteral("a.rec"))).isObject());
    demand(!pageOf(summary, QStringLiteral("a.rec")).isEmpty());
}

} // namespace veldron
