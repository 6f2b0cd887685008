// SPDX-License-Identifier: MIT
#include "utilities/FrequencyEntry.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

using Unit = FrequencyEntry::Unit;

/// Types \a keys; '\r' is Enter, '\b' Backspace, '\x1b' Escape. The result of the last key.
Hertz type(FrequencyEntry &entry, const char *keys, Unit unit) {
    Hertz result;
    for (const char *key = keys; *key != '\0'; ++key) {
        result = entry.ParseFrequencyKey(static_cast<char16_t>(*key), unit);
    }
    return result;
}

TEST(FrequencyEntry, endedEntry_comesToHertz) {
    struct Case {
        const char *keys;
        Unit unit;
        double hertz;
    };
    const Case cases[] = {{"145\r", Unit::M, 145e6},
                          {"145.5\r", Unit::M, 145.5e6},
                          {"145,5\r", Unit::M, 145.5e6},
                          {"145.5M", Unit::K, 145.5e6},
                          {"145.5m", Unit::K, 145.5e6},
                          {"145500K", Unit::M, 145.5e6},
                          {"145500k", Unit::M, 145.5e6},
                          {"145.5k", Unit::M, 145'500},
                          {"12.5\r", Unit::K, 12'500},
                          {"36K", Unit::M, 36'000},
                          {"14 5\r", Unit::M, 145e6},
                          {"145\x1b", Unit::M, 145e6},
                          {"145x", Unit::M, 145e6},
                          {"145-", Unit::K, 145e3},
                          {"1.500.000\r", Unit::M, 1.5e6},
                          {".5\r", Unit::M, 0.5e6},
                          {"146\b5\r", Unit::M, 145e6},
                          {"0\r", Unit::M, 0},
                          {"\r", Unit::M, 0},
                          {"x", Unit::M, 0},
                          {"0.0001K", Unit::M, 0.1},
                          {"3500\r", Unit::M, 3500e6},
                          {"3600\r", Unit::M, 3500e6},
                          {"3600000K", Unit::M, 3500e6},
                          {"2000000K", Unit::K, 2e9}};
    for (const Case &example : cases) {
        FrequencyEntry entry;
        const Hertz result = type(entry, example.keys, example.unit);
        EXPECT_FALSE(entry.Editing()) << example.keys;
        EXPECT_EQ(result, Hertz::fromDouble(example.hertz)) << example.keys;
    }
}

TEST(FrequencyEntry, entryIn3600WithUnitM_isTheCeilingAndNoRefusal) {
    FrequencyEntry entry;
    EXPECT_EQ(type(entry, "3600\r", Unit::M), Hertz::fromWhole(3'500'000'000));
    EXPECT_EQ(entry.EntryText(), " 3500");
}

TEST(FrequencyEntry, entryOf36K_isInKilohertzWhateverTheUnit) {
    for (const Unit unit : {Unit::M, Unit::K}) {
        FrequencyEntry entry;
        EXPECT_EQ(type(entry, "36K", unit), Hertz::fromWhole(36'000));
    }
}

TEST(FrequencyEntry, entryOf3600000000DigitByDigit_isCutAtItsTenthDigit) {
    FrequencyEntry entry;
    type(entry, "360000000", Unit::M);
    EXPECT_EQ(entry.EntryText(), "360000000");
    type(entry, "0", Unit::M);
    EXPECT_EQ(entry.EntryText(), " 3500000000");
    EXPECT_TRUE(entry.Editing());
    type(entry, "7", Unit::M);
    EXPECT_EQ(entry.EntryText(), " 3500000000") << "5000000007 is over the ceiling again";
}

TEST(FrequencyEntry, pastThePoint_theCeilingIsThatOfKilohertz) {
    FrequencyEntry entry;
    type(entry, "3500001", Unit::M);
    EXPECT_EQ(entry.EntryText(), "3500001");
    type(entry, ".", Unit::M);
    EXPECT_EQ(entry.EntryText(), " 3500000");
    EXPECT_EQ(entry.EntryScale(), 1000);
}

TEST(FrequencyEntry, eleventhCharacter_pushesTheFirstOut) {
    FrequencyEntry entry;
    type(entry, "0.00000001", Unit::M);
    EXPECT_EQ(entry.EntryText(), "0.00000001");
    type(entry, "2", Unit::M);
    EXPECT_EQ(entry.EntryText(), ".000000012");
}

TEST(FrequencyEntry, backspaceInAnEmptyEntry_leavesItOpen) {
    FrequencyEntry entry;
    type(entry, "\b", Unit::M);
    EXPECT_TRUE(entry.Editing());
    EXPECT_EQ(entry.EntryText(), "");
    type(entry, "\b\b", Unit::M);
    EXPECT_TRUE(entry.Editing());
}

TEST(FrequencyEntry, backspace_takesTheLastCharacterAway) {
    FrequencyEntry entry;
    type(entry, "145.\b\b", Unit::M);
    EXPECT_EQ(entry.EntryText(), "14");
    EXPECT_EQ(entry.EntryScale(), 1000) << "the scale of the point stays";
}

TEST(FrequencyEntry, blank_isIgnoredAndTheEntryGoesOn) {
    FrequencyEntry entry;
    type(entry, "14 ", Unit::M);
    EXPECT_TRUE(entry.Editing());
    EXPECT_EQ(entry.EntryText(), "14");
}

TEST(FrequencyEntry, keysInTheMiddle_setTextAndScale) {
    FrequencyEntry entry;
    EXPECT_EQ(type(entry, "12", Unit::M), Hertz::fromWhole(12));
    EXPECT_EQ(entry.EntryScale(), 1);
    EXPECT_EQ(type(entry, ",5", Unit::M), Hertz::fromWhole(12'500));
    EXPECT_EQ(entry.EntryText(), "12.5");
    EXPECT_EQ(entry.EntryScale(), 1000);
}

TEST(FrequencyEntry, firstKeyAfterTheEnd_beginsANewEntry) {
    FrequencyEntry entry;
    type(entry, "145\r", Unit::M);
    type(entry, "7", Unit::M);
    EXPECT_EQ(entry.EntryText(), "7");
    EXPECT_EQ(entry.EntryScale(), 1);
    EXPECT_TRUE(entry.Editing());
}

TEST(FrequencyEntry, anyTerminator_overridesTheScaleOfThePoint) {
    FrequencyEntry entry;
    type(entry, "1.5", Unit::M);
    EXPECT_EQ(entry.EntryScale(), 1000);
    type(entry, "\r", Unit::M);
    EXPECT_EQ(entry.EntryScale(), 1'000'000);
}

} // namespace
} // namespace veldron
