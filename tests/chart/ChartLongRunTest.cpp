// SPDX-License-Identifier: MIT
// Two days of scans, one a second, in rows of ten, on a clock moved by hand.
#include "tests/chart/ChartFixture.h"

#include <QFile>

#include <algorithm>

namespace veldron {
namespace {

// What the process may grow by in two days. The address sanitizer keeps freed memory back for a
// while, up to a quarter of a gigabyte and its own records of it.
#ifdef __SANITIZE_ADDRESS__
constexpr long kGrowthLimit = 512 * 1024;
#else
constexpr long kGrowthLimit = 4096;
#endif

// Resident memory of this process in kilobytes.
qint64 residentKilobytes() {
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    return file.readAll().split(' ').value(1).toLongLong() * 4;
}

class LongRun : public ChartTest {
protected:
    static constexpr int kRow = 10;
    static constexpr int kHour = 3600;
    static constexpr int kDay = 86400;

    LongRun() {
        size(200, 160);
        chart.setDisplayType(DisplayTypeCode::TraceAndWaterfall);
        chart.setPoll(1000);
        chart.setPalette(0);
        chart.onTimer1();
    }
    static int levelOf(int time) { return 43 + (time * 7 + time / kRow) % 59; }
    // Colour of the row that holds the ten scans before \a end, a second of the day.
    static quint32 colourOfRow(int end) {
        int highest = 0;
        for (int time = end - kRow; time < end; ++time) {
            highest = std::max(highest, levelOf((time + kDay) % kDay));
        }
        return LevelScale().schemeLevel(highest) * 0x010101U;
    }
    [[nodiscard]] int now() const { return static_cast<int>(clock.seconds()); }
    void live(int count) {
        for (int i = 0; i < count; ++i) {
            scan(static_cast<quint8>(levelOf(now())));
            clock.advance(1.0);
            chart.onTimer1();
        }
    }
    void expectRowsAndTicksOfTheClock() {
        const int end = (now() / kRow + 1) * kRow;
        for (int row = 1; row < 70; ++row) {
            const int rowEnd = (end - row * kRow + kDay) % kDay;
            EXPECT_EQ(shown(60, 85 + row), colourOfRow(rowEnd)) << "row " << row << ", " << now();
            // Only the ticks with a label reach this column; they stand on whole ten minutes.
            EXPECT_EQ(shown(34, 85 + row) != 0, rowEnd % 600 == 0)
                << "row " << row << ", " << now();
        }
    }
};

using ChartLongRunTest = LongRun;

TEST_F(ChartLongRunTest, twoDaysWithMidnightsAGapAndAClockSetBack_keepRowsAndMemoryRight) {
    live(kHour);
    const qint64 before = residentKilobytes();
    live(11 * kHour);
    EXPECT_EQ(now(), 0); // midnight
    expectRowsAndTicksOfTheClock();
    live(300);
    expectRowsAndTicksOfTheClock();

    live(5 * kHour - 300);
    clock.advance(200.0); // nothing happened for twenty rows
    chart.onTimer1();
    EXPECT_EQ(shown(60, 85 + 1), colourOfRow(5 * kHour));
    for (int row = 2; row <= 19; ++row) {
        EXPECT_EQ(shown(60, 85 + row), 0U) << row;
    }
    live(kHour);
    expectRowsAndTicksOfTheClock();

    clock.setTimeOfDay(clock.seconds() - kHour);
    chart.onTimer1();
    chart.Refresh();
    EXPECT_EQ(shown(60, 85 + 1), 0U);
    live(kDay - now());
    EXPECT_EQ(now(), 0); // midnight again
    expectRowsAndTicksOfTheClock();
    live(12 * kHour);
    expectRowsAndTicksOfTheClock();

    EXPECT_FALSE(scrollBar().isHidden());
    EXPECT_LT(residentKilobytes() - before, kGrowthLimit);
}

TEST_F(ChartLongRunTest, moreThanTenThousandRows_keepTheNewest) {
    live(28 * kHour);
    EXPECT_EQ(scrollBar().maximum(), WaterfallStore::kHeight - 70);
    expectRowsAndTicksOfTheClock();
}

} // namespace
} // namespace veldron
