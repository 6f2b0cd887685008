// SPDX-License-Identifier: MIT
#include "chart/LevelScale.h"

#include "common/Numbers.h"
#include "common/UntrappedError.h"

#include <algorithm>
#include <limits>

namespace veldron {

namespace {

// Far outside of every picture, and far from the ends of an int.
constexpr qint64 kFarthestRow = 1 << 28;

} // namespace

int LevelScale::rowOf(int raw, int plotTop, int plotBottom) const {
    if (span == 0) {
        throw UntrappedError(UntrappedError::Kind::DivideByZero,
                             QStringLiteral("The chart's level scale has no height."));
    }
    const qint64 decibels = qint64{raw} + offset - start;
    const qint64 row = Numbers::divideHalfEven(
        decibels * (plotTop - plotBottom) + qint64{plotBottom} * span, span);
    return static_cast<int>(std::clamp(row, -kFarthestRow, kFarthestRow));
}

std::array<int, 256> LevelScale::rows(int plotTop, int plotBottom) const {
    std::array<int, 256> table{};
    for (std::size_t raw = 0; raw < table.size(); ++raw) {
        table.at(raw) = rowOf(static_cast<int>(raw), plotTop, plotBottom);
    }
    return table;
}

qint32 LevelScale::decibelsAt(int y, int plotTop, int plotBottom) const {
    const qint64 height = plotBottom - plotTop;
    return static_cast<qint32>(
        Numbers::divideHalfEven(qint64{plotBottom - y} * span + start * height, height));
}

quint8 LevelScale::schemeLevel(int raw) const {
    const int low = start - offset;
    const int high = low + span;
    if (raw <= low) {
        return 0;
    }
    if (raw >= high) {
        return 255;
    }
    const int product = (raw - low) * 256;
    if (product > std::numeric_limits<qint16>::max()) {
        throw UntrappedError(
            UntrappedError::Kind::Overflow,
            QStringLiteral("The chart's level scale is too high for its waterfall colours."));
    }
    return static_cast<quint8>(Numbers::divideHalfEven(product, span));
}

} // namespace veldron
