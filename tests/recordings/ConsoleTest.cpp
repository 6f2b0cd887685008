// SPDX-License-Identifier: MIT
#include "recordings/Console.h"

#include <gtest/gtest.h>

#include <array>
#include <unistd.h>

namespace veldron {
namespace {

/// A console that writes into a pipe, with a clock that is moved by hand.
class ConsoleTest : public testing::Test {
protected:
    ConsoleTest() { EXPECT_EQ(::pipe(m_pipe.data()), 0); }
    ~ConsoleTest() override {
        ::close(m_pipe[0]);
        ::close(m_pipe[1]);
    }
    [[nodiscard]] Console::Milliseconds clock() {
        return [this] {
            return m_now;
        };
    }
    [[nodiscard]] QByteArray written() {
        // So that a read never waits.
        EXPECT_EQ(::write(m_pipe[1], ".", 1), 1);
        QByteArray bytes(65536, 0);
        bytes.resize(::read(m_pipe[0], bytes.data(), 65536));
        return bytes.chopped(1);
    }
    std::array<int, 2> m_pipe{};
    qint64 m_now = 0;
};

TEST_F(ConsoleTest, complaint_hasFileAndLine) {
    Console console(m_pipe[1], false, clock());
    console.complain("band.rec", 12, "what");
    console.complain("-", 3, "what");
    EXPECT_EQ(written(), "band.rec:12: what\nstandard input:3: what\n");
}

TEST_F(ConsoleTest, bar_comesAfterASecondWithTheRemainingTime) {
    Console console(m_pipe[1], true, clock());
    console.beginProgress(1000);
    m_now = 999;
    console.progress(100);
    EXPECT_EQ(written(), "");
    m_now = 1000;
    console.progress(250);
    EXPECT_EQ(written(), "\r[##########..............................] 25 %, 0:03 left\033[K");
    m_now = 1050;
    console.progress(260); // not more than ten times a second
    EXPECT_EQ(written(), "");
    console.say("a message");
    EXPECT_EQ(written(), "\r\033[Ka message\n");
}

TEST_F(ConsoleTest, unknownLength_showsWhatIsDone) {
    Console console(m_pipe[1], true, clock());
    console.beginProgress(std::nullopt);
    m_now = 1000;
    console.progress(7500000);
    console.endProgress();
    EXPECT_EQ(written(), "\r7 MB\033[K\r\033[K");
}

TEST_F(ConsoleTest, pipe_getsNoBar) {
    Console console(m_pipe[1], false, clock());
    console.beginProgress(1000);
    m_now = 5000;
    console.progress(500);
    console.endProgress();
    EXPECT_EQ(written(), "");
}

} // namespace
} // namespace veldron
