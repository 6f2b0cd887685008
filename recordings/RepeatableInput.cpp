// SPDX-License-Identifier: MIT
#include "recordings/RepeatableInput.h"

#include "recordings/BackgroundWriter.h"
#include "recordings/ByteSource.h"
#include "recordings/CommandError.h"
#include "recordings/SystemError.h"

#include <QDir>
#include <QFile>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace veldron {

RepeatableInput::RepeatableInput(const std::string &path, Console &console)
    : m_isStandardInput(path == "-") {
    const bool isFile = FileSource(path).size().has_value();
    if (!isFile && !m_isStandardInput) {
        throw CommandError(ExitCode::FileError,
                           nameForMessages(path) +
                               QStringLiteral(": a picture takes two passes, and so a file or -"));
    }
    if (!isFile) {
        copyPipe(console);
    } else if (m_isStandardInput) {
        m_start = ::lseek(STDIN_FILENO, 0, SEEK_CUR);
    }
}

void RepeatableInput::copyPipe(Console &console) {
    std::string name = QFile::encodeName(QDir::tempPath()).toStdString() + "/veldron.XXXXXX";
    const int copy = ::mkostemp(name.data(), O_CLOEXEC);
    if (copy < 0) {
        throw systemError(QDir::tempPath(), errno);
    }
    // Without a name nobody has to remove it.
    ::unlink(name.c_str());
    FileSource source("-");
    std::array<char, 65536> piece{};
    qint64 done = 0;
    console.beginProgress(std::nullopt);
    while (const qint64 count = source.read(piece.data(), piece.size())) {
        if (const auto failure = BackgroundWriter::writeAll(copy, {piece.data(), count})) {
            throw systemError(QDir::tempPath(), failure->code);
        }
        console.progress(done += count);
    }
    console.endProgress();
    ::dup2(copy, STDIN_FILENO);
    ::close(copy);
    rewind();
}

void RepeatableInput::rewind() const {
    if (m_isStandardInput) {
        (void)::lseek(STDIN_FILENO, m_start, SEEK_SET);
    }
}

} // namespace veldron
