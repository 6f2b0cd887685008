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

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <random>

namespace veldron {

using namespace std::chrono_literals;

namespace {

/// With a silent unit each exchange holds the program for a second, and a setting with its
/// read-back or a round of checks is several in a row: three seconds beyond them count as a hang.
constexpr std::chrono::milliseconds kAnswersWithin = 10s;

class Monkey {
public:
    Monkey(LiveProgram &live, unsigned seed) : m_live(live), m_random(seed) {}

    /// One act, by chance.
    void act() {
        using Act = void (Monkey::*)();
        static constexpr std::array<Act, 18> acts = {
            &Monkey::click,    &Monkey::click, &Monkey::click,        &Monkey::doubleClick,
            &Monkey::drag,     &Monkey::drag,  &Monkey::type,         &Monkey::type,
            &Monkey::key,      &Monkey::key,   &Monkey::key,          &Monkey::openMenu,
            &Monkey::record,   &Monkey::fault, &Monkey::changeByHand, &Monkey::leaveDialogs,
            &Monkey::playBack, &Monkey::resize};
        const std::size_t chosen = below(acts.size());
        m_recent.append(static_cast<int>(chosen));
        (this->*acts.at(chosen))();
        QThread::msleep(below(60));
    }
    /// Closes whatever dialog or menu is up.
    void leaveDialogs() {
        for (int i = 0; i < 3; ++i) {
            Desk::key(QStringLiteral("Escape"));
        }
        Desk::focus(QStringLiteral("VELDRON"));
    }

    /// The numbers of the last acts, and the windows that are open.
    [[nodiscard]] std::string recent() {
        std::string text;
        for (const int act : m_recent.mid(std::max<qsizetype>(m_recent.size() - 40, 0))) {
            text += std::to_string(act) + " ";
        }
        return text + "- " + Desk::windows().join(QStringLiteral(", ")).toStdString();
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
    void record() { nameInMenu(QStringLiteral("r"), QStringLiteral("Record to file")); }
    void playBack() { nameInMenu(QStringLiteral("p"), QStringLiteral("History playback")); }
    /// Names the monkey's recording in the dialog that an entry of the first menu opens.
    void nameInMenu(const QString &entry, const QString &dialog) {
        Desk::focus(QStringLiteral("VELDRON"));
        Desk::key(QStringLiteral("alt+f"));
        Desk::key(entry);
        if (eventually(1s, [&] { return Desk::hasWindow(dialog); })) {
            (void)m_live.run().answerFileDialog(dialog,
                                                m_live.run().path(QStringLiteral("monkey.rec")));
        }
    }
    void resize() {
        Desk::resize(QStringLiteral("VELDRON"),
                     {400 + static_cast<int>(below(880)), 300 + static_cast<int>(below(500))});
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
    QList<int> m_recent;
};

/// What a program under proof must not write to standard error.
bool isComplaint(QByteArray told) {
    // Said to a screen reader, such as this proof, that asks for an element that is just gone.
    told.replace("qt.accessibility.atspi: WARNING Qt AtSpiAdaptor: Accessible invalid", "");
    return told.contains("QWidget") || told.contains("QObject") || told.contains("qt.") ||
           told.contains("Sanitizer") || told.contains("runtime error");
}

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
    qint64 slowest = 0;
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
            if (acts % 20 == 0) {
                QElapsedTimer asked;
                asked.start();
                ASSERT_TRUE(live.run().answers() && asked.elapsed() < kAnswersWithin.count())
                    << "hangs: seed " << seed << ", act " << acts << ", " << asked.elapsed()
                    << " ms";
                slowest = std::max(slowest, asked.elapsed());
                ASSERT_FALSE(isComplaint(live.run().errorOutput()))
                    << "seed " << seed << ", act " << acts << ", " << monkey.recent();
            }
        }
        if (live.run().isRunning()) {
            live.run().sendTerminate();
            ASSERT_TRUE(live.run().ends(30s)) << "doesn't end: seed " << seed;
        }
        EXPECT_FALSE(live.run().hasCrashed()) << "seed " << seed;
        EXPECT_EQ(live.run().exitCode(), 0) << "seed " << seed;
        const QByteArray told = live.run().errorOutput();
        EXPECT_FALSE(isComplaint(told)) << "seed " << seed << ": " << told.constData();
        ++seed;
        ++runs;
    }
    std::printf("random user: %d acts in %d runs, %.1f minutes, seeds up to %u, the slowest answer "
                "after %.1f s\n",
                acts, runs, static_cast<double>(since.elapsed()) / 60000.0, seed - 1,
                static_cast<double>(slowest) / 1000.0);
}

} // namespace

} // namespace veldron
