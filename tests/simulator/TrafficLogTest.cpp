// SPDX-License-Identifier: MIT
#include "simulator/TrafficLog.h"
#include "simulator/LineTraffic.h"

#include <QList>

#include <gtest/gtest.h>

namespace veldron {
namespace {

class TrafficLogTest : public testing::Test {
protected:
    TrafficLog log(bool withScans) {
        return {[this](const QByteArray &line) { m_lines << line; }, withScans};
    }
    QList<QByteArray> m_lines;
};

TEST_F(TrafficLogTest, exchange_isTwoLines) {
    log(false).heard("RUMD\r\n");
    log(false).said({"UMD1 \r\n", {}, {}, {}});
    EXPECT_EQ(m_lines, (QList<QByteArray>{"> \"RUMD\\r\\n\"", "< \"UMD1 \\r\\n\""}));
}

TEST_F(TrafficLogTest, scan_isSummedUpAndOnDemandInHex) {
    const UnitReply scan{"IFD2 \r\n", "\x28\xff", " \r\n", {}};
    log(false).said(scan);
    EXPECT_EQ(m_lines.last(), "= scan 2 bytes, 40 to 255, ended");
    log(true).said(scan);
    EXPECT_EQ(m_lines.last(), "= scan 2 bytes, 40 to 255, ended: 28ff");
    log(false).said({"IFD2 \r\n", "ab", {}, {}});
    EXPECT_EQ(m_lines.last(), "= scan 2 bytes, 97 to 98, unended");
}

TEST_F(TrafficLogTest, image_isToldByItsSize) {
    log(true).said({{}, {}, {}, "bytes"});
    EXPECT_EQ(m_lines, QList<QByteArray>{"= image 5 bytes"});
}

TEST_F(TrafficLogTest, recordedScan_isWhatWentOverTheLine) {
    Unit unit;
    Faults faults;
    LineTraffic traffic(unit, faults, 0);
    traffic.setLog(log(true));
    traffic.receive("RIFD\r\n", 1.0);
    const QByteArray bytes = traffic.takeDue(1.0);
    const QByteArray hex = m_lines.last().mid(m_lines.last().lastIndexOf(' ') + 1);
    EXPECT_EQ(QByteArray::fromHex(hex), bytes.right(324).left(321));
}

TEST_F(TrafficLogTest, silenceAndFaults_areNoted) {
    Unit unit;
    Faults faults;
    LineTraffic traffic(unit, faults, 0);
    traffic.setLog(log(false));
    faults.silenceUntil(2.0);
    traffic.receive("RIVE\r\n", 1.0);
    faults.arm({Fault::Kind::Lose, 0.0, 0, {}, {}, 1});
    traffic.receive("RIVE\r\n", 3.0);
    EXPECT_EQ(m_lines,
              (QList<QByteArray>{"> \"RIVE\\r\\n\"", "! silent", "> \"RIVE\\r\\n\"", "! lose"}));
}

TEST(QuotedBytes, oddBytes_areReadableInOneLine) {
    EXPECT_EQ(quotedBytes(QByteArray("a\"\\\r\n\x01\xff", 7)), "\"a\\\"\\\\\\r\\n\\x01\\xff\"");
}

} // namespace
} // namespace veldron
