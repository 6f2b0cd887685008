// SPDX-License-Identifier: MIT
#include "simulator/SceneBands.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace veldron {
namespace {

TEST(SceneBands, anySeed_signalsAreInAscendingOrderWithinTheRange) {
    for (const quint64 seed : {1U, 7U, 12345U}) {
        const std::vector<SceneSignal> signals = sceneSignals(seed);
        ASSERT_FALSE(signals.empty());
        EXPECT_TRUE(std::is_sorted(signals.begin(), signals.end(),
                                   [](const SceneSignal &a, const SceneSignal &b) {
                                       return a.frequencyHz < b.frequencyHz;
                                   }));
        EXPECT_GE(signals.front().frequencyHz, 0.0);
        EXPECT_LE(signals.back().frequencyHz, 3.5e9);
    }
}

TEST(SceneBands, otherSeed_dealsOtherPlaces) {
    const std::vector<SceneSignal> one = sceneSignals(1);
    const std::vector<SceneSignal> two = sceneSignals(2);
    const bool equal = std::equal(
        one.begin(), one.end(), two.begin(), two.end(),
        [](const SceneSignal &a, const SceneSignal &b) { return a.frequencyHz == b.frequencyHz; });
    EXPECT_FALSE(equal);
}

} // namespace
} // namespace veldron
