// SPDX-License-Identifier: MIT
#include "simulator/SceneRandom.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace veldron {

namespace {

/// 2 to the 64th over the golden ratio, the step of SplitMix64.
constexpr quint64 kGolden = 0x9E3779B97F4A7C15U;

/// The finisher of SplitMix64.
quint64 scramble(quint64 x) {
    x = (x ^ (x >> 30U)) * 0xBF58476D1CE4E5B9U;
    x = (x ^ (x >> 27U)) * 0x94D049BB133111EBU;
    return x ^ (x >> 31U);
}

double toUniform(quint64 bits) {
    return (static_cast<double>(bits >> 12U) + 0.5) / static_cast<double>(quint64{1} << 52U);
}

} // namespace

quint64 mixKeys(quint64 a, quint64 b) {
    return scramble(scramble(a + kGolden) ^ (b + kGolden));
}

double keyedUniform(quint64 key) {
    return toUniform(scramble(key + kGolden));
}

double wander(quint64 key, double seconds, double perSecond) {
    const double place = seconds * perSecond;
    const double from = std::floor(place);
    const auto step = static_cast<quint64>(static_cast<qint64>(from));
    const double a = keyedUniform(mixKeys(key, step));
    const double b = keyedUniform(mixKeys(key, step + 1));
    // Half a cosine, so that the speed is 0 at each of the values and no corner shows.
    const double blend = 0.5 - 0.5 * std::cos((place - from) * std::numbers::pi);
    return a + (b - a) * blend;
}

quint64 KeyedRandom::bits() {
    m_state += kGolden;
    return scramble(m_state);
}

double KeyedRandom::uniform() {
    return toUniform(bits());
}

double KeyedRandom::noisePower(int looks) {
    // The sum of exponential variates is the logarithm of a product: one call of log for all.
    double product = 1.0;
    for (int i = 0; i < looks; ++i) {
        product *= uniform();
    }
    return -std::log(std::max(product, std::numeric_limits<double>::min())) / looks;
}

} // namespace veldron
