// SPDX-License-Identifier: MIT
#include "utilities/Codes.h"

#include <gtest/gtest.h>

#include <array>

namespace veldron {
namespace {

TEST(Codes, numbersOfTheModes_areThoseOfTheWire) {
    constexpr std::array monitorModes = {MonitorModeCode::None, MonitorModeCode::Spectrum,
                                         MonitorModeCode::Step, MonitorModeCode::Channel};
    constexpr std::array dataModes = {DataModeCode::None, DataModeCode::Normal,
                                      DataModeCode::Average, DataModeCode::Max,
                                      DataModeCode::Median};
    for (std::size_t number = 0; number < monitorModes.size(); ++number) {
        EXPECT_EQ(static_cast<std::size_t>(monitorModes[number]), number);
    }
    for (std::size_t number = 0; number < dataModes.size(); ++number) {
        EXPECT_EQ(static_cast<std::size_t>(dataModes[number]), number);
    }
}

TEST(Codes, averageAndMedian_haveSamplesAndNoOtherNumberHas) {
    for (qint16 number = -1; number <= 9; ++number) {
        const bool expected = number == 2 || number == 4;
        EXPECT_EQ(hasSamples(static_cast<DataModeCode>(number)), expected) << number;
    }
}

} // namespace
} // namespace veldron
