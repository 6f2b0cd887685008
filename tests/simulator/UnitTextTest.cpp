// SPDX-License-Identifier: MIT
#include "simulator/UnitText.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

TEST(UnitText, numbersOfTheLine_areReadScaled) {
    struct Case {
        const char *text;
        int decimals;
        qint64 value;
    };
    for (const Case &c :
         {Case{"145.125", 6, 145125000}, Case{"100", 6, 100000000}, Case{"12.5", 3, 12500},
          Case{"-30", 0, -30}, Case{".5", 3, 500}, Case{"5.", 3, 5000},
          Case{"145.5000005", 6, 145500000}, Case{"145.5000015", 6, 145500002}, Case{"0", 0, 0},
          Case{"987654321", 0, 987654321}, Case{"9.09", 2, 909}}) {
        EXPECT_EQ(UnitText::readScaled(c.text, c.decimals), c.value) << c.text;
    }
}

TEST(UnitText, textThatIsNoNumber_isRefused) {
    for (const char *text :
         {"", ".", "-", "1,5", "1.2.3", " 1", "1 ", "1e3", "abc", "+1", "1234567890"}) {
        EXPECT_FALSE(UnitText::readScaled(text, 3)) << text;
    }
}

TEST(UnitText, wholeNumber_takesNoPoint) {
    EXPECT_EQ(UnitText::readWhole("12"), 12);
    EXPECT_FALSE(UnitText::readWhole("12.0"));
}

TEST(UnitText, values_areWrittenFixedAndShort) {
    EXPECT_EQ(UnitText::writeFixed(10000000, 6), "10.000000");
    EXPECT_EQ(UnitText::writeFixed(5, 3), "0.005");
    EXPECT_EQ(UnitText::writeFixed(-1500, 3), "-1.500");
    EXPECT_EQ(UnitText::writeShort(144000000, 6), "144");
    EXPECT_EQ(UnitText::writeShort(12500, 3), "12.5");
    EXPECT_EQ(UnitText::writeShort(-30, 0), "-30");
}

} // namespace
} // namespace veldron
