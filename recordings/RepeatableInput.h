// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/Console.h"

#include <QtGlobal>

#include <string>

namespace veldron {

/// Lets a recording be read more than once, also where it is the standard input: a pipe there is
/// copied to a nameless temporary file first, which then is the standard input.
///
/// Order of calls: made ahead of the first pass, rewind() ahead of each further one.
class RepeatableInput {
public:
    /// Reads the whole pipe where \a path ("-" is the standard input) is one.
    /// CommandError(FileError) for a pipe under another name, UntrappedError(File) where there is
    /// no room for the copy.
    RepeatableInput(const std::string &path, Console &console);
    void rewind() const;

private:
    void copyPipe(Console &console);

    bool m_isStandardInput;
    qint64 m_start = 0; ///< of a file that was read in part before it became the standard input
};

} // namespace veldron
