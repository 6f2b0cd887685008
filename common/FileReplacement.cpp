// SPDX-License-Identifier: MIT
#include "common/FileReplacement.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

namespace veldron {

namespace {

using Way = FileReplacement::Way;

/// As many links as the kernel follows.
constexpr int kMostLinks = 40;

/// In a folder with the sticky bit (such as /tmp) only the owner of a file, the owner of the folder
/// and root may rename over it.
bool stickyBitForbids(const QString &target, const QString &folder) {
    struct stat folderFacts {};
    struct stat fileFacts {};
    if (::stat(QFile::encodeName(folder).constData(), &folderFacts) != 0 ||
        ::stat(QFile::encodeName(target).constData(), &fileFacts) != 0) {
        return false;
    }
    const uid_t user = ::geteuid();
    return (folderFacts.st_mode & S_ISVTX) != 0 && user != 0 && user != fileFacts.st_uid &&
           user != folderFacts.st_uid;
}

QString refusalOf(const QFileInfo &file, const QFileInfo &folder, bool folderIsWritable) {
    if (!folder.isDir()) {
        return QStringLiteral("There is no folder \"%1\".").arg(folder.filePath());
    }
    if (file.isSymLink()) {
        return QStringLiteral("The links at \"%1\" go in a circle. Please choose another name.")
            .arg(file.fileName());
    }
    if (file.exists() && !file.isFile()) {
        return QStringLiteral("\"%1\" is not a file. Please choose another name.")
            .arg(file.fileName());
    }
    if (file.exists() && !file.isWritable()) {
        return QStringLiteral("The file \"%1\" is read-only. Please choose another name.")
            .arg(file.fileName());
    }
    if (!file.exists() && !folderIsWritable) {
        return QStringLiteral("You may not write to the folder \"%1\". Please choose another one.")
            .arg(folder.filePath());
    }
    return {};
}

} // namespace

QString endOfLinks(const QString &path) {
    QString end = path;
    for (int i = 0; i < kMostLinks && QFileInfo(end).isSymLink(); ++i) {
        end = QFileInfo(end).symLinkTarget();
    }
    return end;
}

FileReplacement FileReplacement::of(const QString &path) {
    const QString target = endOfLinks(path);
    const QFileInfo file(target);
    const QFileInfo folder(file.path());
    const bool folderIsWritable = folder.isWritable();
    if (const QString refusal = refusalOf(file, folder, folderIsWritable); !refusal.isEmpty()) {
        return {Way::Refused, target, refusal};
    }
    const bool renames = folderIsWritable && !stickyBitForbids(target, folder.filePath());
    return {renames ? Way::Rename : Way::InPlace, target, {}};
}

} // namespace veldron
