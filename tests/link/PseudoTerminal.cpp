// SPDX-License-Identifier: MIT
#include "tests/link/PseudoTerminal.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace veldron {

PseudoTerminal::PseudoTerminal() {
    m_unitEnd = ::posix_openpt(O_RDWR | O_NOCTTY);
    std::array<char, 128> name{};
    if (::grantpt(m_unitEnd) != 0 || ::unlockpt(m_unitEnd) != 0 ||
        ::ptsname_r(m_unitEnd, name.data(), name.size()) != 0) {
        std::abort();
    }
    m_path = QString::fromLatin1(name.data());
    m_programEnd = ::open(name.data(), O_RDWR | O_NOCTTY);
    termios settings{};
    ::tcgetattr(m_programEnd, &settings);
    ::cfmakeraw(&settings);
    ::tcsetattr(m_programEnd, TCSANOW, &settings);
}

PseudoTerminal::~PseudoTerminal() {
    unplug();
}

termios PseudoTerminal::lineSettings() const {
    termios settings{};
    ::tcgetattr(m_programEnd, &settings);
    return settings;
}

void PseudoTerminal::unplug() {
    if (m_unitEnd >= 0) {
        ::close(m_programEnd);
        ::close(m_unitEnd);
        m_unitEnd = -1;
        m_programEnd = -1;
    }
}

void PseudoTerminal::send(const QByteArray &bytes) const {
    qsizetype sent = 0;
    while (sent < bytes.size()) {
        const auto rest = static_cast<std::size_t>(bytes.size() - sent);
        const ssize_t written = ::write(m_unitEnd, bytes.constData() + sent, rest);
        if (written <= 0) {
            std::abort();
        }
        sent += written;
    }
}

void PseudoTerminal::watchFlushes() const {
    int on = 1;
    if (::ioctl(m_unitEnd, TIOCPKT, &on) != 0) {
        std::abort();
    }
}

bool PseudoTerminal::outputWasFlushed() const {
    bool flushed = false;
    std::array<char, 4096> packet{};
    while (waitForBytes(0) && ::read(m_unitEnd, packet.data(), packet.size()) > 0) {
        flushed = flushed || (packet.front() & TIOCPKT_FLUSHWRITE) != 0;
    }
    return flushed;
}

void PseudoTerminal::deliver(const QByteArray &bytes) const {
    send(bytes);
    pollfd end{m_programEnd, POLLIN, 0};
    for (int arrived = 0; arrived < bytes.size(); ::ioctl(m_programEnd, FIONREAD, &arrived)) {
        ::poll(&end, 1, 100);
    }
}

bool PseudoTerminal::waitForBytes(int milliseconds) const {
    pollfd end{m_unitEnd, POLLIN, 0};
    return ::poll(&end, 1, milliseconds) == 1 && (end.revents & POLLIN) != 0;
}

QByteArray PseudoTerminal::receive() const {
    QByteArray bytes;
    std::array<char, 4096> buffer{};
    while (waitForBytes(0)) {
        const ssize_t count = ::read(m_unitEnd, buffer.data(), buffer.size());
        if (count <= 0) {
            break;
        }
        bytes.append(buffer.data(), count);
    }
    return bytes;
}

QByteArray PseudoTerminal::receiveLine() const {
    QByteArray line;
    while (!line.endsWith("\r\n") && waitForBytes(2000)) {
        char byte = 0;
        if (::read(m_unitEnd, &byte, 1) != 1) {
            break;
        }
        line.append(byte);
    }
    return line.chopped(qMin(line.size(), qsizetype{2}));
}

} // namespace veldron
