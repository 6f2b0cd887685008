// SPDX-License-Identifier: MIT
#include "simulator/Unit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

namespace veldron {
namespace {

QByteArray samplesOf(Unit &unit) {
    return unit.reply("RIFD").samples;
}

TEST(Unit, everyWrite_isTakenAndReadBack) {
    struct Case {
        const char *write;
        const char *read;
        const char *reply;
    };
    Unit unit;
    for (const Case &c :
         {Case{"WURX5", "RURX", "URX5 \r\n"}, Case{"WUMD3", "RUMD", "UMD3 \r\n"},
          Case{"WUST12.5", "RUST", "UST12.5 \r\n"}, Case{"WUAT1", "RUAT", "UAT1 \r\n"},
          Case{"WUAT2", "RUAT", "UAT2 \r\n"}, Case{"WSGN-10", "RSGN", "SGN-10 \r\n"},
          Case{"WSBW4", "RSBW", "SBW4 \r\n"}, Case{"WSDM2", "RSDM", "SDM2 \r\n"},
          Case{"WSAV31", "RSAV", "SAV31 \r\n"}, Case{"WSME4", "RSME", "SME4 \r\n"},
          Case{"WUOM2", "RUOM", "UOM2 \r\n"}, Case{"WSCF145.125", "RSCF", "SCF145.125000 \r\n"},
          Case{"WSSP5", "RSSP", "SSP5.000000 \r\n"},
          Case{"WUCS 144.5 12.5 145", "RUCS", "UCS144.5 12.5 145 \r\n"},
          Case{"WUDS1", "RICD", "f145.140625\r\n"}, Case{"WUDS2", "RICD", "f145.125\r\n"},
          Case{"WUMC", "RICD", "f145.125\r\n"}}) {
        EXPECT_EQ(unit.answer(QByteArray(c.write) + "\r\n"), " \r\n") << c.write;
        EXPECT_EQ(unit.answer(QByteArray(c.read) + "\r\n"), c.reply) << c.read;
    }
}

TEST(Unit, unknownCommandOrValueOutOfRange_isRefused) {
    Unit unit;
    for (const char *line : {"",
                             "\r\n",
                             "X",
                             "W",
                             "R",
                             "RXXX",
                             "WXXX1",
                             "rumd",
                             "wumd1",
                             "QUMD",
                             "RUMD1",
                             "RIFD1",
                             "RICD5",
                             "RIVEx",
                             "WUMD",
                             "WUMD0",
                             "WUMD18",
                             "WUMD1.5",
                             "WUMD 1",
                             "WURX0",
                             "WURX12",
                             "WUST",
                             "WUST0",
                             "WUST-5",
                             "WUAT0",
                             "WUAT3",
                             "WUAT",
                             "WSGN5",
                             "WSGN-40",
                             "WSBW0",
                             "WSBW5",
                             "WSDM0",
                             "WSDM5",
                             "WSAV1",
                             "WSAV32",
                             "WSME1",
                             "WSME5",
                             "WUOM0",
                             "WUOM4",
                             "WSCF0",
                             "WSCF-1",
                             "WSCF3501",
                             "WSCF1,5",
                             "WSSP0",
                             "WSSP11",
                             "WUCS144 25 146",
                             "WUCS 144 25",
                             "WUCS 146 25 144",
                             "WUCS 144 0 146",
                             "WUCS 144 25 146 1",
                             "WUDS",
                             "WUDS3",
                             "WUMC1"}) {
        EXPECT_EQ(unit.answer(line), "?\r\n") << line;
    }
}

TEST(Unit, refusedWrite_leavesTheSettingAlone) {
    Unit unit;
    EXPECT_EQ(unit.answer("WSCF3501"), "?\r\n");
    EXPECT_EQ(unit.answer("RSCF"), "SCF100.000000 \r\n");
}

TEST(Unit, version_holdsVerBehindOneCharacter) {
    const QByteArray text = Unit().answer("RIVE");
    EXPECT_TRUE(text.startsWith("IVE Ver ")) << text.constData();
    EXPECT_TRUE(text.endsWith(" \r\n"));
}

TEST(Unit, receiverThatCannotBeCommanded_answersModeZero) {
    for (const char *receiver : {"WURX1", "WURX2"}) {
        Unit unit;
        ASSERT_EQ(unit.answer(receiver), " \r\n");
        EXPECT_EQ(unit.answer("RUMD"), "UMD0 \r\n");
        for (const char *write : {"WUMD1", "WUST10", "WUAT1", "WUAT2"}) {
            EXPECT_EQ(unit.answer(write), "?\r\n") << write;
        }
    }
}

TEST(Unit, scan_hasHeaderSamplesAndTerminator) {
    Unit unit;
    const UnitReply reply = unit.reply("RIFD\r\n");
    EXPECT_TRUE(reply.text.startsWith("IFD"));
    EXPECT_TRUE(reply.text.endsWith(" \r\n"));
    EXPECT_EQ(reply.samples.size(), 321);
    EXPECT_EQ(reply.terminator, " \r\n");
    EXPECT_EQ(reply.all().size(), reply.text.size() + 324);
}

TEST(Unit, scanOfChannels_hasOneSampleAChannel) {
    Unit unit;
    ASSERT_TRUE(unit.setByHand("WUOM3"));
    EXPECT_EQ(samplesOf(unit).size(), 81);
    ASSERT_TRUE(unit.setByHand("WUCS 100 10 110"));
    EXPECT_EQ(samplesOf(unit).size(), 321);
    ASSERT_TRUE(unit.setByHand("WUCS 100 10 100"));
    EXPECT_EQ(samplesOf(unit).size(), 1);
}

TEST(Unit, imageDownload_isALineAndABlockOfFixedSize) {
    const UnitReply reply = Unit().reply("RVIM");
    EXPECT_EQ(reply.text, "VIM \r\n");
    EXPECT_EQ(reply.image.size(), Unit::kImageSize);
}

TEST(Unit, sameSeedAndTimes_giveTheSameScans) {
    Unit a(5);
    Unit b(5);
    Unit other(6);
    bool differs = false;
    for (int i = 0; i < 5; ++i) {
        a.setTime(i);
        b.setTime(i);
        other.setTime(i);
        const QByteArray scan = samplesOf(a);
        EXPECT_EQ(scan, samplesOf(b));
        differs = differs || scan != samplesOf(other);
    }
    EXPECT_TRUE(differs);
}

/// A second unit in Normal mode gives the single scans that the other data modes work on.
std::vector<QByteArray> plainScans(int count) {
    Unit unit(3);
    std::vector<QByteArray> scans;
    for (int i = 0; i < count; ++i) {
        unit.setTime(i);
        scans.push_back(samplesOf(unit));
    }
    return scans;
}

TEST(Unit, maximum_isHeldOverAllScans) {
    const std::vector<QByteArray> plain = plainScans(6);
    Unit unit(3);
    ASSERT_TRUE(unit.setByHand("WSDM3"));
    QByteArray shown;
    for (int i = 0; i < 6; ++i) {
        unit.setTime(i);
        shown = samplesOf(unit);
        EXPECT_TRUE(unit.setByHand("WSDM3")) << "choosing it again drops nothing";
    }
    for (qsizetype bin = 0; bin < shown.size(); ++bin) {
        int highest = 0;
        for (const QByteArray &scan : plain) {
            highest = std::max(highest, int(quint8(scan.at(bin))));
        }
        ASSERT_EQ(int(quint8(shown.at(bin))), highest) << bin;
    }
}

TEST(Unit, maximum_startsAnewAfterNormalThenMax) {
    const std::vector<QByteArray> plain = plainScans(4);
    Unit unit(3);
    ASSERT_TRUE(unit.setByHand("WSDM3"));
    QByteArray held;
    for (int i = 0; i < 3; ++i) {
        unit.setTime(i);
        held = samplesOf(unit);
    }
    EXPECT_NE(held, plain.at(2));
    ASSERT_TRUE(unit.setByHand("WSDM1"));
    ASSERT_TRUE(unit.setByHand("WSDM3"));
    unit.setTime(3);
    EXPECT_EQ(samplesOf(unit), plain.at(3));
}

TEST(Unit, retuning_dropsHeldLevels) {
    Unit unit(3);
    Unit fresh(3);
    ASSERT_TRUE(unit.setByHand("WSDM3"));
    EXPECT_EQ(samplesOf(unit), samplesOf(fresh));
    for (Unit *each : {&unit, &fresh}) {
        ASSERT_TRUE(each->setByHand("WSCF145"));
        each->setTime(1);
    }
    EXPECT_EQ(samplesOf(unit), samplesOf(fresh));
}

TEST(Unit, averageAndMedian_runOverTheirOwnCounts) {
    const std::vector<QByteArray> plain = plainScans(4);
    Unit average(3);
    Unit median(3);
    ASSERT_TRUE(average.setByHand("WSDM2") && average.setByHand("WSAV2"));
    ASSERT_TRUE(median.setByHand("WSDM4") && median.setByHand("WSME3"));
    QByteArray shownAverage;
    QByteArray shownMedian;
    for (int i = 0; i < 4; ++i) {
        average.setTime(i);
        median.setTime(i);
        shownAverage = samplesOf(average);
        shownMedian = samplesOf(median);
    }
    for (qsizetype bin = 0; bin < 321; ++bin) {
        std::vector<int> levels;
        for (std::size_t i = 1; i < 4; ++i) {
            levels.push_back(quint8(plain.at(i).at(bin)));
        }
        EXPECT_LE(std::abs(2 * int(quint8(shownAverage.at(bin))) - levels[1] - levels[2]), 1);
        std::sort(levels.begin(), levels.end());
        EXPECT_EQ(int(quint8(shownMedian.at(bin))), levels[1]);
    }
}

} // namespace
} // namespace veldron
