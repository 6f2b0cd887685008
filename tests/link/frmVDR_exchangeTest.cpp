// SPDX-License-Identifier: MIT
#include "tests/link/LinkFixture.h"

namespace veldron {
namespace {

class FrmVDRExchange : public LinkFixture {
protected:
    FrmVDRExchange() { bringUp(); }
    /// A text by which a test sees whether LastReply changed.
    void setLastReply(const QByteArray &line) { exchange("WUMD0", line + "\r\n"); }
};

struct ReplyCase {
    const char *name;
    const char *command;
    QByteArray reply;
    bool positive;
    QString lastReply;
};

const std::vector<ReplyCase> &replyCases() {
    static const std::vector<ReplyCase> cases{
        {"write accepted", "WUMD3", " \r\n", true, " "},
        {"write accepted, whatever follows the blank", "WUMD3", " ERR 7\r\n", true, " "},
        {"write refused", "WUMD9", "?\r\n", false, "?"},
        {"write answered with another line", "WSCF100", "ERR\r\n", false, "ERR"},
        {"write answered with an empty line", "WUMD3", "\r\n", false, ""},
        {"read answered", "RSSP", "SSP10.000000 \r\n", true, "10.000000"},
        {"read drops the character before the line end", "RUMD", "UMD3x\r\n", true, "3"},
        {"read answered with a blank inside", "RUCS", "UCS144 25 146 \r\n", true, "144 25 146"},
        {"read refused", "RUMD", "?\r\n", false, "?"},
        {"read with the wrong echo", "RUMD", "URX3 \r\n", false, "URX3 "},
        {"read with the echo in small letters", "RUMD", "umd3 \r\n", false, "umd3 "},
        {"read with an empty value", "RUMD", "UMD \r\n", true, ""},
        {"read with nothing behind the echo", "RIFD", "IFD\r\n", true, ""},
        {"read with an empty line", "RUMD", "\r\n", false, ""},
        {"read with less than the echo", "RUMD", "U\r\n", false, "U"},
        {"marker answered", "RICD", "f145.5\r\n", true, "145.5\r\n"},
        {"marker refused keeps the line end", "RICD", "?\r\n", false, "?\r\n"},
        {"marker with the ordinary echo is not positive", "RICD", "ICD145.5 \r\n", false,
         "ICD145.5 \r\n"},
        {"marker with a capital letter", "RICD", "F145.5\r\n", false, "F145.5\r\n"},
        {"letter beyond the alphabet's", "RUMD", "UMD\xE4\xFF \r\n", true,
         QString::fromLatin1("\xE4\xFF")},
        {"a lone CR inside", "WUMD3", "a\rb\r\n", false, "a\rb"},
        {"a lone LF inside", "WUMD3", "a\nb\r\n", false, "a\nb"},
        {"a zero byte inside", "WUMD3", QByteArray("a\0b\r\n", 5), false,
         QString::fromLatin1("a\0b", 3)},
        {"small letter w is no write", "wUMD3", " \r\n", false, "before"},
    };
    return cases;
}

TEST_F(FrmVDRExchange, eachKindOfReply_isClassified) {
    for (const ReplyCase &each : replyCases()) {
        setLastReply("before");
        EXPECT_EQ(exchange(each.command, each.reply), each.positive) << each.name;
        EXPECT_EQ(vdr.LastReply(), each.lastReply) << each.name;
        EXPECT_TRUE(vdr.Connected()) << each.name;
        EXPECT_FALSE(vdr.Active()) << each.name;
    }
}

TEST_F(FrmVDRExchange, command_isWrittenWithCrLf) {
    const qsizetype before = control.written().size();
    exchange("WUMD3", " \r\n");
    EXPECT_EQ(control.written().mid(before), "WUMD3\r\n");
}

TEST_F(FrmVDRExchange, inputLength_isOneDuringTheExchangeAndZeroAround) {
    qint16 during = -1;
    control.setCommandHook([&](const QString &) { during = control.InputLen(); });
    exchange("WUMD3", " \r\n");
    EXPECT_EQ(during, 1);
    EXPECT_EQ(control.writes(), QStringList({"InputLen=1", "Output=WUMD3", "InputLen=0"}));
}

TEST_F(FrmVDRExchange, exchange_isActiveUntilClassified) {
    bool during = false;
    control.setCommandHook([&](const QString &) { during = vdr.Active(); });
    exchange("WUMD3", " \r\n");
    EXPECT_TRUE(during);
    EXPECT_FALSE(vdr.Active());
}

TEST_F(FrmVDRExchange, closedPort_clearsConnectedAndSaysSo) {
    setLastReply("before");
    control.setPortOpen(false);
    control.clearCommands();
    EXPECT_FALSE(vdr.SendCommand("RUMD"));
    EXPECT_FALSE(vdr.Connected());
    EXPECT_EQ(vdr.LastReply(), "");
    EXPECT_EQ(vdr.Status(), "No serial port open");
    EXPECT_TRUE(control.commands().isEmpty());
}

TEST_F(FrmVDRExchange, closedPortWithTheLinkDown_saysSoAllTheSame) {
    setLastReply("before");
    vdr.setCommPort(0);
    ASSERT_FALSE(vdr.Connected());
    EXPECT_FALSE(vdr.SendCommand("RUMD"));
    EXPECT_EQ(vdr.LastReply(), "");
    EXPECT_EQ(vdr.Status(), "No serial port open");
}

TEST_F(FrmVDRExchange, linkDown_sendsNothingAndChangesNothing) {
    vdr.SendCommand("RUMD");
    ASSERT_FALSE(vdr.Connected());
    control.clearWrites();
    const QString status = vdr.Status();
    EXPECT_FALSE(exchange("RUMD", "UMD3 \r\n"));
    EXPECT_FALSE(vdr.Connected());
    EXPECT_EQ(vdr.LastReply(), "");
    EXPECT_EQ(vdr.Status(), status);
    EXPECT_TRUE(control.writes().isEmpty());
}

TEST_F(FrmVDRExchange, linkDown_keepsTheLastReply) {
    setLastReply("before");
    vdr.setCommPort(4);
    EXPECT_FALSE(vdr.SendCommand("RUMD"));
    EXPECT_EQ(vdr.LastReply(), "before");
}

TEST_F(FrmVDRExchange, noLineInASecond_takesTheLinkDown) {
    setLastReply("before");
    const QString status = vdr.Status();
    const double start = clock.seconds();
    EXPECT_FALSE(vdr.SendCommand("RUMD"));
    EXPECT_NEAR(clock.seconds() - start, 1.0, 0.006);
    EXPECT_FALSE(vdr.Connected());
    EXPECT_FALSE(vdr.Active());
    EXPECT_EQ(vdr.LastReply(), "");
    EXPECT_EQ(vdr.Status(), status);
    EXPECT_EQ(control.writes().last(), "InputLen=0");
}

TEST_F(FrmVDRExchange, partOfALine_isDiscardedAtTheLimit) {
    EXPECT_FALSE(exchange("RUMD", "UMD3 \r"));
    EXPECT_FALSE(vdr.Connected());
    EXPECT_EQ(vdr.LastReply(), "");
}

TEST_F(FrmVDRExchange, partOfALineThatEndsInLfAlone_isDiscardedAtTheLimit) {
    for (const char *part : {"UMD3 \n", " \n", "?\n\r"}) {
        vdr.Connect();
        const double start = clock.seconds();
        EXPECT_FALSE(exchange("RUMD", part));
        EXPECT_NEAR(clock.seconds() - start, 1.0, 0.006);
        EXPECT_FALSE(vdr.Connected());
        EXPECT_EQ(vdr.LastReply(), "");
    }
}

TEST_F(FrmVDRExchange, refusalAndRubbish_keepTheLinkUpAndTheStatus) {
    const QString status = vdr.Status();
    for (const char *line : {"?\r\n", "\x80garbage\r\n", "\r\n"}) {
        EXPECT_FALSE(exchange("RUMD", line));
        EXPECT_TRUE(vdr.Connected());
        EXPECT_EQ(vdr.Status(), status);
    }
}

TEST_F(FrmVDRExchange, trickle_doesNotExtendTheLimit) {
    ReplyScript trickle;
    for (const char *byte : {"U", "M", "D", "3", " ", "\r", "\n"}) {
        trickle.push_back({byte, 0.3});
    }
    control.queueReply("RUMD", trickle);
    const double start = clock.seconds();
    EXPECT_FALSE(vdr.SendCommand("RUMD"));
    EXPECT_NEAR(clock.seconds() - start, 1.0, 0.006);
    EXPECT_FALSE(vdr.Connected());
}

TEST_F(FrmVDRExchange, replyInSingleBytes_isWholeWithinTheLimit) {
    ReplyScript bytes;
    for (const char *byte : {"U", "M", "D", "3", " ", "\r", "\n"}) {
        bytes.push_back({byte, 0.1});
    }
    control.queueReply("RUMD", bytes);
    EXPECT_TRUE(vdr.SendCommand("RUMD"));
    EXPECT_EQ(vdr.LastReply(), "3");
}

struct DelayCase {
    double seconds;
    bool answered;
};

TEST_F(FrmVDRExchange, delayedReply_countsOnlyBelowOneSecond) {
    for (const DelayCase &each :
         {DelayCase{0.99, true}, DelayCase{1.0, false}, DelayCase{1.01, false}}) {
        vdr.Connect();
        clock.setTimeOfDay(36000.0);
        control.queueReply("WUMD3", ReplyScript{{" \r\n", each.seconds}});
        EXPECT_EQ(vdr.SendCommand("WUMD3"), each.answered) << each.seconds;
    }
}

TEST_F(FrmVDRExchange, timeThatTheWriteTakes_countsForTheLimit) {
    for (const DelayCase &each : {DelayCase{0.5, true}, DelayCase{0.7, false}}) {
        vdr.Connect();
        control.setCommandHook([this](const QString &) { clock.advance(0.4); });
        control.queueReply("WUMD3", ReplyScript{{" \r\n", each.seconds}});
        EXPECT_EQ(vdr.SendCommand("WUMD3"), each.answered) << each.seconds;
        control.setCommandHook({});
    }
}

TEST_F(FrmVDRExchange, lateReplyToAnEarlierCommand_isLostWithTheStaleBytes) {
    control.queueReply("RUMD", ReplyScript{{"UMD3 \r\n", 1.5}});
    EXPECT_FALSE(vdr.SendCommand("RUMD"));
    clock.advance(1.0);
    control.queueReply("RIVE", "IVE Ver 1 \r\n");
    vdr.Connect();
    EXPECT_EQ(vdr.Version(), "Ver 1");
}

TEST_F(FrmVDRExchange, bytesWaitingBeforeTheCommand_areThrownAway) {
    control.arrive("UMD9 \r\nmore");
    EXPECT_TRUE(exchange("RUMD", "UMD3 \r\n"));
    EXPECT_EQ(vdr.LastReply(), "3");
}

TEST_F(FrmVDRExchange, bytesThatGoOnComing_areThrownAwayUntilAPauseOfTwoMilliseconds) {
    // The rest of a scan that ended early, at the line's pace.
    ReplyScript rest{{"UMD9 \r\n", 0.0}};
    for (int byte = 0; byte < 20; ++byte) {
        rest.push_back({"x", 11.0 / 9600.0});
    }
    rest.push_back({"UMD8 \r\n", 11.0 / 9600.0});
    exchange("RUMD", "?\r\n");
    control.queueReply("RUOM", rest);
    vdr.SendCommand("RUOM");
    EXPECT_TRUE(exchange("RUMD", "UMD3 \r\n"));
    EXPECT_EQ(vdr.LastReply(), "3");
}

TEST_F(FrmVDRExchange, bytesWithoutAnEnd_areThrownAwayForFiftyMilliseconds) {
    ReplyScript endless{{"UMD9 \r\n", 0.0}};
    for (int byte = 0; byte < 1000; ++byte) {
        endless.push_back({"x", 0.001});
    }
    control.queueReply("RUOM", endless);
    vdr.SendCommand("RUOM");
    const double start = clock.seconds();
    double sent = 0.0;
    control.setCommandHook([&](const QString &) { sent = clock.seconds(); });
    vdr.SendCommand("RUMD");
    EXPECT_NEAR(sent - start, 0.050, 0.0025);
}

TEST_F(FrmVDRExchange, bytesBehindTheLine_stayUnreadUntilTheNextCommand) {
    EXPECT_TRUE(exchange("RUMD", "UMD3 \r\nIVE wrong \r\n"));
    EXPECT_EQ(vdr.LastReply(), "3");
    EXPECT_EQ(control.unread(), "IVE wrong \r\n");
    EXPECT_TRUE(exchange("RUMD", "UMD4 \r\n"));
    EXPECT_EQ(vdr.LastReply(), "4");
    EXPECT_EQ(control.unread(), "");
}

TEST_F(FrmVDRExchange, lineEndInsideTheLine_endsItAtOnce) {
    EXPECT_FALSE(exchange("WUMD3", "a\r\n \r\n"));
    EXPECT_EQ(vdr.LastReply(), "a");
    EXPECT_EQ(control.unread(), " \r\n");
}

TEST_F(FrmVDRExchange, otherFirstLetter_isSentAndProvesLifeWithoutAResult) {
    setLastReply("before");
    EXPECT_FALSE(exchange("XUMD", "UMD3 \r\n"));
    EXPECT_EQ(control.commands().last(), "XUMD");
    EXPECT_TRUE(vdr.Connected());
    EXPECT_EQ(vdr.LastReply(), "before");
}

TEST_F(FrmVDRExchange, otherFirstLetterWithoutAReply_takesTheLinkDown) {
    setLastReply("before");
    EXPECT_FALSE(vdr.SendCommand("XUMD"));
    EXPECT_FALSE(vdr.Connected());
    EXPECT_EQ(vdr.LastReply(), "");
}

TEST_F(FrmVDRExchange, overMidnightWithoutAReply_waitsUntilALineComes) {
    clock.setTimeOfDay(86399.5);
    control.queueReply("RUMD", ReplyScript{{"UMD3 \r\n", 7.0}});
    EXPECT_TRUE(vdr.SendCommand("RUMD"));
    EXPECT_EQ(vdr.LastReply(), "3");
    EXPECT_NEAR(clock.seconds(), 6.5, 0.02);
}

TEST_F(FrmVDRExchange, overMidnight_aReplyAfter59SecondsStillCounts) {
    clock.setTimeOfDay(86399.5);
    control.queueReply("RUMD", ReplyScript{{"UMD3 \r\n", 59.0}});
    EXPECT_TRUE(vdr.SendCommand("RUMD"));
    EXPECT_TRUE(vdr.Connected());
}

TEST_F(FrmVDRExchange, overMidnightWithoutAReply_endsAfter60SecondsWithTheLinkDown) {
    setLastReply("before");
    clock.setTimeOfDay(86399.5);
    EXPECT_FALSE(vdr.SendCommand("RUMD"));
    EXPECT_NEAR(clock.seconds(), 59.5, 0.006);
    EXPECT_FALSE(vdr.Connected());
    EXPECT_FALSE(vdr.Active());
    EXPECT_EQ(vdr.LastReply(), "");
    EXPECT_EQ(control.InputLen(), 0);
}

TEST_F(FrmVDRExchange, frozenTimeOfDay_endsAt60SecondsOfTheSteadyClock) {
    clock.freezeTimeOfDay();
    const double start = clock.steadySeconds();
    EXPECT_FALSE(vdr.SendCommand("RUMD"));
    EXPECT_NEAR(clock.steadySeconds() - start, 60.0, 0.006);
    EXPECT_FALSE(vdr.Connected());
}

TEST_F(FrmVDRExchange, lastSecondOfTheDayButOneBefore_stillTimesOut) {
    clock.setTimeOfDay(86398.5);
    EXPECT_FALSE(vdr.SendCommand("RUMD"));
    EXPECT_NEAR(clock.seconds(), 86399.5, 0.02);
}

TEST_F(FrmVDRExchange, waiting_parksFiveMillisecondsAtMost) {
    vdr.SendCommand("RUMD");
    ASSERT_FALSE(control.waits().empty());
    for (const int wait : control.waits()) {
        EXPECT_LE(wait, 5);
    }
    EXPECT_LE(control.waits().size(), 202U);
    EXPECT_TRUE(clock.rests().empty());
}

TEST_F(FrmVDRExchange, lineLost_restsOnTheClockUntilTheLimit) {
    control.setLineLost(true);
    const double start = clock.seconds();
    EXPECT_FALSE(vdr.SendCommand("RUMD"));
    EXPECT_NEAR(clock.seconds() - start, 1.0, 0.006);
    EXPECT_FALSE(vdr.Connected());
    EXPECT_EQ(vdr.LastReply(), "");
    EXPECT_GE(clock.rests().size(), 199U);
    EXPECT_EQ(vdr.CommPort(), 3);
}

TEST_F(FrmVDRExchange, lineFoundAgain_nextConnectGetsThrough) {
    control.setLineLost(true);
    vdr.SendCommand("RUMD");
    control.setLineLost(false);
    control.queueReply("RIVE", "IVE Ver 1 \r\n");
    EXPECT_TRUE(vdr.Connect());
    EXPECT_EQ(vdr.Version(), "Ver 1");
}

TEST_F(FrmVDRExchange, failureReport_joinsCommandAndReply) {
    setLastReply("ERR");
    vdr.ReportCommsFailure("WSCF100");
    EXPECT_EQ(vdr.Status(), "Comms failure with command WSCF100ERR");
    EXPECT_EQ(vdr.LastReply(), "ERR");
    EXPECT_TRUE(vdr.Connected());
}

} // namespace
} // namespace veldron
