// SPDX-License-Identifier: MIT
#include "chart/WaterfallScroll.h"

#include "common/Numbers.h"

#include <algorithm>
#include <limits>

namespace veldron {

void WaterfallScroll::limitTo(qint32 rowCount, int visible) {
    m_firstRow = std::max(std::min(m_firstRow, rowCount - visible), 0);
}

void WaterfallScroll::centreOn(qint32 row, qint32 rowCount, int visible) {
    m_firstRow = static_cast<qint32>(Numbers::divideHalfEven(2 * qint64{row} - visible, 2));
    limitTo(rowCount, visible);
}

void WaterfallScroll::fitTo(qint32 rowCount, int visible) {
    if (m_firstRow >= 0 && qint64{m_firstRow} + visible > rowCount) {
        m_firstRow = std::max(rowCount - visible, 0);
    }
}

bool WaterfallScroll::rowsPushed(qint32 rows, qint32 rowCount) {
    const bool back = m_firstRow > 0 && m_firstRow < rowCount;
    if (back) {
        m_firstRow += rows;
    }
    return back;
}

void WaterfallScroll::stretch(qint32 oldSeconds, qint32 newSeconds) {
    const qint64 row = Numbers::divideHalfEven(qint64{oldSeconds} * m_firstRow, newSeconds);
    m_firstRow = static_cast<qint32>(std::min<qint64>(row, std::numeric_limits<qint32>::max()));
}

} // namespace veldron
