// SPDX-License-Identifier: MIT
#include "recordings/RecordingExtent.h"

#include "recordings/FailedTransfer.h"

#include <algorithm>
#include <utility>

namespace veldron {

void RecordingExtent::take(const RecordedScan &scan) {
    if (!scan.date || !axis() || isFailedTransfer(scan.levels)) {
        return;
    }
    const qint64 moment = momentOf(*scan.date, scan.second);
    const Hertz low = axis()->start;
    const Hertz high = axis()->at(scan.levels.size() - 1);
    const bool isFirst = !std::exchange(m_hasScans, true);
    m_begin = isFirst ? moment : std::min(m_begin, moment);
    m_end = isFirst ? moment + 1 : std::max(m_end, moment + 1);
    m_low = isFirst ? low : std::min(m_low, low);
    m_high = isFirst ? high : std::max(m_high, high);
}

} // namespace veldron
