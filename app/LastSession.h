// SPDX-License-Identifier: MIT
#pragma once

namespace veldron {

class SettingsFiles;
class frmVDR;
struct SessionState;

/// Keeps the settings of the last session that had a unit, in a file of their own.
///
/// A unit that is switched off before the program leaves failure values in the panels, and with
/// them in the settings of that exit. So the settings are saved at the moment at which an exchange
/// finds the link lost, before a failure value reaches a panel, and at an exit with the unit
/// connected. A run that never had a unit saves nothing; nor does playback, whose panels show what
/// a file holds.
class LastSession {
public:
    /// All of it outlives the object.
    LastSession(const frmVDR &vdr, const SessionState &session, SettingsFiles &files)
        : m_vdr(vdr), m_session(session), m_files(files) {}

    /// After an exchange with the unit.
    void noteExchange();
    /// After a read whose value is about to be written into a panel.
    void noteRead();
    /// After all panels were written from the unit.
    void noteReadBack();
    /// At the end of the program, while the port is still open.
    void noteEnd();

private:
    void save();

    const frmVDR &m_vdr;
    const SessionState &m_session;
    SettingsFiles &m_files;
    /// The latest exchange was answered. An open port that nothing answers on counts as connected
    /// too, until the first exchange.
    bool m_unitAnswers = false;
    /// The panels show what the unit reported: no value of a lost link stands in them.
    bool m_panelsShowUnit = false;
};

} // namespace veldron
