// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <functional>
#include <map>

namespace veldron {

/// Which device stands behind COM 1 to COM 16.
///
/// If there is a folder "ports" beside the program or in the user's folder, only its entries exist:
/// COM n is the entry "COMn", looked up at each call. Otherwise the system's own ports are
/// numbered, once.
class PortMap {
public:
    static constexpr qint16 kFirstPort = 1;
    static constexpr qint16 kLastPort = 16;

    /// COM n is the entry "COMn" of \a folder.
    [[nodiscard]] static PortMap ofFolder(const QString &folder);
    /// \a devices are paths in any order. They take the numbers from 1 in this one: ttyS, ttyUSB,
    /// ttyACM, others; each of them in natural order (ttyS2 before ttyS10). The rest is left out.
    [[nodiscard]] static PortMap ofDevices(const QStringList &devices);
    /// Chooses between the two. The first of \a folders that holds a folder "ports" decides;
    /// \a systemDevices lists the system's ports, for which it may open them, and is only called
    /// when none does.
    [[nodiscard]] static PortMap choose(const QStringList &folders,
                                        const std::function<QStringList()> &systemDevices);

    /// The path of the device behind COM \a port, empty when there is none. A link in the folder
    /// "ports" gives its path even while it points at nothing.
    [[nodiscard]] QString device(qint16 port) const;

private:
    QString m_folder;
    std::map<qint16, QString> m_devices;
};

} // namespace veldron
