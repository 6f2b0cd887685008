// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QtGlobal>

#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace veldron {

/// Writes blocks of bytes to a file, one behind the other, on a thread of its own, so that the next
/// block can be made meanwhile. One block is written at a time and none is queued.
///
/// After a failure nothing more is written. A pipe that nobody reads any more ends the program
/// quietly, as SIGPIPE does.
class BackgroundWriter {
public:
    enum class Target {
        Any,
        Disk, ///< will be flushed to the disk at its end: has that begin early
    };
    struct Failure {
        int code;       ///< of errno
        qint64 written; ///< bytes that arrived, over all blocks
    };

    /// \a descriptor stays open as long as the writer lives.
    BackgroundWriter(int descriptor, Target target);
    BackgroundWriter(const BackgroundWriter &) = delete;
    BackgroundWriter &operator=(const BackgroundWriter &) = delete;
    /// Waits for the block in hand.
    ~BackgroundWriter();

    /// Waits until the blocks before are written, then takes the first \a size bytes of \a block
    /// and leaves another block of the same size in its place.
    [[nodiscard]] std::optional<Failure> give(std::vector<char> &block, std::size_t size);
    /// Waits until all is written.
    [[nodiscard]] std::optional<Failure> finish();

    /// Writes on the calling thread, with the same ways of failing.
    [[nodiscard]] static std::optional<Failure> writeAll(int descriptor, QByteArrayView bytes);

private:
    void run();
    void writeBlock();
    void waitUntilIdle(std::unique_lock<std::mutex> &lock);

    const int m_descriptor;
    const Target m_target;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    // Guarded by the mutex. While m_isFull is set, the block is the thread's.
    bool m_isFull = false;
    bool m_isEnding = false;
    std::optional<Failure> m_failure;
    std::vector<char> m_block;
    std::size_t m_size = 0;
    // The thread's own.
    qint64 m_written = 0;
    qint64 m_writtenBack = 0;
    std::thread m_thread;
};

} // namespace veldron
