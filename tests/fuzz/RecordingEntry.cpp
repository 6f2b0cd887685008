// SPDX-License-Identifier: MIT
#include "tests/fuzz/RecordingEntry.h"

#include "common/TimeOfDay.h"
#include "recordings/PlaybackJudge.h"
#include "recordings/RecordingReader.h"
#include "recordings/RecordingRepair.h"
#include "tests/recordings/Recordings.h"

#include <QFile>

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace veldron {

namespace {

/// Bytes that a pipe gives at a time, so that lines are cut anywhere.
constexpr qint64 kPiece = 61;

void demand(bool kept) {
    if (!kept) {
        std::abort();
    }
}

/// Demands that what is delivered stands in the file, in its order and once.
class Auditor : public RecordingVisitor {
public:
    explicit Auditor(QByteArrayView file) : m_file(file) {}

    void bytes(QByteArrayView piece) override {
        demand(m_file.sliced(m_taken).startsWith(piece));
        m_taken += piece.size();
    }
    void scan(const RecordedScan &scan) override {
        demand(!scan.levels.isEmpty() && scan.levels.size() <= ScanFinder::kMostLevels);
        demand(scan.second >= 0 && scan.second < kSecondsPerDay);
        take(scan.place, scan.bytes);
    }
    void block(const RecordedBlock &block) override {
        for (const RecordedSetting &line : block.lines) {
            take(line.place, line.bytes);
        }
    }
    void finding(const RecordingFinding &finding) override {
        demand(finding.skipped >= 0 && finding.place.offset + finding.skipped <= m_file.size());
        demand(!finding.what.isEmpty());
    }
    [[nodiscard]] bool isDone() const { return m_taken == m_file.size(); }

private:
    void take(RecordedPlace place, QByteArrayView bytes) {
        demand(place.offset >= m_end && place.offset + bytes.size() <= m_taken);
        demand(m_file.sliced(place.offset, bytes.size()) == bytes);
        demand(place.line == 1 + lineEndsIn(m_file.first(place.offset), 0));
        m_end = place.offset + bytes.size();
    }

    QByteArrayView m_file;
    qint64 m_taken = 0;
    qint64 m_end = 0;
};

/// What a repair writes, read back from a file that is made once.
QByteArray repaired(const QByteArray &file, bool &plays) {
    static const std::string kPath = "/tmp/fuzz_history_reader." + std::to_string(::getpid());
    const DateTimeText texts{QLocale(QLocale::English, QLocale::UnitedKingdom)};
    OutputFile out(kPath, true);
    RecordingRepair repair(out, texts, [](qint64 /*line*/, const QString & /*what*/) {});
    MemorySource source(file);
    RecordingReader(source, repair).read();
    repair.finish();
    plays = repair.plays();
    out.commit();
    QFile copy(QString::fromStdString(kPath));
    demand(copy.open(QIODevice::ReadOnly));
    QByteArray bytes = copy.readAll();
    copy.remove();
    return bytes;
}

} // namespace

void readRecordingBytes(const std::uint8_t *bytes, std::size_t size) {
    const QByteArray file(reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(size));
    Auditor auditor(file);
    MemorySource source(file, kPiece);
    RecordingReader reader(source, auditor);
    reader.read();
    demand(auditor.isDone());

    bool plays = false;
    const QByteArray copy = repaired(file, plays);
    static const DateTimeText kTexts{QLocale(QLocale::English, QLocale::UnitedKingdom)};
    PlaybackJudge judge(kTexts, [](const Stumble & /*stumble*/) {});
    judge.take(copy);
    judge.finish();
    demand(judge.plays() == plays);
}

} // namespace veldron
