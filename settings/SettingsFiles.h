// SPDX-License-Identifier: MIT
#pragma once

#include "common/TextFile.h"
#include "common/UntrappedError.h"
#include "settings/FileDialogs.h"
#include "settings/SettingsLines.h"

#include <QString>

namespace veldron {

/// Settings files (.set): the two menu commands, and the default file "VELDRON.set" of each start
/// and exit.
///
/// A file is written beside the old one and put in its place when it is whole. After its dialog a
/// menu command lets every error through as an UntrappedError; the default file's routines end
/// silently where an error meets them.
class SettingsFiles {
public:
    /// \a folder is the program's folder.
    SettingsFiles(SettingsLines &stream, FileDialogs &dialogs, const QString &folder);

    /// Asks for a name and writes the settings to it.
    void mnuFileSaveSettings();
    /// Asks for a file and applies all its lines but the first.
    void mnuFileLoadSettings();
    void SaveDefaultSettings() noexcept;
    void LoadDefaultSettings() noexcept;
    [[nodiscard]] QString defaultPath() const;

private:
    void save(const QString &path);
    void load(const QString &path);
    [[nodiscard]] FileRequest request(const QString &title) const;

    SettingsLines &m_stream;
    FileDialogs &m_dialogs;
    QString m_folder;
};

/// \a error with the place where it was met: the last line that \a reader has read.
[[nodiscard]] UntrappedError atLineOf(const TextFileReader &reader, const UntrappedError &error);

/// The same for an error that lies in line \a line, which \a reader has read before.
[[nodiscard]] UntrappedError atLineOf(const TextFileReader &reader, qint64 line,
                                      const UntrappedError &error);

/// Applies \a line of \a reader to \a stream; an error tells the file and the line.
void loadLineOf(TextFileReader &reader, SettingsLines &stream, const QString &line, bool &found);

} // namespace veldron
