// SPDX-License-Identifier: MIT
// Two days of recording with two midnights, and their playback to the end, on a clock that skips
// what the program would wait.
#include "tests/prove/Promise.h"

#include <QElapsedTimer>
#include <QLocale>
#include <QProcess>
#include <QThread>

#include "tests/program/ChartPicture.h"
#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/RecordedFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace veldron {

using namespace std::chrono_literals;

namespace {

const QString kFile = QStringLiteral("days.rec");
constexpr unsigned kSeed = 20260103;
constexpr int kDay = 86400;
/// Rows that the picture shows, and some more.
constexpr int kRowsLookedAt = 800;
/// More than any scan line has.
constexpr int kLongestLine = 345;

/// What the two forms differ in.
struct Course {
    QDateTime begin;
    int seconds; ///< that are recorded
    int settled; ///< seconds after which the memory counts as settled
    int moments; ///< at which the picture is looked at
    int midnights;
};

Course course() {
    // Not in the past: locks that killed programs have left would come from the future, and the
    // toolkit remarks on that.
    const QDate day(QDate::currentDate().year() + 1, 3, 9);
    return provesLong() ? Course{{day, QTime(22, 0)}, 2 * kDay, 3600, 50, 2}
                        : Course{{day, QTime(23, 40)}, 3600, 1200, 4, 1};
}

/// Parts into which waits are cut. Less slows everything down, for a look at it.
int haste() {
    bool given = false;
    const int wanted = qgetenv("VELDRON_PROVE_HASTE").toInt(&given);
    return given ? wanted : 1000;
}

/// Seconds from one time of day to another, which is at most half a day away.
int secondsBetween(QTime from, QTime to) {
    const int seconds = from.secsTo(to);
    return seconds > kDay / 2 ? seconds - kDay : (seconds < -kDay / 2 ? seconds + kDay : seconds);
}

QByteArray shown(const QByteArray &samples) {
    QByteArray levels;
    for (const char sample : samples) {
        levels.append(static_cast<char>(ChartPicture::shownLevel(static_cast<quint8>(sample))));
    }
    return levels;
}

/// The levels of two scans in one row: the higher one of each cell.
QByteArray higher(const QByteArray &one, const QByteArray &other) {
    QByteArray levels = one;
    for (qsizetype i = 0; i < std::min(one.size(), other.size()); ++i) {
        levels[i] = static_cast<char>(
            std::max(static_cast<quint8>(one.at(i)), static_cast<quint8>(other.at(i))));
    }
    return levels;
}

/// All cells but the first, into which the last level of the row above it runs.
bool agree(const QByteArray &row, const QByteArray &scan) {
    return scan.size() >= row.size() && row.mid(1) == scan.mid(1, row.size() - 1);
}

class Days : public testing::Test {
protected:
    void SetUp() override {
        m_clock = &run().shareClock();
        m_clock->set(m_course.begin);
        run().write(QStringLiteral("VELDRON.set"),
                    "VELDRONv1 Settings\r\nWaterfallOn True\r\nPalette 0\r\nUpdate 1\r\n"
                    "MarkerOn False\r\nEndSettings \r\n");
        ASSERT_TRUE(run().plugUnit());
        ASSERT_TRUE(run().open());
        ASSERT_TRUE(m_live.startRecording(kFile));
        m_chart = run().chart();
    }

    [[nodiscard]] ProgramRun &run() { return m_live.run(); }

    [[nodiscard]] int secondsGone() const {
        return static_cast<int>(m_course.begin.secsTo(m_clock->now()));
    }

