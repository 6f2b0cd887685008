// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <cstdlib>

namespace veldron {

/// Ends the process where a promise is broken, and says where in the source: a fuzzer takes that
/// for a finding, a test for a failure.
inline void demand(bool kept, const char *file = __builtin_FILE(), int line = __builtin_LINE()) {
    if (!kept) {
        std::fprintf(stderr, "%s:%d: a promise is broken\n", file, line);
        std::abort();
    }
}

} // namespace veldron
