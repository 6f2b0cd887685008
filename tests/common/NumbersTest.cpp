// SPDX-License-Identifier: MIT
#include "common/Numbers.h"

#include <gtest/gtest.h>

#include <cfenv>
#include <limits>

namespace veldron {
namespace {

TEST(Numbers, roundHalfEven_tiesGoToTheEvenNumber) {
    const struct {
        double value;
        double expected;
    } cases[] = {{0.5, 0.0},   {1.5, 2.0},   {2.5, 2.0},   {-0.5, 0.0},  {-1.5, -2.0},
                 {-2.5, -2.0}, {2.4, 2.0},   {2.6, 3.0},   {-2.4, -2.0}, {-2.6, -3.0},
                 {7.0, 7.0},   {62.5, 62.0}, {31.25, 31.0}};
    for (const auto &item : cases) {
        EXPECT_EQ(Numbers::roundHalfEven(item.value), item.expected) << item.value;
    }
}

TEST(Numbers, roundHalfEven_ignoresTheThreadsRoundingMode) {
    const int before = std::fegetround();
    std::fesetround(FE_UPWARD);
    EXPECT_EQ(Numbers::roundHalfEven(2.5), 2.0);
    EXPECT_EQ(Numbers::roundHalfEven(2.2), 2.0);
    std::fesetround(before);
}

TEST(Numbers, roundTo_outOfRange_saturates) {
    EXPECT_EQ(Numbers::roundTo<qint16>(40000.0), 32767);
    EXPECT_EQ(Numbers::roundTo<qint16>(-40000.0), -32768);
    EXPECT_EQ(Numbers::roundTo<qint64>(1e30), std::numeric_limits<qint64>::max());
    EXPECT_EQ(Numbers::roundTo<qint64>(-1e30), std::numeric_limits<qint64>::min());
    EXPECT_EQ(Numbers::roundTo<qint32>(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(Numbers, roundToExact_onlyWhatFits) {
    EXPECT_EQ(Numbers::roundToExact<qint16>(32767.4), qint16{32767});
    EXPECT_FALSE(Numbers::roundToExact<qint16>(32767.6).has_value());
    EXPECT_EQ(Numbers::roundToExact<qint16>(-32768.5), qint16{-32768});
    EXPECT_FALSE(Numbers::roundToExact<qint16>(-32769.0).has_value());
    EXPECT_FALSE(
        Numbers::roundToExact<qint16>(std::numeric_limits<double>::quiet_NaN()).has_value());
}

TEST(Numbers, divideHalfEven_bothSigns) {
    const struct {
        qint64 numerator;
        qint64 denominator;
        qint64 expected;
    } cases[] = {{5, 2, 2}, {7, 2, 4},  {-5, 2, -2}, {-7, 2, -4},          {5, -2, -2},  {1, 3, 0},
                 {2, 3, 1}, {-1, 3, 0}, {-2, 3, -1}, {1000001, 320, 3125}, {480, 320, 2}};
    for (const auto &item : cases) {
        EXPECT_EQ(Numbers::divideHalfEven(item.numerator, item.denominator), item.expected)
            << item.numerator << " / " << item.denominator;
    }
}

TEST(Numbers, floorDivide_goesDownBelowZeroToo) {
    EXPECT_EQ(Numbers::floorDivide(7, 2), 3);
    EXPECT_EQ(Numbers::floorDivide(-7, 2), -4);
    EXPECT_EQ(Numbers::floorDivide(-8, 2), -4);
    EXPECT_EQ(Numbers::floorModulo(-7, 5), 3);
    EXPECT_EQ(Numbers::floorModulo(7, 5), 2);
}

TEST(Numbers, divideHalfEvenAtTheEndsOfTheRange_isExact) {
    constexpr qint64 lowest = std::numeric_limits<qint64>::min();
    constexpr qint64 highest = std::numeric_limits<qint64>::max();
    EXPECT_EQ(Numbers::divideHalfEven(lowest, 312500000), -29514790518);
    EXPECT_EQ(Numbers::divideHalfEven(highest, 312500000), 29514790518);
    EXPECT_EQ(Numbers::divideHalfEven(lowest, 1), lowest);
    EXPECT_EQ(Numbers::divideHalfEven(lowest, -1), highest);
    EXPECT_EQ(Numbers::divideHalfEven(lowest, -2), qint64{1} << 62);
    EXPECT_EQ(Numbers::divideHalfEven(lowest, lowest), 1);
    EXPECT_EQ(Numbers::divideHalfEven(highest, lowest), -1);
    EXPECT_EQ(Numbers::divideHalfEven(1, lowest), 0);
}

} // namespace
} // namespace veldron
