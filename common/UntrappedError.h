// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <exception>
#include <utility>

namespace veldron {

/// An error that nobody on the spot may swallow: it ends the program through the error report.
///
/// Where a routine traps errors it catches this type right there; everywhere else it travels up to
/// the ErrorGuard around the slot.
class UntrappedError : public std::exception {
public:
    enum class Kind {
        Overflow,     ///< a number left the range of its type
        OutOfRange,   ///< an index or an array bound that does not exist
        DivideByZero, ///< a quotient that has no value
        BadValue,     ///< a text that can't be converted
        File,         ///< a file that can't be opened, read or written
        Unexpected,   ///< an exception of another type, which no routine expects
    };

    /// \a message says in plain words what happened and where, for the user.
    UntrappedError(Kind kind, QString message)
        : m_kind(kind), m_message(std::move(message)), m_bytes(m_message.toUtf8()) {}

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] const QString &message() const { return m_message; }
    /// The message in UTF-8, for whoever catches a std::exception. Good for as long as the error.
    [[nodiscard]] const char *what() const noexcept override { return m_bytes.constData(); }

private:
    Kind m_kind;
    QString m_message;
    QByteArray m_bytes;
};

} // namespace veldron
