// SPDX-License-Identifier: MIT
#include "recordings/ScanFinder.h"

#include "format/FileLine.h"
#include "format/ScanLine.h"

#include <utility>

namespace veldron {

namespace {

/// No settings line is longer, with its end.
constexpr qsizetype kLongestSetting = 512;
/// Scans of one length that make it trusted.
constexpr int kTrustedRun = 3;

/// Place of the first line end in \a rest, its size if there is none up to \a limit.
qsizetype lineEndIn(QByteArrayView rest, qsizetype limit) {
    const qsizetype most = qMin(limit, rest.size());
    qsizetype place = 0;
    while (place < most && !endsLine(rest[place])) {
        ++place;
    }
    return place < most ? place : rest.size();
}

/// Bytes of the line end at \a place, where one is.
qsizetype lineEndLength(QByteArrayView rest, qsizetype place) {
    return rest[place] == '\r' && place + 1 < rest.size() && rest[place + 1] == '\n' ? 2 : 1;
}

/// The settings key that \a rest begins with, as a whole word. At the end of the file the first
/// letters are enough.
std::optional<SettingsKey> settingsKeyAt(QByteArrayView rest, bool isAll, bool mayBeCut = false) {
    for (std::size_t number = 0; number < kSettingsKeys.size(); ++number) {
        const QByteArrayView key(kSettingsKeys.at(number));
        const bool whole =
            rest.startsWith(key) &&
            (rest.size() == key.size() ? isAll
                                       : rest[key.size()] == ' ' || endsLine(rest[key.size()]));
        if (whole || (mayBeCut && isAll && key.startsWith(rest))) {
            return static_cast<SettingsKey>(number);
        }
    }
    return std::nullopt;
}

bool knownKeyFollows(QByteArrayView rest, bool isAll) {
    static_assert(ScanFinder::kKeyLength == ScanLine::kKey.size() + 1);
    const QByteArrayView scanKey("Data ");
    return (isAll && scanKey.startsWith(rest)) || rest.startsWith(scanKey) ||
           settingsKeyAt(rest, isAll, true).has_value();
}

} // namespace

std::optional<SettingsLineFit> settingsLineAt(QByteArrayView rest, bool isAll) {
    const std::optional<SettingsKey> key = settingsKeyAt(rest, isAll);
    const qsizetype end = key ? lineEndIn(rest, kLongestSetting) : rest.size();
    if (!key || (end == rest.size() && (!isAll || end > kLongestSetting))) {
        return std::nullopt;
    }
    const qsizetype keyLength =
        QByteArrayView(kSettingsKeys.at(static_cast<std::size_t>(*key))).size();
    const qsizetype value = qMin(keyLength + 1, end);
    const qsizetype length = end == rest.size() ? end : end + lineEndLength(rest, end);
    return SettingsLineFit{*key, length, rest.sliced(value, end - value)};
}

bool ScanFinder::isScanKey(QByteArrayView rest) {
    return rest.startsWith("Data ");
}

std::optional<ScanFinder::Fit> ScanFinder::fitOf(QByteArrayView rest, bool isAll,
                                                 qsizetype levels) const {
    const qsizetype blank = kKeyLength + levels;
    if (blank >= rest.size() || rest[blank] != ' ') {
        return std::nullopt;
    }
    const QByteArrayView behind = rest.sliced(blank + 1);
    const qsizetype end = lineEndIn(behind, TimeForms::kLongest + 1);
    if (end > TimeForms::kLongest || (end == behind.size() && !isAll)) {
        return std::nullopt;
    }
    const QByteArrayView text = behind.first(end);
    const std::optional<TimeForms::Reading> time = TimeForms::read(text, m_forms);
    // Without a line end the time itself may have been cut.
    if (!time || (end == behind.size() && TimeForms::mayGoOn(text, m_forms))) {
        return std::nullopt;
    }
    const qsizetype lineEnd = end == behind.size() ? 0 : lineEndLength(behind, end);
    const QByteArrayView next = behind.sliced(end + lineEnd);
    return Fit{levels, end, blank + 1 + end + lineEnd, *time, knownKeyFollows(next, isAll)};
}

std::optional<ScanFinder::Fit> ScanFinder::findByNeighbours(QByteArrayView rest, bool isAll,
                                                            Trust trust) const {
    for (const Neighbour &neighbour : m_neighbours) {
        const bool counts = trust == Trust::Any || neighbour.run >= kTrustedRun;
        const std::optional<Fit> fit = counts ? fitOf(rest, isAll, neighbour.levels) : std::nullopt;
        if (fit && fit->isFollowed) {
            return fit;
        }
    }
    return std::nullopt;
}

std::optional<ScanFinder::Fit> ScanFinder::findNearest(QByteArrayView rest, bool isAll) const {
    const qsizetype last = qMin(kKeyLength + kMostLevels, rest.size() - 1);
    for (qsizetype blank = rest.indexOf(' ', kKeyLength + 1); blank >= 0 && blank <= last;
         blank = rest.indexOf(' ', blank + 1)) {
        const std::optional<Fit> fit = fitOf(rest, isAll, blank - kKeyLength);
        if (fit && fit->isFollowed) {
            return fit;
        }
    }
    return std::nullopt;
}

std::optional<ScanFinder::Fit> ScanFinder::find(QByteArrayView rest, bool isAll) const {
    if (const std::optional<Fit> fit = findByNeighbours(rest, isAll, Trust::Run)) {
        return fit;
    }
    if (const std::optional<Fit> fit = findNearest(rest, isAll)) {
        return fit;
    }
    // What follows is damaged, not the scan itself.
    for (const Neighbour &neighbour : m_neighbours) {
        if (const std::optional<Fit> fit = fitOf(rest, isAll, neighbour.levels)) {
            return fit;
        }
    }
    return std::nullopt;
}

void ScanFinder::note(const Fit &fit) {
    if (fit.levels != m_neighbours[0].levels) {
        // One that comes back keeps its run.
        std::swap(m_neighbours[0], m_neighbours[1]);
        if (fit.levels != m_neighbours[0].levels) {
            m_neighbours[0] = {fit.levels, 0};
        }
    }
    m_neighbours[0].run = qMin(m_neighbours[0].run + 1, kTrustedRun);
    m_forms = fit.time.forms;
}

} // namespace veldron
