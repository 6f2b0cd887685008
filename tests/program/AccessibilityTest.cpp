// SPDX-License-Identifier: MIT
// What somebody meets who can't see the screen: every control has a name and a role.
#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/ProgramRun.h"

#include <gtest/gtest.h>

namespace veldron {

using namespace std::chrono_literals;

namespace {

class AccessibilityTree : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(run.plugUnit());
        ASSERT_TRUE(run.open());
    }
    /// Of what can be operated. Labels are read out by their text, and what only holds others needs
    /// no name.
    static bool isControl(const ScreenItem &item) {
        static const QStringList roles{"push button", "button",   "check box",  "combo box", "text",
                                       "slider",      "spin box", "scroll bar", "menu item", "list",
                                       "tree",        "table",    "menu",       "split pane"};
        return roles.contains(item.role);
    }
    static QString told(const ScreenItem &item) {
        return item.role + " \"" + item.name + "\" at " + QString::number(item.place.x()) + ',' +
               QString::number(item.place.y());
    }
    void expectNamesAndRoles(qsizetype leastControls) {
        qsizetype controls = 0;
        for (const ScreenItem &item : run.items()) {
            EXPECT_FALSE(item.role.isEmpty() || item.role == "unknown" || item.role == "invalid")
                << qPrintable(told(item));
            if (isControl(item)) {
                ++controls;
                EXPECT_FALSE(item.name.isEmpty()) << qPrintable(told(item));
            }
        }
        EXPECT_GE(controls, leastControls);
    }
    void expectNamesAndRolesIn(const QString &entry, const QString &title) {
        run.choose("Settings", entry);
        ASSERT_TRUE(Desk::awaitWindow(title, 5s));
        Desk::focus(title);
        expectNamesAndRoles(3);
        Desk::key("Escape");
        ASSERT_TRUE(eventually(5s, [&] { return !Desk::hasWindow(title); }));
    }

    ProgramRun run;
};

TEST_F(AccessibilityTree, window_hasNamesAndRoles) {
    expectNamesAndRoles(18);
}

TEST_F(AccessibilityTree, settingsDialogs_haveNamesAndRoles) {
    expectNamesAndRolesIn("Display...", "Display Settings");
    expectNamesAndRolesIn("Communications...", "Communication Settings");
}

/// Nothing that nobody sees takes the focus: a walk by Tab comes to things of some size only.
TEST_F(AccessibilityTree, tabKey_comesToNothingInvisible) {
    constexpr int kStops = 20;
    constexpr int kLeastSide = 6;
    int stops = 0;
    for (int i = 0; i < kStops; ++i) {
        Desk::key("Tab");
        for (const ScreenItem &item : run.items()) {
            if (item.isFocused && item.role != "frame") {
                ++stops;
                EXPECT_GE(item.place.width(), kLeastSide) << qPrintable(told(item));
                EXPECT_GE(item.place.height(), kLeastSide) << qPrintable(told(item));
            }
        }
    }
    EXPECT_GE(stops, kStops);
}

} // namespace

} // namespace veldron
