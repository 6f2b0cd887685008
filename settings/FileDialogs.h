// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

namespace veldron {

/// What a file dialog shows.
struct FileRequest {
    QString title;
    /// Filter text such as "VELDRON Settings (*.set)".
    QString filter;
    /// Folder that it starts in.
    QString folder;
    /// Added to a name that is typed without one, without the point.
    QString suffix;
};

/// Asks the user for a file. Nothing comes back when the dialog is cancelled.
class FileDialogs {
public:
    FileDialogs() = default;
    FileDialogs(const FileDialogs &) = delete;
    FileDialogs &operator=(const FileDialogs &) = delete;
    virtual ~FileDialogs() = default;

    /// A file that exists.
    [[nodiscard]] virtual std::optional<QString> openFile(const FileRequest &request) = 0;
    /// A file that may be written; an existing one only after the user agreed to replace it, a new
    /// one only after the user agreed to make it.
    [[nodiscard]] virtual std::optional<QString> saveFile(const FileRequest &request) = 0;
};

} // namespace veldron
