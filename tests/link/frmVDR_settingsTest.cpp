// SPDX-License-Identifier: MIT
#include "tests/link/LinkFixture.h"

#include <functional>
#include <set>
#include <vector>

namespace veldron {
namespace {

class FrmVDRSettings : public LinkFixture {
protected:
    FrmVDRSettings() { bringUp(); }
    /// The unit is in \a mode and the link knows it.
    void dataMode(DataModeCode mode) {
        control.queueReply(QStringLiteral("WSDM%1").arg(static_cast<qint16>(mode)), " \r\n");
        vdr.setVDRDataMode(mode);
        control.clearCommands();
    }
};

// ---- every row, from the property to the wire and back

QString text(qint32 value) {
    return QString::number(value);
}
QString text(DataModeCode value) {
    return text(qint32{static_cast<qint16>(value)});
}
QString text(MonitorModeCode value) {
    return text(qint32{static_cast<qint16>(value)});
}
QString text(bool value) {
    return value ? "on" : "off";
}
QString text(Hertz value) {
    return value.toText();
}
QString text(const ChannelData &value) {
    return text(value[0]) + ' ' + text(value[1]) + ' ' + text(value[2]);
}

/// One setting: a write of its property and what that is on the wire, a reply to its read and what
/// that gives. Values are texts, so that rows of all types stand in one list.
struct Row {
    const char *name;
    std::function<void(frmVDR &)> write; ///< none for the marker, which is moved in steps
    const char *sent;
    const char *report;
    std::function<QString(frmVDR &)> read;
    const char *command;
    const char *reply;
    QString value;
    QString failure;
    std::function<QString(const OpenedVDR &)> cached;
    QString written;
};

/// The wire's side of a row.
struct Wires {
    const char *sent;
    const char *report;
    const char *command;
    const char *reply;
    const char *failure; ///< what a failed read gives
};

template <typename T, typename Get, typename Set>
Row row(const char *name, UnitSetting<T> UnitSettingRows::*setting, Get get, Set set, T written,
        const Wires &wires, T value) {
    return {name,
            [set, written](frmVDR &v) { (v.*set)(written); },
            wires.sent,
            wires.report,
            [get](frmVDR &v) { return text((v.*get)()); },
            wires.command,
            wires.reply,
            text(value),
            wires.failure,
            [setting](const OpenedVDR &v) { return text((v.settings().*setting).cached); },
            text(written)};
}

Row markerRow() {
    return {"VDRMarkerFreq",
            {},
            "",
            "",
            [](frmVDR &v) { return text(v.VDRMarkerFreq()); },
            "RICD",
            "f145.5\r\n",
            "145500000",
            "-1",
            [](const OpenedVDR &v) { return text(v.settings().VDRMarkerFreq.cached); },
            {}};
}

const ChannelData kTwoMetres{Hertz::fromWhole(144000000), Hertz::fromWhole(25000),
                             Hertz::fromWhole(146000000)};
const ChannelData kBroadcast{Hertz::fromWhole(88000000), Hertz::fromWhole(100000),
                             Hertz::fromWhole(108000000)};

/// Every row of the unit's settings; the sample count is asked for in the mode Average.
const std::vector<Row> &rows() {
    using V = frmVDR;
    using S = UnitSettingRows;
    static const std::vector<Row> all{
        row<qint16>("RXMode", &S::RXMode, &V::RXMode, &V::setRXMode, 3,
                    {"WUMD3", "WUMD3", "RUMD", "UMD5 \r\n", "-1"}, 5),
        row<qint16>("RXType", &S::RXType, &V::RXType, &V::setRXType, 7,
                    {"WURX7", "RURX7", "RURX", "URX6 \r\n", "-1"}, 6),
        row<qint32>("RXStep", &S::RXStep, &V::RXStep, &V::setRXStep, 12500,
                    {"WUST12.5", "WUST12.5", "RUST", "UST8.33 \r\n", "-1"}, 8330),
        row<bool>("RXAtten", &S::RXAtten, &V::RXAtten, &V::setRXAtten, true,
                  {"WUAT1", "WUAT1", "RUAT", "UAT1 \r\n", "off"}, true),
        row<qint16>("VDRAmp", &S::VDRAmp, &V::VDRAmp, &V::setVDRAmp, -10,
                    {"WSGN-10", "WSGN-10", "RSGN", "SGN-20 \r\n", "-1"}, -20),
        row<qint16>("VDRRBW", &S::VDRRBW, &V::VDRRBW, &V::setVDRRBW, 4,
                    {"WSBW4", "WSBW4", "RSBW", "SBW2 \r\n", "-1"}, 2),
        row<qint16>("VDRSamples", &S::VDRSamples, &V::VDRSamples, &V::setVDRSamples, 16,
                    {"WSAV16", "WSAV16", "RSAV", "SAV9 \r\n", "-1"}, 9),
        row<DataModeCode>("VDRDataMode", &S::VDRDataMode, &V::VDRDataMode, &V::setVDRDataMode,
                          DataModeCode::Median, {"WSDM4", "WSDM4", "RSDM", "SDM2 \r\n", "-1"},
                          DataModeCode::Average),
        row<MonitorModeCode>("VDRMonitorMode", &S::VDRMonitorMode, &V::VDRMonitorMode,
                             &V::setVDRMonitorMode, MonitorModeCode::Channel,
                             {"WUOM3", "WUOM3", "RUOM", "UOM2 \r\n", "-1"}, MonitorModeCode::Step),
        row<Hertz>("VDRCentre", &S::VDRCentre, &V::VDRCentre, &V::setVDRCentre,
                   Hertz::fromWhole(145125000),
                   {"WSCF145.125", "WSCF145", "RSCF", "SCF433.5 \r\n", "-1"},
                   Hertz::fromWhole(433500000)),
        row<qint32>("VDRSpan", &S::VDRSpan, &V::VDRSpan, &V::setVDRSpan, 2500000,
                    {"WSSP2.5", "WSSP2", "RSSP", "SSP10.000000 \r\n", "-1"}, 10000000),
        row<ChannelData>(
            "VDRChData", &S::VDRChData, &V::VDRChData, &V::setVDRChData, kTwoMetres,
            {"WUCS 144 25 146", "WUCS 144 25 146", "RUCS", "UCS88 100 108 \r\n", "-1 -1 -1"},
            kBroadcast),
        markerRow(),
    };
    return all;
}

class EveryUnitSetting : public FrmVDRSettings {
protected:
    EveryUnitSetting() { dataMode(DataModeCode::Average); }
    /// Writes each row's value, answered with \a reply to every write.
    void writeEach(const QByteArray &reply, const std::function<void(const Row &)> &expect) {
        for (const Row &each : rows()) {
            if (each.write) {
                control.queueReply(each.sent, reply);
                before = each.cached(vdr);
                each.write(vdr);
                expect(each);
            }
        }
    }

