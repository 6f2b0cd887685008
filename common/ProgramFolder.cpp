// SPDX-License-Identifier: MIT
#include "common/ProgramFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace veldron::ProgramFolder {

namespace {

bool isInstalled(const QString &executableFolder) {
    return QFileInfo(executableFolder + QStringLiteral("/../share/veldron")).isDir();
}

} // namespace

QString path() {
    return choose(QCoreApplication::applicationDirPath(),
                  QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
}

QString choose(const QString &executableFolder, const QString &userFolder) {
    if (!isInstalled(executableFolder) && QFileInfo(executableFolder).isWritable()) {
        return executableFolder;
    }
    QDir().mkpath(userFolder);
    return userFolder;
}

} // namespace veldron::ProgramFolder
