// SPDX-License-Identifier: MIT
#include "tests/fuzz/FuzzEntry.h"

#include <QApplication>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size) {
    static int count = 1;
    static char name[] = "fuzz_history";
    static char *arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QApplication application(count, arguments);
    // The first line is for people and never read: it chooses the way of playing.
    if (size > 0 && bytes[0] % 2 != 0) {
        veldron::playHistoryToItsEnd(bytes, size);
    } else {
        veldron::playHistoryBytes(bytes, size);
    }
    return 0;
}
