// SPDX-License-Identifier: MIT
#include "recordings/CsvExport.h"

#include "chart/LevelScale.h"
#include "recordings/ScanFinder.h"
#include "utilities/Codes.h"

#include <algorithm>
#include <cstring>

namespace veldron {

namespace {

constexpr std::size_t kMostLevels = ScanFinder::kMostLevels;
/// What stands in a line ahead of its levels is never longer: date and time of 20 bytes, four
/// numbers of at most 25, and what stands between.
constexpr std::size_t kLongestFront = 256;

char *put(char *place, QByteArrayView bytes) {
    // Not memcpy: an empty text may have no address, which that doesn't take.
    return std::copy(bytes.begin(), bytes.end(), place);
}

char *putTwoDigits(char *place, int number) {
    *place++ = static_cast<char>('0' + number / 10);
    *place++ = static_cast<char>('0' + number % 10);
    return place;
}

char *putTime(char *place, int second) {
    place = putTwoDigits(place, second / 3600);
    *place++ = ':';
    place = putTwoDigits(place, second / 60 % 60);
    *place++ = ':';
    return putTwoDigits(place, second % 60);
}

/// How many scans of the unit each recorded one was made of.
qint64 samplesOf(const SettingsInForce &settings) {
    const auto mode = static_cast<DataModeCode>(settings.number(SettingsKey::DataMode).value_or(0));
    return hasSamples(mode) ? settings.number(SettingsKey::Samples).value_or(1) : 1;
}

QByteArray middleText(const std::optional<FrequencyAxis> &axis, qsizetype levels, qint64 samples) {
    QString text = QStringLiteral(", , , ");
    if (axis) {
        text = QStringLiteral(", %1, %2, %3")
                   .arg(axis->start.rounded())
                   .arg(axis->at(levels - 1).rounded())
                   .arg(axis->step.toText());
    }
    return QStringLiteral("%1, %2").arg(text).arg(samples).toLatin1();
}

} // namespace

CsvExport::CsvExport(const std::string &file, TimeWindow window, Console &console, OutputFile &out,
                     Layout layout)
    : RecordingExport(file, std::move(window), console), m_out(out), m_layout(layout) {
    for (std::size_t raw = 0; raw < m_levelTexts.size(); ++raw) {
        const QByteArray level = QByteArray::number(static_cast<int>(raw) + LevelScale().offset);
        const QByteArray text = (layout == Layout::Rows ? ", " : "") + level;
        LevelText &piece = m_levelTexts.at(raw);
        std::copy(text.begin(), text.end(), piece.bytes.begin());
        piece.size = static_cast<std::uint8_t>(text.size());
    }
    CsvExport::settingsChanged();
}

void CsvExport::settingsChanged() {
    m_middleTexts.assign(kMostLevels + 1, QByteArray());
    m_frequencyTexts.assign(kMostLevels, ",,");
    if (axis() && m_layout == Layout::Columns) {
        for (std::size_t level = 0; level < kMostLevels; ++level) {
            const Hertz frequency = axis()->at(static_cast<qsizetype>(level));
            m_frequencyTexts[level] = ',' + frequency.toText().toLatin1() + ',';
        }
    }
}

const QByteArray &CsvExport::dateText(const RecordedScan &scan) {
    if (scan.date != m_day) {
        m_day = scan.date;
        m_dayText = m_day ? m_day->toString(Qt::ISODate).toLatin1() : QByteArray();
    }
    return m_dayText;
}

char *CsvExport::putLevel(char *place, LevelText text) {
    // Eight bytes, whatever the text's length: the next one is written over the rest.
    std::memcpy(place, &text, sizeof text);
    return place + text.size;
}

void CsvExport::take(const RecordedScan &scan) {
    if (m_layout == Layout::Rows) {
        writeRow(scan);
    } else {
        writeColumns(scan);
    }
    m_out.countScan();
}

void CsvExport::writeRow(const RecordedScan &scan) {
    QByteArray &middle = m_middleTexts[static_cast<std::size_t>(scan.levels.size())];
    if (middle.isEmpty()) {
        middle = middleText(axis(), scan.levels.size(), samplesOf(settings()));
    }
    char *place = m_out.room(kLongestFront + kMostLevels * sizeof(LevelText));
    place = put(place, dateText(scan));
    place = putTime(put(place, ", "), scan.second);
    place = put(place, middle);
    for (const char level : scan.levels) {
        place = putLevel(place, m_levelTexts[static_cast<std::uint8_t>(level)]);
    }
    *place++ = '\n';
    m_out.writeUpTo(place);
}

void CsvExport::writeColumns(const RecordedScan &scan) {
    if (!m_hasHeadline) {
        m_out.write("local_time,frequency_hz,level_db\n");
        m_hasHeadline = true;
    }
    std::array<char, 32> time{};
    char *timeEnd = put(time.data(), dateText(scan));
    if (scan.date) {
        *timeEnd++ = 'T';
    }
    timeEnd = putTime(timeEnd, scan.second);
    const QByteArrayView timeText(time.data(), timeEnd);
    for (std::size_t level = 0; level < static_cast<std::size_t>(scan.levels.size()); ++level) {
        const auto raw = static_cast<std::uint8_t>(scan.levels[static_cast<qsizetype>(level)]);
        char *place = m_out.room(kLongestFront + sizeof(LevelText));
        place = put(put(place, timeText), m_frequencyTexts[level]);
        place = putLevel(place, m_levelTexts[raw]);
        *place++ = '\n';
        m_out.writeUpTo(place);
    }
}

} // namespace veldron
