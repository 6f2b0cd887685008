// SPDX-License-Identifier: MIT
#include "chart/WaterfallStore.h"

#include "common/Numbers.h"
#include "common/TimeOfDay.h"
#include "utilities/Palette.h"
#include "utilities/TimesOfDay.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace veldron {

using GeneralUtilities::TimeDifference;

namespace {

constexpr float kLongestPause = 600.0F;
constexpr float kMostRowsCaughtUp = 10.0F;

float wholeSecondOfDay(double seconds) {
    return static_cast<float>(Numbers::roundTo<qint64>(seconds) % kSecondsPerDay);
}

} // namespace

WaterfallStore::WaterfallStore(float now)
    : m_nextRowTime(rowEndAfter(now, static_cast<float>(kDefaultUpdate))) {
    m_history.Create(kWidth, kHeight);
}

WaterfallStore::~WaterfallStore() {
    m_history.Destroy();
}

float WaterfallStore::rowEndAfter(float time, float interval) {
    const double rows = std::floor(static_cast<double>(time) / static_cast<double>(interval));
    return wholeSecondOfDay((rows + 1.0) * static_cast<double>(interval));
}

void WaterfallStore::setPlayback(bool on) {
    m_playback = on;
    clearRows();
    m_playRow = 0;
}

void WaterfallStore::setUpdate(qint32 seconds, float now) {
    // Before the new interval is stored: rows, their number and the view scale by old over new.
    m_history.Resize(static_cast<float>(m_update) / static_cast<float>(seconds));
    noteChange(0, kHeight - 1);
    m_rowCount = static_cast<qint32>(
        std::min<qint64>(Numbers::divideHalfEven(qint64{m_update} * m_rowCount, seconds), kHeight));
    m_scroll.stretch(m_update, seconds);
    m_update = seconds;
    m_nextRowTime = m_playback ? m_playbackTime : rowEndAfter(now, static_cast<float>(seconds));
}

float WaterfallStore::rowInterval() const {
    return m_playback ? static_cast<float>(m_poll) / 1000.0F : static_cast<float>(m_update);
}

void WaterfallStore::clearRows() {
    m_history.Clear();
    m_rowCount = 0;
    noteChange(0, kHeight - 1);
}

void WaterfallStore::addScan(const LevelScan &levels, float now) {
    // A row holds the highest levels of its scans. Its first scan, and in playback each, begins it
    // from zeros.
    if (m_rowOpen || m_playback) {
        blankRow(0);
        m_rowOpen = false;
    }
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const auto column = static_cast<qint32>(i);
        if (levels[i] > m_history.data(column, 0)) {
            m_history.setdata(column, 0, levels[i]);
        }
    }
    // A long scan runs on into the rows below.
    noteChange(0, static_cast<qint32>(levels.size()) / kWidth);
    m_lastDataTime =
        Numbers::roundTo<qint32>(static_cast<double>(m_playback ? m_playbackTime : now));
}

void WaterfallStore::resetAfterClockJump(float now) {
    const float interval = rowInterval();
    const float late = TimeDifference(m_nextRowTime, now);
    if (late > kLongestPause || late < -interval) {
        clearRows();
        m_nextRowTime = rowEndAfter(now, interval);
    }
}

void WaterfallStore::setPlaybackTime(float time) {
    m_playbackTime = time;
    if (m_rowCount == 0) {
        m_nextRowTime = time;
    }
}

