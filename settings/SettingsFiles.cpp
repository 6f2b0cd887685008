// SPDX-License-Identifier: MIT
#include "settings/SettingsFiles.h"

#include <QDir>

namespace veldron {

UntrappedError atLineOf(const TextFileReader &reader, const UntrappedError &error) {
    return atLineOf(reader, reader.lineNumber(), error);
}

UntrappedError atLineOf(const TextFileReader &reader, qint64 line, const UntrappedError &error) {
    QString what = error.message();
    if (what.endsWith(QLatin1Char('.'))) {
        what.chop(1);
    }
    // One call for all three: no text is looked through for place marks of its own.
    return {error.kind(), QStringLiteral("Line %1 of the file \"%2\": %3.")
                              .arg(QString::number(line), reader.path(), what)};
}

void loadLineOf(TextFileReader &reader, SettingsLines &stream, const QString &line, bool &found) {
    try {
        stream.LoadSettings(line, found);
    } catch (const UntrappedError &error) {
        throw atLineOf(reader, error);
    }
}

SettingsFiles::SettingsFiles(SettingsLines &stream, FileDialogs &dialogs, const QString &folder)
    : m_stream(stream), m_dialogs(dialogs), m_folder(folder) {}

QString SettingsFiles::defaultPath() const {
    return QDir(m_folder).filePath(QStringLiteral("VELDRON.set"));
}

FileRequest SettingsFiles::request(const QString &title) const {
    return {title, QStringLiteral("VELDRON Settings (*.set)"), m_folder, QStringLiteral("set")};
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
    try {
        save(defaultPath());
    } catch (const UntrappedError &) {
        // Trapped: an exit never fails for want of a default file.
    }
}

void SettingsFiles::LoadDefaultSettings() noexcept {
    try {
        load(defaultPath());
    } catch (const UntrappedError &) {
        // Trapped: the lines before the bad one stay applied.
    }
}

void SettingsFiles::save(const QString &path) {
    ReplacingTextFileWriter file(path);
    file.writeLine(QStringLiteral("VELDRONv1 Settings"));
    m_stream.SaveSettings(file);
    file.commit();
}

void SettingsFiles::load(const QString &path) {
    TextFileReader file(path);
    (void)file.readLine(); // the header line is written for people, never compared
    while (!file.atEnd()) {
        bool found = false;
        loadLineOf(file, m_stream, file.readLine(), found);
    }
}

} // namespace veldron
