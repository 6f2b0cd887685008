// SPDX-License-Identifier: MIT
// At scale 2 the test's screen has 640 x 400 pixels for windows: no window is larger than that, and
// the panels can be reached.
#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/ProgramRun.h"

#include <gtest/gtest.h>

namespace veldron {

using namespace std::chrono_literals;

namespace {

constexpr QRect kScreen(0, 0, 1280, 800);

class SmallScreen : public testing::Test {
protected:
    void SetUp() override {
        run.setScale(2);
        ASSERT_TRUE(run.plugUnit());
    }
    void expectFits(const QString &title) {
        ASSERT_TRUE(Desk::awaitWindow(title, 10s)) << qPrintable(title);
        const QSize size = Desk::sizeOf(title);
        EXPECT_GT(size.width(), 200) << qPrintable(title);
        EXPECT_LE(size.width(), kScreen.width()) << qPrintable(title);
        EXPECT_LE(size.height(), kScreen.height()) << qPrintable(title);
    }
    void expectDialogFits(const QString &keys, const QString &title) {
        Desk::focus("VELDRON");
        Desk::key("alt+" + keys.left(1));
        Desk::key(keys.mid(1));
        expectFits(title);
        Desk::focus(title);
        Desk::key("Escape");
        EXPECT_TRUE(eventually(5s, [&] { return !Desk::hasWindow(title); })) << qPrintable(title);
    }

    ProgramRun run;
};

TEST_F(SmallScreen, splashAndWindow_fit) {
    run.unit().tell("silence forever");
    run.launch();
    expectFits("VELDRON"); // the splash, while the port is tried
    ASSERT_TRUE(run.awaitWindow());
    expectFits("VELDRON");
}

TEST_F(SmallScreen, everyDialog_fits) {
    ASSERT_TRUE(run.open());
    expectDialogFits("fl", "Load Settings");
    expectDialogFits("fs", "Save Settings");
    expectDialogFits("fp", "History playback");
    expectDialogFits("sd", "Display Settings");
    expectDialogFits("sc", "Communication Settings");
    expectDialogFits("ha", "About VELDRON");
}

} // namespace

} // namespace veldron
