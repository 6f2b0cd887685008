// SPDX-License-Identifier: MIT
#include "simulator/Faults.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

Fault fault(Fault::Kind kind, int count = 0, const QByteArray &bytes = {}) {
    return {kind, 0.0, count, bytes, {}, 1};
}

QByteArray sent(const UnitReply &reply, const Fault &armed) {
    QByteArray all;
    for (const Portion &portion : Faults::portions(Faults::spoil(reply, armed), armed)) {
        all += portion.bytes;
    }
    return all;
}

UnitReply readReply() {
    return {"UMD3 \r\n", {}, {}, {}};
}
UnitReply scanReply() {
    return {"IFD9 \r\n", "123456789", " \r\n", {}};
}

TEST(Faults, eachFault_spoilsALineInItsOwnWay) {
    struct Case {
        Fault::Kind kind;
        QByteArray sent;
    };
    for (const Case &c :
         {Case{Fault::Kind::Lose, ""}, Case{Fault::Kind::RubbishBefore, "#~#UMD3 \r\n"},
          Case{Fault::Kind::RubbishBehind, "UMD3 \r\n#~#"},
          Case{Fault::Kind::Garble, "\xd5\xcd\xc4\xb3\xa0\r\n"},
          Case{Fault::Kind::WrongEcho, "XXX3 \r\n"}, Case{Fault::Kind::Delay, "UMD3 \r\n"},
          Case{Fault::Kind::FlipBit, "TLE2!\r\n"}, Case{Fault::Kind::NoLineFeed, "UMD3 \r"},
          Case{Fault::Kind::Endless, "UMD3 \r\n"}, Case{Fault::Kind::Split, "UMD3 \r\n"}}) {
        EXPECT_EQ(sent(readReply(), fault(c.kind, 0, "#~#")), c.sent) << int(c.kind);
    }
}

TEST(Faults, bitFlip_flipsTheBitAsked) {
    EXPECT_EQ(sent(readReply(), fault(Fault::Kind::FlipBit, 7)), "\xd5\xcd\xc4\xb3\xa0\r\n");
}

TEST(Faults, endless_sendsAsManyBytesWithoutALineEnd) {
    EXPECT_EQ(sent(readReply(), fault(Fault::Kind::Endless, 5)), "UMD3 \r\nUUUUU");
}

TEST(Faults, garbleAndEcho_spoilShortRepliesToo) {
    EXPECT_EQ(sent({" \r\n", {}, {}, {}}, fault(Fault::Kind::WrongEcho)), "X\r\n");
    EXPECT_EQ(sent({"?\r\n", {}, {}, {}}, fault(Fault::Kind::Garble)), "\xbf\r\n");
}

TEST(Faults, scans_areCutShortenedUnendedOrEndedEarly) {
    struct Case {
        Fault::Kind kind;
        QByteArray sent;
    };
    for (const Case &c : {Case{Fault::Kind::ScanCut, "IFD9 \r\n1234"},
                          Case{Fault::Kind::ScanShort, "IFD9 \r\n1234 \r\n"},
                          Case{Fault::Kind::ScanUnended, "IFD9 \r\n123456789"},
                          Case{Fault::Kind::ScanEarlyEnd, "IFD9 \r\n1234 \r\n89 \r\n"}}) {
        EXPECT_EQ(sent(scanReply(), fault(c.kind, 4)), c.sent) << int(c.kind);
    }
}

TEST(Faults, faultOfAScan_waitsForAScan) {
    Faults faults;
    faults.arm(fault(Fault::Kind::ScanCut));
    EXPECT_FALSE(faults.take("RUMD"));
    EXPECT_TRUE(faults.take("RIFD"));
    EXPECT_FALSE(faults.take("RIFD"));
}

TEST(Faults, oldestThatFits_isTakenFirstAndOncePerTime) {
    Faults faults;
    faults.arm({Fault::Kind::Lose, 0.0, 0, {}, "RIVE", 1});
    faults.arm({Fault::Kind::Garble, 0.0, 0, {}, {}, 2});
    EXPECT_EQ(faults.take("RUMD")->kind, Fault::Kind::Garble);
    EXPECT_EQ(faults.take("RIVE")->kind, Fault::Kind::Lose);
    EXPECT_EQ(faults.take("RIVE")->kind, Fault::Kind::Garble);
    EXPECT_FALSE(faults.take("RIVE"));
}

TEST(Faults, clear_disarmsAllAndEndsSilence) {
    Faults faults;
    faults.arm(fault(Fault::Kind::Lose));
    faults.silenceForGood();
    faults.clear();
    EXPECT_TRUE(faults.armed().empty());
    EXPECT_FALSE(faults.isSilent(0.0));
}

TEST(Faults, everyKind_hasANameThatLeadsBack) {
    for (int i = 0; i <= static_cast<int>(Fault::Kind::ScanEarlyEnd); ++i) {
        const auto kind = static_cast<Fault::Kind>(i);
        EXPECT_FALSE(Faults::name(kind).isEmpty()) << i;
        EXPECT_EQ(Faults::kindOf(Faults::name(kind)), kind) << i;
    }
    EXPECT_FALSE(Faults::kindOf("nonsense"));
}

} // namespace
} // namespace veldron