    /// The latest scans in the file, oldest first.
    [[nodiscard]] QList<RecordedFile::Scan> latestScans() {
        QFile file(run().path(kFile));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        file.seek(std::max<qint64>(0, file.size() - qint64{kRowsLookedAt} * kLongestLine));
        const QByteArray tail = file.readAll();
        QList<RecordedFile::Scan> scans;
        qsizetype at = tail.indexOf("\r\nData ");
        while (at >= 0) {
            const qsizetype end = tail.indexOf("\r\n", at + 2);
            if (end < 0) {
                break;
            }
            const QByteArray line = tail.mid(at + 2, end - at - 2);
            const qsizetype blank = line.lastIndexOf(' ');
            scans.append({line.mid(5, blank - 5), line.mid(blank + 1), 0, 0});
            at = tail.indexOf("\r\nData ", end);
        }
        return scans;
    }

    /// What is wrong with the picture that the screen shows; empty when nothing is. The end of its
    /// top row is found by the ticks, and must be the second behind the latest scan or a neighbour.
    [[nodiscard]] QString faultOfPicture() {
        const QList<RecordedFile::Scan> scans = latestScans();
        const ChartPicture picture(Desk::screenshot(), m_chart, true);
        if (scans.size() < 30) {
            return QStringLiteral("too few scans");
        }
        if (const int wrong = picture.wrongColumns(scans.last().samples); wrong != 0) {
            return QStringLiteral("%1 wrong columns in the trace").arg(wrong);
        }
        const std::vector<int> ticks = picture.labelledTicks();
        if (static_cast<int>(ticks.size()) < picture.fallHeight() / 60) {
            return QStringLiteral("%1 ticks").arg(ticks.size());
        }
        const QTime latest = timeOf(scans.last());
        QTime top;
        for (const int ahead : {0, 1, 2}) {
            const QTime end = latest.addSecs(ahead);
            top = end.second() % 60 == ticks.front() % 60 ? end : top;
        }
        if (!top.isValid()) {
            return QStringLiteral("ticks at %1 at ").arg(ticks.front()) + latest.toString();
        }
        return faultOfLabels(picture, ticks, top) + faultOfRows(picture, scans, top);
    }

    [[nodiscard]] static QTime timeOf(const RecordedFile::Scan &scan) {
        return QTime::fromString(QString::fromLatin1(scan.time), QStringLiteral("HH:mm:ss"));
    }

    [[nodiscard]] static QString faultOfLabels(const ChartPicture &picture,
                                               const std::vector<int> &ticks, QTime top) {
        for (const int tick : ticks) {
            const QTime time = top.addSecs(-tick);
            if (time.second() != 0 ||
                !picture.hasTimeLabel(tick, time.toString(QStringLiteral("HH:mm")))) {
                return QStringLiteral("label of row %1, %2; ").arg(tick).arg(time.toString());
            }
        }
        return {};
    }

    /// Each row must show a scan of its own second or of the one before, or two in a row of these.
    [[nodiscard]] QString faultOfRows(const ChartPicture &picture,
                                      const QList<RecordedFile::Scan> &scans, QTime top) const {
        const int rows =
            std::min(picture.fallHeight(), secondsBetween(timeOf(scans.first()), top) - 3);
        qsizetype last = scans.size() - 1;
        for (int row = 1; row < std::min(rows, secondsGone() - 10); ++row) {
            const QTime end = top.addSecs(-row);
            while (last > 0 && secondsBetween(end, timeOf(scans.at(last))) > 0) {
                --last;
            }
            if (!showsOneOf(picture.fallLevels(row), scans, last)) {
                return QStringLiteral("row %1, %2").arg(row).arg(end.toString());
            }
        }
        return {};
    }

    [[nodiscard]] static bool showsOneOf(const QByteArray &row,
                                         const QList<RecordedFile::Scan> &scans, qsizetype last) {
        for (qsizetype i = last; i >= std::max<qsizetype>(0, last - 2); --i) {
            const QByteArray scan = shown(scans.at(i).samples);
            const QByteArray before = shown(scans.at(std::max<qsizetype>(0, i - 1)).samples);
            if (agree(row, scan) || agree(row, higher(scan, before))) {
                return true;
            }
        }
        return false;
    }

