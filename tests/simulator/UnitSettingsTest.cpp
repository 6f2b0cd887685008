// SPDX-License-Identifier: MIT
#include "simulator/UnitSettings.h"
#include "simulator/UnitReceivers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace veldron {
namespace {

struct IntRange {
    const char *name;
    bool (UnitSettings::*set)(int);
    int (UnitSettings::*get)() const;
    int low;
    int high;
};

TEST(UnitSettings, eachWholeNumber_isTakenWithinItsRangeOnly) {
    for (const IntRange &range :
         {IntRange{"monitor", &UnitSettings::setMonitorMode, &UnitSettings::monitorMode, 1, 3},
          IntRange{"bandwidth", &UnitSettings::setBandwidth, &UnitSettings::bandwidth, 1, 4},
          IntRange{"data", &UnitSettings::setDataMode, &UnitSettings::dataMode, 1, 4},
          IntRange{"average", &UnitSettings::setAverageCount, &UnitSettings::averageCount, 2, 31},
          IntRange{"median", &UnitSettings::setMedianCount, &UnitSettings::medianCount, 2, 4},
          IntRange{"receiver", &UnitSettings::setReceiver, &UnitSettings::receiver, 1, 11}}) {
        UnitSettings settings;
        for (int value = range.low; value <= range.high; ++value) {
            EXPECT_TRUE((settings.*range.set)(value)) << range.name << value;
            EXPECT_EQ((settings.*range.get)(), value) << range.name;
        }
        EXPECT_FALSE((settings.*range.set)(range.low - 1)) << range.name;
        EXPECT_FALSE((settings.*range.set)(range.high + 1)) << range.name;
        EXPECT_EQ((settings.*range.get)(), range.high) << range.name;
    }
}

TEST(UnitSettings, amplitude_takesFourValuesOnly) {
    UnitSettings settings;
    for (const int value : {0, -10, -20, -30}) {
        EXPECT_TRUE(settings.setAmplitude(value));
        EXPECT_EQ(settings.amplitude(), value);
    }
    for (const int value : {10, -5, -15, -40}) {
        EXPECT_FALSE(settings.setAmplitude(value)) << value;
    }
    EXPECT_EQ(settings.amplitude(), -30);
}

TEST(UnitSettings, frequencies_areTakenWithinTheirRangesOnly) {
    UnitSettings s;
    EXPECT_TRUE(s.setCentreHz(UnitSettings::kLowestHz));
    EXPECT_TRUE(s.setCentreHz(UnitSettings::kHighestHz));
    EXPECT_FALSE(s.setCentreHz(UnitSettings::kLowestHz - 1));
    EXPECT_FALSE(s.setCentreHz(UnitSettings::kHighestHz + 1));
    EXPECT_FALSE(s.setCentreHz(-100'000'000));
    EXPECT_EQ(s.centreHz(), UnitSettings::kHighestHz);
    EXPECT_FALSE(s.setSpanHz(0));
    EXPECT_FALSE(s.setSpanHz(10'000'001));
    EXPECT_TRUE(s.setSpanHz(160'000));
    EXPECT_FALSE(s.setReceiverStepHz(0));
    EXPECT_TRUE(s.setReceiverStepHz(9'000));
}

TEST(UnitSettings, wideSpanOfStepMode_shrinksInSpectrumMode) {
    UnitSettings s;
    ASSERT_TRUE(s.setMonitorMode(UnitSettings::Step));
    ASSERT_TRUE(s.setSpanHz(32'000'000));
    ASSERT_TRUE(s.setMonitorMode(UnitSettings::Spectrum));
    EXPECT_EQ(s.spanHz(), 10'000'000);
}

TEST(UnitSettings, channelsThatMakeNoSense_areRefused) {
    UnitSettings s;
    EXPECT_FALSE(s.setChannels(146'000'000, 25'000, 144'000'000));
    EXPECT_FALSE(s.setChannels(144'000'000, 0, 146'000'000));
    EXPECT_FALSE(s.setChannels(0, 25'000, 146'000'000));
    EXPECT_FALSE(s.setChannels(144'000'000, 25'000, 3'600'000'000));
    EXPECT_TRUE(s.setChannels(144'000'000, 25'000, 144'000'000));
}

TEST(UnitSettings, plan_followsTheMonitorMode) {
    UnitSettings s;
    EXPECT_EQ(s.plan().count, 321);
    EXPECT_DOUBLE_EQ(s.plan().startHz, 95e6);
    EXPECT_DOUBLE_EQ(s.plan().stepHz, 31250.0);
    ASSERT_TRUE(s.setMonitorMode(UnitSettings::Channel));
    EXPECT_EQ(s.plan().count, 81);
    EXPECT_DOUBLE_EQ(s.plan().startHz, 144e6);
    ASSERT_TRUE(s.setChannels(144'000'000, 1'000, 146'000'000));
    EXPECT_EQ(s.plan().count, 321);
    ASSERT_TRUE(s.setChannels(144'000'000, 25'000, 144'060'000));
    EXPECT_EQ(s.plan().count, 3);
    ASSERT_TRUE(s.setChannels(144'000'000, 25'000, 144'000'000));
    EXPECT_EQ(s.plan().count, 1);
}

TEST(UnitSettings, marker_goesAlongWithTheCentreButNotInChannelMode) {
    UnitSettings s;
    ASSERT_TRUE(s.setCentreHz(145'010'000));
    EXPECT_EQ(s.markerHz(), 145'010'000);
    ASSERT_TRUE(s.setMonitorMode(UnitSettings::Channel));
    EXPECT_EQ(s.markerHz(), 145'000'000) << "nearest channel";
    ASSERT_TRUE(s.setCentreHz(100'000'000));
    EXPECT_EQ(s.markerHz(), 145'000'000);
    ASSERT_TRUE(s.setMonitorMode(UnitSettings::Spectrum));
    EXPECT_EQ(s.markerHz(), 100'000'000);
}

TEST(UnitSettings, narrowerSpan_bringsBackOnlyAMarkerThatItLeavesOutside) {
    UnitSettings s;
    for (int i = 0; i < 32; ++i) {
        ASSERT_TRUE(s.moveMarker(false));
    }
    ASSERT_EQ(s.markerHz(), 99'000'000);
    ASSERT_TRUE(s.setSpanHz(2'000'000));
    EXPECT_EQ(s.markerHz(), 99'000'000) << "at the edge";
    ASSERT_TRUE(s.setSpanHz(1'900'000));
    EXPECT_EQ(s.markerHz(), 100'000'000);
}

TEST(UnitSettings, spanInChannelMode_leavesTheMarkerOnItsChannel) {
    UnitSettings s;
    ASSERT_TRUE(s.setMonitorMode(UnitSettings::Channel));
    ASSERT_TRUE(s.moveMarker(true));
    ASSERT_TRUE(s.setSpanHz(2'000'000));
    EXPECT_EQ(s.markerHz(), 144'025'000);
}

TEST(UnitSettings, marker_movesByStepsUpToTheEdge) {
    UnitSettings s;
    for (int i = 0; i < 160; ++i) {
        ASSERT_TRUE(s.moveMarker(true));
    }
    EXPECT_EQ(s.markerHz(), 105'000'000);
    EXPECT_FALSE(s.moveMarker(true));
    EXPECT_TRUE(s.moveMarker(false));
    EXPECT_EQ(s.markerHz(), 105'000'000 - 31'250);
}

TEST(UnitSettings, markerInChannelMode_movesByChannelsWithinStartAndEnd) {
    UnitSettings s;
    ASSERT_TRUE(s.setMonitorMode(UnitSettings::Channel));
    EXPECT_EQ(s.markerHz(), 144'000'000);
    EXPECT_FALSE(s.moveMarker(false));
    EXPECT_TRUE(s.moveMarker(true));
    EXPECT_EQ(s.markerHz(), 144'025'000);
}

TEST(UnitReceivers, eachReceiver_takesItsModesAndNoOthers) {
    const std::vector<std::vector<int>> modes = {{},
                                                 {},
                                                 {5, 7, 8, 9, 10, 16, 17},
                                                 {1, 2, 5, 7, 8, 9},
                                                 {1, 2, 3, 4, 5, 6, 7, 8, 9, 10},
                                                 {1, 2, 3, 4, 5, 6, 7, 8, 9, 10},
                                                 {1, 2, 3, 4, 5, 6, 7, 8, 9, 10},
                                                 {1, 2, 5, 7, 8, 9, 10, 12},
                                                 {1, 5, 7, 8, 9, 11, 12, 13, 14, 15},
                                                 {1, 5, 7, 8, 11, 12, 13},
                                                 {1, 2, 3, 4, 5}};
    ASSERT_EQ(UnitReceivers::last(), 11);
    for (int code = 1; code <= 11; ++code) {
        UnitSettings s;
        ASSERT_TRUE(s.setReceiver(code));
        for (int mode = 0; mode <= 18; ++mode) {
            const auto &list = modes.at(static_cast<std::size_t>(code - 1));
            const bool has = std::find(list.begin(), list.end(), mode) != list.end();
            EXPECT_EQ(s.setReceiverMode(mode), has) << code << " mode " << mode;
        }
    }
}

TEST(UnitReceivers, attenuator_isThereForSomeReceiversOnly) {
    for (int code = 1; code <= 11; ++code) {
        UnitSettings s;
        ASSERT_TRUE(s.setReceiver(code));
        EXPECT_EQ(s.setAttenuator(true), (code >= 3 && code <= 8) || code == 11) << code;
    }
}

TEST(UnitSettings, receiverWithoutThePresentMode_takesItsDefaultMode) {
    UnitSettings s;
    ASSERT_TRUE(s.setReceiverMode(6));
    ASSERT_TRUE(s.setAttenuator(true));
    ASSERT_TRUE(s.setReceiver(3));
    EXPECT_EQ(s.receiverMode(), 5);
    EXPECT_TRUE(s.attenuator());
    ASSERT_TRUE(s.setReceiver(9));
    EXPECT_EQ(s.receiverMode(), 5);
    EXPECT_FALSE(s.attenuator());
    ASSERT_TRUE(s.setReceiver(1));
    EXPECT_EQ(s.receiverMode(), 0);
    EXPECT_FALSE(s.setReceiverStepHz(5'000));
}

} // namespace
} // namespace veldron
