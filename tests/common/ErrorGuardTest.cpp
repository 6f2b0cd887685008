// SPDX-License-Identifier: MIT
#include "common/ErrorGuard.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

namespace veldron {
namespace {

TEST(ErrorGuard, errorInTheBody_reachesTheReportOnce) {
    std::optional<UntrappedError::Kind> seen;
    int reports = 0;
    const ErrorGuard guard([&](const UntrappedError &error) {
        seen = error.kind();
        ++reports;
    });
    guard.run([] { throw UntrappedError(UntrappedError::Kind::File, QStringLiteral("gone")); });
    EXPECT_EQ(seen, UntrappedError::Kind::File);
    EXPECT_EQ(reports, 1);
}

TEST(ErrorGuard, bodyWithoutError_reportsNothing) {
    bool ran = false;
    const ErrorGuard guard([](const UntrappedError &) { FAIL(); });
    guard.run([&] { ran = true; });
    EXPECT_TRUE(ran);
}

TEST(ErrorGuard, standardException_isReportedAsUnexpected) {
    std::optional<UntrappedError> seen;
    const ErrorGuard guard([&](const UntrappedError &error) { seen = error; });
    guard.run([] { throw std::runtime_error("other"); });
    ASSERT_TRUE(seen);
    EXPECT_EQ(seen->kind(), UntrappedError::Kind::Unexpected);
    EXPECT_EQ(seen->message(), "An internal error happened (other).");
}

TEST(ErrorGuard, thrownNumber_isReportedAsUnexpected) {
    std::optional<UntrappedError::Kind> seen;
    const ErrorGuard guard([&](const UntrappedError &error) { seen = error.kind(); });
    guard.run([] { throw 7; });
    EXPECT_EQ(seen, UntrappedError::Kind::Unexpected);
}

/// Counts the reports, and what its slots were called with.
class GuardedReceiver : public QObject {
public:
    void noteName(const QString &name) { names.push_back(name); }
    void noteCall() { ++calls; }
    void fail() { throw std::runtime_error("slot"); }

    QStringList names;
    int calls = 0;
    int reports = 0;
    ErrorGuard guard{[this](const UntrappedError &) {
        ++reports;
    }};
};

TEST(ConnectGuarded, memberSlotWithTheArgument_receivesIt) {
    GuardedReceiver receiver;
    QObject sender;
    connectGuarded(receiver.guard, &sender, &QObject::objectNameChanged, &receiver,
                   &GuardedReceiver::noteName);
    sender.setObjectName("first");
    EXPECT_EQ(receiver.names, QStringList{"first"});
}

TEST(ConnectGuarded, memberSlotWithoutTheArgument_isCalled) {
    GuardedReceiver receiver;
    QObject sender;
    connectGuarded(receiver.guard, &sender, &QObject::objectNameChanged, &receiver,
                   &GuardedReceiver::noteCall);
    sender.setObjectName("first");
    EXPECT_EQ(receiver.calls, 1);
}

TEST(ConnectGuarded, functionSlot_mayLeaveTheArgumentOut) {
    GuardedReceiver receiver;
    QObject sender;
    QString seen;
    connectGuarded(receiver.guard, &sender, &QObject::objectNameChanged, &receiver,
                   [&seen](const QString &name) { seen += name; });
    connectGuarded(receiver.guard, &sender, &QObject::objectNameChanged, &receiver,
                   [&seen] { seen += '!'; });
    sender.setObjectName("first");
    EXPECT_EQ(seen, "first!");
}

TEST(ConnectGuarded, slotThatThrows_reportsAndLetsTheOthersRun) {
    GuardedReceiver receiver;
    QObject sender;
    connectGuarded(receiver.guard, &sender, &QObject::objectNameChanged, &receiver,
                   &GuardedReceiver::fail);
    connectGuarded(receiver.guard, &sender, &QObject::objectNameChanged, &receiver,
                   &GuardedReceiver::noteCall);
    sender.setObjectName("first");
    EXPECT_EQ(receiver.reports, 1);
    EXPECT_EQ(receiver.calls, 1);
}

TEST(ConnectGuarded, contextGone_isCalledNoMore) {
    QObject sender;
    int calls = 0;
    const ErrorGuard guard([](const UntrappedError &) { FAIL(); });
    {
        QObject context;
        connectGuarded(guard, &sender, &QObject::objectNameChanged, &context, [&] { ++calls; });
    }
    sender.setObjectName("first");
    EXPECT_EQ(calls, 0);
}

} // namespace
} // namespace veldron
