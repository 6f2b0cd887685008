// SPDX-License-Identifier: MIT
#include "link/PortMap.h"

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <utility>

namespace veldron {

namespace {

constexpr std::array<const char *, 3> kFamilies{"ttyS", "ttyUSB", "ttyACM"};

QString baseName(const QString &device) {
    const qsizetype slash =
        qMax(device.lastIndexOf(QLatin1Char('/')), device.lastIndexOf(QLatin1Char('\\')));
    return device.mid(slash + 1);
}

bool isDigit(QChar character) {
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

/// The digits at the end of \a name begin here.
qsizetype numberStart(const QString &name) {
    qsizetype start = name.size();
    while (start > 0 && isDigit(name.at(start - 1))) {
        --start;
    }
    return start;
}

/// "ttyS10" into "ttyS" and 10; no digits count as -1.
std::pair<QString, qint64> nameAndNumber(const QString &device) {
    const QString name = baseName(device);
    const qsizetype start = numberStart(name);
    const qint64 number = start < name.size() ? name.mid(start).toLongLong() : -1;
    return {name.left(start), number};
}

std::size_t familyRank(const QString &stem) {
    const auto *const found =
        std::find_if(kFamilies.begin(), kFamilies.end(),
                     [&stem](const char *family) { return stem == QLatin1String(family); });
    return static_cast<std::size_t>(found - kFamilies.begin());
}

bool comesBefore(const QString &a, const QString &b) {
    const auto [stemA, numberA] = nameAndNumber(a);
    const auto [stemB, numberB] = nameAndNumber(b);
    const std::size_t rankA = familyRank(stemA);
    const std::size_t rankB = familyRank(stemB);
    if (rankA != rankB) {
        return rankA < rankB;
    }
    return stemA != stemB ? stemA < stemB : numberA != numberB ? numberA < numberB : a < b;
}

/// n of a device that is called COMn, else 0.
qint64 ownNumber(const QString &device) {
    const auto [stem, number] = nameAndNumber(device);
    return stem == QLatin1String("COM") && number > 0 ? number : 0;
}

} // namespace

PortMap PortMap::ofFolder(const QString &folder) {
    PortMap map;
    map.m_folder = folder;
    return map;
}

PortMap PortMap::ofDevices(const QStringList &devices) {
    PortMap map;
    QStringList unnumbered;
    for (const QString &device : devices) {
        const qint64 own = ownNumber(device);
        if (own == 0) {
            unnumbered.append(device);
        } else if (own <= kLastPort) {
            map.m_devices[static_cast<qint16>(own)] = device;
        }
    }
    qint16 next = 1;
    for (const QString &device : orderedDevices(unnumbered)) {
        while (map.m_devices.contains(next)) {
            ++next;
        }
        if (next > kLastPort) {
            break;
        }
        map.m_devices[next] = device;
    }
    return map;
}

PortMap PortMap::choose(const QString &executableFolder,
                        const std::function<QStringList()> &systemDevices) {
    const QString folder = executableFolder + QStringLiteral("/ports");
    return QFileInfo(folder).isDir() ? ofFolder(folder) : ofDevices(systemDevices());
}

QStringList PortMap::orderedDevices(const QStringList &devices) {
    QStringList ordered = devices;
    std::sort(ordered.begin(), ordered.end(), comesBefore);
    return ordered;
}

QString PortMap::device(qint16 port) const {
    if (port < 1 || port > kLastPort) {
        return {};
    }
    if (m_folder.isEmpty()) {
        const auto found = m_devices.find(port);
        return found == m_devices.end() ? QString() : found->second;
    }
    const QString entry = m_folder + QStringLiteral("/COM") + QString::number(port);
    const QFileInfo info(entry);
    return info.exists() || info.isSymLink() ? entry : QString();
}

} // namespace veldron
