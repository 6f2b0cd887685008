// SPDX-License-Identifier: MIT
#include "simulator/ReplyQueue.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

constexpr double kByte = 11.0 / 9600.0;
constexpr double kMoment = 1e-7;

TEST(ReplyQueue, eachByte_leavesAtElevenBitsOf9600Baud) {
    ReplyQueue queue;
    queue.add({QByteArray(324, 'x'), 0.0, false}, 10.0);
    EXPECT_EQ(queue.takeDue(10.0), "");
    for (int i = 1; i <= 324; ++i) {
        ASSERT_NEAR(*queue.nextDue(), 10.0 + i * kByte, 1e-9);
        EXPECT_EQ(queue.takeDue(10.0 + i * kByte - kMoment), "");
        EXPECT_EQ(queue.takeDue(10.0 + i * kByte + kMoment), "x");
    }
    EXPECT_FALSE(queue.nextDue());
    EXPECT_FALSE(queue.nextDue().has_value());
}

TEST(ReplyQueue, dueMomentItself_letsTheByteGo) {
    ReplyQueue queue;
    queue.add({"ab", 0.0, false}, 3.3);
    EXPECT_EQ(queue.takeDue(*queue.nextDue()), "a");
    EXPECT_EQ(queue.takeDue(*queue.nextDue()), "b");
}

TEST(ReplyQueue, otherPaces_takeTheirOwnTime) {
    ReplyQueue slow(1100);
    slow.add({"abc", 0.0, false}, 0.0);
    EXPECT_EQ(slow.takeDue(0.0201), "ab");
    ReplyQueue none(0);
    none.add({"abc", 0.0, false}, 5.0);
    EXPECT_EQ(none.takeDue(5.0), "abc");
}

TEST(ReplyQueue, bunches_leaveWithTheLastByteOfTheBunchOrThePortion) {
    ReplyQueue queue(ReplyQueue::kBaud, 16);
    queue.add({QByteArray(33, 'x'), 0.0, false}, 0.0);
    for (const int through : {16, 32, 33}) {
        ASSERT_NEAR(*queue.nextDue(), through * kByte, 1e-9);
        EXPECT_EQ(queue.takeDue(through * kByte - kMoment), "");
        EXPECT_EQ(queue.takeDue(through * kByte + kMoment).size(), through == 33 ? 1 : 16);
    }
    EXPECT_FALSE(queue.nextDue());
}

TEST(ReplyQueue, imageBlock_leavesAtTenBitsOf115200Baud) {
    ReplyQueue queue;
    queue.add({QByteArray(11520, 'i'), 0.0, true}, 0.0);
    EXPECT_EQ(queue.takeDue(0.5 + kMoment).size(), 5760);
    EXPECT_EQ(queue.takeDue(1.0 + kMoment).size(), 5760);
}

TEST(ReplyQueue, secondReply_waitsForTheFirst) {
    ReplyQueue queue;
    queue.add({"ab", 0.0, false}, 0.0);
    queue.add({"cd", 0.0, false}, 0.0);
    EXPECT_EQ(queue.takeDue(3 * kByte + kMoment), "abc");
    queue.add({"ef", 0.0, false}, 1.0);
    EXPECT_EQ(queue.takeDue(1.0), "d");
    EXPECT_EQ(queue.takeDue(1.0 + kByte + kMoment), "e");
}

TEST(ReplyQueue, pause_holdsAPortionBackEvenWithoutPace) {
    ReplyQueue queue(0);
    queue.add({"a", 0.5, false}, 1.0);
    queue.add({"b", 0.25, false}, 1.0);
    EXPECT_EQ(queue.takeDue(1.49), "");
    EXPECT_EQ(queue.takeDue(1.5), "a");
    EXPECT_DOUBLE_EQ(*queue.nextDue(), 1.75);
    EXPECT_EQ(queue.takeDue(1.75), "b");
}

TEST(ReplyQueue, clear_dropsAllAndFreesTheLine) {
    ReplyQueue queue;
    queue.add({QByteArray(1000, 'x'), 0.0, false}, 0.0);
    queue.clear();
    EXPECT_FALSE(queue.nextDue());
    queue.add({"a", 0.0, false}, 0.1);
    EXPECT_EQ(queue.takeDue(0.1 + kByte + kMoment), "a");
}

} // namespace
} // namespace veldron
