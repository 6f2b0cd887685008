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
/// A folder "ports" beside the program, if there is one, decides alone: COM n is its entry "COMn",
/// looked up each time, and nothing else exists. Otherwise the system's own ports are numbered
/// once, in the order of orderedDevices.
class PortMap {
public:
    static constexpr qint16 kFirstPort = 1;
    static constexpr qint16 kLastPort = 16;

    /// COM n is the entry "COMn" of \a folder.
    [[nodiscard]] static PortMap ofFolder(const QString &folder);
    /// \a devices are paths, in any order. A device named COMn is COM n, as on Windows; the others
    /// take the numbers from 1 in their order.
    [[nodiscard]] static PortMap ofDevices(const QStringList &devices);
    /// The rule above. \a executableFolder is the one that the program's executable lies in;
    /// \a systemDevices lists the system's ports, which may mean touching them, and is only called
    /// when they count.
    [[nodiscard]] static PortMap choose(const QString &executableFolder,
                                        const std::function<QStringList()> &systemDevices);

    /// ttyS, ttyUSB, ttyACM, others; each of them in natural order (ttyS2 before ttyS10).
    [[nodiscard]] static QStringList orderedDevices(const QStringList &devices);

    /// The path for COM \a port, empty when there is none. The path of a folder's entry is given
    /// even when the entry leads nowhere at the moment.
    [[nodiscard]] QString device(qint16 port) const;

private:
    QString m_folder;
    std::map<qint16, QString> m_devices;
};

} // namespace veldron
