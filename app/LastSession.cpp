// SPDX-License-Identifier: MIT
#include "app/LastSession.h"

#include "format/SettingsValue.h"
#include "link/frmVDR.h"
#include "settings/SettingsFiles.h"
#include "settings/SettingsLines.h"

#include <algorithm>
#include <array>

namespace veldron {

namespace {

using Key = SettingsKey;

/// The settings of the program itself.
constexpr std::array kOwnSettings{Key::PersistenceOn, Key::Persistence, Key::WaterfallOn,
                                  Key::Palette,       Key::Update,      Key::MarkerOn,
                                  Key::Poll};

/// The settings whose panels show a read that has failed. The other panels refuse the failure
/// value; where they don't show what the unit has, the poll finds the difference.
constexpr std::array kShowFailures{Key::Span, Key::Centre, Key::Start, Key::Step,
                                   Key::End,  Key::RXStep, Key::Amp,   Key::Samples};

bool holdsFailure(const SettingsBlock &block) {
    const QString failure = SettingsValue::ofWhole(-1);
    return std::any_of(kShowFailures.begin(), kShowFailures.end(),
                       [&](Key key) { return block.value(key) == failure; });
}

/// Takes the program's own settings from \a source, which lacks most of them during a recording.
void takeOwnSettings(SettingsBlock &block, const SettingsBlock &source) {
    for (const Key key : kOwnSettings) {
        if (const auto value = source.value(key)) {
            block.set(key, *value);
        }
    }
}

} // namespace

void LastSession::noteExchange() {
    const bool answers = m_vdr.Connected();
    if (m_unitAnswers && !answers) {
        save();
    }
    m_unitAnswers = answers;
}

void LastSession::noteRead(bool failed) {
    noteExchange();
    m_readsFailed = m_readsFailed || failed;
}

void LastSession::endReads() {
    if (m_readsFailed || !m_vdr.Connected()) {
        return;
    }
    // An earlier failure may still stand in a panel that was not read this time.
    if (SettingsBlock shown = m_lines.block(); !holdsFailure(shown)) {
        takeOwnSettings(shown, m_confirmed);
        m_confirmed = shown;
    }
}

void LastSession::noteEnd() {
    noteExchange(); // loading settings may have been the last to use the link
    if (m_unitAnswers) {
        save();
    }
}

void LastSession::save() {
    if (m_confirmed.value(Key::StartSettings)) {
        takeOwnSettings(m_confirmed, m_lines.block());
        m_files.saveLastConnected(m_confirmed);
    }
}

} // namespace veldron
