// SPDX-License-Identifier: MIT
#include "recordings/OutputFile.h"

#include "common/FileReplacement.h"
#include "recordings/SystemError.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veldron {

namespace {

constexpr std::size_t kBlock = 262144;
constexpr std::array kEndingSignals{SIGINT, SIGTERM, SIGHUP};

/// What a signal that ends the program removes, since no destructor runs then. A signal handler
/// reaches nothing but such a name.
std::array<char, 4096> temporaryToRemove{};

void removeTemporaryAndEnd(int number) {
    if (temporaryToRemove[0] != '\0') {
        ::unlink(temporaryToRemove.data());
    }
    // The handler is gone (SA_RESETHAND), so this ends the program as the signal does.
    ::raise(number);
}

/// Holds the ending signals back while it lives.
class SignalsHeldBack {
public:
    SignalsHeldBack() {
        sigset_t signals;
        ::sigemptyset(&signals);
        for (const int number : kEndingSignals) {
            ::sigaddset(&signals, number);
        }
        ::sigprocmask(SIG_BLOCK, &signals, &m_old);
    }
    SignalsHeldBack(const SignalsHeldBack &) = delete;
    SignalsHeldBack &operator=(const SignalsHeldBack &) = delete;
    ~SignalsHeldBack() { ::sigprocmask(SIG_SETMASK, &m_old, nullptr); }

private:
    sigset_t m_old{};
};

void removeWhenEnded(const std::string &path) {
    if (path.size() >= temporaryToRemove.size()) {
        return;
    }
    std::strncpy(temporaryToRemove.data(), path.c_str(), temporaryToRemove.size() - 1);
    struct sigaction action {};
    action.sa_handler = removeTemporaryAndEnd;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int number : kEndingSignals) {
        struct sigaction old {};
        ::sigaction(number, nullptr, &old);
        // One that is ignored stays so, as under nohup.
        if (old.sa_handler != SIG_IGN) {
            ::sigaction(number, &action, nullptr);
        }
    }
}

mode_t modeFor(const std::string &target) {
    struct stat facts {};
    if (::stat(target.c_str(), &facts) == 0) {
        return facts.st_mode & 0777U;
    }
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666U & ~mask;
}

bool isPipeOrDevice(const std::string &path) {
    struct stat facts {};
    return ::stat(path.c_str(), &facts) == 0 && !S_ISREG(facts.st_mode) && !S_ISDIR(facts.st_mode);
}

} // namespace

OutputFile::OutputFile(const std::string &path, bool force) : m_path(path), m_target(path) {
    if (isStandardOutput() || isPipeOrDevice(path)) {
        openDirectly();
    } else {
        openTemporary(force);
    }
    m_block.resize(kBlock);
}

void OutputFile::openDirectly() {
    m_descriptor =
        isStandardOutput() ? ::dup(STDOUT_FILENO) : ::open(m_path.c_str(), O_WRONLY | O_CLOEXEC);
    if (m_descriptor < 0) {
        fail(errno, 0);
    }
}

void OutputFile::openTemporary(bool force) {
    if (!force && ::access(m_path.c_str(), F_OK) == 0) {
        throw UntrappedError(
            UntrappedError::Kind::File,
            QFile::decodeName(m_path.c_str()) +
                QStringLiteral(": the file is there already; --force replaces it"));
    }
    m_target = QFile::encodeName(endOfLinks(QFile::decodeName(m_path.c_str()))).toStdString();
    struct stat facts {};
    if (::stat(m_target.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode)) {
        fail(EISDIR, 0);
    }
    const mode_t mode = modeFor(m_target);
    // A signal between the file and its handler would leave the file.
    const SignalsHeldBack heldBack;
    m_temporary = m_target + ".XXXXXX";
    m_descriptor = ::mkostemp(m_temporary.data(), O_CLOEXEC);
    if (m_descriptor < 0) {
        m_temporary.clear();
        fail(errno, 0);
    }
    removeWhenEnded(m_temporary);
    (void)::fchmod(m_descriptor, mode);
}

OutputFile::~OutputFile() {
    m_writer.reset();
    if (!m_temporary.empty()) {
        removeTemporary();
    }
    for (const int descriptor : {m_descriptor, m_standIn}) {
        if (descriptor >= 0) {
            ::close(descriptor);
        }
    }
}

