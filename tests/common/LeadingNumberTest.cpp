// SPDX-License-Identifier: MIT
#include "common/LeadingNumber.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

TEST(LeadingNumber, textBehindTheNumber_isIgnored) {
    EXPECT_DOUBLE_EQ(leadingNumber("  -12.5 kHz"), -12.5);
    EXPECT_DOUBLE_EQ(leadingNumber("+7e3"), 7.0);
    EXPECT_DOUBLE_EQ(leadingNumber("1.2.3"), 1.2);
}

TEST(LeadingNumber, noNumberInFront_isNought) {
    for (const char *text : {"", " ", "None", "-", ".", "kHz 5", ",5"}) {
        EXPECT_DOUBLE_EQ(leadingNumber(text), 0.0) << text;
    }
}

} // namespace
} // namespace veldron
