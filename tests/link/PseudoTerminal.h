// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <termios.h>

namespace veldron {

/// The unit's end of a pseudo-terminal. The other end is held open in raw mode, so that the program
/// may close and open it.
class PseudoTerminal {
public:
    PseudoTerminal();
    PseudoTerminal(const PseudoTerminal &) = delete;
    PseudoTerminal &operator=(const PseudoTerminal &) = delete;
    ~PseudoTerminal();

    /// Path of the program's end.
    [[nodiscard]] QString path() const { return m_path; }
    /// The terminal's settings as they are now.
    [[nodiscard]] termios lineSettings() const;
    /// Closes both ends, as when an adapter is unplugged.
    void unplug();
    void send(const QByteArray &bytes) const;
    /// Sends \a bytes, 4095 at most, and returns when the program's end has all of them to read.
    void deliver(const QByteArray &bytes) const;
    /// From now on the terminal tells of flushes, and what is received has an extra byte in front.
    void watchFlushes() const;
    /// True if the program has thrown away what it had written, since the last call.
    [[nodiscard]] bool outputWasFlushed() const;
    /// All that the program has sent and that has not been taken yet.
    [[nodiscard]] QByteArray receive() const;
    /// Reads until a whole line is there, for two seconds at most; gives it without the line end.
    [[nodiscard]] QByteArray receiveLine() const;
    /// Waits, for \a milliseconds at most, until something can be received.
    [[nodiscard]] bool waitForBytes(int milliseconds) const;

private:
    int m_unitEnd = -1;
    int m_programEnd = -1;
    QString m_path;
};

} // namespace veldron
