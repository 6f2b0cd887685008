// SPDX-License-Identifier: MIT
#include "recordings/BackgroundWriter.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace veldron {

namespace {

/// Bytes between two hints to the system. Each costs a walk over the pages that are waiting.
constexpr qint64 kWriteBackEvery = 8 << 20;

} // namespace

BackgroundWriter::BackgroundWriter(int descriptor, Target target)
    : m_descriptor(descriptor), m_target(target), m_thread([this] { run(); }) {}

BackgroundWriter::~BackgroundWriter() {
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

std::optional<BackgroundWriter::Failure> BackgroundWriter::writeAll(int descriptor,
                                                                    QByteArrayView bytes) {
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t count =
            ::write(descriptor, bytes.data() + done, static_cast<std::size_t>(bytes.size() - done));
        if (count >= 0) {
            done += count;
        } else if (errno == EPIPE) {
            // Nobody reads on. With the signal ignored by our parent this is the way to end
            // quietly.
            std::signal(SIGPIPE, SIG_DFL);
            ::raise(SIGPIPE);
        } else if (errno != EINTR) {
            return Failure{errno, done};
        }
    }
    return std::nullopt;
}

std::optional<BackgroundWriter::Failure> BackgroundWriter::give(std::vector<char> &block,
                                                                std::size_t size) {
    {
        std::unique_lock lock(m_mutex);
        waitUntilIdle(lock);
        if (m_failure) {
            return m_failure;
        }
        m_block.resize(block.size());
        m_block.swap(block);
        m_size = size;
        m_isFull = true;
    }
    m_changed.notify_all();
    return std::nullopt;
}

std::optional<BackgroundWriter::Failure> BackgroundWriter::finish() {
    std::unique_lock lock(m_mutex);
    waitUntilIdle(lock);
    return m_failure;
}

void BackgroundWriter::waitUntilIdle(std::unique_lock<std::mutex> &lock) {
    m_changed.wait(lock, [this] { return !m_isFull; });
}

void BackgroundWriter::run() {
    std::unique_lock lock(m_mutex);
    while (true) {
        m_changed.wait(lock, [this] { return m_isFull || m_isEnding; });
        if (!m_isFull) {
            return;
        }
        lock.unlock();
        writeBlock();
        lock.lock();
        m_isFull = false;
        m_changed.notify_all();
    }
}

void BackgroundWriter::writeBlock() {
    // Nobody else looks at the failure while the block is in hand.
    m_failure = writeAll(m_descriptor, {m_block.data(), static_cast<qsizetype>(m_size)});
    if (m_failure) {
        m_failure->written += m_written;
        return;
    }
    m_written += static_cast<qint64>(m_size);
    if (m_target == Target::Disk && m_written - m_writtenBack >= kWriteBackEvery) {
        // A hint: where the file system doesn't take it, the flush at the end does all.
        (void)::sync_file_range(m_descriptor, m_writtenBack, m_written - m_writtenBack,
                                SYNC_FILE_RANGE_WRITE);
        m_writtenBack = m_written;
    }
}

} // namespace veldron
