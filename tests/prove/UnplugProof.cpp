// SPDX-License-Identifier: MIT
// The adapter pulled and plugged in again, at random moments of a recording.
#include "tests/prove/Promise.h"

#include <QThread>

#include "tests/program/Printing.h"

#include <gtest/gtest.h>

#include <random>

namespace veldron {

namespace {

const QString kFile = QStringLiteral("unplugs.rec");
constexpr unsigned kSeed = 20260101;

TEST(Unplugs, atRandomMomentsOfARecording_eachComesBackAndLosesNoScan) {
    LiveProgram live;
    ASSERT_TRUE(live.open());
    ASSERT_TRUE(live.startRecording(kFile));
    ASSERT_TRUE(live.secondsToPolling(5.0));
    const LiveProgram::Footprint before = live.footprint();
    const int count = provesLong() ? 100 : 5;
    std::minstd_rand random(kSeed); // NOLINT(cert-msc51-cpp): the same moments at each run
    int back = 0;
    int lost = 0;
    double slowest = 0.0;
    for (int i = 0; i < count; ++i) {
        const qsizetype place = live.unit().now();
        // Somewhere within two polls, and away for up to a second and a half.
        QThread::msleep(random() % 500);
        live.unit().tell("unplug");
        QThread::msleep(random() % 1500);
        live.unit().tell("plug");
        if (const std::optional<double> seconds = live.secondsToPolling(Promise::kBackWithin)) {
            ++back;
            slowest = std::max(slowest, *seconds);
        }
        // A scan that the unit had sent whole before the unplug: at most the one in hand is lost.
        lost += std::max(live.lostSince(place, kFile) - 1, 0);
    }
    EXPECT_EQ(back, count);
    EXPECT_EQ(lost, 0);
    const LiveProgram::Footprint after = live.footprint();
    EXPECT_LE(after.residentKib, before.residentKib + Promise::kGrowthKib);
    EXPECT_LE(after.descriptors, before.descriptors);
    std::printf("unplugs: %d of %d back, slowest %.2f s, %d scans lost\n", back, count, slowest,
                lost);
}

} // namespace

} // namespace veldron
