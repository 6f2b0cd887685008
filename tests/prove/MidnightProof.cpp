// SPDX-License-Identifier: MIT
// Midnight in every state of the program, and the nights on which the clocks are changed.
#include "tests/prove/Promise.h"

#include <QThread>

#include "tests/program/ChartPicture.h"
#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/RecordedFile.h"

#include <gtest/gtest.h>

namespace veldron {

using namespace std::chrono_literals;

namespace {

const QString kFile = QStringLiteral("night.rec");

/// A program whose clock comes to midnight when a test wants it to.
class Midnights : public testing::Test {
protected:
    void SetUp() override { m_clock = &m_live.run().shareClock(); }

    [[nodiscard]] ProgramRun &run() { return m_live.run(); }

    /// Two seconds before midnight until one behind it.
    void passMidnight() {
        const QDate tomorrow = m_clock->now().date().addDays(1);
        m_clock->set(QDateTime(tomorrow, QTime(0, 0)).addSecs(-2));
        QThread::msleep(3000);
        ASSERT_EQ(m_clock->now().date(), tomorrow);
        ASSERT_TRUE(run().isRunning());
    }
    void expectPolling() {
        EXPECT_TRUE(m_live.secondsToPolling(Promise::kBackWithin));
        EXPECT_TRUE(run().awaitStatus(QStringLiteral("VELDRON connected on COM 3"), 3s))
            << qPrintable(run().statusText());
    }
    [[nodiscard]] QTime latestTime() {
        const RecordedFile file = RecordedFile::read(run().content(kFile));
        return file.timeOf(file.scans.size() - 1);
    }
    /// The first tick of the time axis stands at the present minute, and its label tells that.
    [[nodiscard]] static QString faultOfAxis(const ChartPicture &picture, QTime latest) {
        const std::vector<int> ticks = picture.labelledTicks();
        if (ticks.empty() || std::abs(ticks.front() - latest.second() - 1) > 1) {
            return QStringLiteral("tick at %1").arg(ticks.empty() ? -1 : ticks.front());
        }
        return picture.hasTimeLabel(ticks.front(), latest.toString(QStringLiteral("HH:mm")))
                   ? QString()
                   : QStringLiteral("another label");
    }
    void expectOrderlyEnd() {
        run().sendTerminate();
        ASSERT_TRUE(run().ends());
        EXPECT_EQ(run().exitCode(), 0);
        EXPECT_EQ(run().errorOutput(), QByteArray());
        const char *name = testing::UnitTest::GetInstance()->current_test_info()->name();
        std::printf("| %s |\n", name);
        std::fflush(stdout);
    }

