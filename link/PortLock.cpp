// SPDX-License-Identifier: MIT
#include "link/PortLock.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace veldron {

namespace {

/// Width of a process number in a lock file that is text.
constexpr int kPidWidth = 10;
constexpr qint64 kLongestLockFile = 1024;

QByteArray contents(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(kLongestLockFile) : QByteArray();
}

bool isAlive(qint64 pid) {
    // Beyond the range a cast would give another process, and -1 stands for all of them.
    return std::in_range<pid_t>(pid) && (::kill(static_cast<pid_t>(pid), 0) == 0 || errno == EPERM);
}

/// Name of the executable of a running process; empty when that can't be seen.
QString processName(qint64 pid) {
    const QString folder = QStringLiteral("/proc/") + QString::number(pid);
    const QString executable = QFile::symLinkTarget(folder + QStringLiteral("/exe"));
    return executable.isEmpty()
               ? QString::fromLocal8Bit(contents(folder + QStringLiteral("/comm"))).trimmed()
               : QFileInfo(executable).fileName();
}

/// The process number in a lock file, 0 when there is none: a text that begins with it, or four
/// bytes in the order of the machine.
qint64 processNumber(const QByteArray &bytes) {
    bool isText = false;
    const qint64 number = bytes.simplified().split(' ').first().toLongLong(&isText);
    qint32 binary = 0;
    // Four bytes with a NUL are no text, even where digits come first: toLongLong stops at a NUL.
    if (bytes.size() == qsizetype{sizeof binary} && (!isText || bytes.contains('\0'))) {
        std::memcpy(&binary, bytes.constData(), sizeof binary);
        return qMax(qint64{binary}, qint64{0});
    }
    return qMax(number, qint64{0});
}

/// Whether a run of this program has made the lock file: its name is on the second line.
bool isOurs(const QByteArray &bytes) {
    const QList<QByteArray> lines = bytes.split('\n');
    return lines.size() > 1 &&
           QString::fromLocal8Bit(lines.at(1).trimmed()) == processName(::getpid());
}

/// The running process that a lock file of another program names; nothing when it has ended. Files
/// of ours tell nothing: their runs hold the flock as well, and it ends with them.
std::optional<PortHolder> livingHolder(const QByteArray &bytes) {
    const qint64 pid = processNumber(bytes);
    if (pid == 0 || pid == ::getpid() || isOurs(bytes) || !isAlive(pid)) {
        return std::nullopt;
    }
    return PortHolder{pid, processName(pid)};
}

/// The process that holds a flock on the file behind \a descriptor, as the kernel lists it:
/// "1: FLOCK  ADVISORY  WRITE 1234 00:06:340 0 EOF", with device numbers in hex.
PortHolder flockHolder(int descriptor) {
    struct stat device {};
    ::fstat(descriptor, &device);
    const QByteArray place = QByteArray::number(major(device.st_dev), 16).rightJustified(2, '0') +
                             ':' +
                             QByteArray::number(minor(device.st_dev), 16).rightJustified(2, '0') +
                             ':' + QByteArray::number(quint64{device.st_ino});
    QFile list(QStringLiteral("/proc/locks"));
    const QByteArray all = list.open(QIODevice::ReadOnly) ? list.readAll() : QByteArray();
    for (const QByteArray &line : all.split('\n')) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        if (fields.size() >= 6 && fields.at(1) == "FLOCK" && fields.at(5) == place) {
            const qint64 pid = fields.at(4).toLongLong();
            return {pid, processName(pid)};
        }
    }
    return {};
}

} // namespace

QString PortHolder::text() const {
    if (pid == 0) {
        return QStringLiteral("another program");
    }
    return (name.isEmpty() ? QStringLiteral("another program") : name) +
           QStringLiteral(" (process ") + QString::number(pid) + QLatin1Char(')');
}

PortLock::PortLock(QStringList folders) : m_folders(std::move(folders)) {}

PortLock::~PortLock() {
    release();
}

QStringList PortLock::systemFolders() {
    return {QStringLiteral("/run/lock"), QStringLiteral("/var/lock"),
            QStringLiteral("/run/lock/lockdev"), QStringLiteral("/var/spool/lock"),
            QStringLiteral("/var/spool/uucp")};
}

std::optional<PortHolder> PortLock::take(const QString &device) {
    release();
    const QString name =
        QStringLiteral("/LCK..") +
        device.mid(QStringLiteral("/dev/").size()).replace(QLatin1Char('/'), QLatin1Char('_'));
    // The lock files first: opening a device can already disturb who uses it.
    if (std::optional<PortHolder> holder = lockFileHolder(name)) {
        return holder;
    }
    m_descriptor =
        ::open(QFile::encodeName(device).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (m_descriptor < 0) {
        return errno == EBUSY ? std::optional<PortHolder>(PortHolder{}) : std::nullopt;
    }
    if (::flock(m_descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        const PortHolder holder = flockHolder(m_descriptor);
        release();
        return holder;
    }
    makeLockFile(name);
    return std::nullopt;
}

void PortLock::release() {
    if (!m_lockFile.isEmpty()) {
        QFile::remove(m_lockFile);
        m_lockFile.clear();
    }
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
        m_descriptor = -1;
    }
}

std::optional<PortHolder> PortLock::lockFileHolder(const QString &name) const {
    for (const QString &folder : m_folders) {
        if (std::optional<PortHolder> holder = livingHolder(contents(folder + name))) {
            return holder;
        }
    }
    return std::nullopt;
}

/// The number as text, then our name, by which a later run knows that the file was ours.
void PortLock::makeLockFile(const QString &name) {
    for (const QString &folder : m_folders) {
        const QString path = folder + name;
        // The flock is held here, so a file of ours is left over from a run that was killed.
        if (isOurs(contents(path))) {
            QFile::remove(path);
        }
        QFile file(path);
        // NewOnly fails where a file exists, so that none of another program is replaced.
        if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
            file.write(QByteArray::number(::getpid()).rightJustified(kPidWidth) + '\n' +
                       processName(::getpid()).toLocal8Bit() + '\n');
            m_lockFile = path;
            return;
        }
    }
}

} // namespace veldron
