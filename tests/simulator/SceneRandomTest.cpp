// SPDX-License-Identifier: MIT
#include "simulator/SceneRandom.h"

#include <gtest/gtest.h>

#include <cmath>

namespace veldron {
namespace {

/// The key whose bits all come out as nought: the generator's step, taken back.
constexpr quint64 kLowest = 0 - quint64{0x9E3779B97F4A7C15U};

TEST(SceneRandom, lowestNumber_isAboveNought) {
    EXPECT_EQ(KeyedRandom(kLowest).bits(), 0U);
    EXPECT_EQ(KeyedRandom(kLowest).uniform(), std::ldexp(1.0, -53));
    EXPECT_EQ(keyedUniform(kLowest), std::ldexp(1.0, -53));
}

} // namespace
} // namespace veldron
