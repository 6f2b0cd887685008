// SPDX-License-Identifier: MIT
#include "recordings/RecordingReader.h"

#include "common/ReportText.h"
#include "format/FileKind.h"
#include "format/FileLine.h"

#include <QString>

#include <utility>

namespace veldron {

namespace {

using Kind = RecordingFinding::Kind;

/// A first line is looked for up to here.
constexpr qsizetype kLongestFirstLine = 512;
/// A block of more lines than this is delivered in pieces, so that no file fills the memory.
constexpr std::size_t kMostBlockLines = 256;
/// What a whole line may need in sight.
constexpr qsizetype kLineSight = 1024;
/// A scan that is cut by the end of the file is never longer.
constexpr qint64 kLongestCut = 512;

QString reasonToSkip(Kind kind) {
    switch (kind) {
    case Kind::CutScan:
        return QStringLiteral("the file ends in the middle of a scan");
    case Kind::BadScan:
        return QStringLiteral("a scan without a time of day where one must be");
    default:
        return QStringLiteral("neither a scan nor a setting");
    }
}

QString textOfSkipped(Kind kind, qint64 offset, qint64 count) {
    return QStringLiteral("%1 (%2 %3 at offset %4 skipped)")
        .arg(reasonToSkip(kind), QString::number(count),
             count == 1 ? QStringLiteral("byte") : QStringLiteral("bytes"),
             QString::number(offset));
}

} // namespace

RecordingReader::RecordingReader(ByteSource &source, RecordingVisitor &visitor,
                                 const RecordingDates::Rules &rules)
    : m_window(source), m_visitor(visitor), m_dates(rules) {}

void RecordingReader::read() {
    readFirstLine();
    for (m_window.fill(); !m_window.bytes().isEmpty(); m_window.fill()) {
        readItem();
    }
    closeBlock();
}

void RecordingReader::report(Kind kind, RecordedPlace place, const QString &what, qint64 skipped) {
    m_visitor.finding({kind, place, skipped, what});
}

void RecordingReader::advance(qsizetype count) {
    m_visitor.bytes(m_window.bytes().first(count));
    m_window.advance(count);
}

void RecordingReader::readFirstLine() {
    m_window.fill();
    const QByteArrayView sight = m_window.bytes();
    if (sight.isEmpty()) {
        return;
    }
    const QByteArrayView expected(kHistoryFile.firstLine);
    const RecordedPlace place = m_window.place();
    qsizetype length = 0;
    while (length < qMin(sight.size(), kLongestFirstLine) && !endsLine(sight[length])) {
        ++length;
    }
    const qsizetype end = length + (sight.sliced(length).startsWith("\r\n") ? 2 : 1);
    m_hasFirstLine = sight.first(length) == expected;
    if (m_hasFirstLine) {
        const QByteArrayView line = sight.first(qMin(end, sight.size()));
        advance(line.size());
        m_visitor.firstLine(line);
        return;
    }
    report(
        Kind::FirstLine, place,
        QStringLiteral("the first line is not \"%1\"").arg(QLatin1String(kHistoryFile.firstLine)));
    // A line that means something is read like any other; it is the first one that is missing.
    const bool isReadable =
        ScanFinder::isScanKey(sight) || settingsLineAt(sight, m_window.reachesEnd()).has_value();
    if (!isReadable && length < kLongestFirstLine) {
        advance(qMin(end, sight.size()));
    }
}

void RecordingReader::readItem() {
    const QByteArrayView sight = m_window.bytes();
    const bool isAll = m_window.reachesEnd();
    if (ScanFinder::isScanKey(sight)) {
        if (const auto fit = m_finder.find(sight, isAll)) {
            takeScan(*fit);
        } else {
            skipToWholeLine(Kind::BadScan);
        }
    } else if (const auto line = settingsLineAt(sight, isAll)) {
        takeSetting(line->key, line->length);
    } else {
        skipToWholeLine(Kind::UnknownLine);
    }
}

void RecordingReader::takeScan(const ScanFinder::Fit &fit) {
    closeBlock();
    const QByteArrayView line = m_window.bytes().first(fit.length);
    const qsizetype levelsAt = ScanFinder::kKeyLength;
    RecordedScan scan;
    scan.place = m_window.place();
    scan.levels = line.sliced(levelsAt, fit.levels);
    scan.bytes = line;
    scan.timeText = line.sliced(levelsAt + fit.levels + 1, fit.timeLength);
    scan.second = fit.time.second;
    scan.date = m_dates.takeScan(fit.time.second);
    m_finder.note(fit);
    ++m_scanCount;
    // The views stay: what is left behind is overwritten by the next fill() only.
    advance(fit.length);
    m_visitor.scan(scan);
}

void RecordingReader::takeSetting(SettingsKey key, qsizetype length) {
    if (key == SettingsKey::StartSettings || m_blockLines.size() >= kMostBlockLines) {
        closeBlock();
    }
    const RecordedPlace place = m_window.place();
    const QByteArrayView line = m_window.bytes().first(length);
    m_blockBytes.append(line);
    m_blockLines.push_back({key, place, length});
    advance(length);
    if (key == SettingsKey::StartSettings) {
        takeDate(settingsLineAt(line, true)->value, place);
    } else if (key == SettingsKey::EndSettings) {
        closeBlock();
    }
}

void RecordingReader::takeDate(QByteArrayView text, RecordedPlace place) {
    using Outcome = RecordingDates::Outcome;
    const Outcome outcome = m_dates.takeBlock(text);
    m_blockDate = outcome == Outcome::NoDate ? std::nullopt : m_dates.date();
    m_blockDateForms = m_blockDate ? DateForms::formsOf(text, *m_blockDate) & m_dates.forms() : 0;
    const QString quoted = quotedForReport(QString::fromLatin1(text));
    if (outcome == Outcome::NoDate) {
        report(Kind::BadDate, place,
               quoted + QStringLiteral(" is no date of the form that this recording has"));
    } else if (outcome == Outcome::ReadAsAssumed) {
        report(Kind::DateOrderAssumed, place,
               QStringLiteral("day and month of %1 can't be told apart, taken for %2")
                   .arg(quoted, m_dates.date()->toString(Qt::ISODate)));
    } else if (outcome == Outcome::Refuted) {
        report(Kind::DateOrderRefuted, place,
               QStringLiteral("%1 shows that the dates above were read with day and month "
                              "exchanged; give their order with --date-order")
                   .arg(quoted));
    }
}

void RecordingReader::closeBlock() {
    if (m_blockLines.empty()) {
        return;
    }
    RecordedBlock block;
    block.place = m_blockLines.front().place;
    block.date = std::exchange(m_blockDate, std::nullopt);
    block.dateForms = std::exchange(m_blockDateForms, 0);
    qsizetype place = 0;
    for (const BlockLine &line : m_blockLines) {
        const QByteArrayView bytes = QByteArrayView(m_blockBytes).sliced(place, line.length);
        const auto fit = settingsLineAt(bytes, true);
        block.values.set(line.key, QString::fromLatin1(fit->value));
        block.lines.push_back({line.key, line.place, bytes});
        place += line.length;
    }
    m_visitor.block(block);
    m_blockBytes.clear();
    m_blockLines.clear();
}

qsizetype RecordingReader::nextWholeLine() const {
    const QByteArrayView sight = m_window.bytes();
    const bool isAll = m_window.reachesEnd();
    const qsizetype limit = isAll ? sight.size() : sight.size() - kLineSight;
    char previous = m_window.previous();
    for (qsizetype place = 0; place < limit; previous = sight[place++]) {
        const QByteArrayView rest = sight.sliced(place);
        const bool isScan = ScanFinder::isScanKey(rest);
        const bool beginsLine = endsLine(previous) && !(previous == '\r' && rest[0] == '\n');
        if ((beginsLine && settingsLineAt(rest, isAll)) ||
            (isScan &&
             (beginsLine ? m_finder.find(rest, isAll)
                         : m_finder.findByNeighbours(rest, isAll, ScanFinder::Trust::Any)))) {
            return place;
        }
    }
    return -1;
}

void RecordingReader::skipToWholeLine(Kind kind) {
    closeBlock();
    const RecordedPlace start = m_window.place();
    advance(1);
    qsizetype found = -1;
    for (m_window.fill(); found < 0 && !m_window.bytes().isEmpty(); m_window.fill()) {
        found = nextWholeLine();
        const qsizetype size = m_window.bytes().size();
        advance(found >= 0 ? found : m_window.reachesEnd() ? size : size - kLineSight);
    }
    const qint64 count = m_window.place().offset - start.offset;
    const bool isCut = kind == Kind::BadScan && found < 0 && count < kLongestCut;
    const Kind told = isCut ? Kind::CutScan : kind;
    report(told, start, textOfSkipped(told, start.offset, count), count);
}

} // namespace veldron
