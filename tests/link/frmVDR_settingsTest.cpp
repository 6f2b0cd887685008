// SPDX-License-Identifier: MIT
#include "tests/link/LinkFixture.h"

#include <functional>

namespace veldron {
namespace {

class FrmVDRSettings : public LinkFixture {
protected:
    FrmVDRSettings() { bringUp(); }
    /// The unit is in \a mode and the link knows it.
    void dataMode(qint16 mode) {
        control.queueReply(QStringLiteral("WSDM%1").arg(mode), " \r\n");
        vdr.setVDRDataMode(mode);
        control.clearCommands();
    }
};

struct WriteCase {
    std::function<void(frmVDR &)> write;
    const char *sent;
    const char *report;
    CacheSlot slot;
    DeviceValue value;
};

/// A write of each property that the table serves.
const std::vector<WriteCase> &writeCases() {
    static const std::vector<WriteCase> cases{
        {[](frmVDR &v) { v.setRXMode(3); }, "WUMD3", "WUMD3", CacheSlot::Mode, qint16{3}},
        {[](frmVDR &v) { v.setRXType(7); }, "WURX7", "RURX7", CacheSlot::Receiver, qint16{7}},
        {[](frmVDR &v) { v.setRXStep(12500); }, "WUST12.5", "WUST12.5", CacheSlot::Step,
         qint32{12500}},
        {[](frmVDR &v) { v.setRXAtten(true); }, "WUAT1", "WUAT1", CacheSlot::Attenuator, true},
        {[](frmVDR &v) { v.setVDRAmp(-10); }, "WSGN-10", "WSGN-10", CacheSlot::Amplitude,
         qint16{-10}},
        {[](frmVDR &v) { v.setVDRRBW(2); }, "WSBW2", "WSBW2", CacheSlot::Bandwidth, qint16{2}},
        {[](frmVDR &v) { v.setVDRDataMode(4); }, "WSDM4", "WSDM4", CacheSlot::DataMode, qint16{4}},
        {[](frmVDR &v) { v.setVDRMonitorMode(3); }, "WUOM3", "WUOM3", CacheSlot::MonitorMode,
         qint16{3}},
        {[](frmVDR &v) { v.setVDRCentre(Hertz::fromWhole(145125000)); }, "WSCF145.125", "WSCF145",
         CacheSlot::Centre, Hertz::fromWhole(145125000)},
        {[](frmVDR &v) { v.setVDRSpan(2500000); }, "WSSP2.5", "WSSP2", CacheSlot::Span,
         qint32{2500000}},
    };
    return cases;
}

TEST_F(FrmVDRSettings, acceptedWrite_isCached) {
    for (const WriteCase &each : writeCases()) {
        control.queueReply(each.sent, " \r\n");
        each.write(vdr);
        EXPECT_EQ(control.commands().last(), QString::fromLatin1(each.sent));
        EXPECT_EQ(vdr.cached(each.slot), each.value) << each.sent;
        EXPECT_EQ(vdr.Status(), "VELDRON connected on COM 3") << each.sent;
    }
    EXPECT_EQ(static_cast<std::size_t>(control.commands().size()), writeCases().size());
}

TEST_F(FrmVDRSettings, refusedWrite_isSilentAndNotCached) {
    for (const WriteCase &each : writeCases()) {
        control.queueReply(each.sent, "?\r\n");
        const DeviceValue before = vdr.cached(each.slot);
        each.write(vdr);
        EXPECT_EQ(vdr.cached(each.slot), before) << each.sent;
        EXPECT_EQ(vdr.Status(), "VELDRON connected on COM 3") << each.sent;
    }
}

TEST_F(FrmVDRSettings, writeAnsweredWithAnythingElse_isReportedAndNotCached) {
    for (const WriteCase &each : writeCases()) {
        control.queueReply(each.sent, "E5\r\n");
        const DeviceValue before = vdr.cached(each.slot);
        each.write(vdr);
        EXPECT_EQ(vdr.cached(each.slot), before) << each.sent;
        EXPECT_EQ(vdr.Status(), QStringLiteral("Comms failure with command %1E5").arg(each.report));
    }
}

TEST_F(FrmVDRSettings, silentUnit_writeIsReportedWithTheCommandAlone) {
    vdr.setRXMode(3);
    EXPECT_FALSE(vdr.Connected());
    EXPECT_EQ(vdr.Status(), "Comms failure with command WUMD3");
}

TEST_F(FrmVDRSettings, writeOnADeadLink_reportsAgainWithoutSending) {
    vdr.setRXMode(3);
    control.clearCommands();
    for (const WriteCase &each : writeCases()) {
        each.write(vdr);
        EXPECT_EQ(vdr.Status(), QStringLiteral("Comms failure with command %1").arg(each.report));
    }
    EXPECT_TRUE(control.commands().isEmpty());
}

TEST_F(FrmVDRSettings, emptyLineAsReply_isReported) {
    control.queueReply("WUMD3", "\r\n");
    vdr.setRXMode(3);
    EXPECT_EQ(vdr.Status(), "Comms failure with command WUMD3");
    EXPECT_TRUE(vdr.Connected());
}

TEST_F(FrmVDRSettings, attenuatorOff_isTheSecondCommand) {
    control.queueReply("WUAT2", "E\r\n");
    vdr.setRXAtten(false);
    EXPECT_EQ(control.commands(), QStringList({"WUAT2"}));
    EXPECT_EQ(vdr.Status(), "Comms failure with command WUAT2E");
}

struct ReadCase {
    std::function<DeviceValue(frmVDR &)> read;
    const char *command;
    const char *reply;
    DeviceValue value;
    DeviceValue failure;
};

const std::vector<ReadCase> &readCases() {
    static const std::vector<ReadCase> cases{
        {[](frmVDR &v) -> DeviceValue { return v.RXMode(); }, "RUMD", "UMD3 \r\n", qint16{3},
         qint16{-1}},
        {[](frmVDR &v) -> DeviceValue { return v.RXType(); }, "RURX", "URX7 \r\n", qint16{7},
         qint16{-1}},
        {[](frmVDR &v) -> DeviceValue { return v.RXStep(); }, "RUST", "UST12.5 \r\n", qint32{12500},
         qint32{-1}},
        {[](frmVDR &v) -> DeviceValue { return v.RXAtten(); }, "RUAT", "UAT1 \r\n", true, false},
        {[](frmVDR &v) -> DeviceValue { return v.VDRAmp(); }, "RSGN", "SGN-10 \r\n", qint16{-10},
         qint16{-1}},
        {[](frmVDR &v) -> DeviceValue { return v.VDRRBW(); }, "RSBW", "SBW2 \r\n", qint16{2},
         qint16{-1}},
        {[](frmVDR &v) -> DeviceValue { return v.VDRDataMode(); }, "RSDM", "SDM4 \r\n", qint16{4},
         qint16{-1}},
        {[](frmVDR &v) -> DeviceValue { return v.VDRMonitorMode(); }, "RUOM", "UOM3 \r\n",
         qint16{3}, qint16{-1}},
        {[](frmVDR &v) -> DeviceValue { return v.VDRCentre(); }, "RSCF", "SCF145.125 \r\n",
         Hertz::fromWhole(145125000), Hertz::fromWhole(-1)},
        {[](frmVDR &v) -> DeviceValue { return v.VDRSpan(); }, "RSSP", "SSP10.000000 \r\n",
         qint32{10000000}, qint32{-1}},
        {[](frmVDR &v) -> DeviceValue { return v.VDRMarkerFreq(); }, "RICD", "f145.5\r\n",
         Hertz::fromWhole(145500000), Hertz::fromWhole(-1)},
    };
    return cases;
}

TEST_F(FrmVDRSettings, read_sendsItsCommandAndReturnsTheValue) {
    for (const ReadCase &each : readCases()) {
        control.queueReply(each.command, each.reply);
        EXPECT_EQ(each.read(vdr), each.value) << each.command;
        EXPECT_EQ(control.commands().last(), QString::fromLatin1(each.command));
    }
}

TEST_F(FrmVDRSettings, refusedRead_givesTheFailureValueSilently) {
    for (const ReadCase &each : readCases()) {
        control.queueReply(each.command, each.reply);
        control.queueReply(each.command, "?\r\n");
        each.read(vdr);
        EXPECT_EQ(each.read(vdr), each.failure) << each.command;
    }
    EXPECT_EQ(vdr.Status(), "VELDRON connected on COM 3");
}

TEST_F(FrmVDRSettings, failedAttenuatorRead_looksLikeOff) {
    control.queueReply("RUAT", "UAT1 \r\n");
    ASSERT_TRUE(vdr.RXAtten());
    control.queueReply("RUAT", "?\r\n");
    EXPECT_FALSE(vdr.RXAtten());
    EXPECT_EQ(vdr.cached(CacheSlot::Attenuator), DeviceValue(false));
}

TEST_F(FrmVDRSettings, readWithAnotherLineAsReply_givesTheFailureValueSilently) {
    for (const ReadCase &each : readCases()) {
        control.queueReply(each.command, "XYZ9 \r\n");
        EXPECT_EQ(each.read(vdr), each.failure) << each.command;
    }
    EXPECT_EQ(vdr.Status(), "VELDRON connected on COM 3");
}

TEST_F(FrmVDRSettings, linkDown_readsFailAtOnceWithoutSending) {
    vdr.SendCommand("RUMD");
    control.clearCommands();
    const double before = clock.seconds();
    for (const ReadCase &each : readCases()) {
        EXPECT_EQ(each.read(vdr), each.failure) << each.command;
    }
    EXPECT_EQ(vdr.VDRChData(),
              (ChannelData{Hertz::fromWhole(-1), Hertz::fromWhole(-1), Hertz::fromWhole(-1)}));
    EXPECT_TRUE(control.commands().isEmpty());
    EXPECT_EQ(clock.seconds(), before);
}

TEST_F(FrmVDRSettings, replyThatIsNoNumber_strictReadsFailAndOthersReadZero) {
    control.setReply("RUMD", "UMDFM \r\n");
    control.setReply("RSGN", "SGNx \r\n");
    EXPECT_EQ(vdr.RXMode(), -1);
    EXPECT_EQ(vdr.VDRAmp(), 0);
    EXPECT_TRUE(vdr.Connected());
}

TEST_F(FrmVDRSettings, refusedWrite_isRepairedByTheReadBack) {
    control.queueReply("WSBW9", "?\r\n");
    control.queueReply("RSBW", "SBW3 \r\n");
    vdr.setVDRRBW(9);
    EXPECT_EQ(vdr.VDRRBW(), 3);
    EXPECT_EQ(vdr.cached(CacheSlot::Bandwidth), DeviceValue(qint16{3}));
}

struct SamplesCase {
    qint16 mode;
    const char *write;
    const char *read;
};

TEST_F(FrmVDRSettings, samples_followTheCachedDataMode) {
    for (const SamplesCase &each :
         {SamplesCase{2, "WSAV16", "RSAV"}, SamplesCase{4, "WSME16", "RSME"}}) {
        dataMode(each.mode);
        control.setReply(each.write, " \r\n");
        control.setReply(each.read, QByteArray(each.read).mid(1) + "9 \r\n");
        vdr.setVDRSamples(16);
        EXPECT_EQ(vdr.cached(CacheSlot::Samples), DeviceValue(qint16{16}));
        EXPECT_EQ(vdr.VDRSamples(), 9);
        EXPECT_EQ(control.commands(), QStringList({each.write, each.read}));
    }
}

TEST_F(FrmVDRSettings, samplesFailing_reportTheSentTextAndReadAsMinusOne) {
    for (const SamplesCase &each :
         {SamplesCase{2, "WSAV16", "RSAV"}, SamplesCase{4, "WSME16", "RSME"}}) {
        dataMode(each.mode);
        control.setReply(each.write, "E\r\n");
        control.setReply(each.read, "?\r\n");
        vdr.setVDRSamples(16);
        EXPECT_EQ(vdr.Status(), QStringLiteral("Comms failure with command %1E").arg(each.write));
        EXPECT_EQ(vdr.VDRSamples(), -1);
    }
}

TEST_F(FrmVDRSettings, samplesInAnyOtherMode_sendNothingAndKeepTheLastValue) {
    dataMode(2);
    control.setReply("WSAV16", " \r\n");
    vdr.setVDRSamples(16);
    for (const qint16 mode : {qint16{1}, qint16{3}, qint16{0}, qint16{-1}}) {
        dataMode(mode);
        vdr.setVDRSamples(99);
        EXPECT_EQ(vdr.VDRSamples(), 16);
        EXPECT_TRUE(control.commands().isEmpty());
    }
}

TEST_F(FrmVDRSettings, samplesAfterAFailedReadOfTheMode_sendNothing) {
    dataMode(2);
    control.setReply("RSDM", "?\r\n");
    vdr.VDRDataMode();
    control.clearCommands();
    EXPECT_EQ(vdr.VDRSamples(), 0);
    EXPECT_TRUE(control.commands().isEmpty());
}

const ChannelData kTwoMetres{Hertz::fromWhole(144000000), Hertz::fromWhole(25000),
                             Hertz::fromWhole(146000000)};

struct ChannelCase {
    const char *name;
    const char *reply;
    ChannelData value;
};

TEST_F(FrmVDRSettings, channelReply_readsAsThreeFields) {
    const Hertz none;
    const ChannelCase cases[] = {
        {"three fields", "UCS144 25 146 \r\n", kTwoMetres},
        {"decimals",
         "UCS144.5 12.5 146.0125 \r\n",
         {Hertz::fromWhole(144500000), Hertz::fromWhole(12500), Hertz::fromWhole(146012500)}},
        {"no blank at all", "UCS146 \r\n", {none, none, Hertz::fromWhole(146000000)}},
        {"one blank",
         "UCS144 25 \r\n",
         {Hertz::fromWhole(144000000), none, Hertz::fromWhole(25000000)}},
        {"a blank in front",
         "UCS 144 25 146 \r\n",
         {none, Hertz::fromWhole(144000), Hertz::fromWhole(25000000)}},
        {"a fourth field", "UCS144 25 146 9 \r\n", kTwoMetres},
        {"empty", "UCS \r\n", {none, none, none}},
    };
    for (const ChannelCase &each : cases) {
        control.queueReply("RUCS", each.reply);
        EXPECT_EQ(vdr.VDRChData(), each.value) << each.name;
    }
}

TEST_F(FrmVDRSettings, channelReply_isCutDownInTheLastReply) {
    control.queueReply("RUCS", "UCS144 25 146 \r\n");
    vdr.VDRChData();
    EXPECT_EQ(vdr.LastReply(), "146");
}

TEST_F(FrmVDRSettings, failedChannelRead_isMinusOneInAllThree) {
    control.queueReply("RUCS", "?\r\n");
    const Hertz failed = Hertz::fromWhole(-1);
    EXPECT_EQ(vdr.VDRChData(), (ChannelData{failed, failed, failed}));
}

TEST_F(FrmVDRSettings, channelWrite_hasABlankAfterTheLetters) {
    control.setReply("WUCS 144 25 146", " \r\n");
    vdr.setVDRChData(kTwoMetres);
    EXPECT_EQ(control.commands(), QStringList({"WUCS 144 25 146"}));
    EXPECT_EQ(vdr.Status(), "VELDRON connected on COM 3");
}

TEST_F(FrmVDRSettings, failedChannelWrite_reportsTheSameText) {
    control.setReply("WUCS 0.1 0.0125 3500.0001", "E\r\n");
    vdr.setVDRChData(
        {Hertz::fromWhole(100000), Hertz::fromUnits(125000), Hertz::fromWhole(3500000100)});
    EXPECT_EQ(vdr.Status(), "Comms failure with command WUCS 0.1 0.0125 3500.0001E");
}

TEST_F(FrmVDRSettings, refusedChannelWrite_isSilent) {
    control.setDefaultReply("?\r\n");
    vdr.setVDRChData(kTwoMetres);
    EXPECT_EQ(vdr.Status(), "VELDRON connected on COM 3");
}

} // namespace
} // namespace veldron
