// SPDX-License-Identifier: MIT
// Faults of the line and of the unit, one after the other under one program that records: after
// each of them everything is as before.
#include "tests/prove/Promise.h"

#include <QThread>

#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"

#include <gtest/gtest.h>

#include <memory>

namespace veldron {

using namespace std::chrono_literals;

namespace {

const QString kFile = QStringLiteral("faults.rec");

struct LineFault {
    const char *name;
    /// Lines for the simulator's console.
    QList<QByteArray> begin;
    /// How many scans it may cost.
    int lost = 1;
    /// Seconds that it goes on after the unit has used it up.
    double lasts = 0.0;
    QList<QByteArray> end = {};
    /// What the panels show afterwards other than before.
    QMap<QString, QString> changed = {};
    /// Part of the short form.
    bool isShort = false;
};

void PrintTo(const LineFault &fault, std::ostream *out) {
    *out << fault.name;
}

/// The faults that come eight times over, once a bit, and fourteen times, once a command.
QList<LineFault> severalOfAKind() {
    static const char *const bits[] = {"bit0Flipped", "bit1Flipped", "bit2Flipped", "bit3Flipped",
                                       "bit4Flipped", "bit5Flipped", "bit6Flipped", "bit7Flipped"};
    QList<LineFault> faults;
    for (int bit = 0; bit < 8; ++bit) {
        faults.append({bits[bit], {"times 6 bit " + QByteArray::number(bit)}, 6});
    }
    struct Read {
        const char *name;
        const char *letters;
    };
    for (const Read &read : {Read{"refusedScan", "RIFD"}, Read{"refusedVersion", "RIVE"},
                             Read{"refusedReceiver", "RURX"}, Read{"refusedMode", "RUMD"},
                             Read{"refusedStep", "RUST"}, Read{"refusedAttenuator", "RUAT"},
                             Read{"refusedAmplitude", "RSGN"}, Read{"refusedBandwidth", "RSBW"},
                             Read{"refusedDataMode", "RSDM"}, Read{"refusedMonitorMode", "RUOM"},
                             Read{"refusedSpan", "RSSP"}, Read{"refusedCentre", "RSCF"}}) {
        const bool once = QByteArray(read.letters) == "RIVE";
        // The version is asked for after a silence only.
        faults.append({read.name,
                       once ? QList<QByteArray>{"on RIVE refuse", "silence 1.2"}
                            : QList<QByteArray>{"on " + QByteArray(read.letters) + " refuse"},
                       2, once ? 2.0 : 0.0});
    }
    return faults;
}

QList<LineFault> allFaults() {
    QList<LineFault> faults = {
        {"silenceOfThreeSeconds", {"silence 3"}, 2, 3.0, {}, {}, true},
        {"replyLost", {"lose"}, 1},
        {"replyJustWithinTheLimit", {"delay 0.9"}, 1, 0.9},
        {"replyOnTheLimit", {"delay 1.0"}, 1, 1.0},
        {"replyJustBehindTheLimit", {"delay 1.1"}, 1, 1.1, {}, {}, true},
        {"scanInSingleBytes", {"on RIFD split 0.003"}, 1, 1.2},
        {"readInSingleSlowBytes", {"on RSSP split 0.05"}, 1, 0.5},
        {"twoRepliesMerged", {"hold"}, 1, 1.0},
        {"replyOfTheCommandBefore", {"previous"}, 1, 0.0, {}, {}, true},
        {"garbageBefore", {"before"}, 1},
        {"garbageLinesBefore", {"before \\r\\nxyz\\r\\n"}, 1},
        {"garbageWithin", {"garble"}, 1},
        {"garbageBehind", {"behind"}, 1},
        {"garbageLineBehind", {"behind junk\\r\\n"}, 1},
        {"nulBytes", {"before \\x00\\x00"}, 1},
        {"eightBitBytesInTheText", {"before \\xff\\xfe\\x80"}, 1},
        {"flowControlBytes", {"before \\x11\\x13", "behind \\x13\\x11"}, 2},
        {"wrongEcho", {"times 5 echo"}, 5},
        {"crWithoutLf", {"no-lf"}, 1, 1.0, {}, {}, true},
        {"echoSwitchedOn", {"times 20 local-echo"}, 20},
        {"scanEndsEarly", {"scan-early 100"}, 1},
        {"scanTooShort", {"scan-short 100"}, 1},
        {"scanTooLong", {"on RIFD endless 300"}, 1},
        {"scanCutOff", {"scan-cut 100"}, 1, 0.6, {}, {}, true},
        {"scanWithoutItsEnd", {"scan-unended"}, 1, 0.6},
        {"outputWithoutEnd", {"endless 60000"}, 2, 1.0},
        {"unpluggedAtIdle", {"unplug"}, 2, 2.0, {"plug"}, {}, true},
        {"unpluggedInAHeader", {"on RIFD delay 0.6"}, 2, 0.2, {"unplug", "plug"}},
        {"unpluggedInAScan", {"on RIFD split 0.01"}, 2, 0.5, {"unplug", "plug"}},
        {"anotherDeviceOnThePort", {"times 1000 garble"}, 30, 2.0, {"clear"}},
        {"settingsChangedByHandInAnExchange",
         {"on RSSP delay 0.3", "set span 5"},
         1,
         0.3,
         {},
         {{"Span", "5.00000"}, {"Start", "97.50000"}, {"End", "102.50000"}}},
        {"settingsChangedBackInAScan",
         {"on RIFD split 0.003", "set span 10"},
         1,
         1.2,
         {},
         {{"Span", "10.00000"}, {"Start", "95.00000"}, {"End", "105.00000"}}},
        {"unitResetWhileItAnswers",
         {"on RIFD split 0.003", "silence 1.5", "set bandwidth 3"},
         3,
         1.5,
         {},
         {{"RBW", "64 kHz"}}},
        {"anotherReceiver", {"set receiver 5"}, 1, 0.0, {}, {{"Receiver", "VK3700(10M)"}}, true},
    };
    return faults + severalOfAKind();
}

QList<LineFault> chosenFaults() {
    QList<LineFault> chosen;
    for (const LineFault &fault : allFaults()) {
        if (provesLong() || fault.isShort) {
            chosen.append(fault);
        }
    }
    return chosen;
}

class LineFaults : public testing::TestWithParam<LineFault> {
protected:
    /// One program for all rows, and another only when a row has ended it.
    void SetUp() override {
        if (s_live != nullptr && s_live->run().isRunning()) {
            return;
        }
        s_live = std::make_unique<LiveProgram>();
        ASSERT_TRUE(s_live->open());
        ASSERT_TRUE(s_live->startRecording(kFile));
        ASSERT_TRUE(s_live->secondsToPolling(5.0));
    }
    static void TearDownTestSuite() { s_live.reset(); }

    static void tell(const QList<QByteArray> &lines) {
        for (const QByteArray &line : lines) {
            s_live->unit().tell(line);
        }
    }
    /// Waits until the unit has used up what was armed, and the rest of the fault is over.
    static void awaitEnd(const LineFault &fault) {
        if (fault.end.isEmpty()) {
            ASSERT_TRUE(eventually(30s, [] { return s_live->unit().tell("armed").isEmpty(); }));
        }
        QThread::msleep(static_cast<unsigned long>(fault.lasts * 1000.0));
        tell(fault.end);
    }

    static std::unique_ptr<LiveProgram> s_live;
};

std::unique_ptr<LiveProgram> LineFaults::s_live;

TEST_P(LineFaults, afterTheFault_everythingIsAsBefore) {
    const LineFault &fault = GetParam();
    Promise promise(*s_live, kFile);
    promise.changePanels(fault.changed);
    tell(fault.begin);
    awaitEnd(fault);
    promise.expectKept(fault.name, fault.lost);
}

INSTANTIATE_TEST_SUITE_P(Row, LineFaults, testing::ValuesIn(chosenFaults()),
                         [](const testing::TestParamInfo<LineFault> &item) {
                             return std::string(item.param.name);
                         });

} // namespace

} // namespace veldron
