// SPDX-License-Identifier: MIT
#include "common/Hertz.h"

#include <gtest/gtest.h>

#include <limits>

namespace veldron {
namespace {

TEST(Hertz, fromDouble_roundsToFourDecimalsTiesToEven) {
    EXPECT_EQ(Hertz::fromDouble(145500000.0).units(), 1455000000000);
    EXPECT_EQ(Hertz::fromDouble(0.00025).units(), 2);
    EXPECT_EQ(Hertz::fromDouble(0.00035).units(), 4);
    EXPECT_EQ(Hertz::fromDouble(-1.0).units(), -10000);
}

TEST(Hertz, fromDouble_tooLarge_saturates) {
    EXPECT_EQ(Hertz::fromDouble(1e300).units(), std::numeric_limits<qint64>::max());
    EXPECT_EQ(Hertz::fromDouble(-1e300).units(), std::numeric_limits<qint64>::min());
}

TEST(Hertz, rounded_tiesToEven) {
    EXPECT_EQ(Hertz::fromUnits(25000).rounded(), 2);
    EXPECT_EQ(Hertz::fromUnits(35000).rounded(), 4);
    EXPECT_EQ(Hertz::fromUnits(-25000).rounded(), -2);
    EXPECT_EQ(Hertz::fromWhole(5000000000).roundedTo32(), std::numeric_limits<qint32>::max());
}

TEST(Hertz, dividedBy_halfOfWholeHertzIsExact) {
    EXPECT_EQ(Hertz::fromWhole(1000001).dividedBy(2), Hertz::fromUnits(5000005000));
    EXPECT_EQ(Hertz::fromWhole(-3).dividedBy(2), Hertz::fromUnits(-15000));
}

TEST(Hertz, arithmeticAndOrder) {
    const Hertz a = Hertz::fromWhole(100);
    const Hertz b = Hertz::fromWhole(30);
    EXPECT_EQ(a - b, Hertz::fromWhole(70));
    EXPECT_EQ(a + b * 2, Hertz::fromWhole(160));
    EXPECT_EQ(-b, Hertz::fromWhole(-30));
    EXPECT_LT(b, a);
}

TEST(Hertz, sumsAndProductsPastTheRange_saturate) {
    constexpr Hertz highest = Hertz::fromUnits(std::numeric_limits<qint64>::max());
    constexpr Hertz lowest = Hertz::fromUnits(std::numeric_limits<qint64>::min());
    constexpr Hertz one = Hertz::fromWhole(1);
    EXPECT_EQ(highest + one, highest);
    EXPECT_EQ(lowest + -one, lowest);
    EXPECT_EQ(lowest - one, lowest);
    EXPECT_EQ(highest - -one, highest);
    EXPECT_EQ(-lowest, highest);
    EXPECT_EQ(highest * -2, lowest);
    EXPECT_EQ(lowest * -2, highest);
    EXPECT_EQ(Hertz::fromWhole(std::numeric_limits<qint64>::min()), lowest);
}

TEST(Hertz, toText_shortestForm) {
    const struct {
        qint64 units;
        const char *expected;
    } cases[] = {{0, "0"},        {1455000000000, "145500000"}, {12345, "1.2345"}, {12500, "1.25"},
                 {-5000, "-0.5"}, {-40000000000, "-4000000"},   {1, "0.0001"}};
    for (const auto &item : cases) {
        EXPECT_EQ(Hertz::fromUnits(item.units).toText(), QString::fromLatin1(item.expected));
    }
    EXPECT_EQ(Hertz::fromUnits(12500).toText(QLatin1Char(',')), QStringLiteral("1,25"));
    EXPECT_EQ(Hertz::fromUnits(std::numeric_limits<qint64>::min()).toText(),
              QStringLiteral("-922337203685477.5808"));
}

TEST(Hertz, fromText_readsWhatToTextWrites) {
    for (const qint64 units : {0LL, 1LL, -1LL, 12345LL, 1455000000000LL, -40000000000LL}) {
        const Hertz value = Hertz::fromUnits(units);
        EXPECT_EQ(Hertz::fromText(value.toText(QLatin1Char(',')), QLatin1Char(',')), value);
    }
}

TEST(Hertz, fromText_isStrict) {
    const QLatin1Char point('.');
    for (const char *bad : {"", " ", "-", ".", "1.2.3", "12k", "1e6", "1,5", "1 000", "- 5",
                            "99999999999999999999"}) {
        EXPECT_FALSE(Hertz::fromText(QString::fromLatin1(bad), point).has_value()) << bad;
    }
    EXPECT_EQ(Hertz::fromText(QStringLiteral(" +1.5 "), point), Hertz::fromUnits(15000));
    EXPECT_EQ(Hertz::fromText(QStringLiteral(".5"), point), Hertz::fromUnits(5000));
}

TEST(Hertz, fromText_moreThanFourDecimals_roundsHalfToEven) {
    const QLatin1Char point('.');
    EXPECT_EQ(Hertz::fromText(QStringLiteral("0.00025"), point), Hertz::fromUnits(2));
    EXPECT_EQ(Hertz::fromText(QStringLiteral("0.00035"), point), Hertz::fromUnits(4));
    EXPECT_EQ(Hertz::fromText(QStringLiteral("0.000250001"), point), Hertz::fromUnits(3));
    EXPECT_EQ(Hertz::fromText(QStringLiteral("0.00019"), point), Hertz::fromUnits(2));
}

} // namespace
} // namespace veldron
