// SPDX-License-Identifier: MIT
#include "common/UntrappedError.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

TEST(UntrappedError, what_isTheMessage) {
    const UntrappedError error(UntrappedError::Kind::BadValue, QStringLiteral("bad value"));
    EXPECT_STREQ(error.what(), "bad value");
}

} // namespace
} // namespace veldron
