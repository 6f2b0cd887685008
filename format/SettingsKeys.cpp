// SPDX-License-Identifier: MIT
#include "format/SettingsKeys.h"

#include <algorithm>

namespace veldron {

static_assert(kSettingsKeys.size() == static_cast<std::size_t>(SettingsKey::EndSettings) + 1);

QString textOf(SettingsKey key) {
    return QLatin1String(kSettingsKeys.at(static_cast<std::size_t>(key)));
}

std::optional<SettingsKey> settingsKeyOf(const QString &text) {
    const auto *const found =
        std::find_if(kSettingsKeys.begin(), kSettingsKeys.end(),
                     [&text](const char *key) { return text == QLatin1String(key); });
    if (found == kSettingsKeys.end()) {
        return std::nullopt;
    }
    return static_cast<SettingsKey>(found - kSettingsKeys.begin());
}

} // namespace veldron
