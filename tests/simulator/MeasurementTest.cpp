// SPDX-License-Identifier: MIT
#include "simulator/Measurement.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

LevelScan last(std::initializer_list<int> levels, int mode, int count) {
    Measurement measurement;
    LevelScan shown;
    for (const int level : levels) {
        shown = measurement.take({static_cast<std::uint8_t>(level)}, mode, count);
    }
    return shown;
}

TEST(Measurement, eachMode_worksOverItsLastScans) {
    struct Case {
        const char *what;
        std::initializer_list<int> levels;
        int mode;
        int count;
        int shown;
    };
    for (const Case &c :
         {Case{"normal", {90, 10, 50}, 1, 3, 50},
          Case{"average of three", {99, 40, 50, 60}, 2, 3, 50},
          Case{"average, tie down to even", {50, 51}, 2, 2, 50},
          Case{"average, tie up to even", {51, 52}, 2, 2, 52},
          Case{"average of fewer than asked", {40, 60}, 2, 31, 50},
          Case{"maximum", {40, 90, 50}, 3, 2, 90}, Case{"median of three", {40, 90, 50}, 4, 3, 50},
          Case{"median of four", {40, 90, 50, 60}, 4, 4, 55},
          Case{"median of two", {40, 60}, 4, 2, 50},
          Case{"median forgets", {255, 40, 50, 60}, 4, 3, 50}}) {
        EXPECT_EQ(last(c.levels, c.mode, c.count), LevelScan{std::uint8_t(c.shown)}) << c.what;
    }
}

TEST(Measurement, scanOfAnotherLength_startsAnew) {
    Measurement measurement;
    EXPECT_EQ(measurement.take({90, 90}, 3, 2), (LevelScan{90, 90}));
    EXPECT_EQ(measurement.take({40}, 3, 2), LevelScan{40});
    measurement.restart();
    EXPECT_EQ(measurement.take({30}, 3, 2), LevelScan{30});
}

TEST(Measurement, longRun_averagesOverThirtyOneScansAtMost) {
    Measurement measurement;
    LevelScan shown = measurement.take({255}, 2, 31);
    for (int i = 0; i < 31; ++i) {
        shown = measurement.take({40}, 2, 31);
    }
    EXPECT_EQ(shown, LevelScan{40});
}

} // namespace
} // namespace veldron
