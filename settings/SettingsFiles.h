// SPDX-License-Identifier: MIT
#pragma once

#include "settings/FileDialogs.h"
#include "settings/SettingsLines.h"

#include <QString>

namespace veldron {

/// Settings files (.set): the two menu commands, and two files that the program writes by itself:
/// "VELDRON.set" at each exit, for the next start, and "VELDRON-last-connected.set" with the
/// settings of the last session that had a unit, for the user to load.
///
/// A file is written beside the old one and put in its place when it is whole. The menu commands
/// throw an UntrappedError for whatever fails once a file is chosen. The other routines throw
/// nothing: they stop at the error and tell nobody, since no user asked for them.
class SettingsFiles {
public:
    /// \a folder is the program's folder.
    SettingsFiles(SettingsLines &lines, FileDialogs &dialogs, const QString &folder);

    /// Asks for a name and writes the settings to it.
    void mnuFileSaveSettings();
    /// Asks for a file and applies all its lines but the first.
    void mnuFileLoadSettings();
    /// Writes the default file. An error leaves the old one as it is.
    void SaveDefaultSettings() noexcept;
    /// Applies the default file. It ends at the first bad line; the lines before stay applied.
    void LoadDefaultSettings() noexcept;
    /// Writes \a settings, which the unit has reported, to the file of the last connected session.
    /// An error leaves the old one as it is.
    void saveLastConnected(const SettingsBlock &settings) noexcept;

private:
    [[nodiscard]] QString defaultPath() const;
    [[nodiscard]] QString lastConnectedPath() const;
    void save(const QString &path);
    void load(const QString &path);
    [[nodiscard]] FileRequest request(const QString &title) const;

    SettingsLines &m_lines;
    FileDialogs &m_dialogs;
    QString m_folder;
};

} // namespace veldron
