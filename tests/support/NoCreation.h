// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

namespace veldron {

/// From now on this process can open no file with the permission to create it, whether it exists or
/// not. That is what Linux does (fs.protected_regular) to files of a third user in a folder with
/// the sticky bit. It can't be undone, so it is for a process of its own.
inline void forbidCreation() {
    constexpr auto kNumber = static_cast<__u32>(offsetof(seccomp_data, nr));
    constexpr auto kFlags = static_cast<__u32>(offsetof(seccomp_data, args) + 2 * sizeof(__u64));
    std::array<sock_filter, 6> program{{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, kNumber),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_openat, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, kFlags),
        BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, O_CREAT, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EACCES),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    const sock_fprog filter{program.size(), program.data()};
    ASSERT_EQ(::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0), 0);
    ASSERT_EQ(::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter), 0);
}

} // namespace veldron
