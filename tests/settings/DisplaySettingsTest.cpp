// SPDX-License-Identifier: MIT
#include "settings/DisplaySettings.h"

#include "tests/support/SettingsFixture.h"

#include <gtest/gtest.h>

#include <set>

namespace veldron {
namespace {

/// Settings that all differ from the fixture's start values.
constexpr DisplaySettings kOther{.PersistenceEnable = true,
                                 .Persistence = 60,
                                 .WaterfallEnable = true,
                                 .PaletteIndex = 2,
                                 .Update = 5,
                                 .MarkerEnable = true};

class DisplaySettingsTest : public testing::Test {
protected:
    /// What \a apply does to the chart.
    template <typename Apply>
    [[nodiscard]] QStringList changedBy(Apply apply) {
        const QStringList before = fixture.state();
        apply(fixture.ctlChartSpectrum1);
        QStringList changed;
        for (const QString &item : fixture.state()) {
            if (!before.contains(item)) {
                changed += item;
            }
        }
        return changed;
    }
    [[nodiscard]] QStringList applied(DisplayChanges changes) {
        return changedBy(
            [changes](ctlChartSpectrum &chart) { kOther.applyChangesTo(chart, changes); });
    }

    SettingsFixture fixture;
};

TEST_F(DisplaySettingsTest, allSettings_reachTheChart) {
    EXPECT_EQ(changedBy([](ctlChartSpectrum &chart) { kOther.applyTo(chart); }),
              (QStringList{"chart Peak True", "chart Timespan 60", "chart DisplayType 1",
                           "chart Palette 2", "chart Update 5", "chart MarkerEn True"}));
}

TEST_F(DisplaySettingsTest, eachChange_appliesItsSettingsAlone) {
    EXPECT_EQ(applied(DisplayChange::Waterfall),
              (QStringList{"chart DisplayType 1", "chart Update 5"}));
    EXPECT_EQ(applied(DisplayChange::Persistence),
              (QStringList{"chart Peak True", "chart Timespan 60"}));
    EXPECT_EQ(applied(DisplayChange::Palette), QStringList{"chart Palette 2"});
    EXPECT_EQ(applied(DisplayChange::Marker), QStringList{"chart MarkerEn True"});
}

TEST_F(DisplaySettingsTest, noChange_appliesNothing) {
    EXPECT_EQ(applied({}), QStringList());
}

TEST_F(DisplaySettingsTest, rows_haveAKeyEach) {
    std::set<SettingsKey> keys;
    for (const DisplaySetting &setting : kDisplaySettings) {
        keys.insert(setting.key);
    }
    EXPECT_EQ(keys.size(), kDisplaySettings.size());
}

TEST(DisplaySettingsAtStart, marker_isShownWithoutPeaksAndWaterfall) {
    EXPECT_EQ(
        DisplaySettings::atStart(),
        (DisplaySettings{.Persistence = 5, .PaletteIndex = 3, .Update = 1, .MarkerEnable = true}));
}

} // namespace
} // namespace veldron
