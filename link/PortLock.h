// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <optional>

namespace veldron {

/// Who holds a device: a process, as far as it is known.
struct PortHolder {
    qint64 pid = 0; ///< 0: not known
    QString name;   ///< of its executable; empty when it isn't known

    /// "minicom (process 1234)", "another program" when nothing is known.
    [[nodiscard]] QString text() const;
};

/// The lock of this program on a serial device, and the look at those of others.
///
/// Two customs exist side by side, and both are kept: a lock file "LCK..ttyUSB0" with the number of
/// the process that holds the device, as text or as a binary number; and a flock on the device
/// itself. The lock file of a process that has ended doesn't count. A lock file of another program
/// is never changed or removed, not even one that doesn't count.
class PortLock {
public:
    /// \a folders are those that lock files stand in; the first that can be written gets ours.
    explicit PortLock(QStringList folders = systemFolders());
    PortLock(const PortLock &) = delete;
    PortLock &operator=(const PortLock &) = delete;
    ~PortLock();

    /// Locks \a device, a path under /dev without links. Gives the holder when somebody else has
    /// it, nothing otherwise: also when the device can't be opened, which opening the port will
    /// tell. To be called before the device is touched in any other way.
    [[nodiscard]] std::optional<PortHolder> take(const QString &device);
    /// Gives the device up. To be called after it has been closed.
    void release();

private:
    [[nodiscard]] static QStringList systemFolders();
    [[nodiscard]] std::optional<PortHolder> lockFileHolder(const QString &name) const;
    void makeLockFile(const QString &name);

    QStringList m_folders;
    QString m_lockFile; ///< ours; empty when there is none
    int m_descriptor = -1;
};

} // namespace veldron
