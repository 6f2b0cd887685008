// SPDX-License-Identifier: MIT
// Recordings and their playback on the whole form: over midnight, over a file that strands, and
// without a unit.
#include "tests/app/FormFixture.h"

#include <QTest>
#include <QToolButton>

namespace veldron {
namespace {

class FrmDisplayHistoryTest : public FormFixture {
protected:
    void play(const QString &name) {
        m_dialogs.pickFile(path(name));
        pick("mnuFilePlayback");
    }
    void step(qint16 direction) { Q_EMIT transport().Step(direction); }
    void click(const char *button) {
        QTest::mouseClick(&child<QToolButton>(button), Qt::LeftButton);
    }
    [[nodiscard]] bool panelsAreHeld() const {
        return !chart().Enabled() && !data().Enabled() && !receiver().Enabled() &&
               !monitor().Enabled() && !entry("mnuFileExit").isEnabled() &&
               !entry("mnuFilePlayback").isEnabled();
    }
    [[nodiscard]] bool transportIsUp() const { return transport().isVisible(); }
    [[nodiscard]] bool pictureIsUp() const { return child<QWidget>("Panel3").isVisible(); }
    /// Date and time in the file's forms, and the share of the file that \a used bytes are.
    [[nodiscard]] QString placeText(const QString &moment, qsizetype used, qsizetype size,
                                    double part = 1.0) const {
        const double share = part * static_cast<double>(used) / static_cast<double>(size);
        return moment + " | " + m_texts.percentText(share);
    }
};

// ---- over midnight

class FrmDisplayMidnightTest : public FrmDisplayHistoryTest {
protected:
    static QByteArray line(char level, const QByteArray &time) {
        return "Data " + QByteArray(321, level) + ' ' + time + "\r\n";
    }
    static QByteArray scans(char first, const QByteArrayList &times) {
        QByteArray lines;
        for (qsizetype i = 0; i < times.size(); ++i) {
            lines += line(static_cast<char>(first + i), times.at(i));
        }
        return lines;
    }
    static QByteArray unitLines() {
        return "Poll 1000\r\nMonitorMode 1\r\nSpan 10000000\r\nCentre 100000000\r\n"
               "Receiver VK3900\r\nRXMode WFM\r\nRXStep 25000\r\nRXAtten False\r\nRBW 2\r\n"
               "Amp -20\r\nDataMode 1\r\nEndSettings \r\n";
    }
    static QByteArray head() {
        return "VELDRONv1 History file\r\nStartSettings 14 Mar 2026\r\nPersistenceOn False\r\n"
               "Persistence 5\r\nWaterfallOn False\r\nPalette 3\r\nUpdate 1\r\nMarkerOn True\r\n" +
               unitLines();
    }
    /// Seven polls from 23:59:56 on, each with a level of its own.
    void recordOverMidnight() {
        m_clock.setTimeOfDay(86395.2);
        startUp();
        m_dialogs.pickFile(path("night.rec"));
        pick("mnuFileRecord");
        for (char level = 'a'; level <= 'g'; ++level) {
            m_control.setScan(QByteArray(321, level));
            poll();
        }
        pick("mnuFileRecord");
    }
};

TEST_F(FrmDisplayMidnightTest, firstScanOfTheDay_standsAheadOfTheBlockWithItsDate) {
    recordOverMidnight();
    const QByteArray file = readFile("night.rec");
    EXPECT_EQ(file.toStdString(),
              (head() + scans('a', {"23:59:56", "23:59:57", "23:59:58", "23:59:59", "00:00:00"}) +
               "StartSettings 15 Mar 2026\r\n" + unitLines() + scans('f', {"00:00:01", "00:00:02"}))
                  .toStdString());
}

TEST_F(FrmDisplayMidnightTest, playback_showsTheFirstScanOfTheDayUnderTheOldDate) {
    recordOverMidnight();
    const QByteArray file = readFile("night.rec");
    const qsizetype scan = line('a', "00:00:00").size();
    const qsizetype block = ("StartSettings 15 Mar 2026\r\n" + unitLines()).size();
    const struct {
        const char *moment;
        qsizetype used;
    } places[] = {{"14 Mar 2026 23:59:56", head().size() + scan},
                  {"14 Mar 2026 23:59:57", head().size() + 2 * scan},
                  {"14 Mar 2026 23:59:58", head().size() + 3 * scan},
                  {"14 Mar 2026 23:59:59", head().size() + 4 * scan},
                  {"14 Mar 2026 00:00:00", head().size() + 5 * scan},
                  {"15 Mar 2026 00:00:01", head().size() + 6 * scan + block},
                  {"15 Mar 2026 00:00:02", head().size() + 7 * scan + block}};
    play("night.rec");
    for (const auto &item : places) {
        EXPECT_EQ(place(), placeText(item.moment, item.used, file.size()));
        if (item.used < file.size()) {
            step(1);
        }
    }
    EXPECT_TRUE(place().endsWith(" 100.00%"));
    // Back from a scan of the new day the times are those of the night.
    step(-1);
    step(-1);
    EXPECT_EQ(place(), placeText("15 Mar 2026 00:00:00", file.size(), file.size(), 4.0 / 6.0));
    EXPECT_FALSE(m_form->hasFailed());
}

// ---- a file that strands the transport

class FrmDisplayStrandedTest : public FrmDisplayHistoryTest {
protected:
    void strand() {
        startUp();
        for (const char level : {'0', 'P', 'p'}) {
            m_control.setScan(QByteArray(321, level));
            poll();
            chart().onTimer1();
        }
        writeFile("one.rec", "VELDRONv1 History file\r\nStartSettings 14 Mar 2026\r\nRBW 4\r\n"
                             "EndSettings \r\nData AAAA 10:00:00\r\n");
        play("one.rec");
        forgetSent();
    }
};

TEST_F(FrmDisplayStrandedTest, livePoll_goesOnUnderTheTransport) {
    strand();
    EXPECT_FALSE(m_form->InPlayback());
    EXPECT_FALSE(chart().Playback());
    EXPECT_TRUE(transportIsUp());
    EXPECT_TRUE(panelsAreHeld());
    EXPECT_TRUE(entry("mnuFileRecord").isEnabled());
    EXPECT_TRUE(isPolling());
    poll();
    EXPECT_EQ(sent().first(), "RIFD");
    EXPECT_EQ(status(), "VELDRON connected on COM 3");
    EXPECT_EQ(place(), "10:00 | ");
    EXPECT_EQ(activity(), ActivityImage::Idle);
    EXPECT_TRUE(panelsAreHeld());
}

TEST_F(FrmDisplayStrandedTest, stepBack_movesTheLiveChartAndLeavesTheClockAndThePicture) {
    strand();
    const QImage before = chart().grab().toImage();
    click("cmdStepBack");
    EXPECT_NE(chart().grab().toImage(), before);
    EXPECT_EQ(place(), "10:00 | 100.00%");
    EXPECT_TRUE(pictureIsUp());
    poll();
    EXPECT_EQ(activity(), ActivityImage::Idle);
    EXPECT_EQ(place(), "10:00 | 100.00%");
    EXPECT_TRUE(isPolling());
    EXPECT_FALSE(m_form->hasFailed());
}

TEST_F(FrmDisplayStrandedTest, continuousPlay_pausesAtItsFirstTick) {
    strand();
    click("cmdPlay");
    EXPECT_FALSE(child<QToolButton>("cmdStepBack").isEnabled());
    step(1);
    EXPECT_TRUE(child<QToolButton>("cmdStepBack").isEnabled());
    EXPECT_TRUE(isPolling());
}

TEST_F(FrmDisplayStrandedTest, cross_closesTheTransportAndBringsTheUnitsSettingsBack) {
    strand();
    EXPECT_EQ(data().RBW(), 4);
    click("cmdStepBack");
    click("cmdClose");
    EXPECT_FALSE(transportIsUp());
    EXPECT_FALSE(panelsAreHeld());
    EXPECT_EQ(sent(), readBack());
    EXPECT_EQ(data().RBW(), 2);
    EXPECT_EQ(place(), "10:00 | ");
    EXPECT_TRUE(pictureIsUp());
    EXPECT_TRUE(isPolling());
}

TEST_F(FrmDisplayStrandedTest, playbackOfAWholeFileAfterIt_hasTextsAlone) {
    strand();
    click("cmdStepBack");
    click("cmdClose");
    writeFile("two.rec", "VELDRONv1 History file\r\nStartSettings 14 Mar 2026\r\nEndSettings \r\n"
                         "Data AAAA 10:00:00\r\nData BBBB 10:00:10\r\n");
    play("two.rec");
    EXPECT_FALSE(pictureIsUp());
    EXPECT_TRUE(place().startsWith("14 Mar 2026 10:00:00 | "));
    step(1);
    EXPECT_EQ(place(), "14 Mar 2026 10:00:10 | 100.00%");
    EXPECT_FALSE(pictureIsUp());
}

// ---- without a unit

TEST_F(FrmDisplayHistoryTest, playbackWithoutAUnit_leavesTheRecordingsSettingsForTheNextStart) {
    writeFile("two.rec", "VELDRONv1 History file\r\nStartSettings 14 Mar 2026\r\nRBW 4\r\n"
                         "EndSettings \r\nData AAAA 10:00:00\r\nData BBBB 10:00:10\r\n");
    setPorts({3}, 0);
    startUp();
    play("two.rec");
    click("cmdClose");
    EXPECT_EQ(data().RBW(), 4);
    EXPECT_TRUE(m_form->close());
    EXPECT_TRUE(readFile("VELDRON.set").contains("\r\nRBW 4\r\n"));
    setPorts({3}, 3);
    start();
    EXPECT_TRUE(sent().contains("WSBW4"));
    EXPECT_EQ(unitHolds("SBW"), "4");
}

} // namespace
} // namespace veldron
