// SPDX-License-Identifier: MIT
// The readers of dates and times. They are the toolkit's and slow, and so have a fuzzer of their
// own.
#include "tests/fuzz/LineEntry.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size) {
    veldron::readTimesOf(bytes, size);
    return 0;
}
