// SPDX-License-Identifier: MIT
// Recordings in memory: made of lines, and taken apart by the reader.
#pragma once

#include "common/DateTimeText.h"
#include "common/LevelScan.h"
#include "format/FileKind.h"
#include "format/ScanLine.h"
#include "recordings/ByteSource.h"
#include "recordings/RecordingReader.h"

#include <QByteArray>
#include <QDate>
#include <QLocale>
#include <QTime>

#include <algorithm>
#include <cstring>
#include <vector>

namespace veldron {

/// The day and the time that most recordings begin with.
inline const QDate kDay(2005, 3, 21);
inline const QTime kTen(10, 0);

/// Bytes in memory that come in pieces, as out of a pipe.
class MemorySource : public ByteSource {
public:
    explicit MemorySource(QByteArray bytes, qint64 piece = 1 << 20)
        : m_bytes(std::move(bytes)), m_piece(piece) {}
    [[nodiscard]] qint64 read(char *target, qint64 most) override {
        const qint64 count = std::min({most, m_piece, m_bytes.size() - m_place});
        std::memcpy(target, m_bytes.constData() + m_place, static_cast<std::size_t>(count));
        m_place += count;
        return count;
    }

private:
    QByteArray m_bytes;
    qint64 m_piece;
    qint64 m_place = 0;
};

/// A scan as it came out of the reader, with copies of what the views showed.
struct ReadScan {
    LevelScan levels;
    QByteArray bytes;
    QDate date;
    qint32 second;
    RecordedPlace place;

    bool operator==(const ReadScan &other) const {
        return levels == other.levels && date == other.date && second == other.second;
    }
};

struct ReadBlock {
    QByteArray bytes;
    QDate date;
    RecordedPlace place;
    bool isWhole;
};

/// Keeps all that the reader delivers.
class Collector : public RecordingVisitor {
public:
    void bytes(QByteArrayView piece) override { all.append(piece); }
    void firstLine(QByteArrayView line) override { first = line.toByteArray(); }
    void scan(const RecordedScan &scan) override {
        scans.push_back({LevelScan(scan.levels.begin(), scan.levels.end()),
                         scan.bytes.toByteArray(), scan.date.value_or(QDate()), scan.second,
                         scan.place});
    }
    void block(const RecordedBlock &block) override {
        QByteArray lines;
        for (const RecordedSetting &line : block.lines) {
            lines.append(line.bytes);
        }
        blocks.push_back({lines, block.date.value_or(QDate()), block.place, block.isWhole()});
    }
    void finding(const RecordingFinding &finding) override { findings.push_back(finding); }

    QByteArray all;
    QByteArray first;
    std::vector<ReadScan> scans;
    std::vector<ReadBlock> blocks;
    std::vector<RecordingFinding> findings;
};

[[nodiscard]] inline Collector &readInto(Collector &collector, const QByteArray &bytes,
                                         const RecordingDates::Rules &rules = {},
                                         qint64 piece = 1 << 20) {
    MemorySource source(bytes, piece);
    RecordingReader reader(source, collector, rules);
    reader.read();
    return collector;
}

/// Builds a recording from lines of the product's own making.
class RecordingText {
public:
    explicit RecordingText(const QLocale &locale = QLocale(QLocale::English,
                                                           QLocale::UnitedKingdom))
        : texts(locale) {
        line(QLatin1String(kHistoryFile.firstLine));
    }

    RecordingText &line(const QString &text) {
        bytes += text.toLatin1() + lineEnd;
        return *this;
    }
    RecordingText &block(const QDate &date, const QStringList &lines = unitLines()) {
        line(QStringLiteral("StartSettings ") + texts.dateText(date));
        for (const QString &text : lines) {
            line(text);
        }
        return line(QStringLiteral("EndSettings "));
    }
    RecordingText &scan(const QTime &time, const LevelScan &levels = plainScan()) {
        return line(ScanLine::lineFor(levels, time, texts));
    }
    /// Scans a second apart.
    RecordingText &scans(const QTime &first, int count) {
        for (int i = 0; i < count; ++i) {
            scan(first.addSecs(i));
        }
        return *this;
    }
    [[nodiscard]] static QStringList unitLines() {
        return {"Poll 1000",
                "MonitorMode 1",
                "Span 10000000",
                "Centre 145500000",
                "Receiver Other (10M)",
                "RBW 2",
                "Amp 0",
                "DataMode 1"};
    }
    [[nodiscard]] static LevelScan plainScan() { return LevelScan(321, 'a'); }

    DateTimeText texts;
    QByteArray lineEnd = "\r\n";
    QByteArray bytes;
};

/// The settings of a day and no scan yet: steps of 31,250 Hz from 140.5 MHz on.
inline RecordingText emptyRecording() {
    RecordingText recording;
    recording.block(kDay);
    return recording;
}

} // namespace veldron
