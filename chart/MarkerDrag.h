// SPDX-License-Identifier: MIT
#pragma once

#include "chart/BinGrid.h"
#include "chart/ChartLayout.h"
#include "chart/CursorShape.h"
#include "chart/LevelScale.h"

#include <QPoint>
#include <QString>

#include <functional>
#include <optional>

namespace veldron {

/// What the pointer's handlers look at, made anew for each event.
struct PointerView {
    ChartLayout layout;
    const BinGrid &grid;
    LevelScale scale;
    DisplayTypeCode displayType = DisplayTypeCode::Trace;
    int markerX = 0;     ///< column of the marker line
    qint32 firstRow = 0; ///< row of the history at the top of the waterfall
    std::function<quint8(qint32 column, qint32 row)> level; ///< stored level of the history
};

/// What a move of the pointer asks for; what is not set stays as it is.
struct PointerMove {
    std::optional<CursorShape> shape;
    std::optional<QString> tip;
    std::optional<float> splitFraction;
    bool markerMoved = false;
};

/// The marker, and what the pointer drags over the picture: the marker itself or the split. It also
/// knows the tip's place while the pointer is over the waterfall. Positions are pixels.
///
/// Neither the marker's frequency nor the receive frequency is limited to the scan.
class MarkerDrag {
public:
    /// What a press has begun.
    enum class Press { Nothing, MarkerPlaced, SplitTaken };

    /// Shows or hides the marker; both put it onto the receive frequency.
    void enable(bool on, const BinGrid &grid);
    /// Sets the receive frequency, and the marker with it.
    void tuneTo(Hertz frequency, const BinGrid &grid);
    /// Puts the marker onto \a frequency.
    void moveTo(Hertz frequency, const BinGrid &grid);
    /// Takes bin 0 until the marker moves, because the old bin is worth nothing on a changed grid.
    void forgetBin() { m_bin = 0; }

    [[nodiscard]] bool isEnabled() const { return m_enabled; }
    [[nodiscard]] Hertz frequency() const { return m_frequency; }
    [[nodiscard]] Hertz receiveFrequency() const { return m_receiveFrequency; }
    /// Bin of the scan under the marker; may lie outside the scan.
    [[nodiscard]] qint32 bin() const { return m_bin; }
    /// The marker's read-out for raw level \a raw.
    [[nodiscard]] QString readOut(quint8 raw, const LevelScale &scale) const;

    /// A button goes down at \a at. The left one places the marker in the plot or takes the split;
    /// the other buttons do nothing but make the drag active.
    Press press(QPoint at, bool leftButton, const PointerView &view);
    /// The pointer moves to \a at, with or without a drag; says what shape, tip and split follow.
    PointerMove move(QPoint at, bool leftHeld, const PointerView &view);
    /// Ends a drag, whichever button goes up.
    void release();
    /// True when the choice of the marker's frequency is to be told: the marker is shown, the first
    /// click was on the plot, and \a gateOpen. Moves do nothing from here to release().
    bool doubleClick(bool gateOpen);
    /// The tip is no longer renewed by new rows.
    void loseFocus() { m_hasLiveTip = false; }

    /// True while a button is down.
    [[nodiscard]] bool isActive() const { return m_active; }
    /// True while the tip shows a place of the waterfall.
    [[nodiscard]] bool hasLiveTip() const { return m_hasLiveTip; }
    /// The tip of the waterfall's place, as the history is now.
    [[nodiscard]] QString liveTip(const PointerView &view) const;

private:
    PointerMove moveOnPlot(QPoint at, bool leftHeld, const PointerView &view);
    PointerMove moveOnWaterfall(QPoint at, const ChartLayout &layout, const PointerView &view);

    bool m_enabled = false;
    Hertz m_frequency;
    Hertz m_receiveFrequency;
    qint32 m_bin = 0;

    bool m_active = false;
    bool m_doubleClickHeld = false; ///< from a double click until the button is up
    bool m_dragsSplit = false;
    bool m_pressedOnPlot = false; ///< the last press of the left button placed the marker
    bool m_hasLiveTip = false;
    qint32 m_tipColumn = 0;
    qint32 m_tipRow = 0;
};

} // namespace veldron
