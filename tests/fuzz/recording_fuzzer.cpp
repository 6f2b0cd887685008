// SPDX-License-Identifier: MIT
// The reader that takes recordings without loss, with the judge and the summary behind it.
#include "tests/fuzz/RecordingEntry.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size) {
    veldron::readRecordingBytes(bytes, size);
    return 0;
}
