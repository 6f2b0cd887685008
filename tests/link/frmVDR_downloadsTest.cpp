// SPDX-License-Identifier: MIT
#include "tests/link/LinkFixture.h"

#include <algorithm>

namespace veldron {
namespace {

const QByteArray kTerminator = " \r\n";
const QByteArray kHeader = "IFD1 \r\n";

/// \a count samples, none of which belongs to a terminator.
QByteArray samples(int count) {
    QByteArray bytes;
    for (int i = 0; i < count; ++i) {
        bytes.append(static_cast<char>(40 + i % 180));
    }
    return bytes;
}

LevelScan levels(const QByteArray &bytes) {
    LevelScan scan;
    for (const char byte : bytes) {
        scan.push_back(static_cast<std::uint8_t>(byte));
    }
    return scan;
}

/// \a bytes and zeros behind them, 325 in all.
LevelScan padded(const QByteArray &bytes) {
    LevelScan scan = levels(bytes);
    scan.resize(325);
    return scan;
}

class FrmVDRDownloads : public LinkFixture {
protected:
    FrmVDRDownloads() { bringUp(); }
    LevelScan scanFrom(const QByteArray &frame) {
        return scanFrom(ReplyScript{{kHeader + frame, 0.0}});
    }
    LevelScan scanFrom(const ReplyScript &reply) {
        control.queueReply("RIFD", reply);
        return vdr.GetData();
    }
};

TEST_F(FrmVDRDownloads, fullFrame_is321Levels) {
    EXPECT_EQ(scanFrom(samples(321) + kTerminator), levels(samples(321)));
    EXPECT_EQ(control.commands(), QStringList({"RIFD"}));
    EXPECT_EQ(control.unread(), "");
}

TEST_F(FrmVDRDownloads, fullFrame_takesNoTimeBeyondItsArrival) {
    const double start = clock.seconds();
    scanFrom(samples(321) + kTerminator);
    EXPECT_NEAR(clock.seconds(), start + kStaleQuiet, 1e-6);
}

TEST_F(FrmVDRDownloads, fullFrameWithAnyLastBytes_losesThem) {
    EXPECT_EQ(scanFrom(samples(321) + "xyz"), levels(samples(321)));
}

TEST_F(FrmVDRDownloads, levelsAbove127_areUnsigned) {
    const QByteArray bytes(321, '\xFF');
    EXPECT_EQ(scanFrom(bytes + kTerminator), LevelScan(321, 255));
}

TEST_F(FrmVDRDownloads, shortScan_isTheSamplesExactly) {
    for (const int count : {2, 3, 81, 161, 320}) {
        EXPECT_EQ(scanFrom(samples(count) + kTerminator), levels(samples(count))) << count;
    }
}

TEST_F(FrmVDRDownloads, refusal_isOneZeroAndTheLinkStaysUp) {
    control.queueReply("RIFD", "?\r\n");
    EXPECT_EQ(vdr.GetData(), LevelScan({0}));
    EXPECT_TRUE(vdr.Connected());
}

TEST_F(FrmVDRDownloads, noHeader_isOneZeroAndTheLinkGoesDown) {
    EXPECT_EQ(vdr.GetData(), LevelScan({0}));
    EXPECT_FALSE(vdr.Connected());
}

TEST_F(FrmVDRDownloads, linkDown_isOneZeroWithoutSending) {
    vdr.GetData();
    control.clearCommands();
    EXPECT_EQ(vdr.GetData(), LevelScan({0}));
    EXPECT_TRUE(control.commands().isEmpty());
}

TEST_F(FrmVDRDownloads, bareHeader_isAccepted) {
    control.queueReply("RIFD", "IFD\r\n" + samples(321) + kTerminator);
    EXPECT_EQ(vdr.GetData(), levels(samples(321)));
}

TEST_F(FrmVDRDownloads, terminatorLookalikeAmongTheSamples_endsTheScanEarly) {
    const QByteArray frame = samples(50) + kTerminator + samples(268) + kTerminator;
    EXPECT_EQ(scanFrom(frame), levels(samples(50)));
}

TEST_F(FrmVDRDownloads, bytesBehindAnEarlyEnd_stayForTheNextExchangeToThrowAway) {
    control.queueReply("RIFD", ReplyScript{{kHeader + samples(50) + kTerminator, 0.0},
                                           {"rest" + kTerminator, 0.1}});
    EXPECT_EQ(vdr.GetData(), levels(samples(50)));
    clock.advance(0.2);
    EXPECT_EQ(control.unread(), "rest" + kTerminator);
    EXPECT_TRUE(exchange("RUMD", "UMD3 \r\n"));
    EXPECT_EQ(vdr.LastReply(), "3");
}

TEST_F(FrmVDRDownloads, chunkWithMoreThanTheFrame_restIsDropped) {
    EXPECT_EQ(scanFrom(samples(321) + kTerminator + "more"), levels(samples(321)));
    EXPECT_EQ(control.unread(), "");
}

TEST_F(FrmVDRDownloads, chunkWithMoreThanAShortFrame_restIsDropped) {
    EXPECT_EQ(scanFrom(samples(20) + kTerminator + "more"), levels(samples(20)));
    EXPECT_EQ(control.unread(), "");
}

TEST_F(FrmVDRDownloads, noSamplesAtAll_isNotRecognisedAndTimesOut) {
    const double start = clock.seconds();
    EXPECT_EQ(scanFrom(kTerminator), padded(kTerminator));
    EXPECT_NEAR(clock.seconds() - start, 1.0, 0.01);
}

TEST_F(FrmVDRDownloads, oneSample_endsTheScanButIsNotCut) {
    const double start = clock.seconds();
    EXPECT_EQ(scanFrom("a" + kTerminator), padded("a" + kTerminator));
    EXPECT_NEAR(clock.seconds(), start + kStaleQuiet, 1e-6);
}

struct CutShortCase {
    int received;
    std::size_t length;
};

TEST_F(FrmVDRDownloads, silenceInsideTheScan_cutsTheLastThree) {
    for (const CutShortCase &each :
         {CutShortCase{5, 2}, CutShortCase{100, 97}, CutShortCase{323, 320}}) {
        const LevelScan scan = scanFrom(samples(each.received));
        EXPECT_EQ(scan.size(), each.length);
        EXPECT_EQ(scan, levels(samples(each.received).chopped(3)));
    }
}

TEST_F(FrmVDRDownloads, silenceAfterFourBytesOrFewer_isTheBytesAndZeros) {
    for (const int received : {0, 1, 2, 3, 4}) {
        EXPECT_EQ(scanFrom(samples(received)), padded(samples(received))) << received;
    }
}

TEST_F(FrmVDRDownloads, silenceInsideTheScan_keepsTheLinkUpAndTheStatus) {
    const QString status = vdr.Status();
    scanFrom(samples(100));
    EXPECT_TRUE(vdr.Connected());
    EXPECT_EQ(vdr.Status(), status);
}

TEST_F(FrmVDRDownloads, eachChunk_restartsTheLimit) {
    ReplyScript reply{{kHeader, 0.0}};
    for (int chunk = 0; chunk < 3; ++chunk) {
        reply.push_back({samples(321).mid(chunk * 107, 107), 0.9});
    }
    reply.push_back({kTerminator, 0.9});
    const double start = clock.seconds();
    EXPECT_EQ(scanFrom(reply), levels(samples(321)));
    EXPECT_NEAR(clock.seconds() - start, 3.6, 0.05);
}

TEST_F(FrmVDRDownloads, chunkAfterASecondOrMore_isTooLate) {
    for (const double pause : {1.0, 1.01}) {
        EXPECT_EQ(scanFrom(ReplyScript{{kHeader + samples(10), 0.0}, {samples(50), pause}}),
                  levels(samples(7)))
            << pause;
    }
}

TEST_F(FrmVDRDownloads, limit_runsFromTheEndOfTheHeader) {
    EXPECT_EQ(scanFrom(ReplyScript{{kHeader, 0.9}, {samples(321) + kTerminator, 0.9}}),
              levels(samples(321)));
}

TEST_F(FrmVDRDownloads, frozenTimeOfDay_goesOnFor59SecondsAndEndsAt60) {
    clock.freezeTimeOfDay();
    EXPECT_EQ(scanFrom(ReplyScript{{kHeader, 0.0}, {samples(321) + kTerminator, 59.0}}),
              levels(samples(321)));
    const double start = clock.steadySeconds();
    EXPECT_EQ(scanFrom(ReplyScript{{kHeader + samples(10), 0.0}, {samples(10), 30.0}}),
              levels((samples(10) + samples(10)).chopped(3)));
    EXPECT_NEAR(clock.steadySeconds() - start, 60.0, 0.01);
    EXPECT_TRUE(vdr.Connected());
}

TEST_F(FrmVDRDownloads, singleBytes_makeTheSameScan) {
    ReplyScript reply{{kHeader, 0.0}};
    for (const char byte : samples(321) + kTerminator) {
        reply.push_back({QByteArray(1, byte), 11.0 / 9600.0});
    }
    const double start = clock.seconds();
    EXPECT_EQ(scanFrom(reply), levels(samples(321)));
    // At 98 % of the line's pace or better, and without waking for each byte.
    const double line = 324.0 * 11.0 / 9600.0;
    EXPECT_GE(clock.seconds() - start, line - 0.0001);
    EXPECT_LE(clock.seconds() - start, line / 0.98);
    EXPECT_LT(clock.rests().size(), 324U / 4U);
}

TEST_F(FrmVDRDownloads, bunchesOfSixteenBytes_wakeOnceForEach) {
    const QByteArray frame = samples(321) + kTerminator;
    ReplyScript reply{{kHeader, 0.0}};
    for (int at = 0; at < frame.size(); at += 16) {
        const QByteArray bunch = frame.mid(at, 16);
        reply.push_back({bunch, static_cast<double>(bunch.size()) * 11.0 / 9600.0});
    }
    const std::size_t before = control.waits().size();
    const double start = clock.seconds();
    EXPECT_EQ(scanFrom(reply), levels(samples(321)));
    EXPECT_LE(clock.seconds() - start - kStaleQuiet, 324.0 * 11.0 / 9600.0 + 0.002);
    // Waits until the first bunch, and one before the command.
    EXPECT_LE(control.waits().size() - before, 7U);
    EXPECT_LE(clock.rests().size(), 21U);
}

TEST_F(FrmVDRDownloads, frameCutShort_isTakenWithinALookOfItsEnd) {
    ReplyScript reply{{kHeader, 0.0}};
    for (const char byte : samples(50) + kTerminator) {
        reply.push_back({QByteArray(1, byte), 11.0 / 9600.0});
    }
    const double start = clock.seconds();
    EXPECT_EQ(scanFrom(reply), levels(samples(50)));
    EXPECT_LE(clock.seconds() - start, 53.0 * 11.0 / 9600.0 + 0.023);
}

TEST_F(FrmVDRDownloads, everyByteValue_comesThroughUnchanged) {
    QByteArray bytes;
    for (int value = 0; value < 256; ++value) {
        bytes.append(static_cast<char>(value));
    }
    EXPECT_EQ(scanFrom(bytes + kTerminator), levels(bytes));
}

TEST_F(FrmVDRDownloads, scanOverMidnight_isWholeAndSilenceThenWaitsForBytes) {
    clock.setTimeOfDay(86399.9);
    EXPECT_EQ(scanFrom(ReplyScript{{kHeader + samples(100), 0.0},
                                   {samples(321).mid(100) + kTerminator, 5.0}}),
              levels(samples(321)));
}

TEST_F(FrmVDRDownloads, lineLostInsideTheScan_restsUntilTheLimit) {
    const double start = clock.seconds();
    control.setWaitHook([&] { control.setLineLost(clock.seconds() > start + 0.7); });
    const LevelScan scan = scanFrom(ReplyScript{
        {kHeader, 0.0}, {samples(100), 0.5}, {samples(321).mid(100) + kTerminator, 0.5}});
    EXPECT_EQ(scan, levels(samples(97)));
    EXPECT_NEAR(clock.seconds() - start, 1.5, 0.02);
    EXPECT_FALSE(clock.rests().empty());
    EXPECT_TRUE(vdr.Connected());
}

class FrmVDRGraphic : public FrmVDRDownloads {
protected:
    /// The unit sends \a block as soon as the port is open at the high speed.
    QByteArray graphicFrom(const ReplyScript &block) {
        GraphicControl graphic(clock, block);
        OpenedVDR link(graphic, clock, host);
        link.setCommPort(3);
        link.Connect();
        graphic.clearWrites();
        QByteArray received = link.GetGraphic();
        writes = graphic.writes();
        portOpen = graphic.PortOpen();
        return received;
    }

