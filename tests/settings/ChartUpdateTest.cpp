// SPDX-License-Identifier: MIT
#include "settings/ChartUpdate.h"

#include "tests/support/SettingsFixture.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>

namespace veldron {
namespace {

class ChartUpdateTest : public testing::Test {
protected:
    /// The strip with the labels of the levels.
    [[nodiscard]] QImage labels() { return chart.grab({0, 0, 30, 300}).toImage(); }

    SettingsFixture fixture;
    ctlChartSpectrum &chart = fixture.ctlChartSpectrum1;
};

TEST_F(ChartUpdateTest, spectrumMode_centresTheMarkerOnTheWindow) {
    fixture.ctlMonitorMode1.setfSpan(Hertz::fromWhole(1'600'000));
    fixture.ctlFrequency1.setFrequency(Hertz::fromWhole(99'000'000));
    updateChartFrequencies(fixture.holders);
    EXPECT_EQ(chart.DataResolution(), Hertz::fromWhole(5'000));
    EXPECT_EQ(chart.ScanStart(), Hertz::fromWhole(144'700'000));
    EXPECT_EQ(chart.ScanStop(), Hertz::fromWhole(146'300'000));
    EXPECT_EQ(chart.RXFreq(), Hertz::fromWhole(145'500'000));
}

TEST_F(ChartUpdateTest, channelMode_takesTheMarkerFromTheReceiver) {
    fixture.ctlMonitorMode1.setMonitorMode(MonitorModeCode::Channel);
    fixture.ctlMonitorMode1.setfStart(Hertz::fromWhole(144'000'000));
    fixture.ctlMonitorMode1.setfEnd(Hertz::fromWhole(146'000'000));
    fixture.ctlMonitorMode1.setfCentre(Hertz::fromWhole(25'000));
    fixture.ctlFrequency1.setFrequency(Hertz::fromWhole(145'000'000));
    updateChartFrequencies(fixture.holders);
    EXPECT_EQ(chart.ScanStart(), Hertz::fromWhole(144'000'000));
    EXPECT_EQ(chart.ScanStop(), Hertz::fromWhole(146'000'000));
    EXPECT_EQ(chart.RXFreq(), Hertz::fromWhole(145'000'000));
}

TEST_F(ChartUpdateTest, displayPart_appliesTheDialogsValues) {
    fixture.displaySettings.setValues({.Persistence = 60, .PaletteIndex = 2, .Update = 5});
    updateChartDisplay(fixture.holders);
    EXPECT_EQ(chart.Timespan(), 60);
    EXPECT_EQ(chart.Palette(), 2);
    EXPECT_EQ(chart.Update(), 5);
}

TEST_F(ChartUpdateTest, displayPart_laysTheAxesOutWhateverTheSettingsDo) {
    // Nothing is set in it: the chart drops an update rate of 0, and keeps the kind of display.
    frmDisplaySettings unset{fixture.guard};
    const SettingHolders holders{
        fixture.vdr, fixture.ctlFrequency1, fixture.ctlMonitorMode1, fixture.ctlDataMode1, chart,
        unset,       fixture.commSettings};
    chart.show();
    QApplication::processEvents();
    chart.setdBSpan(static_cast<qint16>(chart.dBSpan() / 2));
    chart.Refresh();
    const QImage oldLabels = labels();
    updateChartDisplay(holders);
    chart.Refresh();
    EXPECT_NE(labels(), oldLabels);
}

} // namespace
} // namespace veldron
