// SPDX-License-Identifier: MIT
#include "utilities/Colour.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

TEST(Colour, redInTheLowByte_standsInTheHighByteOfARgb) {
    EXPECT_EQ(toRgb(0x00112233), 0xFF332211U);
    EXPECT_EQ(fromRgb(0xFF332211), 0x00112233U);
}

} // namespace
} // namespace veldron
