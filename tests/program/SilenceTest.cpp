// SPDX-License-Identifier: MIT
// A unit that falls silent leaves blank rows in the waterfall and takes none away.
#include "tests/program/ChartPicture.h"
#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/ProgramRun.h"

#include <gtest/gtest.h>

namespace veldron {

using namespace std::chrono_literals;

namespace {

class Silence : public testing::TestWithParam<double> {
protected:
    static constexpr int kRows = 8;
    static constexpr int kHaste = 4;

    void SetUp() override {
        run.write("VELDRON.set", "VELDRONv1 Settings\r\nWaterfallOn True\r\nEndSettings \r\n");
        // Outside of the silence the seconds between the polls pass faster.
        clock = &run.shareClock();
        ASSERT_TRUE(run.plugUnit());
        ASSERT_TRUE(run.open());
        chart = run.chart();
        clock->hurry(kHaste);
        ASSERT_TRUE(eventually(40s, [this] { return rows() >= kRows; })) << rows();
        clock->hurry(1);
    }
    [[nodiscard]] ChartPicture picture() const {
        return ChartPicture(Desk::screenshot(), chart, true);
    }
    /// Rows of the waterfall that show a scan.
    [[nodiscard]] int rows() const { return picture().scanRows(); }

    ProgramRun run;
    ClockFile *clock = nullptr;
    QRect chart;
};

TEST_P(Silence, waterfall_keepsItsRows) {
    const int before = rows();
    const qsizetype place = run.unit().now();
    run.unit().tell("silence " + QByteArray::number(GetParam()));
    // All through the silence, and until the panels are as they were.
    bool kept = true;
    ASSERT_TRUE(eventually(60s, [&] {
        kept = kept && rows() >= before;
        clock->hurry(run.unit().scansSince(place) > 0 ? kHaste : 1);
        return !kept || (run.unit().scansSince(place) > 12 && run.shown("Span") == "10.00000");
    }));
    EXPECT_TRUE(kept) << rows() << " of " << before;
    // Behind the silence the rows go on.
    EXPECT_TRUE(eventually(20s, [&] { return rows() > before + 3; })) << rows();
    // The silence has moved the old rows down: blank ones stand between them and the new ones. It
    // takes some seconds until a scan counts as missing.
    constexpr double kUnnoticed = 8.0;
    EXPECT_GE(picture().blankRowsBetween(), GetParam() - kUnnoticed);
    EXPECT_LE(picture().blankRowsBetween(), GetParam() + kUnnoticed);
}

INSTANTIATE_TEST_SUITE_P(OfSeconds, Silence, testing::Values(1.3, 3.0, 30.0),
                         [](const testing::TestParamInfo<double> &item) {
                             return std::to_string(static_cast<int>(item.param * 1000)) + "ms";
                         });

} // namespace

} // namespace veldron