    LiveProgram m_live;
    ClockFile *m_clock = nullptr;
};

TEST_F(Midnights, withoutAUnit_nothingHappens) {
    ASSERT_TRUE(run().open());
    const QString status = run().statusText();
    passMidnight();
    EXPECT_EQ(run().statusText(), status);
    expectOrderlyEnd();
}

TEST_F(Midnights, polling_goesOn) {
    ASSERT_TRUE(m_live.open());
    const qsizetype place = m_live.unit().now();
    passMidnight();
    // Everything is read back once a day, and nothing else asks for these two in a row.
    const QByteArray commands = m_live.unit().commandsSince(place).join(' ');
    EXPECT_EQ(commands.count("RSGN RSDM"), 1) << commands.constData();
    expectPolling();
    expectOrderlyEnd();
}

TEST_F(Midnights, recording_beginsABlockWithTheNewDate) {
    ASSERT_TRUE(m_live.open());
    ASSERT_TRUE(m_live.startRecording(kFile));
    const qsizetype place = m_live.unit().now();
    passMidnight();
    EXPECT_TRUE(m_live.secondsToPolling(Promise::kBackWithin));
    const RecordedFile file = RecordedFile::read(run().content(kFile));
    ASSERT_EQ(file.blocks.size(), 2);
    const QByteArray date = m_clock->now().date().toString(QStringLiteral("d MMM yyyy")).toLatin1();
    EXPECT_TRUE(file.blocks.last().startsWith("StartSettings " + date + "\r\n"))
        << file.blocks.last().constData();
    EXPECT_EQ(m_live.lostSince(place, kFile), 0);
    expectOrderlyEnd();
}

TEST_F(Midnights, playback_goesOnByItsOwnTime) {
    ASSERT_TRUE(m_live.openAsItStarts());
    ASSERT_TRUE(m_live.startRecording(kFile));
    ASSERT_TRUE(eventually(
        20s, [this] { return RecordedFile::read(run().content(kFile)).scans.size() >= 8; }));
    run().choose(QStringLiteral("File"), QStringLiteral("Stop recording"));
    run().choose(QStringLiteral("File"), QStringLiteral("Playback"));
    ASSERT_TRUE(run().answerFileDialog(QStringLiteral("History playback"), run().path(kFile)));
    Desk::focus(kMainWindow);
    const RecordedFile file = RecordedFile::read(run().content(kFile));
    ASSERT_TRUE(eventually(
        5s, [&] { return run().panel(1).endsWith(QString::fromLatin1(file.scans.first().time)); }));
    const QString day = run().panel(1).section(QLatin1Char(' '), 0, -2);
    run().clickButton(QStringLiteral("Continuous playback"));
    passMidnight();
    EXPECT_EQ(run().panel(1).section(QLatin1Char(' '), 0, -2), day);
    EXPECT_LT(run().panel(2), QStringLiteral("99"));
    run().clickButton(QStringLiteral("Stop playback"));
    expectPolling();
    expectOrderlyEnd();
}

/// A dialog, and how the user comes to it.
struct Dialog {
    const char *name;
    const char *menu;
    const char *entry;
    const char *title;
};

void PrintTo(const Dialog &dialog, std::ostream *out) {
    *out << dialog.name;
}

class MidnightUnder : public Midnights, public testing::WithParamInterface<Dialog> {};

TEST_P(MidnightUnder, theDialog_pollsBehindIt) {
    ASSERT_TRUE(m_live.open());
    run().choose(GetParam().menu, GetParam().entry);
    ASSERT_TRUE(Desk::awaitWindow(GetParam().title, 5s));
    passMidnight();
    Desk::focus(GetParam().title);
    Desk::key(QStringLiteral("Escape"));
    ASSERT_TRUE(eventually(5s, [] { return !Desk::hasWindow(GetParam().title); }));
    expectPolling();
    expectOrderlyEnd();
}

QList<Dialog> chosenDialogs() {
    const QList<Dialog> all = {
        {"display", "Settings", "Display...", "Display Settings"},
        {"communications", "Settings", "Communications...", "Communication Settings"},
        {"loadSettings", "File", "Load Settings", "Load Settings"},
        {"record", "File", "Record", "Record to file"},
        {"about", "Help", "About", "About VELDRON"}};
    return provesLong() ? all : all.first(1);
}

INSTANTIATE_TEST_SUITE_P(Row, MidnightUnder, testing::ValuesIn(chosenDialogs()),
                         [](const testing::TestParamInfo<Dialog> &item) {
                             return std::string(item.param.name);
                         });

/// The wait of an exchange that midnight catches ends after a minute by the steady clock, which
/// runs four times as fast here.
TEST_F(Midnights, unitSilent_isPolledWhenItSpeaksAgain) {
    run().speedUpSteadyClock(4);
    ASSERT_TRUE(m_live.open());
    m_live.unit().tell("silence forever");
    QThread::msleep(1500);
    passMidnight();
    m_live.unit().tell("speak");
    // The status goes on telling of the last attempt to connect.
    QThread::msleep(15000);
    EXPECT_TRUE(m_live.secondsToPolling(Promise::kBackWithin));
    expectOrderlyEnd();
}

/// Of next year, so that no file is younger than the program's clock.
QDate lastSundayOf(int month) {
    const QDate end(QDate::currentDate().year() + 1, month, 31);
    return end.addDays(-(end.dayOfWeek() % Qt::Sunday));
}

/// At 3 h the clocks go back to 2 h, and the hour comes a second time.
TEST_F(Midnights, endOfDaylightSaving_theHourIsRecordedTwice) {
    run().setVariable(QStringLiteral("TZ"), QStringLiteral("Europe/Berlin"));
    m_clock->set(QDateTime(lastSundayOf(10), QTime(0, 59, 40), Qt::UTC));
    ASSERT_TRUE(m_live.open("WaterfallOn True\r\nPalette 0\r\nUpdate 1\r\nMarkerOn False\r\n"
                            "EndSettings \r\n"));
    ASSERT_TRUE(m_live.startRecording(kFile));
    Promise promise(m_live, kFile);
    ASSERT_TRUE(
        eventually(30s, [this] { return m_clock->now().toUTC().time() >= QTime(1, 0, 8); }));
    promise.expectKept("endOfDaylightSaving", 0);
    const RecordedFile file = RecordedFile::read(run().content(kFile));
    EXPECT_EQ(file.scans.first().time.left(4), "02:5");
    EXPECT_EQ(file.scans.last().time.left(5), "02:00");
    // The axis bears the new time. Which rows stand below depends on what comes first: the row
    // clock empties the waterfall, the read-back of a new day keeps it.
    const QRect chart = run().chart();
    QString fault;
    EXPECT_TRUE(eventually(3s, [&] {
        fault = faultOfAxis(ChartPicture(Desk::screenshot(), chart, true), latestTime());
        return fault.isEmpty();
    })) << qPrintable(fault);
    expectOrderlyEnd();
}

/// At 2 h the clocks go on to 3 h.
TEST_F(Midnights, beginOfDaylightSaving_theHourIsLeftOut) {
    run().setVariable(QStringLiteral("TZ"), QStringLiteral("Europe/Berlin"));
    m_clock->set(QDateTime(lastSundayOf(3), QTime(0, 59, 45), Qt::UTC));
    ASSERT_TRUE(m_live.open());
    ASSERT_TRUE(m_live.startRecording(kFile));
    Promise promise(m_live, kFile);
    ASSERT_TRUE(
        eventually(30s, [this] { return m_clock->now().toUTC().time() >= QTime(1, 0, 3); }));
    promise.expectKept("beginOfDaylightSaving", 0);
    const RecordedFile file = RecordedFile::read(run().content(kFile));
    EXPECT_EQ(file.scans.first().time.left(4), "01:5");
    EXPECT_EQ(file.scans.last().time.left(5), "03:00");
    expectOrderlyEnd();
}

} // namespace

} // namespace veldron
