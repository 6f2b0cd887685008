// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFileInfo>
#include <QString>

namespace veldron {

/// Whether this process has the file \a path open.
inline bool isHeldOpen(const QString &path) {
    const QString wanted = QFileInfo(path).canonicalFilePath();
    const QDir descriptors(QStringLiteral("/proc/self/fd"));
    for (const QFileInfo &entry : descriptors.entryInfoList(QDir::Files | QDir::System)) {
        if (!wanted.isEmpty() && entry.symLinkTarget() == wanted) {
            return true;
        }
    }
    return false;
}

} // namespace veldron
