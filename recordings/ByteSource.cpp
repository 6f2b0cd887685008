// SPDX-License-Identifier: MIT
#include "recordings/ByteSource.h"

#include "recordings/Console.h"
#include "recordings/SystemError.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veldron {

FileSource::FileSource(const std::string &path)
    : m_path(path),
      m_descriptor(path == "-" ? ::dup(STDIN_FILENO) : ::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
    struct stat facts {};
    if (m_descriptor < 0 || ::fstat(m_descriptor, &facts) != 0) {
        throw systemError(nameForMessages(m_path), errno);
    }
    if (S_ISDIR(facts.st_mode)) {
        ::close(m_descriptor);
        throw systemError(nameForMessages(m_path), EISDIR);
    }
    if (S_ISREG(facts.st_mode)) {
        m_size = facts.st_size;
    }
}

FileSource::~FileSource() {
    ::close(m_descriptor);
}

qint64 FileSource::read(char *target, qint64 most) {
    ssize_t count = -1;
    do {
        count = ::read(m_descriptor, target, static_cast<std::size_t>(most));
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        throw systemError(nameForMessages(m_path), errno);
    }
    return count;
}

bool FileSource::isFile(const std::string &path) const {
    struct stat ours {};
    struct stat other {};
    return ::fstat(m_descriptor, &ours) == 0 && ::stat(path.c_str(), &other) == 0 &&
           ours.st_dev == other.st_dev && ours.st_ino == other.st_ino;
}

} // namespace veldron
