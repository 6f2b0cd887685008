// SPDX-License-Identifier: MIT
#include "app/Manual.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

#include <array>

namespace veldron::Manual {

namespace {

/// Seen from the executable. No path of the build is kept in the program, so that it can be moved.
constexpr std::array<const char *, 5> kPlaces{
    "../share/doc/veldron/html/manual.html", // installed
    "../docs/html/manual.html",              // the build tree's bin
    "../release/docs/html/manual.html",      // the folder that ./run starts the program in
    "../../../docs/manual/manual.adoc",      // the source tree above a build tree
    "../../docs/manual/manual.adoc",
};

} // namespace

QString find(const QString &executableFolder) {
    for (const char *place : kPlaces) {
        const QString path = QDir::cleanPath(QDir(executableFolder).filePath(QLatin1String(place)));
        if (QFileInfo(path).isFile()) {
            return path;
        }
    }
    return {};
}

QString show(const QString &path) {
    if (path.isEmpty()) {
        return QStringLiteral("The manual is not installed. It is in the package veldron-doc.");
    }
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path))
               ? QString()
               : QStringLiteral("No browser could be started. The manual is the file\n%1")
                     .arg(path);
}

} // namespace veldron::Manual