    QString before; ///< what was cached before the latest write
};

TEST_F(EveryUnitSetting, isInTheList) {
    // Adding a member to the rows breaks this line; then the list above needs a row too.
    [[maybe_unused]] const auto &[a, b, c, d, e, f, g, h, i, j, k, l, m] = vdr.settings();
    EXPECT_EQ(rows().size(), 13U);
    std::set<QString> names;
    for (const Row &each : rows()) {
        EXPECT_TRUE(names.insert(QLatin1String(each.command)).second) << each.name;
    }
}

TEST_F(EveryUnitSetting, startsAsZero) {
    const UnitSettingRows empty = unitSettingRows();
    EXPECT_EQ(empty.RXMode.cached, 0);
    EXPECT_EQ(empty.RXStep.cached, 0);
    EXPECT_FALSE(empty.RXAtten.cached);
    EXPECT_EQ(empty.VDRCentre.cached, Hertz());
    EXPECT_EQ(empty.VDRChData.cached, ChannelData{});
}

TEST_F(EveryUnitSetting, acceptedWrite_isSentAndCached) {
    writeEach(" \r\n", [this](const Row &each) {
        EXPECT_EQ(control.commands().last(), QLatin1String(each.sent)) << each.name;
        EXPECT_EQ(each.cached(vdr), each.written) << each.name;
        EXPECT_EQ(vdr.Status(), "VELDRON connected on COM 3") << each.name;
    });
    EXPECT_EQ(control.commands().size(), 12);
}

TEST_F(EveryUnitSetting, refusedWrite_isSilentAndNotCached) {
    writeEach("?\r\n", [this](const Row &each) {
        EXPECT_EQ(each.cached(vdr), before) << each.name;
        EXPECT_EQ(vdr.Status(), "VELDRON connected on COM 3") << each.name;
    });
    EXPECT_EQ(control.commands().size(), 12);
}

TEST_F(EveryUnitSetting, writeAnsweredWithAnythingElse_isReportedAndNotCached) {
    writeEach("E5\r\n", [this](const Row &each) {
        EXPECT_EQ(each.cached(vdr), before) << each.name;
        EXPECT_EQ(vdr.Status(), QStringLiteral("Comms failure with command %1E5").arg(each.report));
    });
}

TEST_F(EveryUnitSetting, writeOnADeadLink_reportsAgainWithoutSending) {
    vdr.SendCommand("RUMD");
    control.clearCommands();
    writeEach(" \r\n", [this](const Row &each) {
        EXPECT_EQ(vdr.Status(), QStringLiteral("Comms failure with command %1").arg(each.report));
    });
    EXPECT_TRUE(control.commands().isEmpty());
}

TEST_F(EveryUnitSetting, read_sendsItsCommandAndGivesAndCachesTheValue) {
    for (const Row &each : rows()) {
        control.queueReply(each.command, each.reply);
        EXPECT_EQ(each.read(vdr), each.value) << each.name;
        EXPECT_EQ(each.cached(vdr), each.value) << each.name;
        EXPECT_FALSE(vdr.readFailed()) << each.name;
        EXPECT_EQ(control.commands().last(), QLatin1String(each.command)) << each.name;
    }
}

TEST_F(EveryUnitSetting, failedRead_givesAndCachesTheFailureValueSilently) {
    for (const char *line : {"?\r\n", "XYZ9 \r\n"}) {
        for (const Row &each : rows()) {
            dataMode(DataModeCode::Average);
            control.queueReply(each.command, each.reply);
            control.queueReply(each.command, line);
            each.read(vdr);
            dataMode(DataModeCode::Average);
            EXPECT_EQ(each.read(vdr), each.failure) << each.name;
            EXPECT_EQ(each.cached(vdr), each.failure) << each.name;
            EXPECT_TRUE(vdr.readFailed()) << each.name;
        }
    }
    EXPECT_EQ(vdr.Status(), "VELDRON connected on COM 3");
}

TEST_F(EveryUnitSetting, linkDown_readsFailAtOnceWithoutSending) {
    vdr.SendCommand("RUMD");
    control.clearCommands();
    const double start = clock.seconds();
    for (const Row &each : rows()) {
        if (QLatin1String(each.name) != "VDRDataMode") {
            EXPECT_EQ(each.read(vdr), each.failure) << each.name;
        }
    }
    EXPECT_EQ(vdr.VDRDataMode(), DataModeCode(-1));
    EXPECT_TRUE(control.commands().isEmpty());
    EXPECT_EQ(clock.seconds(), start);
}

// ---- what single settings do beside that

TEST_F(FrmVDRSettings, silentUnit_writeIsReportedWithTheCommandAlone) {
    vdr.setRXMode(3);
    EXPECT_FALSE(vdr.Connected());
    EXPECT_EQ(vdr.Status(), "Comms failure with command WUMD3");
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

TEST_F(FrmVDRSettings, failedAttenuatorRead_looksLikeOff) {
    control.queueReply("RUAT", "UAT1 \r\n");
    ASSERT_TRUE(vdr.RXAtten());
    control.queueReply("RUAT", "?\r\n");
    EXPECT_FALSE(vdr.RXAtten());
    EXPECT_FALSE(vdr.settings().RXAtten.cached);
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
    EXPECT_EQ(vdr.settings().VDRRBW.cached, 3);
}

struct SamplesCase {
    DataModeCode mode;
    const char *write;
    const char *read;
};

TEST_F(FrmVDRSettings, samples_followTheCachedDataMode) {
    for (const SamplesCase &each : {SamplesCase{DataModeCode::Average, "WSAV16", "RSAV"},
                                    SamplesCase{DataModeCode::Median, "WSME16", "RSME"}}) {
        dataMode(each.mode);
        control.setReply(each.write, " \r\n");
        control.setReply(each.read, QByteArray(each.read).mid(1) + "9 \r\n");
        vdr.setVDRSamples(16);
        EXPECT_EQ(vdr.settings().VDRSamples.cached, 16);
        EXPECT_EQ(vdr.VDRSamples(), 9);
        EXPECT_EQ(control.commands(), QStringList({each.write, each.read}));
    }
}

TEST_F(FrmVDRSettings, samplesFailing_reportTheSentTextAndReadAsMinusOne) {
    for (const SamplesCase &each : {SamplesCase{DataModeCode::Average, "WSAV16", "RSAV"},
                                    SamplesCase{DataModeCode::Median, "WSME16", "RSME"}}) {
        dataMode(each.mode);
        control.setReply(each.write, "E\r\n");
        control.setReply(each.read, "?\r\n");
        vdr.setVDRSamples(16);
        EXPECT_EQ(vdr.Status(), QStringLiteral("Comms failure with command %1E").arg(each.write));
        EXPECT_EQ(vdr.VDRSamples(), -1);
    }
}

TEST_F(FrmVDRSettings, samplesInAnyOtherMode_sendNothingAndKeepTheLastValue) {
    dataMode(DataModeCode::Average);
    control.setReply("WSAV16", " \r\n");
    vdr.setVDRSamples(16);
    for (const DataModeCode mode :
         {DataModeCode::Normal, DataModeCode::Max, DataModeCode::None, DataModeCode(-1)}) {
        dataMode(mode);
        vdr.setVDRSamples(99);
        EXPECT_EQ(vdr.VDRSamples(), 16);
        EXPECT_TRUE(control.commands().isEmpty());
    }
}

TEST_F(FrmVDRSettings, samplesAfterAFailedReadOfTheMode_sendNothing) {
    dataMode(DataModeCode::Average);
    control.setReply("RSDM", "?\r\n");
    vdr.VDRDataMode();
    control.clearCommands();
    EXPECT_EQ(vdr.VDRSamples(), 0);
    EXPECT_TRUE(control.commands().isEmpty());
}

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
