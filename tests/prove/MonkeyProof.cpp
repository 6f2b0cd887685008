// SPDX-License-Identifier: MIT
// A user who types, clicks, drags, opens dialogs, records, plays back and resizes at random, on a
// line with random faults. A seed makes the same acts again.
#include "tests/prove/LiveProgram.h"

#include <QElapsedTimer>
#include <QThread>

#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <functional>
#include <random>

namespace veldron {

using namespace std::chrono_literals;

namespace {

/// An exchange with a silent unit may hold the program for a second, and loading settings for some
/// more: three seconds beyond them count as a hang.
constexpr std::chrono::milliseconds kAnswersWithin = 10s;

class Monkey {
public:
    Monkey(LiveProgram &live, unsigned seed) : m_live(live), m_random(seed) {}

    /// One act, by chance.
    void act() {
        using Act = void (Monkey::*)();
        static constexpr std::array<Act, 16> acts = {
            &Monkey::click,  &Monkey::click, &Monkey::click,        &Monkey::doubleClick,
            &Monkey::drag,   &Monkey::drag,  &Monkey::type,         &Monkey::type,
            &Monkey::key,    &Monkey::key,   &Monkey::key,          &Monkey::openMenu,
            &Monkey::record, &Monkey::fault, &Monkey::changeByHand, &Monkey::leaveDialogs};
        const Act chosen = acts.at(below(acts.size()));
        (this->*chosen)();
        QThread::msleep(below(60));
    }
    /// Closes whatever dialog or menu is up.
    void leaveDialogs() {
        for (int i = 0; i < 3; ++i) {
            Desk::key(QStringLiteral("Escape"));
        }
        Desk::focus(QStringLiteral("VELDRON"));
    }

private:
    std::size_t below(std::size_t limit) { return m_random() % limit; }
    template <std::size_t N>
    QString oneOf(const std::array<const char *, N> &texts) {
        return QString::fromLatin1(texts.at(below(N)));
    }
    QPoint place() { return {static_cast<int>(below(1280)), static_cast<int>(below(800))}; }

    void click() { Desk::click(place()); }
    void doubleClick() { Desk::doubleClick(place()); }
    void drag() {
        Desk::press(place());
        for (int i = 0; i < 4; ++i) {
            Desk::move(place());
        }
        Desk::release();
    }
    void type() {
        Desk::type(oneOf(std::array{"145", "98.5", "1e9", "-1", "0", "..", "433,5", "9999999999",
                                    "k", "m", "abc", "7.1m"}));
    }
    void key() {
        Desk::key(oneOf(std::array{"Return", "Tab", "shift+Tab", "Up", "Down", "Left", "Right",
                                   "Page_Up", "Page_Down", "Home", "End", "space", "BackSpace",
                                   "Delete", "F10", "ctrl+a", "ctrl+v", "Escape"}));
    }
    void openMenu() {
        Desk::key(oneOf(std::array{"alt+f", "alt+s", "alt+h"}));
        Desk::key(oneOf(std::array{"Down", "Up", "r", "p", "l", "s", "d", "c", "a"}));
        // The exit is an entry of the first menu; a run ends when its time is over.
        Desk::key(oneOf(std::array{"Escape", "Down", "Right"}));
    }
    void record() {
        Desk::focus(QStringLiteral("VELDRON"));
        Desk::key(QStringLiteral("alt+f"));
        Desk::key(QStringLiteral("r"));
        if (eventually(1s, [] { return Desk::hasWindow(QStringLiteral("Record to file")); })) {
            (void)m_live.run().answerFileDialog(QStringLiteral("Record to file"),
                                                m_live.run().path(QStringLiteral("monkey.rec")));
        }
    }
    void fault() {
        m_live.unit().tell(
            oneOf(std::array{"lose",       "delay 0.5",    "delay 1.1", "split 0.01", "before",
                             "behind",     "garble",       "refuse",    "echo",       "scan-cut",
                             "scan-short", "scan-unended", "bit 3",     "no-lf",      "previous",
                             "hold",       "silence 1.5",  "unplug",    "plug",       "speak"})
                .toLatin1());
        m_live.unit().tell("plug");
    }
    void changeByHand() {
        m_live.unit().tell(
            oneOf(std::array{"set centre 100", "set centre 433", "set span 10", "set span 2",
                             "set monitor 1", "set monitor 2", "set monitor 3", "set receiver 5",
                             "set receiver 7", "set datamode 3", "set amplitude -20"})
                .toLatin1());
    }

    LiveProgram &m_live;
    std::minstd_rand m_random;
};

double minutes() {
    bool given = false;
    const double wanted = qgetenv("VELDRON_PROVE_MINUTES").toDouble(&given);
    return given ? wanted : (provesLong() ? 120.0 : 0.5);
}

TEST(RandomUser, actsWithFaultsOnTheLine_neverCrashHangOrMakeTheToolkitComplain) {
    bool given = false;
    const unsigned first = qgetenv("VELDRON_PROVE_SEED").toUInt(&given);
    unsigned seed = given ? first : 1U;
    QElapsedTimer since;
    since.start();
    int acts = 0;
    int runs = 0;
    // A fresh program every few minutes, so that a seed that finds something is soon run again.
    while (static_cast<double>(since.elapsed()) < minutes() * 60000.0) {
        LiveProgram live;
        ASSERT_TRUE(live.open()) << "seed " << seed;
        Monkey monkey(live, seed);
        QElapsedTimer ofRun;
        ofRun.start();
        while (ofRun.elapsed() < 300000 &&
               static_cast<double>(since.elapsed()) < minutes() * 60000.0 &&
               live.run().isRunning()) {
            monkey.act();
            ++acts;
            if (acts % 50 == 0) {
                ASSERT_TRUE(
                    eventually(kAnswersWithin, [&] { return !live.run().items().isEmpty(); }))
                    << "hangs: seed " << seed << ", act " << acts;
            }
        }
        if (live.run().isRunning()) {
            live.run().sendTerminate();
            ASSERT_TRUE(live.run().ends(30s)) << "doesn't end: seed " << seed;
        }
        EXPECT_FALSE(live.run().hasCrashed()) << "seed " << seed;
        EXPECT_EQ(live.run().exitCode(), 0) << "seed " << seed;
        const QByteArray told = live.run().errorOutput();
        EXPECT_FALSE(told.contains("QWidget") || told.contains("QObject") || told.contains("qt.") ||
                     told.contains("Sanitizer") || told.contains("runtime error"))
            << "seed " << seed << ": " << told.constData();
        ++seed;
        ++runs;
    }
    std::printf("random user: %d acts in %d runs, %.1f minutes, seeds up to %u\n", acts, runs,
                static_cast<double>(since.elapsed()) / 60000.0, seed - 1);
}

} // namespace

} // namespace veldron