void WaterfallStore::AdvanceRows(float time, float fallRoom, const RowClosed &closed) {
    for (;;) {
        const float interval = rowInterval();
        const float late = TimeDifference(m_nextRowTime, time);
        if (late < 0.0F) {
            return;
        }
        const bool gap = interval > 0.0F && late > interval * kMostRowsCaughtUp;
        if (gap) {
            bridgeGap(time, late, interval);
        }
        pushRow(time);
        // A gap may fill the history at once, and a full one asks for the scroll bar no more.
        const bool scrollBarIsDue = countRow(fallRoom) || gap;
        // Row ends are whole seconds, which can't tell rows of less than a second apart: there,
        // each scan closes one row.
        bool oneRowOnly = interval < 1.0F;
        if (oneRowOnly) {
            m_nextRowTime = time;
        } else if (!gap) {
            const float next = wholeSecondOfDay(static_cast<double>(interval) +
                                                static_cast<double>(m_nextRowTime));
            // Rows of whole days all end at the same time of day: without this the loop would never
            // end.
            oneRowOnly = next == m_nextRowTime;
            m_nextRowTime = next;
        }
        closed(scrollBarIsDue);
        if (oneRowOnly) {
            return;
        }
    }
}

// The gap stays in the picture as blank rows, to true scale.
void WaterfallStore::bridgeGap(float time, float difference, float interval) {
    const double missing =
        std::floor(static_cast<double>(difference) / static_cast<double>(interval) - 0.5);
    m_nextRowTime = rowEndAfter(time, interval);
    const auto rows = static_cast<qint32>(std::min(missing, static_cast<double>(kHeight)));
    m_history.Scroll(0, static_cast<qint16>(rows));
    noteShift(rows);
    m_rowCount = std::min(m_rowCount + rows, kHeight);
    m_scroll.rowsPushed(rows, m_rowCount);
    // Row 0 keeps its bytes: it is the row that was open, which pushRow() closes next.
    for (qint32 row = rows; row >= 1; --row) {
        blankRow(row);
    }
}

// Row 0 begins as a copy of the row just closed and stays one while scans are still expected; a
// dead link leaves it blank.
void WaterfallStore::pushRow(float time) {
    m_history.Scroll(0, 1);
    noteShift(1);
    noteChange(0, 0);
    const float patience = static_cast<float>(m_poll) * 2.0F / 1000.0F;
    const float lastExpected = static_cast<float>(m_lastDataTime) + patience;
    if ((m_rowOpen || m_playback) && TimeDifference(time, lastExpected) < 0.0F) {
        blankRow(0);
    }
    m_rowOpen = true;
}

bool WaterfallStore::countRow(float fallRoom) {
    bool scrollBarIsDue = false;
    if (m_rowCount < kHeight) {
        ++m_rowCount;
        scrollBarIsDue = fallRoom < static_cast<float>(m_rowCount);
    }
    return m_scroll.rowsPushed(1, m_rowCount) || scrollBarIsDue;
}

bool WaterfallStore::step(qint16 rows) {
    if (rows > 0 && m_playRow <= 0) {
        m_playRow = 0;
        return false;
    }
    if (rows < 0 && m_playRow >= m_rowCount - 1) {
        m_playRow = m_rowCount - 1;
        return false;
    }
    m_playRow -= rows;
    return true;
}

void WaterfallStore::buildPalette(qint16 scheme, const LevelScale &scale) {
    noteChange(0, kHeight - 1);
    for (qint16 raw = 0; raw < 256; ++raw) {
        m_history.setPalette(raw, GeneralUtilities::PaletteColour(scale.schemeLevel(raw), scheme));
    }
}

WaterfallStore::RowChange WaterfallStore::takeChange() {
    return std::exchange(m_change, RowChange{0, kHeight, -1});
}

void WaterfallStore::blankRow(qint32 row) {
    for (qint32 column = 0; column < kWidth; ++column) {
        m_history.setdata(column, row, 0);
    }
    noteChange(row, row);
}

void WaterfallStore::noteChange(qint32 first, qint32 last) {
    m_change.first = std::min(m_change.first, first);
    m_change.last = std::max(m_change.last, last);
}

void WaterfallStore::noteShift(qint32 rows) {
    m_change.shift = std::min(m_change.shift + rows, kHeight);
    if (m_change.first <= m_change.last) {
        m_change.first = std::min(m_change.first + rows, kHeight - 1);
        m_change.last = std::min(m_change.last + rows, kHeight - 1);
    }
}

} // namespace veldron
