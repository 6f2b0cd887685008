// SPDX-License-Identifier: MIT
#pragma once

#include "format/SettingsBlock.h"

namespace veldron {

class SettingsFiles;
class SettingsLines;
class frmVDR;

/// Keeps the settings of the last session that had a unit, in a file of their own.
///
/// A unit that is switched off before the program leaves failure values in the panels, and with
/// them in the settings of that exit. So what the unit has confirmed is remembered each time that
/// panels were written from it, and saved at the moment at which an exchange finds the link lost,
/// and at an exit with the unit connected. What stands in the panels otherwise is not remembered: a
/// value that was typed or loaded but not read back, one that could not be read, one out of a
/// recording. The program's own settings are saved as they are in force. A run that never had a
/// unit saves nothing.
class LastSession {
public:
    /// All of it outlives the object.
    LastSession(const frmVDR &vdr, const SettingsLines &lines, SettingsFiles &files)
        : m_vdr(vdr), m_lines(lines), m_files(files) {}

    /// After an exchange with the unit.
    void noteExchange();
    /// Before panels are written from the unit. Calls may nest; the innermost counts.
    void beginReads() { m_readsFailed = false; }
    /// After a read whose value is about to be written into a panel; \a failed: it is no value.
    void noteRead(bool failed);
    /// After panels and chart were written from the unit.
    void endReads();
    /// At the end of the program, while the port is still open.
    void noteEnd();

private:
    void save();

    const frmVDR &m_vdr;
    const SettingsLines &m_lines;
    SettingsFiles &m_files;
    /// Empty before the unit has reported all of its settings.
    SettingsBlock m_confirmed;
    /// The latest exchange was answered. An open port that nothing answers on counts as connected
    /// too, until the first exchange.
    bool m_unitAnswers = false;
    bool m_readsFailed = false;
};

} // namespace veldron
