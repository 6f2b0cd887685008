// SPDX-License-Identifier: MIT
#include "common/Numbers.h"

#include <limits>

namespace veldron::Numbers {

namespace {

quint64 magnitude(qint64 value) {
    return value < 0 ? quint64{0} - static_cast<quint64>(value) : static_cast<quint64>(value);
}

} // namespace

double roundHalfEven(double value) {
    // Worked out by hand so that the thread's floating-point rounding mode plays no part.
    const double floor = std::floor(value);
    const double rest = value - floor;
    if (rest < 0.5) {
        return floor;
    }
    if (rest > 0.5) {
        return floor + 1.0;
    }
    return std::fmod(floor, 2.0) == 0.0 ? floor : floor + 1.0;
}

qint64 divideHalfEven(qint64 numerator, qint64 denominator) {
    if (denominator == -1) {
        // The lowest number has no opposite.
        return numerator == std::numeric_limits<qint64>::min() ? std::numeric_limits<qint64>::max()
                                                               : -numerator;
    }
    const qint64 quotient = numerator / denominator;
    // Distances to the two neighbours, not products: near the end of the range those would leave
    // it.
    const quint64 rest = magnitude(numerator % denominator);
    const quint64 other = magnitude(denominator) - rest;
    if (rest < other || (rest == other && quotient % 2 == 0)) {
        return quotient;
    }
    return (numerator < 0) == (denominator < 0) ? quotient + 1 : quotient - 1;
}

qint64 floorDivide(qint64 numerator, qint64 denominator) {
    const qint64 quotient = numerator / denominator;
    return numerator % denominator < 0 ? quotient - 1 : quotient;
}

qint64 floorModulo(qint64 numerator, qint64 denominator) {
    const qint64 rest = numerator % denominator;
    return rest < 0 ? rest + denominator : rest;
}

} // namespace veldron::Numbers
