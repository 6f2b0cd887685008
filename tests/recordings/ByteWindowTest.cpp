// SPDX-License-Identifier: MIT
#include "recordings/ByteWindow.h"

#include "tests/recordings/Recordings.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

TEST(ByteWindow, lineEnds_countAsPlaybackCountsThem) {
    EXPECT_EQ(lineEndsIn("a\r\nb\rc\nd", 0), 3);
    EXPECT_EQ(lineEndsIn("\n\r\r\n", 0), 3);
    EXPECT_EQ(lineEndsIn("\n", '\r'), 0);
    EXPECT_EQ(lineEndsIn("", '\r'), 0);
}

TEST(ByteWindow, piecesOfAnySize_giveAllBytesInOrder) {
    QByteArray bytes;
    for (int i = 0; i < 700000; ++i) {
        bytes.append(static_cast<char>(i * 7 + i / 256));
    }
    for (const qint64 piece : {1000, 4096, 999999}) {
        MemorySource source(bytes, piece);
        ByteWindow window(source);
        QByteArray got;
        for (window.fill(); !window.bytes().isEmpty(); window.fill()) {
            const qsizetype count = qMin<qsizetype>(window.bytes().size(), 333);
            EXPECT_TRUE(window.reachesEnd() || window.bytes().size() >= ByteWindow::kSight);
            got.append(window.bytes().first(count));
            window.advance(count);
        }
        EXPECT_EQ(got, bytes);
        EXPECT_EQ(window.place().offset, bytes.size());
        EXPECT_EQ(window.place().line, 1 + lineEndsIn(bytes, 0));
    }
}

TEST(ByteWindow, lineEndInTwoParts_isOne) {
    MemorySource source("a\r\nb");
    ByteWindow window(source);
    window.fill();
    window.advance(2);
    EXPECT_EQ(window.place().line, 2);
    EXPECT_EQ(window.previous(), '\r');
    window.advance(1);
    EXPECT_EQ(window.place().line, 2);
}

} // namespace
} // namespace veldron
