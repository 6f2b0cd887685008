// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace veldron {

/// A pseudo-terminal that a program opens through a symbolic link, as it would a serial port.
///
/// The far end stays open here too, in raw mode, so that the program may close and open its end at
/// any time. When the program's last descriptor closes, what it left unread is dropped, as on a
/// real line, and an exclusive mode that it left behind is lifted.
class UnitTerminal {
public:
    /// \a linkPath is where the link is made; its folder must be there.
    explicit UnitTerminal(QString linkPath);
    UnitTerminal(const UnitTerminal &) = delete;
    UnitTerminal &operator=(const UnitTerminal &) = delete;
    ~UnitTerminal();

    /// Makes the terminal and the link. False with error() if either can't be made, or if
    /// something other than a symbolic link stands in its place. Does nothing when plugged.
    bool plug();
    /// Removes both: a program that has the terminal open gets errors from then on.
    void unplug();
    [[nodiscard]] bool isPlugged() const { return m_near >= 0; }
    [[nodiscard]] const QString &error() const { return m_error; }

    /// To wait on: readable when the program has written. -1 while unplugged.
    [[nodiscard]] int descriptor() const { return m_near; }
    /// To wait on: readable when the program has opened or closed. -1 if that can't be seen.
    [[nodiscard]] int watchDescriptor() const { return m_watch; }

    /// All that the program has written since the last call. Never waits.
    [[nodiscard]] QByteArray read();
    /// Number of bytes that went out, maybe fewer than given. Never waits.
    [[nodiscard]] qsizetype write(const QByteArray &bytes);
    /// To be called when watchDescriptor() is readable: counts who has the far end open, and clears
    /// up behind the last one.
    void noticeOthers();

private:
    bool openPair();
    bool makeLink();
    void watch();
    void removeLink();
    bool fail(const QString &what);

    QString m_linkPath;
    QByteArray m_farName;
    QString m_error;
    int m_near = -1;
    int m_far = -1;
    int m_watch = -1;
    /// Descriptors of the far end that are open elsewhere.
    int m_others = 0;
};

} // namespace veldron
