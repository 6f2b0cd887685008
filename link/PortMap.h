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
/// If a folder "ports" stands beside the program, only its entries exist: COM n is the entry
/// "COMn", looked up at each call. Otherwise the system's own ports are numbered, once.
class PortMap {
public:
    static constexpr qint16 kFirstPort = 1;
    static constexpr qint16 kLastPort = 16;

    /// COM n is the entry "COMn" of \a folder.
    [[nodiscard]] static PortMap ofFolder(const QString &folder);
    /// \a devices are paths in any order. They take the numbers from 1 in this one: ttyS, ttyUSB,
    /// ttyACM, others; each of them in natural order (ttyS2 before ttyS10). The rest is left out.
    [[nodiscard]] static PortMap ofDevices(const QStringList &devices);
    /// Chooses between the two. \a executableFolder is the folder of the program's executable;
    /// \a systemDevices lists the system's ports, for which it may open them, and is only called
    /// when there is no folder "ports".
    [[nodiscard]] static PortMap choose(const QString &executableFolder,
                                        const std::function<QStringList()> &systemDevices);

    /// The path of the device behind COM \a port, empty when there is none. A link in the folder
    /// "ports" gives its path even while it points at nothing.
    [[nodiscard]] QString device(qint16 port) const;

private:
    QString m_folder;
    std::map<qint16, QString> m_devices;
};

} // namespace veldron
