// SPDX-License-Identifier: MIT
#include "recordings/RecordingRepair.h"

#include "common/UntrappedError.h"
#include "format/ScanLine.h"
#include "format/SettingsValue.h"
#include "recordings/CommandOptions.h"
#include "recordings/ScanFinder.h"

#include <QTime>

#include <algorithm>
#include <utility>

namespace veldron {

namespace {

using Key = SettingsKey;

bool breaksLine(char level) {
    return level == '\n' || level == '\r' || level == ' ';
}

/// The next level above one that breaks a line: nothing that was measured gets lost.
char mendedLevel(char level) {
    return breaksLine(level) ? static_cast<char>(level + 1) : level;
}

/// What stands where the unit gave no answer.
bool isFailureValue(const RecordedBlock &block, Key key) {
    return key != Key::Persistence && block.values.value(key) == QStringLiteral("-1");
}

bool hasFailureValue(const RecordedBlock &block) {
    return std::any_of(block.lines.begin(), block.lines.end(), [&](const RecordedSetting &line) {
        return isFailureValue(block, line.key);
    });
}

bool isUnitLine(Key key) {
    return key != Key::StartSettings && key != Key::EndSettings && !isDisplayLine(key);
}

QByteArrayView valueOf(const RecordedSetting &line) {
    return settingsLineAt(line.bytes, true)->value;
}

/// \a line with another value.
QByteArray withValue(const RecordedSetting &line, const QByteArray &value) {
    const QByteArrayView old = valueOf(line);
    const qsizetype place = old.data() - line.bytes.data();
    return line.bytes.first(place).toByteArray() + value +
           line.bytes.sliced(place + old.size()).toByteArray();
}

} // namespace

RecordingRepair::RecordingRepair(OutputFile &out, const DateTimeText &texts, Report report)
    : m_texts(texts), m_report(std::move(report)), m_judge(texts, [](const Stumble &) {}),
      m_writer(out) {
    m_writer.setJudge(&m_judge);
}

void RecordingRepair::firstLine(QByteArrayView bytes) {
    m_writer.firstLine(bytes);
}

void RecordingRepair::finding(const RecordingFinding &finding) {
    m_report(finding.place.line,
             finding.skipped > 0 ? QStringLiteral("left out: ") + finding.what : finding.what);
}

std::optional<QString> RecordingRepair::whyLeftOut(const RecordedScan &scan) const {
    if (!m_date) {
        return QStringLiteral("no date stands above it");
    }
    if (scan.levels.size() > ScanLine::kMostLevels) {
        return QStringLiteral("%1 levels are more than playback reads").arg(scan.levels.size());
    }
    if (m_start && momentOf(*m_date, scan.second) == *m_start) {
        return QStringLiteral("it has the time of the first scan");
    }
    return std::nullopt;
}

void RecordingRepair::scan(const RecordedScan &scan) {
    m_lastLine = scan.place.line;
    if (const auto why = whyLeftOut(scan)) {
        m_report(scan.place.line, QStringLiteral("scan left out: ") + *why);
        return;
    }
    writeScan(scan);
    m_firstIsLast = !m_start;
    m_start = m_start.value_or(momentOf(*m_date, scan.second));
    ++m_scans;
}

void RecordingRepair::writeScan(const RecordedScan &scan) {
    QByteArray line = scan.bytes.toByteArray();
    const auto levels = line.begin() + ScanFinder::kKeyLength;
    const auto changed = std::count_if(scan.levels.begin(), scan.levels.end(), breaksLine);
    std::transform(levels, levels + scan.levels.size(), levels, mendedLevel);
    if (changed > 0) {
        m_report(scan.place.line,
                 QStringLiteral("levels of 10, 13 or 32 raised by one: %1").arg(changed));
    }
    const QTime time = QTime(0, 0).addSecs(scan.second);
    if (m_texts.readTime(QString::fromLatin1(scan.timeText)) != time) {
        const QByteArray plain = time.toString(Qt::ISODate).toLatin1();
        line.replace(ScanFinder::kKeyLength + scan.levels.size() + 1, scan.timeText.size(), plain);
        m_report(scan.place.line, QStringLiteral("time written as ") + QString::fromLatin1(plain));
    }
    m_writer.scan(line);
}

void RecordingRepair::block(const RecordedBlock &block) {
    const bool failed = hasFailureValue(block);
    for (const RecordedSetting &line : block.lines) {
        m_lastLine = line.place.line;
        if (failed && isUnitLine(line.key)) {
            m_report(line.place.line,
                     QStringLiteral("setting left out: its block holds values that the unit didn't "
                                    "answer with"));
        } else {
            writeSetting(line, block.date);
        }
    }
}

void RecordingRepair::writeSetting(const RecordedSetting &line, const std::optional<QDate> &date) {
    QByteArray bytes = line.bytes.toByteArray();
    if (line.key == Key::StartSettings) {
        if (!date) {
            m_report(line.place.line, QStringLiteral("setting left out: it is no date"));
            return;
        }
        bytes = mendedDate(line, *date);
        m_date = date;
    } else if (!isReadable(line)) {
        bytes = mendedMark(line);
        if (bytes.isEmpty()) {
            m_report(line.place.line, QStringLiteral("setting left out: its value can't be read"));
            return;
        }
    }
    if (bytes != line.bytes) {
        m_report(line.place.line, QStringLiteral("value written as ") +
                                      QString::fromLatin1(settingsLineAt(bytes, true)->value));
    }
    m_writer.firstLine({});
    m_writer.line(bytes);
    m_firstIsLast = false;
}

QByteArray RecordingRepair::mendedDate(const RecordedSetting &line, const QDate &date) const {
    if (m_texts.readDate(QString::fromLatin1(valueOf(line))) == date) {
        return line.bytes.toByteArray();
    }
    return withValue(line, date.toString(Qt::ISODate).toLatin1());
}

QByteArray RecordingRepair::mendedMark(const RecordedSetting &line) const {
    QByteArray value = valueOf(line).toByteArray();
    std::replace(value.begin(), value.end(), m_texts.decimalMark() == QLatin1Char(',') ? '.' : ',',
                 m_texts.decimalMark().toLatin1());
    const QByteArray mended = withValue(line, value);
    RecordedSetting other = line;
    other.bytes = mended;
    return isReadable(other) ? mended : QByteArray();
}

/// By the eyes of playback: a file of this line alone, or of a block where it works with others.
bool RecordingRepair::isReadable(const RecordedSetting &line) const {
    bool readable = true;
    PlaybackJudge judge(m_judge.texts(), [&readable](const Stumble &stumble) {
        readable = readable && stumble.kind != Stumble::Kind::Value;
    });
    judge.take(line.key == Key::Step ? "\nStart 0\nEnd 0\n" : "\n");
    judge.take(line.bytes);
    judge.take("\nEndSettings\n");
    judge.finish();
    return readable;
}

void RecordingRepair::finish() {
    if (m_firstIsLast) {
        // Playback shows a scan only where a line follows.
        m_writer.line("EndSettings \r\n");
        m_report(m_lastLine, QStringLiteral("a line added behind the only scan"));
    }
    m_judge.finish();
}

} // namespace veldron
