// SPDX-License-Identifier: MIT
#include "recordings/RecordingSummary.h"

#include "recordings/CommandOptions.h"
#include "recordings/FailedTransfer.h"

#include <QTime>

#include <algorithm>
#include <limits>
#include <numeric>

namespace veldron {

namespace {

constexpr qint64 kPollsOfAPause = 3;
constexpr qint64 kShortestGap = 2;

template <typename Entry>
void keep(std::vector<Entry> &list, Entry entry) {
    if (list.size() < RecordingSummary::kMostEntries) {
        list.push_back(std::move(entry));
    }
}

} // namespace

QString RecordingSummary::Moment::text() const {
    const QString time = QTime(0, 0).addSecs(second).toString(Qt::ISODate);
    return date ? date->toString(Qt::ISODate) + QLatin1Char(' ') + time : time;
}

qint64 RecordingSummary::Moment::seconds() const {
    return momentOf(date.value_or(QDate(1970, 1, 1)), second);
}

RecordingSummary::RecordingSummary(const DateTimeText &texts)
    : m_judge(texts, [this](const Stumble &stumble) {
          ++m_stumbleCount;
          keep(m_stumbles, stumble);
      }) {}

void RecordingSummary::bytes(QByteArrayView bytes) {
    m_size += bytes.size();
    m_judge.take(bytes);
}

void RecordingSummary::firstLine(QByteArrayView /*bytes*/) {}

void RecordingSummary::finding(const RecordingFinding &finding) {
    m_skipped += finding.skipped;
    m_hasAssumedDates =
        m_hasAssumedDates || finding.kind == RecordingFinding::Kind::DateOrderAssumed;
    keep(m_findings, finding);
}

void RecordingSummary::block(const RecordedBlock &block) {
    ++m_blocks;
    m_settings.take(block);
    m_blockLine = block.place.line;
    m_settingsAreNew = true;
    // A damaged number may be anything; a poll is one of 32 bits.
    const qint64 poll = qBound(qint64{0}, m_settings.number(SettingsKey::Poll).value_or(0),
                               qint64{std::numeric_limits<qint32>::max()});
    // Rounded up to whole seconds, which is what times have.
    m_longestPause = std::max(kShortestGap, (kPollsOfAPause * poll + 999) / 1000);
}

void RecordingSummary::scan(const RecordedScan &scan) {
    const Moment moment{scan.date, scan.second};
    if (m_settingsAreNew) {
        beginStretch(moment);
    }
    noteGap(moment, scan.place.line);
    ++m_scans;
    if (m_lastStretchIsKept) {
        Stretch &stretch = m_stretches.back();
        ++stretch.scans;
        stretch.mostLevels = std::max(stretch.mostLevels, scan.levels.size());
    }
    if (isFailedTransfer(scan.levels)) {
        ++m_failed;
    } else {
        noteLevels(scan.levels);
    }
    m_first = m_first.value_or(moment);
    m_last = moment;
}

void RecordingSummary::noteLevels(QByteArrayView levels) {
    for (const char level : levels) {
        ++m_levels[static_cast<unsigned char>(level)];
    }
}

/// A block that changes nothing but the date goes on with the stretch.
void RecordingSummary::beginStretch(const Moment &moment) {
    m_settingsAreNew = false;
    std::map<SettingsKey, QByteArray> lines = m_settings.lines();
    std::erase_if(lines, [](const auto &line) {
        return isDisplayLine(line.first) || line.first == SettingsKey::StartSettings ||
               line.first == SettingsKey::EndSettings;
    });
    if (m_stretchCount > 0 && lines == m_stretchLines) {
        return;
    }
    m_stretchLines = lines;
    ++m_stretchCount;
    Stretch stretch{moment, m_blockLine, 0, m_settings.axis(), 0, {}};
    for (const auto &line : lines) {
        stretch.settings.emplace_back(textOf(line.first),
                                      m_settings.value(line.first).value_or(QString()));
    }
    m_lastStretchIsKept = m_stretches.size() < kMostEntries;
    keep(m_stretches, std::move(stretch));
}

void RecordingSummary::noteGap(const Moment &moment, qint64 line) {
    const qint64 pause = m_last ? moment.seconds() - m_last->seconds() : 0;
    if (pause > m_longestPause) {
        ++m_gapCount;
        m_longestGap = std::max(m_longestGap, pause);
        keep(m_gaps, Gap{*m_last, moment, pause, line});
    }
}

void RecordingSummary::finish() {
    m_judge.finish();
}

std::optional<double> RecordingSummary::rate() const {
    const qint64 seconds = m_first ? m_last->seconds() - m_first->seconds() : 0;
    return seconds > 0
               ? std::optional(static_cast<double>(m_scans - 1) / static_cast<double>(seconds))
               : std::nullopt;
}

std::optional<int> RecordingSummary::level(double share) const {
    const qint64 count = std::accumulate(m_levels.begin(), m_levels.end(), qint64{0});
    if (count == 0) {
        return std::nullopt;
    }
    const auto wanted = static_cast<qint64>(share * static_cast<double>(count - 1));
    qint64 below = 0;
    int level = 0;
    while (below + m_levels.at(static_cast<std::size_t>(level)) <= wanted) {
        below += m_levels.at(static_cast<std::size_t>(level++));
    }
    return level;
}

} // namespace veldron
