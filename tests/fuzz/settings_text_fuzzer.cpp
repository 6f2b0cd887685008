// SPDX-License-Identifier: MIT
// The readers that a settings file goes through, without panels and dialogs.
#include "tests/fuzz/SettingsTextEntry.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size) {
    veldron::readSettingsText(bytes, size);
    return 0;
}
