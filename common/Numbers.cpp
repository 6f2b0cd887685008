// SPDX-License-Identifier: MIT
#include "common/Numbers.h"

namespace veldron::Numbers {

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
    if (denominator < 0) {
        numerator = -numerator;
        denominator = -denominator;
    }
    const qint64 quotient = floorDivide(numerator, denominator);
    // Not from a product: near the end of the range that would leave it.
    const qint64 rest = floorModulo(numerator, denominator);
    const qint64 other = denominator - rest;
    if (rest != other) {
        return rest > other ? quotient + 1 : quotient;
    }
    return quotient % 2 == 0 ? quotient : quotient + 1;
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
