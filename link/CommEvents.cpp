// SPDX-License-Identifier: MIT
#include "link/CommEvents.h"

#include <algorithm>

namespace veldron {

QString commEventName(qint16 event) {
    const auto *const row =
        std::find_if(kCommEventNames.begin(), kCommEventNames.end(),
                     [event](const CommEventName &entry) { return entry.event == event; });
    return QLatin1String(row == kCommEventNames.end() ? "Unknown" : row->name);
}

} // namespace veldron
