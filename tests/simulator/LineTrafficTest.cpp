// SPDX-License-Identifier: MIT
#include "simulator/LineTraffic.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

class LineTrafficTest : public testing::Test {
protected:
    /// All that \a bytes bring about, sent at once.
    QByteArray exchange(const QByteArray &bytes, double now = 1.0) {
        m_traffic.receive(bytes, now);
        return m_traffic.takeDue(now);
    }

    Unit m_unit;
    Faults m_faults;
    LineTraffic m_traffic{m_unit, m_faults, 0};
};

TEST_F(LineTrafficTest, lineInPieces_isAnsweredWhenItIsWhole) {
    EXPECT_EQ(exchange("RU"), "");
    EXPECT_EQ(exchange("MD\r"), "");
    EXPECT_EQ(exchange("\n"), "UMD1 \r\n");
}

TEST_F(LineTrafficTest, severalLinesAtOnce_areAnsweredInTurn) {
    EXPECT_EQ(exchange("RUMD\r\nRSBW\r\n"), "UMD1 \r\nSBW2 \r\n");
}

TEST_F(LineTrafficTest, lineThatIsTooLong_isRefusedAtItsEndAndForgotten) {
    EXPECT_EQ(exchange(QByteArray(10000, 'x')), "");
    EXPECT_EQ(exchange("RUMD\r\n"), "?\r\n");
    EXPECT_EQ(exchange("RUMD\r\n"), "UMD1 \r\n");
}

TEST_F(LineTrafficTest, scene_runsOnTheTimeOfTheLine) {
    (void)exchange("RIFD\r\n", 42.0);
    EXPECT_DOUBLE_EQ(m_unit.time(), 42.0);
}

TEST_F(LineTrafficTest, silence_endsByItself) {
    m_faults.silenceUntil(4.0);
    EXPECT_EQ(exchange("WSBW4\r\n", 3.0), "");
    EXPECT_EQ(exchange("RSBW\r\n", 4.0), "SBW2 \r\n") << "a silent unit doesn't obey either";
}

TEST_F(LineTrafficTest, silenceForGood_lastsUntilItIsEnded) {
    m_faults.silenceForGood();
    EXPECT_EQ(exchange("RSBW\r\n", 1e9), "");
    m_faults.endSilence();
    EXPECT_EQ(exchange("RSBW\r\n", 1e9), "SBW2 \r\n");
}

TEST_F(LineTrafficTest, silenceDuringAReply_cutsItOff) {
    LineTraffic paced(m_unit, m_faults, 9600);
    paced.receive("RIFD\r\n", 0.0);
    EXPECT_GT(paced.takeDue(0.1).size(), 50);
    m_faults.silenceUntil(1.0);
    EXPECT_EQ(paced.takeDue(0.5), "");
    EXPECT_EQ(paced.takeDue(2.0), "");
}

TEST_F(LineTrafficTest, commandWithALostReply_isCarriedOut) {
    m_faults.arm({Fault::Kind::Lose, 0.0, 0, {}, {}, 1});
    EXPECT_EQ(exchange("WSBW4\r\n"), "");
    EXPECT_EQ(exchange("RSBW\r\n"), "SBW4 \r\n");
}

TEST_F(LineTrafficTest, faultOfOneCommand_waitsForIt) {
    m_faults.arm({Fault::Kind::Lose, 0.0, 0, {}, "RSBW", 1});
    EXPECT_EQ(exchange("RUMD\r\n"), "UMD1 \r\n");
    EXPECT_EQ(exchange("RSBW\r\n"), "");
    EXPECT_EQ(exchange("RSBW\r\n"), "SBW2 \r\n");
}

TEST_F(LineTrafficTest, faultOfTheScan_waitsForAScan) {
    const qsizetype whole = exchange("RIFD\r\n").size();
    m_faults.arm({Fault::Kind::ScanShort, 0.0, 7, {}, {}, 1});
    EXPECT_EQ(exchange("RSBW\r\n"), "SBW2 \r\n");
    EXPECT_LT(exchange("RIFD\r\n").size(), whole);
    EXPECT_EQ(exchange("RIFD\r\n").size(), whole);
}

