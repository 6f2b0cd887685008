// SPDX-License-Identifier: MIT
#include "recordings/SystemError.h"

#include <gtest/gtest.h>

#include <QFile>

#include <cerrno>

namespace veldron {
namespace {

TEST(SystemError, message_hasNameAndReason) {
    const UntrappedError error = systemError(QStringLiteral("band.rec"), ENOENT);
    EXPECT_EQ(error.kind(), UntrappedError::Kind::File);
    EXPECT_EQ(error.message(), "band.rec: No such file or directory");
    EXPECT_EQ(systemError(QStringLiteral("B\u00e4nder"), ENOSPC).message(),
              QString::fromUtf8("B\u00e4nder: No space left on device"));
}

} // namespace
} // namespace veldron