void OutputFile::fail(int code, qint64 scans) const {
    const UntrappedError error = systemError(isStandardOutput() ? QStringLiteral("standard output")
                                                                : QFile::decodeName(m_path.c_str()),
                                             code);
    if (m_scanCount == 0) {
        throw error;
    }
    throw UntrappedError(error.kind(),
                         error.message() + QStringLiteral(" (%1 of the scans arrived)").arg(scans));
}

void OutputFile::check(const std::optional<BackgroundWriter::Failure> &failure) const {
    if (failure) {
        const auto missing = [&](const std::vector<qint64> &ends) {
            return std::count_if(ends.begin(), ends.end(),
                                 [&](qint64 end) { return end > failure->written; });
        };
        fail(failure->code, m_scanCount - missing(m_givenScanEnds) - missing(m_scanEnds));
    }
}

void OutputFile::write(QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        if (m_filled == m_block.size()) {
            giveBlock();
        }
        const qsizetype count =
            qMin(bytes.size(), static_cast<qsizetype>(m_block.size() - m_filled));
        std::memcpy(m_block.data() + m_filled, bytes.data(), static_cast<std::size_t>(count));
        m_filled += static_cast<std::size_t>(count);
        bytes = bytes.sliced(count);
    }
}

char *OutputFile::room(std::size_t most) {
    if (m_block.size() - m_filled < most) {
        giveBlock();
    }
    return m_block.data() + m_filled;
}

void OutputFile::countScan() {
    ++m_scanCount;
    m_scanEnds.push_back(m_given + static_cast<qint64>(m_filled));
}

void OutputFile::giveBlock() {
    using Target = BackgroundWriter::Target;
    if (!m_writer) {
        m_writer = std::make_unique<BackgroundWriter>(
            m_descriptor, m_temporary.empty() ? Target::Any : Target::Disk);
    }
    check(m_writer->give(m_block, m_filled));
    m_given += static_cast<qint64>(m_filled);
    m_filled = 0;
    // The block before this one has arrived.
    m_givenScanEnds.swap(m_scanEnds);
    m_scanEnds.clear();
}

void OutputFile::flush() {
    if (m_writer) {
        giveBlock();
        check(m_writer->finish());
    } else {
        check(BackgroundWriter::writeAll(m_descriptor,
                                         {m_block.data(), static_cast<qsizetype>(m_filled)}));
        m_filled = 0;
    }
}

std::string OutputFile::libraryPath() {
    if (m_temporary.empty()) {
        openStandIn();
    }
    return m_temporary;
}

void OutputFile::openStandIn() {
    const SignalsHeldBack heldBack;
    m_temporary = QFile::encodeName(QDir::tempPath()).toStdString() + "/veldron.XXXXXX";
    m_standIn = ::mkostemp(m_temporary.data(), O_CLOEXEC);
    if (m_standIn < 0) {
        m_temporary.clear();
        throw systemError(QDir::tempPath(), errno);
    }
    removeWhenEnded(m_temporary);
}

void OutputFile::copyStandIn() {
    while (const ssize_t count = ::read(m_standIn, m_block.data(), m_block.size())) {
        if (count < 0) {
            fail(errno, 0);
        }
        check(BackgroundWriter::writeAll(m_descriptor, {m_block.data(), count}));
    }
    removeTemporary();
}

void OutputFile::removeTemporary() {
    ::unlink(m_temporary.c_str());
    m_temporary.clear();
    temporaryToRemove[0] = '\0';
}

void OutputFile::commit() {
    flush();
    m_writer.reset();
    if (m_standIn >= 0) {
        copyStandIn();
    } else if (!m_temporary.empty()) {
        // The content before the name: a power cut in between leaves the old file.
        if (::fsync(m_descriptor) != 0 || ::rename(m_temporary.c_str(), m_target.c_str()) != 0) {
            fail(errno, 0);
        }
        m_temporary.clear();
        temporaryToRemove[0] = '\0';
    }
    if (::close(std::exchange(m_descriptor, -1)) != 0) {
        fail(errno, 0);
    }
}

} // namespace veldron
