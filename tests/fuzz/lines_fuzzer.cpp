// SPDX-License-Identifier: MIT
// The line reader of settings and history files alone, with everything that turns a value's text
// into a number.
#include "tests/fuzz/LineEntry.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size) {
    veldron::readLinesOf(bytes, size);
    return 0;
}
