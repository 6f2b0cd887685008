// SPDX-License-Identifier: MIT
#include "format/FileErrors.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

TEST(FileErrors, at_namesLineAndFileAndKeepsTheKind) {
    const UntrappedError error = FileErrors::at("/a/b.rec", 12, FileErrors::notAFrequency("here"));
    EXPECT_EQ(error.kind(), UntrappedError::Kind::BadValue);
    EXPECT_EQ(error.message(),
              "Line 12 of the file \"/a/b.rec\": \"here\" is not a frequency in hertz.");
}

TEST(FileErrors, fullStopOfTheError_isWrittenOnce) {
    const UntrappedError error(UntrappedError::Kind::File, "it is gone.");
    EXPECT_EQ(FileErrors::at("f", 1, error).message(), "Line 1 of the file \"f\": it is gone.");
}

TEST(FileErrors, placeMarksInPathAndValue_areLeftAlone) {
    EXPECT_EQ(FileErrors::at("50%1%2", 1, FileErrors::notAFrequency("%3")).message(),
              "Line 1 of the file \"50%1%2\": \"%3\" is not a frequency in hertz.");
    EXPECT_TRUE(FileErrors::notATimeOfScan("%2").message().contains("but \"%2\" (a level"));
}

TEST(FileErrors, missingTimeAndMissingDate_haveTextsOfTheirOwn) {
    EXPECT_EQ(FileErrors::notATimeOfScan({}).message(), "no time of day stands behind the scan");
    EXPECT_EQ(FileErrors::notADate({}).message(), "the StartSettings line has no date");
    EXPECT_EQ(FileErrors::notADate("x").message(), "\"x\" is not a date");
}

} // namespace
} // namespace veldron
