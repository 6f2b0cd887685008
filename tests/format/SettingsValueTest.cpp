// SPDX-License-Identifier: MIT
#include "format/SettingsValue.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

using Kind = UntrappedError::Kind;

template <typename Body>
std::optional<Kind> kindOf(Body body) {
    try {
        (void)body();
    } catch (const UntrappedError &error) {
        return error.kind();
    }
    return std::nullopt;
}

TEST(SettingsValue, flag_isTrueForTheExactWordOnly) {
    EXPECT_TRUE(SettingsValue::flag(SettingsValue::ofFlag(true)));
    for (const char *text : {"False", "true", "TRUE", "True ", " True", "1", "-1", ""}) {
        EXPECT_FALSE(SettingsValue::flag(text)) << text;
    }
}

TEST(SettingsValue, wholeNumber_isTheLeadingOneRoundedHalfToEven) {
    EXPECT_EQ(SettingsValue::whole<qint16>("2.5"), 2);
    EXPECT_EQ(SettingsValue::whole<qint16>("3.5 s"), 4);
    EXPECT_EQ(SettingsValue::whole<qint32>("-10dB"), -10);
    EXPECT_EQ(SettingsValue::whole<qint32>("none"), 0);
}

TEST(SettingsValue, wholeNumberPastItsRange_isAnOverflow) {
    EXPECT_EQ(SettingsValue::whole<qint16>("32767.4"), 32767);
    EXPECT_EQ(kindOf([] { return SettingsValue::whole<qint16>("32767.6"); }), Kind::Overflow);
    EXPECT_EQ(kindOf([] { return SettingsValue::whole<qint32>("-3000000000"); }), Kind::Overflow);
}

TEST(SettingsValue, frequency_hasTheMarkOfTheLocale) {
    const Hertz value = Hertz::fromUnits(1455000002500);
    EXPECT_EQ(SettingsValue::ofFrequency(value, ','), "145500000,25");
    EXPECT_EQ(SettingsValue::frequency("145500000,25", ','), value);
    EXPECT_EQ(kindOf([] { return SettingsValue::frequency("145500000,25", '.'); }), Kind::BadValue);
    EXPECT_EQ(kindOf([] { return SettingsValue::frequency("88 MHz", '.'); }), Kind::BadValue);
}

TEST(SettingsValue, numberOfHertz_hasThePointInEveryLocale) {
    EXPECT_EQ(SettingsValue::numberOfHertz("8333.33333"), Hertz::fromUnits(83333333));
    EXPECT_EQ(SettingsValue::numberOfHertz("500,9"), Hertz::fromWhole(500));
    EXPECT_EQ(kindOf([] { return SettingsValue::numberOfHertz("1000000000000000"); }),
              Kind::Overflow);
}

} // namespace
} // namespace veldron
