// SPDX-License-Identifier: MIT
#include "chart/ScanStore.h"

#include "common/Numbers.h"
#include "common/TimeOfDay.h"

#include <algorithm>

namespace veldron {

void ScanStore::reset(qint32 binCount) {
    m_binCount = binCount;
    const auto size = static_cast<std::size_t>(binCount) + 2;
    m_current.assign(size, 0);
    m_peaks.assign(size, 0);
    m_ages.assign(size, 0);
}

void ScanStore::take(const LevelScan &levels) {
    std::copy(levels.begin(), levels.end(), m_current.begin());
}

void ScanStore::zeroPeaks() {
    std::fill_n(m_peaks.begin(), m_binCount, quint8{0});
    std::fill_n(m_ages.begin(), m_binCount, 0);
}

void ScanStore::agePeaks(const PeakLife &life) {
    const qint32 elapsed = elapsedSince(life);
    // The bin behind the last one too, whose peak the gathering trace reads.
    const auto end = static_cast<std::size_t>(m_binCount) + 1;
    for (std::size_t bin = 0; bin < end; ++bin) {
        if (m_current[bin] >= m_peaks[bin]) {
            m_peaks[bin] = m_current[bin];
            m_ages[bin] = 0;
        } else if (life.timespan > 0) {
            const qint64 age = qint64{m_ages[bin]} + elapsed;
            const bool over = age > life.timespan;
            m_ages[bin] = over ? 0 : static_cast<qint32>(age);
            m_peaks[bin] = over ? m_current[bin] : m_peaks[bin];
        }
    }
}

qint32 ScanStore::elapsedSince(const PeakLife &life) {
    // Live, a time before the last one is the next day; in playback it is a step back.
    if (life.playback && m_lastAgeTime > life.time) {
        m_lastAgeTime = life.time;
    }
    if (m_lastAgeTime == 0.0F) {
        m_lastAgeTime = life.time;
    }
    const double difference = static_cast<double>(life.time) - static_cast<double>(m_lastAgeTime);
    const auto elapsed = Numbers::roundTo<qint32>(difference);
    m_lastAgeTime = life.time;
    return elapsed < 0 ? elapsed + kSecondsPerDay : elapsed;
}

} // namespace veldron
