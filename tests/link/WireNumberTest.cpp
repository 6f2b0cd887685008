// SPDX-License-Identifier: MIT
#include "link/WireNumber.h"
#include "tests/link/LinkFixture.h"

#include <limits>

namespace veldron {
namespace {

struct DoubleCase {
    double value;
    const char *text;
};

TEST(WireNumber, doublePrecision_plainWithFifteenDigits) {
    const DoubleCase cases[] = {
        {0.0, "0"},
        {-0.0, "0"},
        {1.0, "1"},
        {-1.0, "-1"},
        {145.125, "145.125"},
        {-145.125, "-145.125"},
        {0.5, "0.5"},
        {-0.25, "-0.25"},
        {0.00001, "0.00001"},
        {0.0000000001, "0.0000000001"},
        {100.0, "100"},
        {-30.0, "-30"},
        {2147483647.0, "2147483647"},
        {1000000.0, "1000000"},
        {0.1 + 0.2, "0.3"},
        {1.0 / 3.0, "0.333333333333333"},
        {2.0 / 3.0, "0.666666666666667"},
        {999999999999999.9, "1000000000000000"},
        {123456789012345678.0, "123456789012346000"},
        {1e21, "1000000000000000000000"},
        {3500.0, "3500"},
        {145.0000001, "145.0000001"},
    };
    for (const DoubleCase &each : cases) {
        EXPECT_EQ(wireNumber(each.value), QString::fromLatin1(each.text));
    }
}

struct SingleCase {
    float value;
    const char *text;
};

TEST(WireNumber, singlePrecision_plainWithSevenDigits) {
    const SingleCase cases[] = {
        {12.5F, "12.5"},
        {8.33F, "8.33"},
        {0.0F, "0"},
        {-1.0F, "-1"},
        {0.001F, "0.001"},
        {0.00001F, "0.00001"},
        {1.0F / 3.0F, "0.3333333"},
        {16777216.0F, "16777220"},
        {2147483.648F, "2147484"},
        {-2147483.75F, "-2147484"},
        {0.01F, "0.01"},
    };
    for (const SingleCase &each : cases) {
        EXPECT_EQ(wireNumber(each.value), QString::fromLatin1(each.text));
    }
}

struct StrictCase {
    const char *text;
    double value;
};

TEST(WireNumber, strictNumber_takesAWholePlainNumber) {
    const StrictCase cases[] = {
        {"3", 3.0},     {" 3 ", 3.0},     {"-1", -1.0},          {"+7", 7.0},
        {"12.5", 12.5}, {".5", 0.5},      {"5.", 5.0},           {"-.25", -0.25},
        {"0003", 3.0},  {"25.000", 25.0}, {"  -12.50  ", -12.5},
    };
    for (const StrictCase &each : cases) {
        const std::optional<double> value = strictNumber(QString::fromLatin1(each.text));
        ASSERT_TRUE(value.has_value()) << each.text;
        EXPECT_EQ(*value, each.value) << each.text;
    }
}

TEST(WireNumber, strictNumber_refusesAnyOtherText) {
    const char *const cases[] = {"",    " ",    "x",   "3x",    "x3",  "1 2",  "1.2.3",
                                 "1e3", "0x10", "1,5", "- 1",   "--1", ".",    "-",
                                 "+",   "nan",  "inf", "3\r\n", "\t3", "1.e1", "3\xB2"};
    for (const char *text : cases) {
        EXPECT_FALSE(strictNumber(QString::fromLatin1(text)).has_value()) << text;
    }
}

TEST(WireNumber, strictNumber_refusesWhatNoDoubleHolds) {
    EXPECT_FALSE(strictNumber(QString(400, QLatin1Char('9'))).has_value());
}

} // namespace
} // namespace veldron
