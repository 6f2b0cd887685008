// SPDX-License-Identifier: MIT
#pragma once

#include <QFileDevice>
#include <QString>

namespace veldron {

/// fsync: the way from the system's caches onto the disk, for what must outlast a power cut. Each
/// call waits for the disk: some milliseconds, tens on one that turns.
class Disk {
public:
    Disk() = default;
    Disk(const Disk &) = delete;
    Disk &operator=(const Disk &) = delete;
    virtual ~Disk() = default;

    /// Flushes the bytes and the length of \a file, which is open for writing. Returns an empty
    /// text, or what went wrong; a target that can't be flushed (a pipe, say) is no error.
    [[nodiscard]] virtual QString force(QFileDevice &file) = 0;
    /// Flushes the folder that the entry \a path stands in. \a path is no link: behind a link, the
    /// entry that was made or renamed is that of the link's target. A folder that may not be read
    /// can't be opened for this, and counts as flushed.
    [[nodiscard]] virtual QString forceName(const QString &path) = 0;
};

/// The real one. It keeps no state: one object serves all files.
[[nodiscard]] Disk &systemDisk();

} // namespace veldron
