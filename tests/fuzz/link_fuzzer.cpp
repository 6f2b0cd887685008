// SPDX-License-Identifier: MIT
// The link with its parser of the unit's replies, over a line in memory.
#include "tests/fuzz/LinkEntry.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size) {
    veldron::talkToUnit(bytes, size);
    return 0;
}
