// SPDX-License-Identifier: MIT
#pragma once

#include "chart/Bitmap8.h"
#include "chart/LevelScale.h"
#include "chart/WaterfallScroll.h"
#include "common/LevelScan.h"

#include <QtGlobal>

#include <functional>

namespace veldron {

/// The past of the spectrum: a raster of raw levels, one column a bin and one row a time interval,
/// newest on top, and the clock that closes its rows.
///
/// Times are seconds since midnight, single precision. Row k ended at nextRowTime() less k row
/// intervals; row 0 is still open and holds, live, the highest level of each bin so far. Column x
/// is bin x, by flat addressing: bin 320 of a full scan is the first byte of row 1.
class WaterfallStore {
public:
    static constexpr qint32 kWidth = kScanSteps;
    static constexpr qint32 kHeight = 10000;
    static constexpr qint32 kDefaultUpdate = 10;

    /// Called for each row closed; the argument tells that the scroll bar's figures have changed.
    using RowClosed = std::function<void(bool)>;

    /// What changed in the raster since the last takeChange(): all rows moved down by \a shift, and
    /// then those from \a first to \a last were written; first above last is none.
    struct RowChange {
        qint32 shift;
        qint32 first;
        qint32 last;
    };

    /// \a now gives the first row its end.
    explicit WaterfallStore(float now);
    WaterfallStore(const WaterfallStore &) = delete;
    WaterfallStore &operator=(const WaterfallStore &) = delete;
    ~WaterfallStore();

    [[nodiscard]] bool playback() const { return m_playback; }
    /// Empties the history, whichever way it goes.
    void setPlayback(bool on);
    [[nodiscard]] qint16 poll() const { return m_poll; }
    void setPoll(qint16 milliseconds) { m_poll = milliseconds; }
    [[nodiscard]] qint32 update() const { return m_update; }
    /// \a seconds above 0. Stretches the rows so that time keeps its scale.
    void setUpdate(qint32 seconds, float now);
    /// Seconds a row: the poll period in playback, otherwise the update interval.
    [[nodiscard]] float rowInterval() const;

    void clearRows();
    /// Folds a scan into the open row.
    void addScan(const LevelScan &levels, float now);
    /// Empties the history and restarts the row clock when the clock has jumped: more than ten
    /// minutes past the row's end, or more than a row before its beginning.
    void resetAfterClockJump(float now);
    /// Closes the rows that are due at \a time, oldest first. \a fallRoom is the waterfall's height
    /// in pixels. After more than ten row intervals without a call the missing rows come in blank,
    /// in one go.
    void AdvanceRows(float time, float fallRoom, const RowClosed &closed);
    /// Sets the clock of playback.
    void setPlaybackTime(float time);

    /// Steps playback by \a rows, to newer ones if positive; false at a limit, which is looked at
    /// before the step only.
    bool step(qint16 rows);

    /// The view, which is scrolled by the verbs of WaterfallScroll.
    void lookFrom(qint32 row) { m_scroll.lookFrom(row); }
    void limitFirstRow(int visible) { m_scroll.limitTo(m_rowCount, visible); }
    void fitViewTo(int visible) { m_scroll.fitTo(m_rowCount, visible); }
    void centreOnPlayRow(int visible) { m_scroll.centreOn(m_playRow, m_rowCount, visible); }
    [[nodiscard]] qint32 firstRow() const { return m_scroll.firstRow(); }

    /// Colours of scheme \a scheme over the scale; the raster's bytes stay.
    void buildPalette(qint16 scheme, const LevelScale &scale);

    [[nodiscard]] const Bitmap8 &history() const { return m_history; }
    [[nodiscard]] quint8 level(qint32 column, qint32 row) const {
        return m_history.data(column, row);
    }
    [[nodiscard]] qint32 rowCount() const { return m_rowCount; }
    [[nodiscard]] qint32 playRow() const { return m_playRow; }
    [[nodiscard]] float nextRowTime() const { return m_nextRowTime; }
    [[nodiscard]] float playbackTime() const { return m_playbackTime; }
    RowChange takeChange();

private:
    /// Zeros in all columns.
    void blankRow(qint32 row);
    /// Rows \a first to \a last are another than at the last takeChange().
    void noteChange(qint32 first, qint32 last);
    /// All rows moved down by \a rows, those with changes among them.
    void noteShift(qint32 rows);
    void bridgeGap(float time, float difference, float interval);
    void pushRow(float time);
    bool countRow(float fallRoom);
    /// The next whole multiple of \a interval after \a time, counted from midnight, so that the
    /// rows of several runs of the program fall on the same times.
    [[nodiscard]] static float rowEndAfter(float time, float interval);

    Bitmap8 m_history;
    WaterfallScroll m_scroll;
    qint32 m_rowCount = 0;
    /// No scan has come since a row was closed: row 0 is a copy of it, or blank, and the next scan
    /// wipes it.
    bool m_rowOpen = false;
    qint32 m_playRow = 0;
    qint32 m_update = kDefaultUpdate;
    /// Time of the last scan, to the second.
    qint32 m_lastDataTime = 0;
    float m_nextRowTime = 0.0F;
    bool m_playback = false;
    qint16 m_poll = 0;
    float m_playbackTime = 0.0F;
    RowChange m_change{0, 0, kHeight - 1};
};

} // namespace veldron
