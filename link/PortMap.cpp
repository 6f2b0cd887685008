// SPDX-License-Identifier: MIT
#include "link/PortMap.h"

#include "common/Digits.h"

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <utility>

namespace veldron {

namespace {

constexpr std::array<const char *, 3> kFamilies{"ttyS", "ttyUSB", "ttyACM"};

/// Where the digits at the end of \a name begin.
qsizetype numberStart(const QString &name) {
    qsizetype start = name.size();
    while (start > 0 && isDigit(name.at(start - 1))) {
        --start;
    }
    return start;
}

/// "ttyS10" gives "ttyS" and 10; a name without digits gives -1.
std::pair<QString, qint64> nameAndNumber(const QString &device) {
    const QString name = device.mid(device.lastIndexOf(QLatin1Char('/')) + 1);
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

} // namespace

PortMap PortMap::ofFolder(const QString &folder) {
    PortMap map;
    map.m_folder = folder;
    return map;
}

PortMap PortMap::ofDevices(const QStringList &devices) {
    PortMap map;
    QStringList ordered = devices;
    std::sort(ordered.begin(), ordered.end(), comesBefore);
    qint16 next = kFirstPort;
    for (const QString &device : ordered) {
        if (next > kLastPort) {
            break;
        }
        map.m_devices[next] = device;
        ++next;
    }
    return map;
}

PortMap PortMap::choose(const QStringList &folders,
                        const std::function<QStringList()> &systemDevices) {
    for (const QString &folder : folders) {
        const QString ports = folder + QStringLiteral("/ports");
        if (QFileInfo(ports).isDir()) {
            return ofFolder(ports);
        }
    }
    return ofDevices(systemDevices());
}

QString PortMap::device(qint16 port) const {
    if (port < kFirstPort || port > kLastPort) {
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
