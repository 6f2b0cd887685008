// SPDX-License-Identifier: MIT
#include "simulator/Measurement.h"

#include "common/Numbers.h"
#include "simulator/UnitSettings.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace veldron {

void Measurement::restart() {
    m_past.clear();
    m_held.clear();
}

LevelScan Measurement::take(const LevelScan &scan, int dataMode, int count) {
    if (m_held.size() != scan.size()) {
        restart();
        m_held = scan;
    }
    m_past.push_back(scan);
    // As many as the largest count takes, whatever count is in force: one that is raised then has
    // scans to work on.
    if (m_past.size() > kMostScans) {
        m_past.pop_front();
    }
    for (std::size_t i = 0; i < scan.size(); ++i) {
        m_held[i] = std::max(m_held[i], scan[i]);
    }
    const std::size_t scans = std::min(m_past.size(), static_cast<std::size_t>(std::max(1, count)));
    switch (dataMode) {
    case UnitSettings::Average:
        return average(scans);
    case UnitSettings::Maximum:
        return m_held;
    case UnitSettings::Median:
        return median(scans);
    default:
        return scan;
    }
}

LevelScan Measurement::average(std::size_t count) const {
    LevelScan result(m_held.size());
    for (std::size_t i = 0; i < result.size(); ++i) {
        qint64 sum = 0;
        for (std::size_t k = m_past.size() - count; k < m_past.size(); ++k) {
            sum += m_past[k][i];
        }
        result[i] =
            static_cast<std::uint8_t>(Numbers::divideHalfEven(sum, static_cast<qint64>(count)));
    }
    return result;
}

LevelScan Measurement::median(std::size_t count) const {
    LevelScan result(m_held.size());
    std::vector<int> levels(count);
    for (std::size_t i = 0; i < result.size(); ++i) {
        for (std::size_t k = 0; k < count; ++k) {
            levels[k] = m_past[m_past.size() - count + k][i];
        }
        std::sort(levels.begin(), levels.end());
        const int sum = levels[(count - 1) / 2] + levels[count / 2];
        result[i] = static_cast<std::uint8_t>(Numbers::divideHalfEven(sum, 2));
    }
    return result;
}

} // namespace veldron