    /// The footprint must be the same from the time on at which the memory has settled.
    void lookAtFootprint() {
        LiveProgram::Footprint now = m_live.footprint();
        // Each scan opens the file a second time for a moment, so the least of several counts.
        for (int i = 0; i < 10; ++i) {
            QThread::msleep(2);
            now.descriptors = std::min(now.descriptors, m_live.footprint().descriptors);
        }
        m_settled = m_settled ? m_settled : now;
        m_growthKib = std::max(m_growthKib, now.residentKib - m_settled->residentKib);
        EXPECT_EQ(now.descriptors, m_settled->descriptors) << "after " << secondsGone() << " s";
    }

    /// At the program's usual pace, so that the picture stands still for a moment.
    void lookAtPicture() {
        m_clock->hurry(1);
        QString fault;
        const bool right = eventually(10s, [&] {
            fault = faultOfPicture();
            return fault.isEmpty();
        });
        EXPECT_TRUE(right) << qPrintable(m_clock->now().toString() + ": " + fault);
        m_clock->hurry(haste());
    }

    /// Moments after which the picture is looked at, in seconds from the beginning.
    [[nodiscard]] std::vector<int> moments() const {
        std::minstd_rand random(kSeed); // NOLINT(cert-msc51-cpp): the same moments at each run
        std::vector<int> seconds;
        for (int i = 0; i < m_course.moments; ++i) {
            seconds.push_back(60 + static_cast<int>(random() % 1000000) % (m_course.seconds - 120));
        }
        std::sort(seconds.begin(), seconds.end());
        return seconds;
    }

    void letTimePass() {
        constexpr int kFootprintEach = 300;
        const std::vector<int> looks = moments();
        auto look = looks.begin();
        int footprintAt = m_course.settled;
        m_clock->hurry(haste());
        while (secondsGone() < m_course.seconds) {
            ASSERT_TRUE(run().isRunning());
            if (look != looks.end() && secondsGone() >= *look) {
                lookAtPicture();
                ++look;
            }
            if (secondsGone() >= footprintAt) {
                lookAtFootprint();
                footprintAt = secondsGone() + kFootprintEach;
            }
            QThread::msleep(5);
        }
        m_clock->hurry(1);
        EXPECT_EQ(look, looks.end());
        EXPECT_LE(m_growthKib, Promise::kGrowthKib);
    }

    /// Each scan that the unit sent is in the file, at its second, and no second is left out.
    void expectFile(const RecordedFile &file) {
        const QList<LineEvent> &events = m_live.unit().events();
        const QList<LineEvent> sent = sentFromFirstOf(file, events);
        ASSERT_GE(sent.size(), file.scans.size());
        EXPECT_GE(file.scans.size(), sentFromFirstOf(file, events.first(m_stop)).size());
        int late = 0;
        int leftOut = 0;
        for (qsizetype i = 0; i < file.scans.size(); ++i) {
            ASSERT_EQ(file.scans.at(i).samples, sent.at(i).samples) << "scan " << i;
            late += std::abs(secondsBetween(sent.at(i).at.time(), file.timeOf(i))) > 1 ? 1 : 0;
            const int step = i == 0 ? 1 : secondsBetween(file.timeOf(i - 1), file.timeOf(i));
            EXPECT_GE(step, 0) << "scan " << i;
            leftOut += step > 1 ? step - 1 : 0;
        }
        EXPECT_EQ(late, 0);
        EXPECT_EQ(leftOut, 0);
        EXPECT_TRUE(file.rest.isEmpty());
        expectDates(file);
        std::printf("scans: %d, seconds left out: %d\n", static_cast<int>(file.scans.size()),
                    leftOut);
    }

