// SPDX-License-Identifier: MIT
#include "recordings/SettingsInForce.h"

#include "tests/recordings/Recordings.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

/// The settings behind all blocks of a recording.
class Gatherer : public Collector {
public:
    void block(const RecordedBlock &block) override { settings.take(block); }
    SettingsInForce settings;
};

SettingsInForce settingsOf(const RecordingText &text) {
    Gatherer gatherer;
    (void)readInto(gatherer, text.bytes);
    return gatherer.settings;
}

TEST(SettingsInForce, shortBlock_keepsTheDisplayLinesOnly) {
    RecordingText text;
    text.block(kDay, {"Palette 3", "Poll 1000", "Span 10000000", "Centre 145500000"});
    text.block(kDay,
               {"Poll 500", "MonitorMode 3", "Start 144000000", "Step 12500", "End 146000000"});
    const SettingsInForce settings = settingsOf(text);
    EXPECT_EQ(settings.value(SettingsKey::Palette), "3");
    EXPECT_EQ(settings.number(SettingsKey::Poll), 500);
    EXPECT_FALSE(settings.value(SettingsKey::Span));
    EXPECT_EQ(settings.axis(),
              (FrequencyAxis{Hertz::fromWhole(144000000), Hertz::fromWhole(12500)}));
}

TEST(SettingsInForce, spanAndCentre_giveTheAxisOfTheChart) {
    RecordingText text;
    const auto axis = settingsOf(text.block(kDay)).axis();
    ASSERT_TRUE(axis);
    EXPECT_EQ(axis->start, Hertz::fromWhole(140500000));
    EXPECT_EQ(axis->at(320), Hertz::fromWhole(150500000));
}

TEST(SettingsInForce, decimalMarksOfAnyLocale_areRead) {
    RecordingText text;
    text.block(kDay, {"MonitorMode 1", "Span 160000", "Centre 145500000,5"});
    EXPECT_EQ(settingsOf(text).hertz(SettingsKey::Centre), Hertz::fromUnits(1455000005000));
}

TEST(SettingsInForce, blockWithoutFrequencies_hasNoAxis) {
    RecordingText text;
    EXPECT_FALSE(settingsOf(text.block(kDay, {"MonitorMode 1", "Centre abc", "Span 5"})).axis());
    EXPECT_FALSE(SettingsInForce().axis());
}

TEST(SettingsInForce, blockOfAUnitThatDidNotAnswer_hasNoAxis) {
    for (const QStringList &lines :
         {QStringList{"MonitorMode 1", "Span -1", "Centre 145500000"},
          QStringList{"MonitorMode 1", "Span 10000000", "Centre -1"},
          QStringList{"MonitorMode 3", "Start -1", "Step 12500"},
          QStringList{"MonitorMode 3", "Start 144000000", "Step -1"},
          QStringList{"MonitorMode -1", "Span 10000000", "Centre 145500000"}}) {
        RecordingText text;
        EXPECT_FALSE(settingsOf(text.block(kDay).block(kDay, lines)).axis())
            << lines.join(' ').toStdString();
    }
}

TEST(SettingsInForce, lonelyLine_replacesItsOwnKey) {
    RecordingText text;
    text.block(kDay).line("RBW 4");
    const SettingsInForce settings = settingsOf(text);
    EXPECT_EQ(settings.number(SettingsKey::RBW), 4);
    EXPECT_EQ(settings.number(SettingsKey::Poll), 1000);
}

} // namespace
} // namespace veldron
