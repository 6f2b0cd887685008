// SPDX-License-Identifier: MIT
// The bound of the toolkit's cache. That of the C library shows in the whole program alone: the
// sanitizers have a memory of their own.
#include "app/MemoryUse.h"

#include <gtest/gtest.h>

#include <QPixmapCache>

namespace veldron {
namespace {

TEST(MemoryUse, pixmapCache_holdsAMegabyte) {
    constexpr int kToolkits = 10240;
    QPixmapCache::setCacheLimit(kToolkits);
    boundMemoryUse();
    EXPECT_EQ(QPixmapCache::cacheLimit(), 1024);
}

} // namespace
} // namespace veldron
