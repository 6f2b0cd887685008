// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>
#include <sys/resource.h>

namespace veldron {

/// Simulates a full disk: no file of this process can grow past \a bytes while this lives.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) : m_oldHandler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_old);
        const rlimit limit{bytes, m_old.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }

private:
    rlimit m_old{};
    void (*m_oldHandler)(int);
};

} // namespace veldron
