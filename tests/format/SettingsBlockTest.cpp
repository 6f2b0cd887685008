// SPDX-License-Identifier: MIT
#include "format/SettingsBlock.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

class LineList : public LineSink {
public:
    void writeLine(const QString &line) override { lines.append(line); }
    QStringList lines;
};

SettingsBlock blockOf(const QStringList &lines) {
    SettingsBlock block;
    for (const QString &line : lines) {
        block.take(FileLine::of(line));
    }
    return block;
}

QStringList written(const SettingsBlock &block) {
    LineList sink;
    block.writeTo(sink);
    return sink.lines;
}

TEST(SettingsBlock, valuesTaken_areThoseOfTheLines) {
    const SettingsBlock block = blockOf({"StartSettings 21/03/2005", "RXMode  AM", "Span 10"});
    EXPECT_EQ(block.value(SettingsKey::StartSettings), "21/03/2005");
    EXPECT_EQ(block.value(SettingsKey::RXMode), " AM");
    EXPECT_EQ(block.value(SettingsKey::Centre), std::nullopt);
}

TEST(SettingsBlock, otherLines_areRefusedAndNotNoted) {
    SettingsBlock block;
    for (const char *line : {"", "rbw 4", "Data ab 10:00:00", "VELDRONv1 Settings"}) {
        EXPECT_FALSE(block.take(FileLine::of(line))) << line;
    }
    EXPECT_TRUE(block.take(FileLine::of("RBW 4")));
    EXPECT_EQ(written(block), QStringList{"RBW 4"});
}

TEST(SettingsBlock, nextStart_dropsTheValuesFromBefore) {
    const SettingsBlock block = blockOf({"StartSettings a", "RBW 4", "StartSettings b"});
    EXPECT_EQ(written(block), QStringList{"StartSettings b"});
}

TEST(SettingsBlock, keyThatComesTwice_keepsTheSecondValue) {
    EXPECT_EQ(blockOf({"RBW 4", "RBW 2"}).value(SettingsKey::RBW), "2");
}

TEST(SettingsBlock, lines_areWrittenInTheOrderOfTheKeys) {
    SettingsBlock block;
    block.set(SettingsKey::EndSettings, {});
    block.set(SettingsKey::Poll, "1000");
    block.set(SettingsKey::StartSettings, "x");
    EXPECT_EQ(written(block), (QStringList{"StartSettings x", "Poll 1000", "EndSettings "}));
}

TEST(SettingsBlock, endWithAndWithoutItsBlank_isTheEnd) {
    EXPECT_TRUE(SettingsBlock::isEnd(FileLine::of("EndSettings")));
    EXPECT_TRUE(SettingsBlock::isEnd(FileLine::of("EndSettings ")));
    EXPECT_FALSE(SettingsBlock::isEnd(FileLine::of("StartSettings x")));
}

} // namespace
} // namespace veldron
