// SPDX-License-Identifier: MIT
#include "utilities/NumberTexts.h"

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

TEST(NumberTexts, frequencyText_showsGroupsDownToOneHertz) {
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

TEST(NumberTexts, frequencyTextOfExactlyOneMegahertz_usesTheLongPicture) {
    EXPECT_EQ(FrequencyText(Hertz::fromWhole(1'000'000)), "1.000.000");
    EXPECT_EQ(FrequencyText(Hertz::fromUnits(9'999'999'999)), "1000.000");
}

TEST(NumberTexts, formatMHz_showsMegahertzDownToTenHertz) {
    const TextCase cases[] = {
        {145'500'000, "145.50000"}, {0, "0.00000"},           {10, "0.00001"},
        {160'000, "0.16000"},       {10'000'000, "10.00000"}, {3'500'000'000.0, "3500.00000"},
        {-4'000'000, "-4.00000"}};
    for (const TextCase &example : cases) {
        EXPECT_EQ(FormatMHz(Hertz::fromDouble(example.value)), example.text);
    }
}

TEST(NumberTexts, formatMHzOfHalfATenHertz_roundsAwayFromZero) {
    EXPECT_EQ(FormatMHz(Hertz::fromWhole(5)), "0.00001");
    EXPECT_EQ(FormatMHz(Hertz::fromUnits(49'999)), "0.00000");
    EXPECT_EQ(FormatMHz(Hertz::fromWhole(25)), "0.00003");
    EXPECT_EQ(FormatMHz(Hertz::fromWhole(-5)), "-0.00001");
}

TEST(NumberTexts, zeroHertz_isShownWithAllDecimals) {
    EXPECT_EQ(FormatMHz(Hertz()), "0.00000");
    EXPECT_EQ(FormatKHz(Hertz()), "0.000");
}

TEST(NumberTexts, numbersThatRoundToZero_showNoMinus) {
    EXPECT_EQ(FormatMHz(Hertz::fromWhole(-4)), "0.00000");
    EXPECT_EQ(FormatKHz(Hertz::fromDouble(-0.4)), "0.000");
    EXPECT_EQ(FrequencyText(Hertz::fromDouble(-0.4)), "0.000");
}

TEST(NumberTexts, formatKHz_showsKilohertzDownToOneHertz) {
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

TEST(NumberTexts, largestFrequency_isShownWhole) {
    EXPECT_EQ(FrequencyText(Hertz::fromUnits(std::numeric_limits<qint64>::min())),
              "-922337203.685.478");
    EXPECT_EQ(FrequencyText(Hertz::fromUnits(std::numeric_limits<qint64>::max())),
              "922337203.685.478");
}

TEST(NumberTexts, formatFileSize_changesPictureWithTheSize) {
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

TEST(NumberTexts, formatFileSizeOf1024000_usesTheSecondPicture) {
    EXPECT_EQ(FormatFileSize(1'024'000), "   1000k");
    EXPECT_EQ(FormatFileSize(-1'024'000), "-   1000.0k");
}

TEST(NumberTexts, digitsOnly_keepsDigitsInOrder) {
    EXPECT_EQ(DigitsOnly("10.000.000"), "10000000");
    EXPECT_EQ(DigitsOnly(" -1a2,3 "), "123");
    EXPECT_EQ(DigitsOnly("None"), "");
    EXPECT_EQ(DigitsOnly(QString::fromUtf8("4\xd9\xa3"
                                           "5")),
              "45")
        << "digits of other scripts";
}

TEST(NumberTexts, leadingNumber_readsWhatTheTextBeginsWith) {
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

TEST(NumberTexts, leadingNumberOfEndlessDigits_isTheLargestNumber) {
    EXPECT_EQ(LeadingNumber(QString(400, '9')), std::numeric_limits<double>::max());
    EXPECT_EQ(LeadingNumber("-" + QString(400, '9')), std::numeric_limits<double>::lowest());
}

TEST(NumberTexts, machineWithAnotherLanguage_changesNothing) {
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(FormatMHz(Hertz::fromWhole(1'145'500'000)), "1145.50000");
    EXPECT_EQ(FormatFileSize(12'800), "   12.5k");
    EXPECT_DOUBLE_EQ(LeadingNumber("1.5"), 1.5);
    QLocale::setDefault(before);
}

} // namespace
} // namespace veldron
