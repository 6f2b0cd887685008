// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <exception>
#include <utility>

namespace veldron {

/// What the program tells the shell. The numbers stand in the manual.
enum class ExitCode {
    Done = 0,          ///< all of the recording was used; `check`: it plays to its end
    Partly = 1,        ///< parts were skipped; `check`: playback would end early
    NotARecording = 2, ///< nothing in the file is a recording
    FileError = 3,     ///< a file can't be read, made or written
    WrongUsage = 64,   ///< the command line can't be understood
};

/// Ends a command: \a message goes to standard error as it is, the code to the shell. A file that
/// can't be read or written is an UntrappedError instead.
class CommandError : public std::exception {
public:
    CommandError(ExitCode code, QString message)
        : m_code(code), m_message(std::move(message)), m_bytes(m_message.toLocal8Bit()) {}

    [[nodiscard]] ExitCode code() const { return m_code; }
    [[nodiscard]] const QString &message() const { return m_message; }
    /// The message in the bytes of the locale.
    [[nodiscard]] const char *what() const noexcept override { return m_bytes.constData(); }

private:
    ExitCode m_code;
    QString m_message;
    QByteArray m_bytes;
};

} // namespace veldron
