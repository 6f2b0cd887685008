// SPDX-License-Identifier: MIT
#include "simulator/UnitConsole.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace veldron {
namespace {

class UnitConsoleTest : public testing::Test {
protected:
    QByteArray type(const QByteArray &line) { return m_console.execute(line, 10.0); }

    QTemporaryDir m_folder;
    Unit m_unit;
    Faults m_faults;
    UnitLine m_line{m_unit, m_faults, m_folder.filePath("COM3"), 0};
    UnitConsole m_console{m_unit, m_faults, m_line};
};

TEST_F(UnitConsoleTest, everyFault_isArmedByItsLine) {
    struct Case {
        const char *line;
        Fault fault;
    };
    for (const Case &c :
         {Case{"lose", {Fault::Kind::Lose, 0.02, 100, "#~#", {}, 1}},
          Case{"delay 1.5", {Fault::Kind::Delay, 1.5, 100, "#~#", {}, 1}},
          Case{"split 0.1", {Fault::Kind::Split, 0.1, 100, "#~#", {}, 1}},
          Case{"before a b\\r\\n\\xff\\\\",
               {Fault::Kind::RubbishBefore, 0.02, 100, "a b\r\n\xff\\", {}, 1}},
          Case{"behind", {Fault::Kind::RubbishBehind, 0.02, 100, "#~#", {}, 1}},
          Case{"garble", {Fault::Kind::Garble, 0.02, 100, "#~#", {}, 1}},
          Case{"refuse", {Fault::Kind::Refuse, 0.02, 100, "#~#", {}, 1}},
          Case{"times 3 on RIVE echo", {Fault::Kind::WrongEcho, 0.02, 100, "#~#", "RIVE", 3}},
          Case{"bit 6", {Fault::Kind::FlipBit, 0.02, 6, "#~#", {}, 1}},
          Case{"no-lf", {Fault::Kind::NoLineFeed, 0.02, 100, "#~#", {}, 1}},
          Case{"previous", {Fault::Kind::Previous, 0.02, 100, "#~#", {}, 1}},
          Case{"local-echo", {Fault::Kind::LocalEcho, 0.02, 100, "#~#", {}, 1}},
          Case{"hold", {Fault::Kind::Hold, 0.02, 100, "#~#", {}, 1}},
          Case{"endless 9", {Fault::Kind::Endless, 0.02, 9, "#~#", {}, 1}},
          Case{"scan-cut 7", {Fault::Kind::ScanCut, 0.02, 7, "#~#", {}, 1}},
          Case{"scan-short 7", {Fault::Kind::ScanShort, 0.02, 7, "#~#", {}, 1}},
          Case{"scan-unended", {Fault::Kind::ScanUnended, 0.02, 100, "#~#", {}, 1}},
          Case{"scan-early 5", {Fault::Kind::ScanEarlyEnd, 0.02, 5, "#~#", {}, 1}}}) {
        m_faults.clear();
        EXPECT_EQ(type(c.line), "ok") << c.line;
        ASSERT_EQ(m_faults.armed().size(), 1U) << c.line;
        const Fault &armed = m_faults.armed().front();
        EXPECT_EQ(armed.kind, c.fault.kind) << c.line;
        EXPECT_EQ(armed.times, c.fault.times) << c.line;
        EXPECT_EQ(armed.command, c.fault.command) << c.line;
        if (c.fault.kind == Fault::Kind::RubbishBefore) {
            EXPECT_EQ(armed.bytes, c.fault.bytes);
        }
        const bool isCounted = c.fault.kind == Fault::Kind::FlipBit ||
                               c.fault.kind == Fault::Kind::Endless ||
                               (armed.isOfScan() && c.fault.kind != Fault::Kind::ScanUnended);
        if (isCounted) {
            EXPECT_EQ(armed.count, c.fault.count) << c.line;
        }
        if (c.fault.kind == Fault::Kind::Delay || c.fault.kind == Fault::Kind::Split) {
            EXPECT_DOUBLE_EQ(armed.seconds, c.fault.seconds) << c.line;
        }
    }
}

TEST_F(UnitConsoleTest, nonsense_isAnsweredByAReason) {
    for (const char *line :
         {"nonsense",    "delay",        "delay x",      "delay -1",    "delay nan",
          "split x",     "lose 3",       "before \\q",   "before \\x1", "scan-cut x",
          "scan-cut -1", "times 0 lose", "times x lose", "on",          "on RIVE",
          "bit 8",       "bit x",        "endless -1",   "hold 1",      "no-lf 1",
          "silence",     "silence x",    "set",          "set span",    "set nothing 1",
          "set span 99", "get nothing"}) {
        EXPECT_TRUE(type(line).startsWith("error: ")) << line;
    }
    EXPECT_TRUE(m_faults.armed().empty());
}

TEST_F(UnitConsoleTest, silence_runsFromNowAndEndsOnDemand) {
    EXPECT_EQ(type("silence 3"), "ok");
    EXPECT_TRUE(m_faults.isSilent(12.9));
    EXPECT_FALSE(m_faults.isSilent(13.0));
    EXPECT_EQ(type("silence forever"), "ok");
    EXPECT_TRUE(m_faults.isSilent(1e9));
    EXPECT_EQ(type("speak"), "ok");
    EXPECT_FALSE(m_faults.isSilent(10.0));
}

TEST_F(UnitConsoleTest, everySetting_canBeChangedByHandAndShown) {
    struct Case {
        const char *name;
        const char *value;
    };
    for (const Case &c :
         {Case{"receiver", "8"}, Case{"mode", "12"}, Case{"step", "12.5"}, Case{"attenuator", "1"},
          Case{"amplitude", "-10"}, Case{"bandwidth", "4"}, Case{"datamode", "3"},
          Case{"average", "20"}, Case{"median", "4"}, Case{"centre", "145.500000"},
          Case{"span", "5.000000"}, Case{"channels", "144 25 146"}, Case{"monitor", "3"}}) {
        const QByteArray name = c.name;
        EXPECT_EQ(type("set " + name + " " + c.value), "ok") << c.name;
        EXPECT_EQ(type("get " + name), name + " " + c.value + "\nok");
    }
    EXPECT_EQ(type("set marker 1"), "ok");
    EXPECT_EQ(type("get marker"), "marker 145.525\nok");
    EXPECT_EQ(type("get").count('\n'), 14);
}

TEST_F(UnitConsoleTest, plugAndUnplug_reachTheLine) {
    EXPECT_EQ(type("plug"), "ok");
    EXPECT_TRUE(m_line.isPlugged());
    EXPECT_EQ(type("unplug"), "ok");
    EXPECT_FALSE(m_line.isPlugged());
}

TEST_F(UnitConsoleTest, othersToo_areAnsweredByOk) {
    EXPECT_EQ(type(""), "");
    EXPECT_TRUE(type("help").endsWith("ok"));
    EXPECT_EQ(type("times 2 lose"), "ok");
    EXPECT_EQ(type("armed"), "times 2 lose\nok");
    EXPECT_EQ(type("clear"), "ok");
    EXPECT_EQ(type("armed"), "ok");
    EXPECT_FALSE(m_console.wantsToQuit());
    EXPECT_EQ(type(" quit \r"), "ok");
    EXPECT_TRUE(m_console.wantsToQuit());
}

} // namespace
} // namespace veldron
