// SPDX-License-Identifier: MIT
#include "app/SystemClock.h"

#include <gtest/gtest.h>

#include <ctime>

namespace veldron {
namespace {

/// Another time zone for as long as this lives.
class Zone {
public:
    explicit Zone(const QByteArray &name) { set(name); }
    ~Zone() { set(m_before); }
    Zone(const Zone &) = delete;
    Zone &operator=(const Zone &) = delete;

private:
    static void set(const QByteArray &name) {
        name.isNull() ? qunsetenv("TZ") : qputenv("TZ", name);
        ::tzset();
    }
    QByteArray m_before = qEnvironmentVariableIsSet("TZ") ? qgetenv("TZ") : QByteArray();
};

TEST(SystemClock, timeOfDay_isThatOfNow) {
    SystemClock clock;
    const QDateTime before = clock.now();
    const float reading = clock.timeOfDay();
    const QDateTime after = clock.now();
    if (before.date() == after.date()) {
        EXPECT_GE(reading, static_cast<float>(before.time().msecsSinceStartOfDay()) / 1000.0F);
        EXPECT_LE(reading, static_cast<float>(after.time().msecsSinceStartOfDay()) / 1000.0F);
    } else {
        EXPECT_TRUE(reading >= 86399.0F || reading <= 1.0F); // midnight came in between
    }
}

TEST(SystemClock, zoneFarFromGreenwich_countsInEachReadingOfASecond) {
    const Zone zone("EAST-13:45");
    SystemClock clock;
    for (int reading = 0; reading < 20; ++reading) {
        const QDateTime utc = QDateTime::currentDateTimeUtc().addSecs(49500);
        const auto expected = static_cast<float>(utc.time().msecsSinceStartOfDay()) / 1000.0F;
        const float late = clock.timeOfDay() - expected;
        EXPECT_TRUE((late >= 0.0F && late < 5.0F) || late < -86390.0F) << late;
        clock.rest(1);
    }
}

TEST(SystemClock, rest_movesTheSteadyReadingByAtLeastThat) {
    SystemClock clock;
    const qint64 before = clock.steadyMilliseconds();
    clock.rest(3);
    EXPECT_GE(clock.steadyMilliseconds() - before, 3);
}

} // namespace
} // namespace veldron
