// SPDX-License-Identifier: MIT
// What a long day of use leaves in memory.
#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/ProgramRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <utility>

namespace veldron {

using namespace std::chrono_literals;

namespace {

class Memory : public testing::Test {
protected:
    /// In bytes, over what the first of all acts has left.
    static constexpr qint64 kRoom = 4 * 1024 * 1024;

    void SetUp() override {
        run.write("VELDRON.set", "VELDRONv1 Settings\r\nWaterfallOn True\r\nEndSettings \r\n");
        ASSERT_TRUE(run.plugUnit());
        ASSERT_TRUE(run.open());
    }
    /// Opens a dialog by the keys of its menu entry and cancels it.
    static void cancelDialog(const QStringList &menuKeys, const QString &title) {
        Desk::focus(kMainWindow);
        Desk::keys(menuKeys);
        ASSERT_TRUE(Desk::awaitWindow(title, 5s)) << qPrintable(title);
        Desk::focus(title);
        Desk::key("Escape");
        ASSERT_TRUE(eventually(5s, [&] { return !Desk::hasWindow(title); })) << qPrintable(title);
    }
    /// The program answers once it has worked off what came before.
    void awaitReaction() { EXPECT_TRUE(run.answers()); }
    void expectNoMoreThan(qint64 before) {
        const qint64 after = run.residentSize();
        EXPECT_LE(after - before, kRoom) << "from " << before << " to " << after;
    }
    int below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(m_source); }
    QSize randomSize() { return {640 + below(600), 480 + below(300)}; }

    ProgramRun run;

private:
    std::mt19937 m_source{7};
};

TEST_F(Memory, fileDialogCancelledTwoHundredTimes_leavesTheResidentSize) {
    constexpr int kTimes = 200;
    cancelDialog({"alt+f", "l"}, "Load Settings");
    const qint64 before = run.residentSize();
    for (int i = 1; i < kTimes; ++i) {
        cancelDialog({"alt+f", "l"}, "Load Settings");
    }
    expectNoMoreThan(before);
}

/// The picture of each size goes back to the system, whatever was allocated since.
TEST_F(Memory, windowResizedTwoHundredTimes_keepsTheResidentSizeAtEachReturn) {
    constexpr int kReturns = 20;
    constexpr int kSizes = 10;
    constexpr qint64 kSpread = 2 * 1024 * 1024;
    const QSize size = Desk::sizeOf(kMainWindow);
    QList<qint64> readings;
    for (int i = 0; i < kReturns; ++i) {
        for (int j = 0; j < kSizes; ++j) {
            Desk::resize(kMainWindow, randomSize());
            awaitReaction();
        }
        Desk::resize(kMainWindow, size);
        awaitReaction();
        readings.append(run.residentSize());
    }
    const auto [least, most] = std::minmax_element(readings.cbegin(), readings.cend());
    EXPECT_LE(*most - *least, kSpread) << *least << " to " << *most;
}

/// Somebody who tries out everything, always in the same order.
class RandomActs : public Memory {
protected:
    void SetUp() override {
        Memory::SetUp();
        m_size = Desk::sizeOf(kMainWindow);
        m_present = m_size;
    }
    /// Acts of each kind; the window is as at the start afterwards.
    void actOnceEach() {
        for (int hundredth = 0; hundredth < 100; ++hundredth) {
            act(hundredth);
        }
        for (int dialog = 0; dialog < kDialogs; ++dialog) {
            cancelOneOf(dialog);
        }
        recordAndPlayBack();
        rest();
    }
    void actAtRandom() { act(below(100)); }
    /// What one of a hundred acts is.
    void act(int hundredth) {
        static const QStringList keys{"Tab", "Down", "Up", "Page_Up", "Page_Down", "Home"};
        if (hundredth < 2) {
            cancelOneOf(below(kDialogs));
        } else if (hundredth < 6) {
            resize(randomSize());
        } else if (hundredth < 20) {
            press(place(), 1, place());
        } else if (hundredth < 35) {
            key("1");
            key(below(2) == 0 ? "Return" : "Escape");
        } else if (hundredth < 45) {
            press(place(), 4 + below(2)); // the wheel
        } else if (hundredth < 60) {
            key(keys.at(below(static_cast<int>(keys.size()))));
        } else {
            press(place(), 1);
        }
    }
    void recordAndPlayBack() {
        const QString file = QStringLiteral("band%1.rec").arg(m_files++);
        freshen();
        run.choose("File", "Record");
        ASSERT_TRUE(run.answerFileDialog("Record to file", run.path(file)));
        Desk::focus(kMainWindow);
        ASSERT_TRUE(eventually(5s, [&] { return run.content(file).count("\r\nData ") > 1; }));
        run.choose("File", "Stop recording");
        run.choose("File", "Playback");
        ASSERT_TRUE(run.answerFileDialog("History playback", run.path(file)));
        ASSERT_TRUE(
            eventually(5s, [&] { return run.named("push button", "Stop playback").has_value(); }));
        run.clickButton("Stop playback");
    }
    void rest() {
        freshen();
        resize(m_size);
        Desk::move({m_size.width() / 2, m_size.height() - 5});
        ASSERT_TRUE(run.awaitStatus("VELDRON connected on COM 3"));
    }

private:
    static constexpr int kDialogs = 5;

    /// Moves the pointer into the window, below its menu bar.
    QStringList place() {
        constexpr int kMenuBar = 30;
        return {"mousemove", QString::number(below(m_present.width())),
                QString::number(kMenuBar + below(m_present.height() - kMenuBar))};
    }
    // Without the pauses that xdotool makes by itself.
    void key(const QString &name) {
        m_words << "key"
                << "--delay"
                << "1" << name;
    }
    void press(const QStringList &from, int button, const QStringList &to = {}) {
        const QString number = QString::number(button);
        m_words << from << "mousedown" << number << to << "mouseup" << number;
    }
    void perform() { Desk::perform(std::exchange(m_words, {})); }
    void resize(QSize size) {
        perform();
        Desk::resize(kMainWindow, size);
        m_present = size;
    }
    /// Closes lists and menus that are open, and gives the window the focus.
    void freshen() {
        key("Escape");
        key("Escape");
        perform();
        awaitReaction();
        Desk::focus(kMainWindow);
    }
    void cancelOneOf(int dialog) {
        static const QList<QPair<QStringList, QString>> dialogs{
            {{"alt+f", "l"}, "Load Settings"},
            {{"alt+f", "s"}, "Save Settings"},
            {{"alt+s", "d"}, "Display Settings"},
            {{"alt+s", "c"}, "Communication Settings"},
            {{"alt+h", "a"}, "About VELDRON"}};
        freshen();
        cancelDialog(dialogs.at(dialog).first, dialogs.at(dialog).second);
        Desk::focus(kMainWindow);
    }

    QStringList m_words;
    QSize m_present;
    QSize m_size;
    int m_files = 0;
};

TEST_F(RandomActs, twoThousand_leaveTheResidentSize) {
    constexpr int kRounds = 2;
    constexpr int kActs = 1000;
    actOnceEach();
    const qint64 before = run.residentSize();
    for (int round = 0; round < kRounds; ++round) {
        for (int i = 0; i < kActs && !HasFatalFailure(); ++i) {
            actAtRandom();
        }
        rest();
        recordAndPlayBack();
    }
    rest();
    expectNoMoreThan(before);
}

} // namespace

} // namespace veldron
