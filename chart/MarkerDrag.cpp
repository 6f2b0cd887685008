// SPDX-License-Identifier: MIT
#include "chart/MarkerDrag.h"

#include "utilities/NumberTexts.h"

#include <algorithm>

namespace veldron {

namespace {

// Pixels on either side of the marker line, and the fractions of the picture's height that a drag
// keeps the split between.
constexpr int kMarkerReach = 5;
constexpr float kHighestSplit = 0.2F;
constexpr float kLowestSplit = 0.8F;

bool isAcrossPlot(int x, const ChartLayout &layout) {
    return x >= layout.plotLeft && x <= layout.plotRight && layout.plotWidth() > 0;
}

bool isOnPlot(QPoint at, const ChartLayout &layout) {
    return isAcrossPlot(at.x(), layout) && at.y() >= layout.plotTop &&
           at.y() <= layout.plotBottom && layout.plotBottom > layout.plotTop;
}

bool isOnWaterfall(QPoint at, const ChartLayout &layout) {
    return isAcrossPlot(at.x(), layout) && at.y() >= layout.fallTop && at.y() <= layout.fallBottom;
}

bool isOnSplit(QPoint at, const ChartLayout &layout) {
    return isAcrossPlot(at.x(), layout) &&
           std::abs(at.y() - layout.splitY) < ChartMargins::kSplitGap;
}

QString tipText(Hertz frequency, qint32 decibels) {
    return QStringLiteral("%1, %2 dB")
        .arg(GeneralUtilities::FrequencyText(frequency), QString::number(decibels));
}

} // namespace

void MarkerDrag::enable(bool on, const BinGrid &grid) {
    m_enabled = on;
    moveTo(m_receiveFrequency, grid);
}

void MarkerDrag::tuneTo(Hertz frequency, const BinGrid &grid) {
    m_receiveFrequency = frequency;
    moveTo(frequency, grid);
}

void MarkerDrag::moveTo(Hertz frequency, const BinGrid &grid) {
    m_frequency = frequency;
    m_bin = grid.binOf(frequency);
}

MarkerDrag::Press MarkerDrag::press(QPoint at, bool leftButton, const PointerView &view) {
    m_active = true;
    if (!leftButton) {
        return Press::Nothing;
    }
    // Only a double click that begins on the plot may tune.
    m_pressedOnPlot = false;
    if (m_enabled && isOnPlot(at, view.layout)) {
        m_pressedOnPlot = true;
        moveTo(view.grid.frequencyAt(at.x(), view.layout), view.grid);
        return Press::MarkerPlaced;
    }
    if (view.displayType == DisplayTypeCode::TraceAndWaterfall && isOnSplit(at, view.layout)) {
        m_dragsSplit = true;
        return Press::SplitTaken;
    }
    return Press::Nothing;
}

PointerMove MarkerDrag::move(QPoint at, bool leftHeld, const PointerView &view) {
    m_hasLiveTip = false;
    PointerMove result;
    if (m_doubleClickHeld) {
        return result;
    }
    const ChartLayout layout = view.layout.forPointer(view.displayType);
    // A drag of the split goes on wherever the pointer is, also over plot and waterfall.
    if (m_dragsSplit) {
        const auto height = static_cast<float>(std::max(layout.scaleHeight, 1));
        result.splitFraction =
            std::clamp(static_cast<float>(at.y()) / height, kHighestSplit, kLowestSplit);
        return result;
    }
    if (isOnPlot(at, layout)) {
        return moveOnPlot(at, leftHeld, view);
    }
    if (isOnWaterfall(at, layout)) {
        return moveOnWaterfall(at, layout, view);
    }
    if (isOnSplit(at, layout)) {
        result.shape = CursorShape::NorthSouth;
        return result;
    }
    result.shape = CursorShape::Default;
    result.tip = QString();
    return result;
}

PointerMove MarkerDrag::moveOnPlot(QPoint at, bool leftHeld, const PointerView &view) {
    const ChartLayout &layout = view.layout;
    PointerMove result;
    const Hertz frequency = view.grid.frequencyAt(at.x(), layout);
    if (m_enabled && std::abs(at.x() - view.markerX) < kMarkerReach) {
        result.shape = CursorShape::EastWest;
        result.tip = QString();
    } else {
        // The level of the pointer's height on the scale, not that of the signal.
        result.shape = CursorShape::Default;
        result.tip =
            tipText(frequency, view.scale.decibelsAt(at.y(), layout.plotTop, layout.plotBottom));
    }
    if (leftHeld && m_enabled) {
        moveTo(frequency, view.grid);
        result.markerMoved = true;
    }
    return result;
}

PointerMove MarkerDrag::moveOnWaterfall(QPoint at, const ChartLayout &layout,
                                        const PointerView &view) {
    m_hasLiveTip = true;
    m_tipColumn = view.grid.cellAt(at.x(), layout);
    m_tipRow = at.y() - layout.fallTop + view.firstRow;
    PointerMove result;
    result.shape = CursorShape::Default;
    result.tip = liveTip(view);
    return result;
}

QString MarkerDrag::liveTip(const PointerView &view) const {
    const Hertz frequency = view.grid.scanStart() + m_tipColumn * view.grid.dataResolution();
    return tipText(frequency, view.level(m_tipColumn, m_tipRow) + view.scale.offset);
}

void MarkerDrag::release() {
    m_active = false;
    m_doubleClickHeld = false;
    m_dragsSplit = false;
}

bool MarkerDrag::doubleClick(bool gateOpen) {
    m_doubleClickHeld = true;
    const bool tells = m_enabled && m_pressedOnPlot && gateOpen;
    m_pressedOnPlot = false;
    return tells;
}

QString MarkerDrag::readOut(quint8 raw, const LevelScale &scale) const {
    return QStringLiteral("%1  %2dB")
        .arg(GeneralUtilities::FrequencyText(m_frequency), QString::number(raw + scale.offset));
}

} // namespace veldron