    /// Sends unasked when the port opens at the high speed.
    class GraphicControl : public ScriptedSerialControl {
    public:
        GraphicControl(ManualClock &clock, ReplyScript block)
            : ScriptedSerialControl(clock), m_block(std::move(block)) {
            setReply("RIVE", "IVE Ver 1 \r\n");
            setReply("block", m_block);
        }
        void setSettings(const QString &settings) override {
            m_fast = settings.startsWith("115200");
            ScriptedSerialControl::setSettings(settings);
        }
        Result setPortOpen(bool open) override {
            Result result = ScriptedSerialControl::setPortOpen(open);
            if (open && m_fast && !result) {
                ScriptedSerialControl::setOutput("block\r\n");
                dropRTS();
            }
            return result;
        }

    private:
        ReplyScript m_block;
        bool m_fast = false;
    };

    QStringList writes;
    bool portOpen = false;
};

constexpr qsizetype kBlock = 168041;

TEST_F(FrmVDRGraphic, block_isReadAtTheHighSpeedAndTheLineSetBack) {
    const QByteArray block = graphicFrom({{"abc", 0.1}});
    EXPECT_EQ(writes, QStringList({"InputLen=1", "Output=RVIM", "InputLen=0", "PortOpen=false",
                                   "Settings=115200,N,8,1", "Handshaking=2", "RThreshold=500",
                                   "SThreshold=0", "RTSEnable=true", "PortOpen=true",
                                   "Output=block", "RTSEnable=true", "PortOpen=false",
                                   "Settings=9600,N,8,2", "PortOpen=true"}));
    EXPECT_EQ(block, "abc" + QByteArray(kBlock - 3, '\0'));
    EXPECT_TRUE(portOpen);
}

TEST_F(FrmVDRGraphic, wholeBlock_endsTheReadingAtOnce) {
    const double before = clock.seconds();
    const QByteArray block = graphicFrom({{QByteArray(168036, 'g'), 0.5}});
    EXPECT_EQ(block, QByteArray(168036, 'g') + QByteArray(5, '\0'));
    // One second for the command that nobody answered, half of one for the block.
    EXPECT_NEAR(clock.seconds() - before, 1.5, 0.02);
}

TEST_F(FrmVDRGraphic, chunkPastTheBlock_isDroppedBehindItsEnd) {
    EXPECT_EQ(graphicFrom({{QByteArray(168000, 'g'), 0.1}, {QByteArray(500, 'h'), 0.1}}),
              QByteArray(168000, 'g') + QByteArray(41, 'h'));
}

TEST_F(FrmVDRGraphic, silence_isASecondAndZeros) {
    const double before = clock.seconds();
    EXPECT_EQ(graphicFrom({}), QByteArray(kBlock, '\0'));
    EXPECT_NEAR(clock.seconds() - before, 2.0, 0.02);
}

TEST_F(FrmVDRGraphic, refusedCommand_isASecondOfSilenceAndZeros) {
    control.setReply("RVIM", "?\r\n");
    const double before = clock.seconds();
    EXPECT_EQ(vdr.GetGraphic(), QByteArray(kBlock, '\0'));
    EXPECT_NEAR(clock.seconds() - before, 1.0, 0.02);
    EXPECT_EQ(vdr.CommPort(), 3);
    EXPECT_TRUE(vdr.Connected());
}

TEST_F(FrmVDRGraphic, eachChunk_restartsTheLimit) {
    const QByteArray block = graphicFrom({{"a", 0.9}, {"b", 0.9}, {"c", 1.1}});
    EXPECT_EQ(block.left(3), QByteArray("ab\0", 3));
}

TEST_F(FrmVDRGraphic, chunkAfterExactlyASecond_isTooLate) {
    EXPECT_EQ(graphicFrom({{"a", 0.5}, {"b", 1.0}}).left(2), QByteArray("a\0", 2));
}

TEST_F(FrmVDRGraphic, frozenTimeOfDay_goesOnFor59SecondsAndEndsAt60) {
    const auto connectedThenFrozen = [this](const QString &command) {
        if (command == "RVIM") {
            clock.freezeTimeOfDay();
            control.queueReply("RVIM", "VIM \r\n");
        }
    };
    control.setCommandHook(connectedThenFrozen);
    const double start = clock.steadySeconds();
    EXPECT_EQ(vdr.GetGraphic(), QByteArray(kBlock, '\0'));
    EXPECT_NEAR(clock.steadySeconds() - start, 60.0, 0.01);
    control.setCommandHook({});
    EXPECT_EQ(graphicFrom({{QByteArray(168036, 'g'), 59.0}}),
              QByteArray(168036, 'g') + QByteArray(5, '\0'));
}

TEST_F(FrmVDRGraphic, portThatDoesNotOpenAgain_isSilenceWithoutAMessage) {
    control.failOpen(3, 8012, "gone");
    EXPECT_EQ(vdr.GetGraphic(), QByteArray(kBlock, '\0'));
    EXPECT_EQ(vdr.CommPort(), 0);
    EXPECT_TRUE(host.messages().empty());
}

} // namespace
} // namespace veldron
