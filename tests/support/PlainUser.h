// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <sys/prctl.h>
#include <sys/types.h>
#include <unistd.h>

namespace veldron {

/// Runs as a user to whom file permissions apply, for as long as this lives: root becomes nobody,
/// any other user stays the same.
class PlainUser {
public:
    PlainUser() : m_wasRoot(::getuid() == 0) {
        if (m_wasRoot) {
            EXPECT_EQ(::setresuid(kNobody, kNobody, 0), 0);
        }
    }
    PlainUser(const PlainUser &) = delete;
    PlainUser &operator=(const PlainUser &) = delete;
    ~PlainUser() {
        if (m_wasRoot) {
            EXPECT_EQ(::setresuid(0, 0, 0), 0);
            // A change of user makes the process undumpable, and the leak check has to trace it.
            EXPECT_EQ(::prctl(PR_SET_DUMPABLE, 1), 0);
        }
    }

private:
    static constexpr uid_t kNobody = 65534;
    bool m_wasRoot;
};

} // namespace veldron
