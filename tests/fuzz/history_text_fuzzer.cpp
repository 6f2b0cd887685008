// SPDX-License-Identifier: MIT
// The main program's readers of recordings, without its window.
#include "tests/fuzz/HistoryTextEntry.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size) {
    veldron::readHistoryText(bytes, size);
    return 0;
}
