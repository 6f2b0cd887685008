// SPDX-License-Identifier: MIT
#include "tests/link/LinkFixture.h"

namespace veldron {
namespace {

/// The built-in unit, which other tests rely on.
class BuiltInUnit : public LinkFixture {
protected:
    BuiltInUnit() {
        control.setUnit(true);
        vdr.setCommPort(3);
        vdr.Connect();
        control.clearCommands();
    }
};

TEST_F(BuiltInUnit, version_isRecognised) {
    control.setVersion("Ver 7");
    vdr.Connect();
    EXPECT_EQ(vdr.Version(), "Ver 7");
}

TEST_F(BuiltInUnit, writtenValue_readsBack) {
    vdr.setRXMode(5);
    vdr.setVDRChData(
        {Hertz::fromWhole(144000000), Hertz::fromWhole(25000), Hertz::fromWhole(146000000)});
    EXPECT_EQ(vdr.RXMode(), 5);
    EXPECT_EQ(vdr.VDRChData()[1], Hertz::fromWhole(25000));
    EXPECT_EQ(control.unitValue("UCS"), "144 25 146");
    EXPECT_EQ(control.commands(), QStringList({"WUMD5", "WUCS 144 25 146", "RUMD", "RUCS"}));
}

TEST_F(BuiltInUnit, givenValue_reads_andUnknownOneIsRefused) {
    control.setUnitValue("ICD", "145.5");
    EXPECT_EQ(vdr.VDRMarkerFreq(), Hertz::fromWhole(145500000));
    EXPECT_EQ(vdr.VDRAmp(), -1);
    EXPECT_EQ(vdr.LastReply(), "?");
}

TEST_F(BuiltInUnit, scan_comesWhole) {
    control.setScan(QByteArray(321, 'z'));
    EXPECT_EQ(vdr.GetData(), LevelScan(321, 'z'));
}

TEST_F(BuiltInUnit, fixedAndQueuedReplies_comeFirst) {
    control.setReply("RUMD", "UMD8 \r\n");
    control.queueReply("RUMD", "?\r\n");
    EXPECT_EQ(vdr.RXMode(), -1);
    EXPECT_EQ(vdr.RXMode(), 8);
}

TEST_F(BuiltInUnit, silence_costsASecondOfTheClock) {
    control.setSilent(true);
    const double before = clock.seconds();
    EXPECT_EQ(vdr.RXMode(), -1);
    EXPECT_NEAR(clock.seconds() - before, 1.0, 0.006);
}

} // namespace
} // namespace veldron
