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
    void expectNamesAndRolesIn(const QString &menu, const QString &entry, const QString &title) {
        run.choose(menu, entry);
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
    expectNamesAndRolesIn("Settings", "Display...", "Display Settings");
    expectNamesAndRolesIn("Settings", "Communications...", "Communication Settings");
}

TEST_F(AccessibilityTree, fileDialogs_haveNamesAndRoles) {
    expectNamesAndRolesIn("File", "Load Settings", "Load Settings");
    expectNamesAndRolesIn("File", "Save Settings", "Save Settings");
    expectNamesAndRolesIn("File", "Record", "Record to file");
    expectNamesAndRolesIn("File", "Playback", "History playback");
}

/// Texts and lists alike: whoever can't see the screen learns what the unit has made of an entry.
TEST_F(AccessibilityTree, valuesThatTheUnitConfirms_areAnnounced) {
    ASSERT_TRUE(run.reader().listen());
    // Not the field that is typed into: what is typed there is told as well.
    const ScreenItem start = run.control("Start").value();
    QString typed = "145.5";
    // The program takes a moment to hear that somebody listens.
    ASSERT_TRUE(eventually(15s, [&] {
        run.enter("Centre", typed);
        typed = typed == "145.5" ? "146.5" : "145.5";
        return eventually(2s, [&] { return run.reader().wasTold(start); });
    }));
    for (const char *label : {"RX Frequency", "End"}) {
        const ScreenItem item = run.control(label).value();
        EXPECT_TRUE(eventually(3s, [&] { return run.reader().wasTold(item); })) << label;
    }
    run.enter("Span", "2");
    for (const char *label : {"Span", "Step"}) {
        const ScreenItem item = run.control(label).value();
        EXPECT_TRUE(eventually(3s, [&] { return run.reader().wasTold(item); })) << label;
    }
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
