// SPDX-License-Identifier: MIT
#include "utilities/GeneralUtilities.h"
#include "tests/support/ManualClock.h"

#include <gtest/gtest.h>

#include <QLocale>

#include <limits>

namespace veldron {
namespace {

using namespace GeneralUtilities;

struct TextCase {
    double value;
    const char *text;
};

TEST(GeneralUtilities, frequencyText_showsGroupsDownToOneHertz) {
    const TextCase cases[] = {{145'500'000, "145.500.000"},
                              {999'999, "999.999"},
                              {1'000'000, "1.000.000"},
                              {0, "0.000"},
                              {7, "0.007"},
                              {1'234, "1.234"},
                              {3'500'000'000.0, "3500.000.000"},
                              {-999'999, "-999.999"},
                              {-1'000'000, "-1.000.000"},
                              {999'999.5, "1000.000"}};
    for (const TextCase &example : cases) {
        EXPECT_EQ(FrequencyText(Hertz::fromDouble(example.value)), example.text);
    }
}

TEST(GeneralUtilities, frequencyTextOfExactlyOneMegahertz_usesTheLongPicture) {
    EXPECT_EQ(FrequencyText(Hertz::fromWhole(1'000'000)), "1.000.000");
    EXPECT_EQ(FrequencyText(Hertz::fromUnits(9'999'999'999)), "1000.000");
}

TEST(GeneralUtilities, formatMHz_showsMegahertzDownToTenHertz) {
    const TextCase cases[] = {
        {145'500'000, "145.50000"}, {0, "0.00000"},           {10, "0.00001"},
        {160'000, "0.16000"},       {10'000'000, "10.00000"}, {3'500'000'000.0, "3500.00000"},
        {-4'000'000, "-4.00000"}};
    for (const TextCase &example : cases) {
        EXPECT_EQ(FormatMHz(Hertz::fromDouble(example.value)), example.text);
    }
}

TEST(GeneralUtilities, formatMHzOfHalfATenHertz_roundsAwayFromZero) {
    EXPECT_EQ(FormatMHz(Hertz::fromWhole(5)), "0.00001");
    EXPECT_EQ(FormatMHz(Hertz::fromUnits(49'999)), "0.00000");
    EXPECT_EQ(FormatMHz(Hertz::fromWhole(25)), "0.00003");
    EXPECT_EQ(FormatMHz(Hertz::fromWhole(-5)), "-0.00001");
}

TEST(GeneralUtilities, zeroHertz_isShownWithAllDecimals) {
    EXPECT_EQ(FormatMHz(Hertz()), "0.00000");
    EXPECT_EQ(FormatKHz(Hertz()), "0.000");
}

TEST(GeneralUtilities, numbersThatRoundToZero_showNoMinus) {
    EXPECT_EQ(FormatMHz(Hertz::fromWhole(-4)), "0.00000");
    EXPECT_EQ(FormatKHz(Hertz::fromDouble(-0.4)), "0.000");
    EXPECT_EQ(FrequencyText(Hertz::fromDouble(-0.4)), "0.000");
}

TEST(GeneralUtilities, formatKHz_showsKilohertzDownToOneHertz) {
    const TextCase cases[] = {{25'000, "25.000"},
                              {500, "0.500"},
                              {0, "0.000"},
                              {12'500, "12.500"},
                              {-500, "-0.500"},
                              {0.5, "0.001"},
                              {2'147'483'647.0, "2147483.647"}};
    for (const TextCase &example : cases) {
        EXPECT_EQ(FormatKHz(Hertz::fromDouble(example.value)), example.text);
    }
}

TEST(GeneralUtilities, largestFrequency_isShownWhole) {
    EXPECT_EQ(FrequencyText(Hertz::fromUnits(std::numeric_limits<qint64>::min())),
              "-922337203.685.478");
    EXPECT_EQ(FrequencyText(Hertz::fromUnits(std::numeric_limits<qint64>::max())),
              "922337203.685.478");
}

TEST(GeneralUtilities, formatFileSize_changesPictureWithTheSize) {
    struct Case {
        qint64 size;
        const char *text;
    };
    const Case cases[] = {{0, "   0.0k"},
                          {1024, "   1.0k"},
                          {12'800, "   12.5k"},
                          {51, "   0.0k"},
                          {52, "   0.1k"},
                          {1'023'999, "   1000.0k"},
                          {1'024'000, "   1000k"},
                          {1'024'511, "   1000k"},
                          {1'024'512, "   1001k"},
                          {102'399'999, "   100000k"},
                          {102'400'000, "   97.7M"},
                          {10'737'418'240, "   10240.0M"}};
    for (const Case &example : cases) {
        EXPECT_EQ(FormatFileSize(example.size), example.text) << example.size;
    }
}

TEST(GeneralUtilities, formatFileSizeOf1024000_usesTheSecondPicture) {
    EXPECT_EQ(FormatFileSize(1'024'000), "   1000k");
    EXPECT_EQ(FormatFileSize(-1'024'000), "-   1000.0k");
}

TEST(GeneralUtilities, digitsOnly_keepsDigitsInOrder) {
    EXPECT_EQ(DigitsOnly("10.000.000"), "10000000");
    EXPECT_EQ(DigitsOnly(" -1a2,3 "), "123");
    EXPECT_EQ(DigitsOnly("None"), "");
    EXPECT_EQ(DigitsOnly(QString::fromUtf8("4\xd9\xa3"
                                           "5")),
              "45")
        << "digits of other scripts";
}

TEST(GeneralUtilities, leadingNumber_readsWhatTheTextBeginsWith) {
    struct Case {
        const char *text;
        double number;
    };
    const Case cases[] = {{"1.2.3", 1.2},
                          {" 3500", 3500},
                          {"12k", 12},
                          {"", 0},
                          {"abc", 0},
                          {".", 0},
                          {"-", 0},
                          {"-.5", -0.5},
                          {"+7", 7},
                          {"5.", 5},
                          {"1,5", 1},
                          {"- 5", 0},
                          {"1e3", 1},
                          {"1 000", 1},
                          {"0x10", 0},
                          {"--1", 0},
                          {"   -12.50x", -12.5},
                          {"k12", 0},
                          {"..5", 0},
                          {"\t5", 0}};
    for (const Case &example : cases) {
        EXPECT_DOUBLE_EQ(LeadingNumber(example.text), example.number) << example.text;
    }
}

TEST(GeneralUtilities, leadingNumberOfEndlessDigits_isTheLargestNumber) {
    EXPECT_EQ(LeadingNumber(QString(400, '9')), std::numeric_limits<double>::max());
    EXPECT_EQ(LeadingNumber("-" + QString(400, '9')), std::numeric_limits<double>::lowest());
}

TEST(GeneralUtilities, machineWithAnotherLanguage_changesNothing) {
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(FormatMHz(Hertz::fromWhole(1'145'500'000)), "1145.50000");
    EXPECT_EQ(FormatFileSize(12'800), "   12.5k");
    EXPECT_DOUBLE_EQ(LeadingNumber("1.5"), 1.5);
    QLocale::setDefault(before);
}

TEST(GeneralUtilities, waitSeconds_endsWhenTheTimeHasPassed) {
    ManualClock clock(1000.0);
    WaitSeconds(clock, 1.0F);
    EXPECT_GE(static_cast<float>(clock.seconds()), 1001.0F);
    EXPECT_LT(clock.seconds(), 1001.1);
    EXPECT_FALSE(clock.rests().empty());
}

TEST(GeneralUtilities, waitSecondsOfNothing_returnsAtOnce) {
    ManualClock clock(1000.0);
    WaitSeconds(clock, 0.0F);
    WaitSeconds(clock, -1.0F);
    EXPECT_DOUBLE_EQ(clock.seconds(), 1000.0);
}

TEST(GeneralUtilities, waitSecondsAcrossMidnight_endsAfterAMinute) {
    ManualClock clock(86399.5);
    WaitSeconds(clock, 1.0F);
    EXPECT_NEAR(clock.seconds(), 59.5, 0.02);
}

TEST(GeneralUtilities, waitSecondsWithAFrozenTimeOfDay_goesOnFor59SecondsAndEndsAt60) {
    ManualClock clock(1000.0);
    clock.freezeTimeOfDay();
    const qint64 start = clock.steadyMilliseconds();
    WaitSeconds(clock, 1.0F);
    EXPECT_GE(clock.steadyMilliseconds() - start, 60000);
    EXPECT_LE(clock.steadyMilliseconds() - start, 60010);
}

TEST(GeneralUtilities, waitOfMoreThanAMinute_endsAt60) {
    ManualClock clock(1000.0);
    WaitSeconds(clock, 100.0F);
    EXPECT_NEAR(clock.seconds(), 1060.0, 0.02);
}

TEST(GeneralUtilities, momentsJustAcrossMidnight_areTwoSecondsApart) {
    EXPECT_FLOAT_EQ(TimeDifference(86399, 1), 2);
    EXPECT_FLOAT_EQ(TimeDifference(1, 86399), -2);
}

TEST(GeneralUtilities, timeDifference_foldsAcrossMidnight) {
    struct Case {
        float from;
        float to;
        float difference;
    };
    const Case cases[] = {{86399, 1, 2},      {1, 86399, -2},         {0, 43200, -43200},
                          {43200, 0, -43200}, {0, 43199.5, 43199.5F}, {43200.5F, 0, 43199.5F},
                          {100, 100, 0},      {10, 25.5F, 15.5F}};
    for (const Case &example : cases) {
        EXPECT_FLOAT_EQ(TimeDifference(example.from, example.to), example.difference)
            << example.from << " " << example.to;
    }
}

TEST(GeneralUtilities, timeText_showsHoursMinutesAndSeconds) {
    struct Case {
        float seconds;
        const char *text;
    };
    const Case cases[] = {{3661, "01:01:01"},   {0, "00:00:00"},      {59.99F, "00:00:59"},
                          {86399, "23:59:59"},  {86400, "24:00:00"},  {86401, "00:00:01"},
                          {172800, "24:00:00"}, {-1, "23:59:59"},     {-86400, "00:00:00"},
                          {-90000, "23:00:00"}, {200000, "07:33:20"}, {82799.99F, "22:59:59"}};
    for (const Case &example : cases) {
        EXPECT_EQ(TimeText(example.seconds, true), example.text) << example.seconds;
        EXPECT_EQ(TimeText(example.seconds, false), QString(example.text).left(5));
    }
}

TEST(GeneralUtilities, timeTextOf3661_isOneHourOneMinuteAndOneSecondIfShown) {
    EXPECT_EQ(TimeText(3661, true), "01:01:01");
    EXPECT_EQ(TimeText(3661, false), "01:01");
}

TEST(GeneralUtilities, timeTextOfAnEndlessTime_comesToAnEnd) {
    EXPECT_EQ(TimeText(std::numeric_limits<float>::infinity(), true), "00:00:00");
    EXPECT_EQ(TimeText(std::numeric_limits<float>::quiet_NaN(), false), "00:00");
    EXPECT_EQ(TimeText(1e30F, true).size(), 8);
}

} // namespace
} // namespace veldron
