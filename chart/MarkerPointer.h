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

/// What the pointer's handlers look at.
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

/// The marker, and the state of the pointer over the picture. Positions are pixels.
///
/// The marker's frequency is not limited to the scan.
class MarkerPointer {
public:
    enum class Press { Nothing, MarkerPlaced, SplitTaken };

    bool enabled = false;
    Hertz markerFreq;
    Hertz rxFreq;
    qint32 markerBin = 0;

    bool active = false;          ///< a button is down
    bool doubleClickHeld = false; ///< from a double click until the button is up
    bool dragSplit = false;
    bool markerClick = false; ///< the last press of the left button was on the plot
    bool tipLive = false;     ///< the tip shows a place of the waterfall
    qint32 tipColumn = 0;
    qint32 tipRow = 0;

    /// Puts the marker onto \a frequency.
    void moveTo(Hertz frequency, const BinGrid &grid);

    Press press(QPoint at, bool leftButton, const PointerView &view);
    PointerMove move(QPoint at, bool leftHeld, const PointerView &view);
    void release();
    /// True when the choice of the marker's frequency is to be told.
    bool doubleClick(bool gateOpen);
    void loseFocus() { tipLive = false; }

    /// The tip of the waterfall's place, as the history is now.
    [[nodiscard]] QString liveTip(const PointerView &view) const;
    /// The marker's read-out for raw level \a raw.
    [[nodiscard]] QString readOut(quint8 raw, const LevelScale &scale) const;

private:
    PointerMove moveOnPlot(QPoint at, bool leftHeld, const PointerView &view);
    PointerMove moveOnWaterfall(QPoint at, const ChartLayout &layout, const PointerView &view);
};

} // namespace veldron
