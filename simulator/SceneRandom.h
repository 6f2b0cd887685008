// SPDX-License-Identifier: MIT
// Random numbers as functions of a key: a scene needs no state, and the same seed gives the same
// picture at the same time.
#pragma once

#include <QtGlobal>

namespace veldron {

/// One key out of two; either may be small.
[[nodiscard]] quint64 mixKeys(quint64 a, quint64 b);

/// From 0 up to 1, both excluded.
[[nodiscard]] double keyedUniform(quint64 key);

/// Changes smoothly between 0 and 1, towards a new random value \a perSecond times a second.
[[nodiscard]] double wander(quint64 key, double seconds, double perSecond);

/// A run of numbers that starts at a key.
class KeyedRandom {
public:
    explicit KeyedRandom(quint64 key) : m_state(key) {}
    /// From 0 up to 1, both excluded.
    [[nodiscard]] double uniform();
    [[nodiscard]] double between(double low, double high) { return low + (high - low) * uniform(); }
    [[nodiscard]] quint64 bits();
    /// Mean of \a looks independent powers of noise whose mean is 1 (each exponentially
    /// distributed, as a detected noise voltage is).
    [[nodiscard]] double noisePower(int looks);

private:
    quint64 m_state;
};

} // namespace veldron
