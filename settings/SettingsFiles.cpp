// SPDX-License-Identifier: MIT
#include "settings/SettingsFiles.h"

#include "common/TextFile.h"
#include "common/UntrappedError.h"
#include "format/FileErrors.h"
#include "format/FileKind.h"

#include <QDir>

namespace veldron {

namespace {

/// Traps whatever \a act throws: neither a start, an exit nor a lost link fails for want of a file
/// that nobody asked for. Lines that were applied before a bad one stay applied.
template <typename Act>
void silently(Act act) noexcept {
    try {
        act();
    } catch (...) {
    }
}

template <typename WriteBlock>
void write(const QString &path, WriteBlock writeBlock) {
    ReplacingTextFileWriter file(path);
    file.writeLine(QLatin1String(kSettingsFile.firstLine));
    writeBlock(file);
    // Only a file that was written to its end takes the place of the old one.
    file.commit();
}

} // namespace

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
    silently([this] { save(defaultPath()); });
}

void SettingsFiles::saveLastConnected(const SettingsBlock &settings) noexcept {
    silently([&] { write(lastConnectedPath(), [&](LineSink &file) { settings.writeTo(file); }); });
}

void SettingsFiles::LoadDefaultSettings() noexcept {
    silently([this] { load(defaultPath()); });
}

void SettingsFiles::save(const QString &path) {
    write(path, [this](LineSink &file) { m_lines.SaveSettings(file); });
}

void SettingsFiles::load(const QString &path) {
    TextFileReader file(path);
    (void)file.readLine(); // written for people, never compared
    while (!file.atEnd()) {
        const QString line = file.readLine();
        try {
            // Each line acts before the next is read: a bad one stops the rest, and no more.
            m_lines.LoadSettings(line);
        } catch (const UntrappedError &error) {
            throw FileErrors::inLastLine(file, line, error);
        }
    }
}

} // namespace veldron
