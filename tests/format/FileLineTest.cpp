// SPDX-License-Identifier: MIT
#include "format/FileLine.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

struct LineCase {
    const char *line;
    const char *key;
    const char *value;
};

constexpr LineCase kLines[] = {
    {"RBW 4", "RBW", "4"},
    {"RXMode  AM", "RXMode", " AM"},
    {"EndSettings ", "EndSettings", ""},
    {"EndSettings", "EndSettings", ""},
    {"", "", ""},
    {" RBW 4", "", "RBW 4"},
    {"Receiver Other (10M)", "Receiver", "Other (10M)"},
    {"RBW\t4", "RBW\t4", ""},
};

TEST(FileLine, of_endsTheKeyAtTheFirstBlank) {
    for (const LineCase &item : kLines) {
        const FileLine line = FileLine::of(item.line);
        EXPECT_EQ(line.key, item.key) << item.line;
        EXPECT_EQ(line.value, item.value) << item.line;
    }
}

TEST(FileLine, text_hasOneBlankAlsoInFrontOfAnEmptyValue) {
    EXPECT_EQ((FileLine{"RXMode", " AM"}.text()), "RXMode  AM");
    EXPECT_EQ((FileLine{"EndSettings", ""}.text()), "EndSettings ");
}

} // namespace
} // namespace veldron
