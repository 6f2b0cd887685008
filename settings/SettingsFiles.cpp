// SPDX-License-Identifier: MIT
#include "settings/SettingsFiles.h"

#include "common/TextFile.h"
#include "common/UntrappedError.h"
#include "format/FileErrors.h"
#include "format/FileKind.h"

#include <QDir>

namespace veldron {

SettingsFiles::SettingsFiles(SettingsLines &lines, FileDialogs &dialogs, const QString &folder)
    : m_lines(lines), m_dialogs(dialogs), m_folder(folder) {}

QString SettingsFiles::defaultPath() const {
    return QDir(m_folder).filePath(QStringLiteral("VELDRON.set"));
}

QString SettingsFiles::lastConnectedPath() const {
    return QDir(m_folder).filePath(QStringLiteral("VELDRON-last-connected.set"));
}

FileRequest SettingsFiles::request(const QString &title) const {
    return {title, QLatin1String(kSettingsFile.filter), m_folder,
            QLatin1String(kSettingsFile.suffix)};
}

void SettingsFiles::mnuFileSaveSettings() {
    if (const auto path = m_dialogs.saveFile(request(QStringLiteral("Save Settings")))) {
        save(*path);
    }
}

void SettingsFiles::mnuFileLoadSettings() {
    if (const auto path = m_dialogs.openFile(request(QStringLiteral("Load Settings")))) {
        load(*path);
    }
}

void SettingsFiles::SaveDefaultSettings() noexcept {
    saveSilently(&SettingsFiles::defaultPath);
}

void SettingsFiles::saveLastConnected() noexcept {
    saveSilently(&SettingsFiles::lastConnectedPath);
}

void SettingsFiles::saveSilently(QString (SettingsFiles::*path)() const) noexcept {
    try {
        save((this->*path)());
    } catch (...) {
        // Trapped, whatever it is: neither an exit nor a lost link fails for want of a file that
        // nobody asked for.
    }
}

void SettingsFiles::LoadDefaultSettings() noexcept {
    try {
        load(defaultPath());
    } catch (...) {
        // Trapped, whatever it is: the lines before the bad one stay applied.
    }
}

void SettingsFiles::save(const QString &path) {
    ReplacingTextFileWriter file(path);
    file.writeLine(QLatin1String(kSettingsFile.firstLine));
    m_lines.SaveSettings(file);
    file.commit();
}

void SettingsFiles::load(const QString &path) {
    TextFileReader file(path);
    (void)file.readLine(); // written for people, never compared
    while (!file.atEnd()) {
        const QString line = file.readLine();
        try {
            m_lines.LoadSettings(line);
        } catch (const UntrappedError &error) {
            throw FileErrors::inLastLine(file, line, error);
        }
    }
}

} // namespace veldron
