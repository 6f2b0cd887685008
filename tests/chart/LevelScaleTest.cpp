// SPDX-License-Identifier: MIT
#include "chart/LevelScale.h"

#include "common/UntrappedError.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

template <typename Body>
UntrappedError::Kind kindOf(Body body) {
    try {
        body();
    } catch (const UntrappedError &error) {
        return error.kind();
    }
    ADD_FAILURE() << "no error came";
    return UntrappedError::Kind::File;
}

TEST(LevelScale, endsOfTheDefaultScale_lieOnTheEdgesOfThePlot) {
    const LevelScale scale;
    EXPECT_EQ(scale.rowOf(42, 10, 370), 370);
    EXPECT_EQ(scale.rowOf(102, 10, 370), 10);
    EXPECT_EQ(scale.rowOf(72, 10, 370), 190);
    EXPECT_EQ(scale.rowOf(0, 10, 370), 370 + 252); // 0.7 of the plot's height below it
}

TEST(LevelScale, rowsBetweenPixels_roundTiesToEven) {
    const LevelScale scale;
    EXPECT_EQ(scale.rowOf(43, 0, 90), 88); // 88.5
    EXPECT_EQ(scale.rowOf(45, 0, 90), 86); // 85.5
}

TEST(LevelScale, tableOfRows_agreesWithEachRow) {
    const LevelScale scale{80, -100, -120};
    const auto rows = scale.rows(10, 333);
    for (int raw = 0; raw < 256; ++raw) {
        EXPECT_EQ(rows.at(static_cast<std::size_t>(raw)), scale.rowOf(raw, 10, 333));
    }
}

TEST(LevelScale, withoutHeight_dividesByZero) {
    const LevelScale scale{0, -90, -132};
    EXPECT_EQ(kindOf([&] { static_cast<void>(scale.rowOf(50, 10, 370)); }),
              UntrappedError::Kind::DivideByZero);
}

TEST(LevelScale, heightsOnThePlot_areDecibelsOfTheScale) {
    const LevelScale scale;
    EXPECT_EQ(scale.decibelsAt(10, 10, 370), -30);
    EXPECT_EQ(scale.decibelsAt(370, 10, 370), -90);
    EXPECT_EQ(scale.decibelsAt(190, 10, 370), -60);
    EXPECT_EQ(scale.decibelsAt(367, 10, 370), -90); // half a dB up, to even
    EXPECT_EQ(scale.decibelsAt(361, 10, 370), -88); // one and a half
}

struct SchemeCase {
    int raw;
    int level;
};

TEST(LevelScale, schemeLevelsOfTheDefaultScale_runFrom42To102) {
    const SchemeCase cases[] = {{0, 0},     {42, 0},    {43, 4},   {72, 128},
                                {101, 252}, {102, 255}, {255, 255}};
    for (const SchemeCase &c : cases) {
        EXPECT_EQ(LevelScale().schemeLevel(c.raw), c.level) << c.raw;
    }
}

TEST(LevelScale, scaleThatBeginsBelowRawZero_hasNoLowestBranch) {
    const LevelScale scale{60, -140, -132}; // raw 0 is 8 dB up
    EXPECT_EQ(scale.schemeLevel(0), 34);
    EXPECT_EQ(scale.schemeLevel(52), 255);
}

TEST(LevelScale, scaleThatEndsAboveRaw255_hasNoHighestBranch) {
    const LevelScale scale{100, 50, -132};
    EXPECT_EQ(scale.schemeLevel(182), 0);
    EXPECT_EQ(scale.schemeLevel(255), 187);
}

TEST(LevelScale, scaleAbove128Decibels_overflowsFromTheProductOn) {
    const LevelScale scale{129, -132, -132};
    EXPECT_EQ(scale.schemeLevel(127), 252);
    EXPECT_EQ(kindOf([&] { static_cast<void>(scale.schemeLevel(128)); }),
              UntrappedError::Kind::Overflow);
    const LevelScale widest{128, -132, -132};
    EXPECT_EQ(widest.schemeLevel(128), 255);
}

} // namespace
} // namespace veldron
