// SPDX-License-Identifier: MIT
// Closing the window ends the program, whatever it was doing and whatever the user does right
// afterwards.
#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/ProgramRun.h"
#include "tests/program/VirtualDesktop.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <string>

namespace veldron {

using namespace std::chrono_literals;

namespace {

enum class Doing { Nothing, APoll, ATryOfASilentUnit, ALoad };
enum class Then { ClickOnAList, ClickOnAMenu, ClickOnTheChart, Key };

class WayOut : public testing::Test {
protected:
    void expectOrderlyEnd() {
        ASSERT_TRUE(run.ends());
        EXPECT_EQ(run.exitCode(), 0);
        EXPECT_FALSE(run.hasCrashed());
        EXPECT_EQ(run.errorOutput(), QByteArray());
        EXPECT_TRUE(run.content(kDefaultFile).endsWith("EndSettings \r\n"));
    }

    ProgramRun run;
};

class WayOutByTheCloseBox : public WayOut,
                            public testing::WithParamInterface<std::tuple<Doing, Then>> {
protected:
    void SetUp() override {
        ASSERT_TRUE(run.plugUnit());
        ASSERT_TRUE(run.open());
        m_list = run.control("Monitor mode")->place.center();
        m_menu = run.named("menu item", "Settings")->place.center();
        m_chart = run.chart().center();
    }
    /// Returns at the moment at which the program is busy with it.
    void begin(Doing what) {
        const qsizetype place = run.unit().now();
        switch (what) {
        case Doing::Nothing:
            // Otherwise it would be gone before the user can do anything else.
            run.sendSignal(SIGSTOP);
            break;
        case Doing::APoll:
            run.unit().tell("on RIFD delay 0.8");
            awaitHeard(place, "RIFD");
            break;
        case Doing::ATryOfASilentUnit:
            run.unit().tell("silence forever");
            awaitHeard(place, "RIVE");
            break;
        case Doing::ALoad:
            run.write("slow.set", "VELDRONv1 Settings\r\nMonitorMode 1\r\nCentre 145500000\r\n"
                                  "RXStep 100000\r\n");
            run.choose("File", "Load Settings");
            ASSERT_TRUE(run.answerFileDialog("Load Settings", run.path("slow.set")));
            awaitHeard(place, "WUOM1");
            break;
        }
    }
    void act(Then what) const {
        switch (what) {
        case Then::ClickOnAList:
            Desk::click(m_list);
            break;
        case Then::ClickOnAMenu:
            Desk::click(m_menu);
            break;
        case Then::ClickOnTheChart:
            Desk::click(m_chart);
            break;
        case Then::Key:
            Desk::key("Down");
            break;
        }
    }

    void goOn() const { run.sendSignal(SIGCONT); }

private:
    void awaitHeard(qsizetype place, const QByteArray &command) {
        ASSERT_TRUE(eventually(10s, [&] { return run.unit().countSince(place, command) > 0; }));
    }

    QPoint m_list;
    QPoint m_menu;
    QPoint m_chart;
};

TEST_P(WayOutByTheCloseBox, program_ends) {
    const auto &[doing, then] = GetParam();
    begin(doing);
    Desk::pressCloseBox("VELDRON");
    act(then);
    goOn();
    expectOrderlyEnd();
}

std::string situation(const testing::TestParamInfo<std::tuple<Doing, Then>> &item) {
    static constexpr std::array kDoing{"idle", "inAPoll", "unitSilent", "inALoad"};
    static constexpr std::array kThen{"list", "menu", "chart", "key"};
    return std::string(kDoing.at(static_cast<std::size_t>(std::get<0>(item.param)))) + "_then_" +
           kThen.at(static_cast<std::size_t>(std::get<1>(item.param)));
}

INSTANTIATE_TEST_SUITE_P(Each, WayOutByTheCloseBox,
                         testing::Combine(testing::Values(Doing::Nothing, Doing::APoll,
                                                          Doing::ATryOfASilentUnit, Doing::ALoad),
                                          testing::Values(Then::ClickOnAList, Then::ClickOnAMenu,
                                                          Then::ClickOnTheChart, Then::Key)),
                         situation);

/// A dialog, and how the user comes to it.
struct Dialog {
    const char *menu;
    const char *entry;
    const char *title;
};

void PrintTo(const Dialog &dialog, std::ostream *out) {
    *out << dialog.title;
}

/// The system asks for the end while a dialog is up.
class WayOutBySignal : public WayOut, public testing::WithParamInterface<Dialog> {};

TEST_P(WayOutBySignal, underADialog_endsInOrder) {
    ASSERT_TRUE(run.plugUnit());
    ASSERT_TRUE(run.open());
    run.choose(GetParam().menu, GetParam().entry);
    ASSERT_TRUE(Desk::awaitWindow(GetParam().title, 5s));
    run.sendTerminate();
    expectOrderlyEnd();
}

INSTANTIATE_TEST_SUITE_P(Each, WayOutBySignal,
                         testing::Values(Dialog{"File", "Load Settings", "Load Settings"},
                                         Dialog{"File", "Save Settings", "Save Settings"},
                                         Dialog{"Settings", "Display...", "Display Settings"},
                                         Dialog{"Settings", "Communications...",
                                                "Communication Settings"},
                                         Dialog{"Help", "About", "About VELDRON"}),
                         [](const testing::TestParamInfo<Dialog> &item) {
                             std::string name = item.param.title;
                             std::erase(name, ' ');
                             return name;
                         });

TEST_F(WayOut, terminateSignalUnderTheQuestionOfARecording_endsInOrder) {
    ASSERT_TRUE(run.plugUnit());
    ASSERT_TRUE(run.open());
    run.choose("File", "Record");
    ASSERT_TRUE(run.answerFileDialog("Record to file", run.path("band.rec")));
    ASSERT_TRUE(eventually(5s, [&] { return run.content("band.rec").contains("\r\nData "); }));
    Desk::pressCloseBox("VELDRON");
    ASSERT_TRUE(Desk::awaitWindow("Exit VELDRON?", 5s));
    run.sendTerminate();
    expectOrderlyEnd();
    EXPECT_TRUE(run.content("band.rec").endsWith("\r\n"));
}

/// The error has ended everything already; the signal only takes the box away.
TEST_F(WayOut, terminateSignalUnderTheErrorBox_endsWithTheErrorsCode) {
    ASSERT_TRUE(run.plugUnit());
    ASSERT_TRUE(run.open());
    run.write("bad.set", "VELDRONv1 Settings\r\nCentre nonsense\r\nEndSettings \r\n");
    run.choose("File", "Load Settings");
    ASSERT_TRUE(run.answerFileDialog("Load Settings", run.path("bad.set")));
    ASSERT_TRUE(Desk::awaitWindow("VELDRON has to end", 5s));
    run.sendTerminate();
    ASSERT_TRUE(run.ends());
    EXPECT_FALSE(run.hasCrashed());
    EXPECT_EQ(run.exitCode(), 1);
    EXPECT_TRUE(run.errorOutput().startsWith("veldron: "));
}

TEST_F(WayOut, exitEntry_endsTheProgram) {
    ASSERT_TRUE(run.open());
    run.choose("File", "Exit");
    expectOrderlyEnd();
}

/// The program alone is on the display that goes away.
TEST_F(WayOut, displayThatGoesAway_endsInOrderWithCodeOne) {
    QProcess server;
    VirtualDesktop::tieToThisProcess(server);
    server.start("Xvfb", {"-displayfd", "1", "-nolisten", "tcp"});
    ASSERT_TRUE(
        eventually(10s, [&] { return server.waitForReadyRead(0) || server.canReadLine(); }));
    const QByteArray ours = qgetenv("DISPLAY");
    ASSERT_TRUE(run.plugUnit());
    qputenv("DISPLAY", ':' + server.readLine().trimmed());
    run.launch();
    qputenv("DISPLAY", ours);
    ASSERT_TRUE(eventually(20s, [&] { return run.unit().scansSince(0) > 0; }));
    server.kill();
    EXPECT_TRUE(server.waitForFinished());
    ASSERT_TRUE(run.ends());
    EXPECT_EQ(run.exitCode(), 1);
    EXPECT_FALSE(run.hasCrashed());
    EXPECT_TRUE(run.content(kDefaultFile).endsWith("EndSettings \r\n"));
}

TEST_F(WayOut, hangUpIgnoredAtTheStart_doesNotEndTheProgram) {
    run.ignoreSignal(SIGHUP);
    ASSERT_TRUE(run.open());
    run.sendSignal(SIGHUP);
    EXPECT_FALSE(run.ends(1s));
    run.sendTerminate();
    expectOrderlyEnd();
}

} // namespace

} // namespace veldron
