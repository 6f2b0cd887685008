// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <sys/prctl.h>
#include <sys/types.h>
#include <unistd.h>

namespace veldron {

/// Somebody whom rights on files bind, while this lives: root is taken for nobody, anybody else
/// stays who he is.
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
            // A change of user forbids looking into the process; the search for leaks has to.
            EXPECT_EQ(::prctl(PR_SET_DUMPABLE, 1), 0);
        }
    }

private:
    static constexpr uid_t kNobody = 65534;
    bool m_wasRoot;
};

} // namespace veldron
