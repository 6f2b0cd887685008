// SPDX-License-Identifier: MIT
#include "simulator/UnitTerminal.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

namespace veldron {

namespace {

void closeDescriptor(int &descriptor) {
    if (descriptor >= 0) {
        ::close(descriptor);
    }
    descriptor = -1;
}

void makeRaw(int descriptor) {
    termios settings{};
    if (::tcgetattr(descriptor, &settings) == 0) {
        ::cfmakeraw(&settings);
        ::cfsetspeed(&settings, B9600);
        ::tcsetattr(descriptor, TCSANOW, &settings);
    }
}

/// Where the link at \a path leads; empty if it is none.
QByteArray linkTarget(const QByteArray &path) {
    std::array<char, 4096> target{};
    const ssize_t length = ::readlink(path.constData(), target.data(), target.size());
    return length < 0 ? QByteArray() : QByteArray(target.data(), length);
}

} // namespace

UnitTerminal::UnitTerminal(QString linkPath) : m_linkPath(std::move(linkPath)) {}

UnitTerminal::~UnitTerminal() {
    unplug();
}

bool UnitTerminal::plug() {
    if (isPlugged()) {
        return true;
    }
    if (!openPair() || !makeLink()) {
        unplug();
        return false;
    }
    watch();
    return true;
}

void UnitTerminal::unplug() {
    if (isPlugged()) {
        removeLink();
    }
    closeDescriptor(m_watch);
    closeDescriptor(m_far);
    closeDescriptor(m_near);
    m_farName.clear();
    m_others = 0;
}

bool UnitTerminal::openPair() {
    m_near = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (m_near < 0) {
        return fail(QStringLiteral("no pseudo-terminal"));
    }
    std::array<char, 128> name{};
    if (::grantpt(m_near) != 0 || ::unlockpt(m_near) != 0 ||
        ::ptsname_r(m_near, name.data(), name.size()) != 0) {
        return fail(QStringLiteral("no far end"));
    }
    m_farName = name.data();
    m_far = ::open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (m_far < 0) {
        return fail(QString::fromLocal8Bit(m_farName));
    }
    makeRaw(m_far);
    ::fcntl(m_near, F_SETFL, ::fcntl(m_near, F_GETFL) | O_NONBLOCK);
    return true;
}

bool UnitTerminal::makeLink() {
    const QByteArray path = QFile::encodeName(m_linkPath);
    struct stat there {};
    if (::lstat(path.constData(), &there) == 0 && !S_ISLNK(there.st_mode)) {
        errno = EEXIST;
        m_farName.clear();
        return fail(m_linkPath);
    }
    // Renaming replaces the old link atomically.
    const QByteArray fresh = path + ".new";
    ::unlink(fresh.constData());
    if (::symlink(m_farName.constData(), fresh.constData()) != 0 ||
        ::rename(fresh.constData(), path.constData()) != 0) {
        const bool failed = fail(m_linkPath);
        ::unlink(fresh.constData());
        return failed;
    }
    return true;
}

void UnitTerminal::watch() {
    m_watch = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (m_watch >= 0 &&
        ::inotify_add_watch(m_watch, m_farName.constData(), IN_OPEN | IN_CLOSE) < 0) {
        closeDescriptor(m_watch);
    }
}

void UnitTerminal::removeLink() {
    const QByteArray path = QFile::encodeName(m_linkPath);
    if (!m_farName.isEmpty() && linkTarget(path) == m_farName) {
        ::unlink(path.constData());
    }
}

bool UnitTerminal::fail(const QString &what) {
    m_error = what + QStringLiteral(": ") + QString::fromLocal8Bit(std::strerror(errno));
    return false;
}

QByteArray UnitTerminal::read() {
    QByteArray all;
    std::array<char, 4096> buffer{};
    while (isPlugged()) {
        const ssize_t length = ::read(m_near, buffer.data(), buffer.size());
        if (length <= 0) {
            break;
        }
        all.append(buffer.data(), length);
    }
    return all;
}

qsizetype UnitTerminal::write(const QByteArray &bytes) {
    if (!isPlugged() || bytes.isEmpty()) {
        return 0;
    }
    const ssize_t length =
        ::write(m_near, bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return std::max<qsizetype>(0, length);
}

void UnitTerminal::noticeOthers() {
    alignas(inotify_event) std::array<char, 4096> buffer{};
    const int before = m_others;
    ssize_t length = 0;
    while (m_watch >= 0 && (length = ::read(m_watch, buffer.data(), buffer.size())) > 0) {
        for (ssize_t at = 0; at < length;) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            if ((event.mask & IN_OPEN) != 0U) {
                ++m_others;
            } else if ((event.mask & IN_CLOSE) != 0U) {
                m_others = std::max(0, m_others - 1);
            }
            at += static_cast<ssize_t>(sizeof event + event.len);
        }
    }
    if (before > 0 && m_others == 0) {
        // What a serial port does by itself when its last user closes it, and a pseudo-terminal
        // does not.
        ::ioctl(m_far, TIOCNXCL);
        ::tcflush(m_far, TCIFLUSH);
    }
}

} // namespace veldron
