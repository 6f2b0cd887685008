// SPDX-License-Identifier: MIT
#include "app/MemoryUse.h"

#include <QPixmapCache>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace veldron {

namespace {

/// In kilobytes. Holds the icons of one file dialog and the marks of all lists several times over;
/// the toolkit counts a kilobyte at least for each.
constexpr int kPixmapCache = 1024;
/// In bytes; what the C library starts with.
[[maybe_unused]] constexpr int kOwnMapping = 128 * 1024;

} // namespace

void boundMemoryUse() {
    // Each file dialog makes its icons anew, and the cache keeps those of the old ones as well.
    QPixmapCache::setCacheLimit(kPixmapCache);
#ifdef __GLIBC__
    // A window's picture has a mapping of its own, which goes back to the system with the picture.
    // By default the first one that goes makes the library take the next from the heap.
    ::mallopt(M_MMAP_THRESHOLD, kOwnMapping);
#endif
}

} // namespace veldron
