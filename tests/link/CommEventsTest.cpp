// SPDX-License-Identifier: MIT
#include "link/CommEvents.h"
#include "tests/link/LinkFixture.h"

namespace veldron {
namespace {

struct EventCase {
    qint16 event;
    const char *name;
};

TEST(CommEvents, eachEvent_hasItsName) {
    const EventCase cases[] = {
        {1, "comEvcomEvSend"},    {2, "comEvReceive"},
        {3, "comEvCTS"},          {4, "comEvDSR"},
        {5, "comEvCD"},           {6, "comEvRing"},
        {7, "comEvEOF"},          {1001, "comEventBreak"},
        {1004, "comEventFrame"},  {1006, "comEventOverrun"},
        {1008, "comEventRxOver"}, {1009, "comEventRxParity"},
        {1010, "comEventTxFull"}, {1011, "comEventDCB"},
        {0, "Unknown"},           {8, "Unknown"},
        {1000, "Unknown"},        {1007, "Unknown"},
        {-1, "Unknown"},
    };
    for (const EventCase &each : cases) {
        EXPECT_EQ(commEventName(each.event), QString::fromLatin1(each.name)) << each.event;
    }
    EXPECT_EQ(kCommEventNames.size(), 14U);
}

class FrmVDREvents : public LinkFixture {};

TEST_F(FrmVDREvents, lineEvent_changesNothing) {
    bringUp();
    const QString status = vdr.Status();
    for (const CommEventName &each : kCommEventNames) {
        control.raiseEvent(each.event);
    }
    EXPECT_EQ(vdr.Status(), status);
    EXPECT_TRUE(vdr.Connected());
    EXPECT_TRUE(control.commands().isEmpty());
    EXPECT_TRUE(control.writes().isEmpty());
}

TEST(FrmVDR, endOfLife_takesTheEventHandlerAway) {
    ManualClock clock;
    ScriptedSerialControl control(clock);
    RecordingLinkHost host;
    {
        const frmVDR vdr(control, clock, host);
        EXPECT_TRUE(control.hasCommHandler());
    }
    EXPECT_FALSE(control.hasCommHandler());
}

} // namespace
} // namespace veldron
