// SPDX-License-Identifier: MIT
// The repair of recordings, with the judge and the texts of the summary.
#include "tests/fuzz/RecordingEntry.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size) {
    veldron::repairRecordingBytes(bytes, size);
    return 0;
}
