// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFile>
#include <QString>

#include <sys/mount.h>

namespace veldron {

/// A folder that is a disk of its own with little room, on systems that allow a mount; elsewhere a
/// plain folder.
class SmallDisk {
public:
    /// \a size as the mount options want it, such as "8k".
    SmallDisk(const QString &folder, const char *size) : m_folder(QFile::encodeName(folder)) {
        QDir().mkpath(folder);
        const QByteArray option = QByteArray("size=") + size;
        m_mounted = ::mount("veldron", m_folder.constData(), "tmpfs", 0, option.constData()) == 0;
    }
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;
    ~SmallDisk() { takeAway(); }

    [[nodiscard]] bool isMounted() const { return m_mounted; }
    /// As if it were pulled out: what stands on it can't be found by name any more.
    void takeAway() {
        if (m_mounted) {
            ::umount2(m_folder.constData(), MNT_DETACH);
        }
        m_mounted = false;
    }

private:
    QByteArray m_folder;
    bool m_mounted = false;
};

} // namespace veldron