    /// One block at the beginning and one a midnight, which stands where the new day begins.
    void expectDates(const RecordedFile &file) const {
        ASSERT_EQ(file.blocks.size(), 1 + m_course.midnights);
        for (int block = 1; block <= m_course.midnights; ++block) {
            const QDate date = m_course.begin.date().addDays(block);
            EXPECT_TRUE(file.blocks.at(block).startsWith("StartSettings " +
                                                         dateText(date).toLatin1() + "\r\n"));
            const auto first =
                std::find_if(file.scans.begin(), file.scans.end(),
                             [block](const auto &scan) { return scan.block == block + 1; });
            ASSERT_NE(first, file.scans.end());
            // The midnight is noticed by the poll behind the first one of the day.
            EXPECT_TRUE(timeOf(*first) <= QTime(0, 0, 2)) << first->time.constData();
        }
    }

    [[nodiscard]] static QString dateText(QDate date) {
        return QLocale::c().toString(date, QLocale::c().dateFormat(QLocale::ShortFormat));
    }

    void expectCheckedBy(const QString &program) {
        QProcess process;
        process.start(program, {QStringLiteral("check"), run().path(kFile)});
        EXPECT_TRUE(process.waitForFinished(120000));
        EXPECT_EQ(process.exitCode(), 0) << process.readAll().constData();
    }

    void playToTheEnd(const RecordedFile &file) {
        run().choose(QStringLiteral("File"), QStringLiteral("Playback"));
        ASSERT_TRUE(run().answerFileDialog(QStringLiteral("History playback"), run().path(kFile)));
        Desk::focus(QStringLiteral("VELDRON"));
        ASSERT_TRUE(eventually(
            5s, [this] { return run().statusText().startsWith(QLatin1String("Playback")); }));
        run().clickButton(QStringLiteral("Playback speed"));
        Desk::key(QStringLiteral("End"));
        run().clickButton(QStringLiteral("Continuous playback"));
        m_clock->hurry(haste());
        EXPECT_TRUE(eventually(3600s, [this] {
            QThread::msleep(500);
            return run().panel(2) == QLatin1String("100.00%");
        })) << qPrintable(run().panel(2));
        m_clock->hurry(1);
        EXPECT_EQ(run().panel(1), dateText(m_clock->now().date()) + QLatin1Char(' ') +
                                      QString::fromLatin1(file.scans.last().time));
        const QRect chart = run().chart();
        EXPECT_TRUE(eventually(5s, [&] {
            return ChartPicture(Desk::screenshot(), chart, true)
                       .wrongColumns(file.scans.last().samples) == 0;
        }));
        run().clickButton(QStringLiteral("Stop playback"));
        EXPECT_TRUE(run().awaitStatus(QStringLiteral("VELDRON connected on COM 3")));
    }

    Course m_course = course();
    LiveProgram m_live;
    ClockFile *m_clock = nullptr;
    QRect m_chart;
    std::optional<LiveProgram::Footprint> m_settled;
    qsizetype m_stop = 0; ///< place in the log up to which all scans must be recorded
    qint64 m_growthKib = 0;
};

TEST_F(Days, recordedWithMidnights_stayTrueAndPlayBackToTheEnd) {
    QElapsedTimer since;
    since.start();
    letTimePass();
    std::printf("%d s recorded in %.1f minutes, %+d KiB\n", secondsGone(),
                static_cast<double>(since.elapsed()) / 60000.0, static_cast<int>(m_growthKib));
    m_stop = m_live.unit().now();
    // The scan in hand.
    QThread::msleep(500);
    run().choose(QStringLiteral("File"), QStringLiteral("Stop recording"));
    ASSERT_TRUE(run().awaitStatus(QStringLiteral("VELDRON connected on COM 3")));
    const RecordedFile file = RecordedFile::read(run().content(kFile));
    expectFile(file);
    expectCheckedBy(QStringLiteral(VELDRON_HISTORY));
    playToTheEnd(file);
    std::printf("played back after %.1f minutes\n", static_cast<double>(since.elapsed()) / 60000.0);
    run().sendTerminate();
    ASSERT_TRUE(run().ends());
    EXPECT_EQ(run().exitCode(), 0);
    EXPECT_EQ(run().errorOutput(), QByteArray());
}

} // namespace

} // namespace veldron
