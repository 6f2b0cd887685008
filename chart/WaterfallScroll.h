// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace veldron {

/// Which row of the history stands at the top of the waterfall: 0 is the newest.
///
/// A view at 0 follows the new rows; one that was scrolled back keeps showing the same rows.
class WaterfallScroll {
public:
    [[nodiscard]] qint32 firstRow() const { return m_firstRow; }
    /// Not limited before limitTo(), and a first row past the last one counts as not scrolled.
    void lookFrom(qint32 row) { m_firstRow = row; }
    /// Keeps \a visible rows within \a rowCount, beginning at 0 at the least.
    void limitTo(qint32 rowCount, int visible);
    /// Brings \a row into the middle of \a visible rows, as far as \a rowCount allows.
    void centreOn(qint32 row, qint32 rowCount, int visible);
    /// After a change of size: a view that would pass the last row begins earlier.
    void fitTo(qint32 rowCount, int visible);
    /// \a rows new ones were pushed, and there are \a rowCount of them now. True when a view that
    /// is scrolled back moved with its rows.
    bool rowsPushed(qint32 rows, qint32 rowCount);
    /// The time of a row changed from \a oldSeconds to \a newSeconds.
    void stretch(qint32 oldSeconds, qint32 newSeconds);

private:
    qint32 m_firstRow = 0;
};

} // namespace veldron
