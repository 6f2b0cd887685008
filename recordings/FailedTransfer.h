// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/ScanFinder.h"

#include <QByteArrayView>

#include <algorithm>

namespace veldron {

/// Whether \a levels are what the recorder writes for a transfer that failed (one level of 0) or
/// that brought nothing (as many of them as a scan may have), and nothing that was measured.
[[nodiscard]] inline bool isFailedTransfer(QByteArrayView levels) {
    return (levels.size() == 1 || levels.size() == ScanFinder::kMostLevels) &&
           std::all_of(levels.begin(), levels.end(), [](char level) { return level == '\0'; });
}

} // namespace veldron
