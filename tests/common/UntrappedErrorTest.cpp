// SPDX-License-Identifier: MIT
#include "common/UntrappedError.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

namespace veldron {
namespace {

TEST(ErrorGuard, errorInTheBody_reachesTheReportOnce) {
    std::optional<UntrappedError::Kind> seen;
    int reports = 0;
    const ErrorGuard guard([&](const UntrappedError &error) {
        seen = error.kind();
        ++reports;
    });
    guard.run([] { throw UntrappedError(UntrappedError::Kind::File, QStringLiteral("gone")); });
    EXPECT_EQ(seen, UntrappedError::Kind::File);
    EXPECT_EQ(reports, 1);
}

TEST(ErrorGuard, bodyWithoutError_reportsNothing) {
    bool ran = false;
    const ErrorGuard guard([](const UntrappedError &) { FAIL(); });
    guard.run([&] { ran = true; });
    EXPECT_TRUE(ran);
}

TEST(ErrorGuard, otherExceptions_passThrough) {
    const ErrorGuard guard([](const UntrappedError &) { FAIL(); });
    EXPECT_THROW(guard.run([] { throw std::runtime_error("other"); }), std::runtime_error);
}

TEST(UntrappedError, what_isTheMessage) {
    const UntrappedError error(UntrappedError::Kind::BadValue, QStringLiteral("bad value"));
    EXPECT_STREQ(error.what(), "bad value");
}

} // namespace
} // namespace veldron
