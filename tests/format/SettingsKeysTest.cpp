// SPDX-License-Identifier: MIT
#include "format/SettingsKeys.h"

#include <gtest/gtest.h>

#include <QSet>

namespace veldron {
namespace {

TEST(SettingsKeys, everyText_isFoundAgain) {
    QSet<QString> texts;
    for (std::size_t i = 0; i < kSettingsKeys.size(); ++i) {
        const auto key = static_cast<SettingsKey>(i);
        EXPECT_EQ(settingsKeyOf(textOf(key)), key) << kSettingsKeys.at(i);
        texts.insert(textOf(key));
    }
    EXPECT_EQ(texts.size(), 24);
}

TEST(SettingsKeys, names_standAtTheirKeys) {
    EXPECT_EQ(textOf(SettingsKey::StartSettings), "StartSettings");
    EXPECT_EQ(textOf(SettingsKey::MonitorMode), "MonitorMode");
    EXPECT_EQ(textOf(SettingsKey::MarkerFrequency), "MarkerFrequency");
    EXPECT_EQ(textOf(SettingsKey::RBW), "RBW");
    EXPECT_EQ(textOf(SettingsKey::EndSettings), "EndSettings");
}

TEST(SettingsKeys, otherTexts_areNone) {
    for (const char *text : {"", "rbw", "RBW ", "Data", "StartSetting"}) {
        EXPECT_EQ(settingsKeyOf(text), std::nullopt) << text;
    }
}

} // namespace
} // namespace veldron
