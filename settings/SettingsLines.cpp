// SPDX-License-Identifier: MIT
#include "settings/SettingsLines.h"

#include "format/FileLine.h"
#include "utilities/TimesOfDay.h"

namespace veldron {

SettingsLines::SettingsLines(const SettingHolders &holders, const SessionState &session,
                             SettingsHost &host, Clock &clock, const DateTimeText &texts)
    : m_holders(holders), m_session(session), m_host(host), m_clock(clock), m_texts(texts) {}

void SettingsLines::SaveSettings(LineSink &sink) const {
    block().writeTo(sink);
}

SettingsBlock SettingsLines::block() const {
    const LineSource from{m_holders, m_session, m_clock, m_texts};
    SettingsBlock block;
    for (const SettingsLine &line : settingsLines()) {
        if (line.isWritten(from)) {
            block.set(line.key, line.source(from));
        }
    }
    return block;
}

LoadedLine SettingsLines::LoadSettings(const QString &line) {
    const FileLine parts = FileLine::of(line);
    if (parts.key == ScanLine::kKey) {
        return {.scan = ScanLine::of(parts.value, m_texts), .date = {}};
    }
    const std::optional<SettingsKey> key = settingsKeyOf(parts.key);
    if (!key) {
        return {};
    }
    apply(settingsLines()[static_cast<std::size_t>(*key)], parts.value);
    if (key == SettingsKey::StartSettings) {
        return {.scan = {}, .date = parts.value};
    }
    return {};
}

void SettingsLines::apply(const SettingsLine &line, const QString &value) {
    const LineTarget to{m_holders, m_session, m_host, m_clock, m_texts, m_channels, value};
    if (!m_session.InPlayback) {
        if (line.pause == SettingsLine::Pause::Receiver) {
            GeneralUtilities::WaitSeconds(m_clock, kReceiverPause);
        }
        // The unit first: a panel never shows what hasn't been sent.
        if (line.toUnit != nullptr) {
            line.toUnit(to);
        }
        if (line.toDialog != nullptr) {
            line.toDialog(to);
        }
    }
    if (line.toPanel != nullptr) {
        line.toPanel(to);
    }
}

} // namespace veldron
