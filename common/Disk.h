// SPDX-License-Identifier: MIT
#pragma once

#include <QFileDevice>
#include <QString>

namespace veldron {

/// The way from the system's memory onto the disk, for what must outlast a power cut. Each call
/// waits for the disk: some milliseconds, tens on one that turns.
class Disk {
public:
    Disk() = default;
    Disk(const Disk &) = delete;
    Disk &operator=(const Disk &) = delete;
    virtual ~Disk() = default;

    /// Puts the bytes and the length of \a file, which is open for writing, on the disk. Returns an
    /// empty text, or what went wrong; a target that can't be forced (a pipe, say) is none.
    [[nodiscard]] virtual QString force(QFileDevice &file) = 0;
    /// The same for the entry of \a file in its folder.
    [[nodiscard]] virtual QString forceName(QFileDevice &file) = 0;
};

/// The real one.
[[nodiscard]] Disk &systemDisk();

} // namespace veldron