TEST_F(LineTrafficTest, refusedWrite_isNotCarriedOut) {
    m_faults.arm({Fault::Kind::Refuse, 0.0, 0, {}, {}, 1});
    EXPECT_EQ(exchange("WSBW4\r\n"), "?\r\n");
    EXPECT_EQ(exchange("RSBW\r\n"), "SBW2 \r\n");
}

TEST_F(LineTrafficTest, previousReply_comesInPlaceOfTheRightOne) {
    (void)exchange("RUMD\r\n");
    m_faults.arm({Fault::Kind::Previous, 0.0, 0, {}, {}, 1});
    EXPECT_EQ(exchange("RSBW\r\n"), "UMD1 \r\n");
    EXPECT_EQ(exchange("RSBW\r\n"), "SBW2 \r\n");
}

TEST_F(LineTrafficTest, localEcho_bringsTheCommandBack) {
    m_faults.arm({Fault::Kind::LocalEcho, 0.0, 0, {}, {}, 1});
    EXPECT_EQ(exchange("RSBW\r\n"), "RSBW\r\nSBW2 \r\n");
}

TEST_F(LineTrafficTest, heldReply_comesRightBeforeTheNextOne) {
    m_faults.arm({Fault::Kind::Hold, 0.0, 0, {}, {}, 1});
    EXPECT_EQ(exchange("RUMD\r\n"), "");
    EXPECT_EQ(exchange("RSBW\r\n"), "UMD1 \r\nSBW2 \r\n");
    EXPECT_EQ(exchange("RSBW\r\n"), "SBW2 \r\n");
}

TEST_F(LineTrafficTest, unplugging_dropsAHeldReply) {
    m_faults.arm({Fault::Kind::Hold, 0.0, 0, {}, {}, 1});
    (void)exchange("RUMD\r\n");
    m_traffic.reset();
    EXPECT_EQ(exchange("RSBW\r\n"), "SBW2 \r\n");
}

TEST_F(LineTrafficTest, delayedReply_comesLate) {
    m_faults.arm({Fault::Kind::Delay, 1.5, 0, {}, {}, 1});
    EXPECT_EQ(exchange("RSBW\r\n", 10.0), "");
    EXPECT_DOUBLE_EQ(*m_traffic.nextDue(), 11.5);
    EXPECT_EQ(m_traffic.takeDue(11.4), "");
    EXPECT_EQ(m_traffic.takeDue(11.5), "SBW2 \r\n");
}

TEST_F(LineTrafficTest, splitReply_comesByteByByte) {
    m_faults.arm({Fault::Kind::Split, 0.25, 0, {}, {}, 1});
    QByteArray all = exchange("RSBW\r\n", 10.0);
    EXPECT_EQ(all, "S");
    for (int i = 1; i <= 6; ++i) {
        EXPECT_EQ(m_traffic.takeDue(10.0 + 0.25 * i - 0.01), "");
        const QByteArray next = m_traffic.takeDue(10.0 + 0.25 * i);
        EXPECT_EQ(next.size(), 1);
        all += next;
    }
    EXPECT_EQ(all, "SBW2 \r\n");
}

TEST_F(LineTrafficTest, image_comesAfterAPauseAtItsOwnPace) {
    LineTraffic paced(m_unit, m_faults, 9600);
    paced.receive("RVIM\r\n", 0.0);
    const double lineEnd = 6 * 11.0 / 9600.0;
    EXPECT_EQ(paced.takeDue(lineEnd + 0.2), "VIM \r\n");
    const double blockEnd = lineEnd + Faults::kImagePause + Unit::kImageSize * 10.0 / 115200.0;
    const qsizetype before = paced.takeDue(blockEnd - 0.001).size();
    EXPECT_LT(before, Unit::kImageSize);
    EXPECT_EQ(before + paced.takeDue(blockEnd + 0.001).size(), Unit::kImageSize);
}

TEST_F(LineTrafficTest, reset_dropsHalfALineAndTheReplyOnItsWay) {
    EXPECT_EQ(exchange("RU"), "");
    m_traffic.reset();
    EXPECT_EQ(exchange("RUMD\r\n"), "UMD1 \r\n");
}

} // namespace
} // namespace veldron
