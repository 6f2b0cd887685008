// SPDX-License-Identifier: MIT
#include "recordings/NetcdfExport.h"

#include "recordings/FailedTransfer.h"

#include <limits>
#include <utility>

namespace veldron {

namespace {

/// An hour at a scan a second: 1.1 MB, of which a program that reads days takes some dozens.
constexpr std::size_t kChunkRows = 3600;
/// Of the groups beside it, of which a stretch may have hundreds.
constexpr std::size_t kOddChunkRows = 64;

/// Seconds since 1970.
qint64 timeOf(const RecordedScan &scan) {
    return momentOf(*scan.date, scan.second) - momentOf(QDate(1970, 1, 1), 0);
}

/// Settings whose values are numbers of hertz, and those that are whole numbers.
bool isHertz(SettingsKey key) {
    return key == SettingsKey::RXStep ||
           (key >= SettingsKey::Span && key <= SettingsKey::MarkerFrequency);
}

bool isWhole(SettingsKey key) {
    switch (key) {
    case SettingsKey::Persistence:
    case SettingsKey::Palette:
    case SettingsKey::Update:
    case SettingsKey::Poll:
    case SettingsKey::MonitorMode:
    case SettingsKey::RBW:
    case SettingsKey::Amp:
    case SettingsKey::DataMode:
    case SettingsKey::Samples:
        return true;
    default:
        return false;
    }
}

bool fitsInt(qint64 number) {
    return number >= std::numeric_limits<qint32>::min() &&
           number <= std::numeric_limits<qint32>::max();
}

} // namespace

NetcdfExport::NetcdfExport(const std::string &file, TimeWindow window, Console &console,
                           OutputFile &out)
    : RecordingExport(file, std::move(window), console), m_target(out) {
    m_target.setAttribute("Conventions", QStringLiteral("CF-1.10"));
    m_target.setAttribute("title", QStringLiteral("Recording of spectra"));
    m_target.setAttribute("source", QStringLiteral("VELDRON"));
}

void NetcdfExport::take(const RecordedScan &scan) {
    if (!scan.date) {
        return;
    }
    if (std::exchange(m_settingsAreNew, false)) {
        Lines lines = settings().lines();
        lines.erase(SettingsKey::StartSettings);
        lines.erase(SettingsKey::EndSettings);
        if (m_stretch == 0 || lines != m_stretchLines) {
            endStretch();
            beginStretch(std::move(lines));
        }
    }
    m_target.append(groupFor(scan), timeOf(scan), scan.levels);
}

void NetcdfExport::beginStretch(Lines lines) {
    ++m_stretch;
    m_stretchLines = std::move(lines);
    m_ownLevels = 0;
}

void NetcdfExport::endStretch() {
    for (const auto &[levels, group] : m_groups) {
        m_target.finishGroup(group);
    }
    m_groups.clear();
}

NetcdfFile::GroupNumber NetcdfExport::groupFor(const RecordedScan &scan) {
    const qsizetype levels = scan.levels.size();
    if (const auto found = m_groups.find(levels); found != m_groups.end()) {
        return found->second;
    }
    const bool isOwn = m_ownLevels == 0 && !isFailedTransfer(scan.levels);
    if (isOwn) {
        m_ownLevels = levels;
    }
    return m_groups[levels] = addGroup(levels, isOwn);
}

NetcdfFile::GroupNumber NetcdfExport::addGroup(qsizetype levels, bool isOwn) {
    QString name = QStringLiteral("stretch_%1").arg(m_stretch, 4, 10, QLatin1Char('0'));
    if (!isOwn) {
        name += QStringLiteral("_levels_%1").arg(levels);
    }
    NetcdfFile::Group group{name.toStdString(), levels, std::nullopt,
                            isOwn ? kChunkRows : kOddChunkRows};
    if (axis()) {
        std::vector<double> &frequencies = group.frequencies.emplace();
        for (qsizetype level = 0; level < levels; ++level) {
            frequencies.push_back(axis()->at(level).toDouble());
        }
    }
    const NetcdfFile::GroupNumber number = m_target.addGroup(group);
    describe(number);
    return number;
}

void NetcdfExport::describe(NetcdfFile::GroupNumber group) {
    for (const auto &[key, line] : m_stretchLines) {
        const QByteArray name = textOf(key).toLatin1();
        const std::optional<Hertz> hertz = isHertz(key) ? settings().hertz(key) : std::nullopt;
        const std::optional<qint64> number = isWhole(key) ? settings().number(key) : std::nullopt;
        if (hertz) {
            m_target.setAttribute(group, name.constData(), hertz->toDouble());
        } else if (number && fitsInt(*number)) {
            m_target.setAttribute(group, name.constData(), static_cast<qint32>(*number));
        } else {
            m_target.setAttribute(group, name.constData(),
                                  settings().value(key).value_or(QString()));
        }
    }
}

void NetcdfExport::writeRest() {
    endStretch();
    m_target.close();
}

} // namespace veldron
