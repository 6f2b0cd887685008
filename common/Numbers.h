// SPDX-License-Identifier: MIT
// Rounding and integer division as the whole program does them.
//
// "Rounded" means to the nearest whole number with ties to the even one, everywhere; a floor is
// always named as such. Conversions to a narrower type saturate and never wrap.
#pragma once

#include <QtGlobal>

#include <cmath>
#include <limits>
#include <optional>

namespace veldron::Numbers {

/// Nearest whole number, ties to even. NaN stays NaN.
[[nodiscard]] double roundHalfEven(double value);

/// Nearest whole number of \a value, ties to even, saturated to the range of T; NaN gives 0.
template <typename T>
[[nodiscard]] T roundTo(double value) {
    const double rounded = roundHalfEven(value);
    if (std::isnan(rounded)) {
        return T{0};
    }
    if (rounded <= static_cast<double>(std::numeric_limits<T>::min())) {
        return std::numeric_limits<T>::min();
    }
    // The largest 64-bit value has no exact double; the comparison is on the safe side of it.
    if (rounded >= static_cast<double>(std::numeric_limits<T>::max())) {
        return std::numeric_limits<T>::max();
    }
    return static_cast<T>(rounded);
}

/// As roundTo, but nothing where the rounded value does not fit into T or is NaN.
template <typename T>
[[nodiscard]] std::optional<T> roundToExact(double value) {
    const double rounded = roundHalfEven(value);
    // The upper limit is the first number beyond the range, which is exact in a double also for 64
    // bits. Written with "!", so that NaN is refused too.
    if (!(rounded >= static_cast<double>(std::numeric_limits<T>::min())) ||
        !(rounded < static_cast<double>(std::numeric_limits<T>::max()) + 1.0)) {
        return std::nullopt;
    }
    return static_cast<T>(rounded);
}

/// \a numerator / \a denominator rounded to nearest, ties to even. \a denominator is not 0. The one
/// quotient past the range, of the lowest number and -1, is the highest number.
[[nodiscard]] qint64 divideHalfEven(qint64 numerator, qint64 denominator);

/// \a numerator / \a denominator rounded down. \a denominator is above 0.
[[nodiscard]] qint64 floorDivide(qint64 numerator, qint64 denominator);

/// What floorDivide leaves over, from 0 up to \a denominator less 1.
[[nodiscard]] qint64 floorModulo(qint64 numerator, qint64 denominator);

} // namespace veldron::Numbers
