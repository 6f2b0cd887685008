// SPDX-License-Identifier: MIT
#include "app/LastSession.h"

#include "link/frmVDR.h"
#include "settings/SessionState.h"
#include "settings/SettingsFiles.h"

namespace veldron {

void LastSession::noteExchange() {
    const bool answers = m_vdr.Connected();
    if (m_unitAnswers && !answers) {
        save();
    }
    m_unitAnswers = answers;
}

void LastSession::noteRead() {
    noteExchange();
    m_panelsShowUnit = m_panelsShowUnit && m_vdr.Connected();
}

void LastSession::noteReadBack() {
    m_panelsShowUnit = m_vdr.Connected();
}

void LastSession::noteEnd() {
    if (m_unitAnswers && m_vdr.Connected()) {
        save();
    }
}

void LastSession::save() {
    if (m_panelsShowUnit && !m_session.InPlayback) {
        m_files.saveLastConnected();
    }
}

} // namespace veldron
