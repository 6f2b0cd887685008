// SPDX-License-Identifier: MIT
#include "format/SettingsBlock.h"

namespace veldron {

bool SettingsBlock::take(const FileLine &line) {
    const std::optional<SettingsKey> key = settingsKeyOf(line.key);
    if (!key) {
        return false;
    }
    // Before the date itself is noted: a block that begins again keeps nothing of the one before.
    if (*key == SettingsKey::StartSettings) {
        m_values.clear();
    }
    set(*key, line.value);
    return true;
}

bool SettingsBlock::isEnd(const FileLine &line) {
    return settingsKeyOf(line.key) == SettingsKey::EndSettings;
}

std::optional<QString> SettingsBlock::value(SettingsKey key) const {
    const auto found = m_values.find(key);
    return found == m_values.end() ? std::nullopt : std::optional(found->second);
}

void SettingsBlock::writeTo(LineSink &sink) const {
    // The map is sorted by its keys, and so in the order of the file, whatever order they were set
    // in.
    for (const auto &[key, value] : m_values) {
        sink.writeLine(FileLine{textOf(key), value}.text());
    }
}

} // namespace veldron
