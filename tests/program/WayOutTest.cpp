// SPDX-License-Identifier: MIT
// Closing the window ends the program, whatever it was doing and whatever the user does right
// afterwards.
#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/ProgramRun.h"

#include <gtest/gtest.h>

#include <csignal>

namespace veldron {

using namespace std::chrono_literals;

namespace {

const QString kDefaultFile = QStringLiteral("VELDRON.set");

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

TEST_F(WayOut, exitEntry_endsTheProgram) {
    ASSERT_TRUE(run.open());
    run.choose("File", "Exit");
    expectOrderlyEnd();
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
