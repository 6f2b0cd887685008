// SPDX-License-Identifier: MIT
#include "tests/link/LinkFixture.h"

namespace veldron {
namespace {

using Message = RecordingLinkHost::Message;

class FrmVDRDiscovery : public LinkFixture {
protected:
    void unitOn(qint16 port) {
        control.setUnit(true);
        control.setUnitPort(port);
    }
};

TEST_F(FrmVDRDiscovery, construction_setsTheLineUp) {
    EXPECT_EQ(control.writes(),
              QStringList({"InputMode=1", "Handshaking=2", "Settings=9600,n,8,2"}));
    EXPECT_EQ(vdr.ComDefault(), 0);
    EXPECT_EQ(vdr.Version(), "");
    EXPECT_FALSE(vdr.Connected());
    EXPECT_FALSE(vdr.Active());
    EXPECT_EQ(&vdr.Comm(), &control);
}

TEST(FrmVDR, endOfLife_closesAnOpenPort) {
    ManualClock clock;
    ScriptedSerialControl control(clock);
    RecordingLinkHost host;
    {
        frmVDR vdr(control, clock, host);
        vdr.setCommPort(2);
        ASSERT_TRUE(control.PortOpen());
    }
    EXPECT_FALSE(control.PortOpen());
}

TEST_F(FrmVDRDiscovery, unload_closesOnceAndLeavesAClosedPortAlone) {
    vdr.setCommPort(2);
    control.clearWrites();
    vdr.unload();
    vdr.unload();
    EXPECT_EQ(control.writes(), QStringList({"PortOpen=false"}));
}

TEST_F(FrmVDRDiscovery, unloadDuringTheMessage_leavesTheEarlierPortClosed) {
    vdr.setCommPort(2);
    control.failOpen(4, SerialErrorCode::kPortInUse);
    host.setOnMessage([this] {
        vdr.unload();
        control.clearWrites();
    });
    vdr.setCommPort(4);
    EXPECT_EQ(host.messages().size(), 1U);
    EXPECT_EQ(control.writes(), QStringList());
    EXPECT_TRUE(vdr.isUnloaded());
}

TEST_F(FrmVDRDiscovery, portChosenAfterTheUnload_staysClosed) {
    vdr.unload();
    control.clearWrites();
    vdr.setCommPort(2);
    EXPECT_EQ(control.writes(), QStringList());
    EXPECT_EQ(vdr.CommPort(), 0);
    EXPECT_FALSE(vdr.Connect());
}

TEST_F(FrmVDRDiscovery, scan_listsEachPortThatOpensAndClosesThemAll) {
    control.setPorts({1, 3, 16});
    EXPECT_EQ(vdr.GetCommPorts(), QStringList({"COM 1", "COM 3", "COM 16"}));
    EXPECT_FALSE(control.PortOpen());
    EXPECT_EQ(vdr.CommPort(), 0);
    EXPECT_EQ(vdr.ComDefault(), 0);
    EXPECT_EQ(vdr.Status(), "VELDRON not found on COM 16");
    EXPECT_TRUE(vdr.Connected());
    EXPECT_EQ(control.commands(), QStringList({"RIVE", "RIVE", "RIVE"}));
}

TEST_F(FrmVDRDiscovery, scan_triesSixteenPortsInOrder) {
    control.setPorts({});
    control.clearWrites();
    vdr.GetCommPorts();
    QStringList expected;
    for (int port = 1; port <= 16; ++port) {
        expected << QStringLiteral("CommPort=%1").arg(port) << QStringLiteral("PortOpen=true");
    }
    EXPECT_EQ(control.writes(), expected);
}

TEST_F(FrmVDRDiscovery, scan_showsTheHourglassMeanwhile) {
    std::vector<bool> during;
    control.setCommandHook([&](const QString &) { during = host.hourglass(); });
    vdr.GetCommPorts();
    EXPECT_EQ(during, std::vector<bool>({true}));
    EXPECT_EQ(host.hourglass(), std::vector<bool>({true, false}));
}

TEST_F(FrmVDRDiscovery, unitFound_isTheDefaultByItsPlaceInTheList) {
    control.setPorts({2, 5, 9});
    unitOn(5);
    vdr.GetCommPorts();
    EXPECT_EQ(vdr.ComDefault(), 2);
    EXPECT_EQ(vdr.Version(), "Ver 1.00");
    EXPECT_EQ(vdr.Status(), "VELDRON connected on COM 5");
}

TEST_F(FrmVDRDiscovery, unitFound_laterPortsAreListedAndNotProbed) {
    control.setPorts({2, 5, 9});
    unitOn(2);
    EXPECT_EQ(vdr.GetCommPorts(), QStringList({"COM 2", "COM 5", "COM 9"}));
    EXPECT_EQ(control.commands(), QStringList({"RIVE"}));
    EXPECT_FALSE(control.PortOpen());
}

TEST_F(FrmVDRDiscovery, silentPort_costsASecond) {
    control.setPorts({1, 2});
    vdr.GetCommPorts();
    EXPECT_NEAR(clock.seconds() - 36000.0, 2.0, 0.02);
}

TEST_F(FrmVDRDiscovery, noPorts_emptyListAndNothingAsked) {
    control.setPorts({});
    EXPECT_TRUE(vdr.GetCommPorts().isEmpty());
    EXPECT_EQ(vdr.ComDefault(), 0);
    EXPECT_TRUE(control.commands().isEmpty());
    EXPECT_TRUE(host.messages().empty());
}

TEST_F(FrmVDRDiscovery, unitOnABusyPort_isListedAndNotProbed) {
    control.setPorts({4});
    control.failOpen(4, 8005, "in use");
    unitOn(4);
    EXPECT_EQ(vdr.GetCommPorts(), QStringList({"COM 4"}));
    EXPECT_EQ(vdr.ComDefault(), 0);
    EXPECT_TRUE(control.commands().isEmpty());
}

TEST_F(FrmVDRDiscovery, otherErrors_keepThePortOffTheListSilently) {
    for (const int number : {8002, 70, 8012, 8000}) {
        ScriptedSerialControl other(clock);
        other.setPorts({});
        other.failOpen(6, number, "no");
        frmVDR link(other, clock, host);
        EXPECT_TRUE(link.GetCommPorts().isEmpty()) << number;
    }
    EXPECT_TRUE(host.messages().empty());
}

TEST_F(FrmVDRDiscovery, portThatCantBeChosen_isOpenedAnywayAndNotListed) {
    control.setPorts({1});
    control.failChoice(2, 380, "bad number");
    vdr.GetCommPorts();
    // The control still stands on COM 1 when COM 2 can't be chosen, so that one is opened again.
    EXPECT_EQ(control.writes().mid(control.writes().indexOf("CommPort=2"), 3),
              QStringList({"CommPort=2", "PortOpen=true", "PortOpen=false"}));
    EXPECT_EQ(vdr.GetCommPorts(), QStringList({"COM 1"}));
}

TEST_F(FrmVDRDiscovery, deviceWithoutVerInItsVersion_isNotTheUnit) {
    control.setPorts({1, 2});
    control.queueReply("RIVE", "IVE ver 3 VER \r\n");
    control.queueReply("RIVE", "IVE Ver 3 \r\n");
    vdr.GetCommPorts();
    EXPECT_EQ(vdr.ComDefault(), 2);
    EXPECT_EQ(vdr.Version(), "Ver 3");
}

TEST_F(FrmVDRDiscovery, textBeforeVer_isStillTheUnit) {
    control.setPorts({1, 2});
    control.queueReply("RIVE", "IVE SP-1 \r\n");
    control.queueReply("RIVE", "IVE Panoramic unit, Ver 3 \r\n");
    vdr.GetCommPorts();
    EXPECT_EQ(vdr.ComDefault(), 2);
    EXPECT_EQ(vdr.Version(), "Panoramic unit, Ver 3");
}

TEST_F(FrmVDRDiscovery, secondCall_touchesNoPortAndKeepsTheDefault) {
    control.setPorts({1, 2});
    unitOn(2);
    const QStringList ports = vdr.GetCommPorts();
    control.clearWrites();
    control.setPorts({1, 2, 3});
    EXPECT_EQ(vdr.GetCommPorts(), ports);
    EXPECT_EQ(vdr.ComDefault(), 2);
    EXPECT_TRUE(control.writes().isEmpty());
}

TEST_F(FrmVDRDiscovery, secondCallAfterAnEmptyScan_touchesNoPort) {
    control.setPorts({});
    vdr.GetCommPorts();
    control.clearWrites();
    EXPECT_TRUE(vdr.GetCommPorts().isEmpty());
    EXPECT_TRUE(control.writes().isEmpty());
}

TEST_F(FrmVDRDiscovery, freePort_opens) {
    vdr.setCommPort(3);
    EXPECT_EQ(vdr.CommPort(), 3);
    EXPECT_FALSE(vdr.Connected());
    EXPECT_EQ(vdr.Status(), "Opening COM 3");
    EXPECT_TRUE(control.commands().isEmpty());
}

TEST_F(FrmVDRDiscovery, anotherPort_closesTheFirst) {
    bringUp();
    vdr.setCommPort(12);
    EXPECT_EQ(control.writes(), QStringList({"PortOpen=false", "CommPort=12", "PortOpen=true"}));
    EXPECT_FALSE(vdr.Connected());
    EXPECT_EQ(vdr.Status(), "Opening COM 12");
}

TEST_F(FrmVDRDiscovery, portZeroOrLess_closes) {
    for (const qint16 none : {qint16{0}, qint16{-1}, qint16{-32768}}) {
        bringUp();
        vdr.setCommPort(none);
        EXPECT_FALSE(control.PortOpen());
        EXPECT_EQ(vdr.CommPort(), 0);
        EXPECT_FALSE(vdr.Connected());
        EXPECT_EQ(vdr.Status(), "No serial port selected");
    }
}

TEST_F(FrmVDRDiscovery, closedPort_readsAsZeroWhateverTheControlHolds) {
    vdr.setCommPort(7);
    control.setPortOpen(false);
    EXPECT_EQ(control.CommPort(), 7);
    EXPECT_EQ(vdr.CommPort(), 0);
}

TEST_F(FrmVDRDiscovery, busyPort_isReportedAndTheOldOneReopened) {
    bringUp();
    const QString status = vdr.Status();
    control.failOpen(5, 8005, "in use");
    vdr.setCommPort(5);
    EXPECT_EQ(host.messages(), std::vector<Message>({{"Select serial port",
                                                      "COM  5 is in use by another application"}}));
    EXPECT_EQ(vdr.CommPort(), 3);
    EXPECT_FALSE(vdr.Connected());
    EXPECT_EQ(vdr.Status(), status);
}

TEST_F(FrmVDRDiscovery, busyPortWithNoneOpenBefore_staysClosed) {
    control.failOpen(5, 8005, "in use");
    vdr.setCommPort(5);
    EXPECT_EQ(vdr.CommPort(), 0);
    EXPECT_EQ(host.messages().size(), 1U);
    EXPECT_EQ(vdr.Status(), "");
}

TEST_F(FrmVDRDiscovery, otherError_isReportedWithNumberAndDescription) {
    control.failOpen(11, 70, "Permission denied for it");
    vdr.setCommPort(11);
    EXPECT_EQ(host.messages(),
              std::vector<Message>({{"Select serial port", "Error 70 Permission denied for it"}}));
}

TEST_F(FrmVDRDiscovery, portThatCantBeChosen_isNotOpened) {
    bringUp();
    control.failChoice(9, 380, "Bad number");
    vdr.setCommPort(9);
    EXPECT_EQ(control.writes(),
              QStringList({"PortOpen=false", "CommPort=9", "CommPort=3", "PortOpen=true"}));
    EXPECT_EQ(host.messages(),
              std::vector<Message>({{"Select serial port", "Error 380 Bad number"}}));
}

TEST_F(FrmVDRDiscovery, oldPortGoneToo_endsClosedAfterOneMessage) {
    bringUp();
    control.failOpen(3, 8002, "gone");
    control.failOpen(5, 8012, "broken");
    vdr.setCommPort(5);
    EXPECT_EQ(vdr.CommPort(), 0);
    EXPECT_EQ(host.messages().size(), 1U);
}

TEST_F(FrmVDRDiscovery, message_isShownBeforeTheOldPortOpens) {
    bringUp();
    control.failOpen(5, 8005, "in use");
    bool open = true;
    host.setOnMessage([&] { open = control.PortOpen(); });
    vdr.setCommPort(5);
    EXPECT_FALSE(open);
}

TEST_F(FrmVDRDiscovery, connectWithAnAnswer_showsPortAndVersion) {
    vdr.setCommPort(3);
    control.queueReply("RIVE", "IVE Ver 2.01 \r\n");
    EXPECT_TRUE(vdr.Connect());
    EXPECT_TRUE(vdr.Connected());
    EXPECT_FALSE(vdr.Active());
    EXPECT_EQ(vdr.Status(), "VELDRON connected on COM 3");
    EXPECT_EQ(vdr.Version(), "Ver 2.01");
}

TEST_F(FrmVDRDiscovery, silentUnit_connectStillReturnsTrue) {
    bringUp();
    EXPECT_TRUE(vdr.Connect());
    EXPECT_TRUE(vdr.Connected());
    EXPECT_FALSE(vdr.Active());
    EXPECT_EQ(vdr.Status(), "VELDRON not found on COM 3");
    EXPECT_EQ(vdr.Version(), "");
    EXPECT_TRUE(host.messages().empty());
}

TEST_F(FrmVDRDiscovery, refusedVersion_connectStillReturnsTrue) {
    bringUp();
    control.queueReply("RIVE", "?\r\n");
    EXPECT_TRUE(vdr.Connect());
    EXPECT_EQ(vdr.Status(), "VELDRON not found on COM 3");
    EXPECT_EQ(vdr.Version(), "");
}

TEST_F(FrmVDRDiscovery, emptyVersionValue_givesAnEmptyVersion) {
    for (const char *reply : {"IVE \r\n", "IVE\r\n"}) {
        bringUp();
        control.queueReply("RIVE", reply);
        EXPECT_TRUE(vdr.Connect());
        EXPECT_EQ(vdr.Status(), "VELDRON connected on COM 3");
        EXPECT_EQ(vdr.Version(), "");
    }
}

TEST_F(FrmVDRDiscovery, connectWithoutAPort_clearsConnectedAndLeavesTheStatus) {
    bringUp();
    control.setPortOpen(false);
    const QString status = vdr.Status();
    EXPECT_FALSE(vdr.Connect());
    EXPECT_FALSE(vdr.Connected());
    EXPECT_EQ(vdr.Status(), status);
    EXPECT_TRUE(control.commands().isEmpty());
}

TEST_F(FrmVDRDiscovery, portHeldByAnotherOrWithoutTheRight_isExplained) {
    control.setPorts({1});
    control.failOpen(4, SerialErrorCode::kPortInUse, "held by dialler");
    control.failOpen(5, SerialErrorCode::kPermissionDenied, "join the group");
    control.failOpen(6, SerialErrorCode::kDeviceFailed, "broken");
    testing::internal::CaptureStderr();
    vdr.GetCommPorts();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "veldron: COM 4: held by dialler\nveldron: COM 5: join the group\n");
    EXPECT_EQ(vdr.portProblem(4), "held by dialler");
    EXPECT_EQ(vdr.portProblem(5), "join the group");
    for (const qint16 port : {qint16{1}, qint16{2}, qint16{6}, qint16{0}}) {
        EXPECT_EQ(vdr.portProblem(port), "") << port;
    }
}

TEST_F(FrmVDRDiscovery, portThatIsFreeAgain_hasNoProblem) {
    control.failOpen(4, SerialErrorCode::kPortInUse, "held by dialler");
    vdr.setCommPort(4);
    EXPECT_EQ(vdr.portProblem(4), "held by dialler");
    control.failOpen(4, 0);
    vdr.setCommPort(4);
    EXPECT_EQ(vdr.portProblem(4), "");
}

TEST_F(FrmVDRDiscovery, portThatAnotherProgramTookAfterAnUnplug_isExplainedOnceAReason) {
    bringUp();
    testing::internal::CaptureStderr();
    const auto tryTwice = [this](int number, const QString &description) {
        control.failReopening(number, description);
        vdr.Connect();
        vdr.Connect();
    };
    tryTwice(SerialErrorCode::kNoSuchPort, "no such port");
    EXPECT_EQ(vdr.portProblem(3), "");
    tryTwice(SerialErrorCode::kPortInUse, "held by dialler");
    EXPECT_EQ(vdr.portProblem(3), "held by dialler");
    tryTwice(SerialErrorCode::kPermissionDenied, "join the group");
    EXPECT_EQ(vdr.portProblem(3), "join the group");
    tryTwice(0, {});
    EXPECT_EQ(vdr.portProblem(3), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "veldron: COM 3: held by dialler\nveldron: COM 3: join the group\n");
}

TEST_F(FrmVDRDiscovery, deviceName_isTheControls) {
    control.setDeviceName(3, "/dev/ttyUSB0");
    EXPECT_EQ(vdr.deviceName(3), "/dev/ttyUSB0");
    EXPECT_EQ(vdr.deviceName(4), "");
}

} // namespace
} // namespace veldron
