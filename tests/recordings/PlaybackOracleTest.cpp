// SPDX-License-Identifier: MIT
// The judge of playback against playback itself: the same files, the same verdict.
#include "recordings/PlaybackJudge.h"

#include "recordings/RecordingRepair.h"
#include "tests/recordings/Recordings.h"
#include "tests/support/HistoryFixture.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <random>

namespace veldron {
namespace {

const QString kNothingShown = "nothing is shown";

/// What playback does with a file: nothing wrong, or the message that ends it.
class PlaybackOracle : public testing::Test {
protected:
    explicit PlaybackOracle(const QLocale &locale = QLocale(QLocale::English,
                                                            QLocale::UnitedKingdom))
        : m_locale(locale), m_playback(locale) {
        m_playback.ctlChartSpectrum1.resize(120, 80);
    }

    /// Empty where the file is played to its end.
    QString play(const QByteArray &bytes) {
        QFile file(m_folder.filePath("a.rec"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        m_playback.dialogs.answer = file.fileName();
        m_playback.log.clear();
        QString outcome;
        try {
            outcome = playSteps();
        } catch (const UntrappedError &error) {
            outcome = error.message();
        }
        m_playback.playback.Quit();
        return outcome;
    }
    /// The judge's first finding, empty where there is none.
    [[nodiscard]] std::optional<Stumble> judge(const QByteArray &bytes) const {
        std::optional<Stumble> first;
        PlaybackJudge judge(m_locale, [&first](const Stumble &stumble) {
            // A date is told at its own line, below which a scan wants it.
            first = first ? first : stumble;
        });
        judge.take(bytes);
        judge.finish();
        EXPECT_EQ(judge.plays(), !first);
        return first;
    }
    void expectAgreement(const QByteArray &bytes, int run) {
        const QString outcome = play(bytes);
        const std::optional<Stumble> stumble = judge(bytes);
        ASSERT_EQ(outcome.isEmpty(), !stumble)
            << run << ": playback: " << outcome.toStdString()
            << ", judge: " << (stumble ? stumble->what.toStdString() : "plays");
        // What is wrong with an only scan behind which nothing stands, playback doesn't get to see.
        if (stumble && outcome != kNothingShown && !bytes.isEmpty()) {
            ASSERT_TRUE(outcome.startsWith(QStringLiteral("Line %1 of").arg(stumble->line)))
                << run << ": " << outcome.toStdString() << " but " << stumble->line << ": "
                << stumble->what.toStdString();
        }
    }
    /// Nothing where no scan is left.
    [[nodiscard]] std::optional<QByteArray> repair(const QByteArray &bytes) const {
        const QString path = m_folder.filePath("mended.rec");
        OutputFile out(path.toStdString(), true);
        RecordingRepair repair(out, DateTimeText(m_locale),
                               [](qint64 /*line*/, const QString & /*what*/) {});
        MemorySource source(bytes);
        RecordingReader(source, repair).read();
        repair.finish();
        EXPECT_EQ(out.scanCount() > 0, repair.plays());
        out.commit();
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return repair.plays() ? std::optional(file.readAll()) : std::nullopt;
    }
    [[nodiscard]] RecordingText begun() const {
        RecordingText text(m_locale);
        return text.block(kDay);
    }

private:
    QString playSteps() {
        m_playback.playback.mnuFilePlayback();
        if (!m_playback.session.InPlayback) {
            return kNothingShown;
        }
        while (!m_playback.log.contains("StopPlay")) {
            m_playback.log.clear();
            m_playback.step(1);
        }
        return {};
    }

    QLocale m_locale;
    QTemporaryDir m_folder;
    HistoryFixture m_playback;
};

class AmericanOracle : public PlaybackOracle {
protected:
    AmericanOracle() : PlaybackOracle(QLocale(QLocale::English, QLocale::UnitedStates)) {}
};

/// Recordings with the bytes that break lines in some of the scans.
QByteArray randomRecording(std::mt19937 &random, RecordingText text) {
    const int scans = 1 + static_cast<int>(random() % 8);
    for (int i = 0; i < scans; ++i) {
        LevelScan levels(1 + random() % 326);
        for (std::uint8_t &level : levels) {
            level = static_cast<std::uint8_t>(33 + random() % 200);
        }
        if (random() % 4 == 0) {
            constexpr std::array<std::uint8_t, 4> kBreaking{10, 13, 32, 0};
            levels[random() % levels.size()] = kBreaking.at(random() % 4);
        }
        text.scan(QTime(10, 0).addSecs(i - (random() % 5 == 0 ? 1 : 0)), levels);
        if (random() % 5 == 0) {
            text.block(kDay.addDays(static_cast<int>(random() % 2)));
        }
    }
    return text.bytes;
}

/// One to three faults: a byte changed, a piece taken away or doubled, the end cut.
QByteArray damaged(std::mt19937 &random, QByteArray bytes) {
    const auto place = [&] {
        return static_cast<qsizetype>(random()) % qMax<qsizetype>(1, bytes.size());
    };
    for (auto faults = 1 + random() % 3; faults > 0 && !bytes.isEmpty(); --faults) {
        const qsizetype at = place();
        const qsizetype count =
            qMin<qsizetype>(1 + static_cast<qsizetype>(random()) % 60, bytes.size() - at);
        switch (random() % 5) {
        case 0:
            bytes[at] = static_cast<char>(random());
            break;
        case 1:
            bytes.remove(at, count);
            break;
        case 2:
            bytes.insert(at, bytes.mid(place(), count));
            break;
        case 3:
            bytes.truncate(at);
            break;
        default:
            bytes.insert(
                at, QByteArray::fromRawData(" \r\n", 3).mid(static_cast<int>(random() % 3), 1));
        }
    }
    return bytes;
}

TEST_F(PlaybackOracle, thousandDamagedFiles_areJudgedAsTheyPlay) {
    std::mt19937 random(1000);
    int playing = 0;
    for (int run = 0; run < 1000; ++run) {
        const QByteArray bytes = damaged(random, randomRecording(random, begun()));
        expectAgreement(bytes, run);
        if (HasFatalFailure()) {
            return;
        }
        playing += judge(bytes) ? 0 : 1;
    }
    // Otherwise the test would show little.
    EXPECT_GT(playing, 50);
    EXPECT_LT(playing, 950);
}

TEST_F(PlaybackOracle, damagedBlocks_areJudgedAsTheyPlay) {
    std::mt19937 random(77);
    RecordingText text = begun();
    for (int run = 0; run < 500; ++run) {
        // Mostly settings, so that the faults hit those.
        text = begun();
        text.scans(QTime(10, 0), 1);
        text.bytes.replace(QByteArray(321, 'a'), "a");
        text.block(kDay,
                   {"Poll 1000", "MonitorMode 3", "Start 144000000", "Step 12500", "End 146000000",
                    "MarkerFrequency 145000000.5", "RXStep 25000", "RBW 1", "Samples 4"});
        text.scan(QTime(10, 0, 1), {1, 2, 3}).scan(QTime(10, 0, 2), {4});
        expectAgreement(damaged(random, text.bytes), run);
        if (HasFatalFailure()) {
            return;
        }
    }
}

TEST_F(PlaybackOracle, valuesAtTheirLimits_areJudgedAsTheyPlay) {
    for (const char *line : {"RBW 32767",
                             "RBW 32768",
                             "RBW -32769",
                             "Poll 32767",
                             "Poll 32768",
                             "Poll 0",
                             "Poll -5",
                             "RXStep 2147483647",
                             "RXStep 2147483648",
                             "Span 1e99",
                             "Span 99999999999999999999",
                             "Span 922337203685477",
                             "Centre 922337203685478",
                             "Centre 1,5",
                             "Centre 1.5",
                             "Centre  7 ",
                             "MonitorMode 3",
                             "MonitorMode 4",
                             "Step 99999999",
                             "DataMode -1",
                             "Samples 1x",
                             "Amp",
                             "Persistence 99999999999",
                             "Update 0",
                             "Palette 70000"}) {
        RecordingText text = begun();
        text.scan(QTime(10, 0)).line(line).line("EndSettings").scan(QTime(10, 0, 1));
        expectAgreement(text.bytes, 0);
        EXPECT_FALSE(HasFatalFailure()) << line;
    }
}

TEST_F(PlaybackOracle, channelsWithAWideStep_areJudgedAsTheyPlay) {
    for (const char *mode : {"MonitorMode 1", "MonitorMode 3", "MonitorMode 0", "MonitorMode 9"}) {
        for (const char *step : {"Step 6710886", "Step 6710887", "Step -6710890"}) {
            RecordingText text = begun();
            text.scan(QTime(10, 0)).block(kDay, {mode, "Start 1000000", step, "End 2000000"});
            expectAgreement(text.scan(QTime(10, 0, 1)).bytes, 0);
            EXPECT_FALSE(HasFatalFailure()) << mode << ' ' << step;
        }
    }
}

TEST_F(PlaybackOracle, repairedFiles_playToTheirEnd) {
    std::mt19937 random(2000);
    int repaired = 0;
    for (int run = 0; run < 500; ++run) {
        const QByteArray bytes = damaged(random, randomRecording(random, begun()));
        if (const auto mended = repair(bytes)) {
            ASSERT_EQ(play(*mended).toStdString(), "") << run;
            ++repaired;
        }
    }
    EXPECT_GT(repaired, 350);
}

TEST_F(AmericanOracle, recordingsOfOtherLocales_playWhenTheyAreRepaired) {
    for (const QLocale &locale :
         QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry)) {
        RecordingText text(locale);
        text.block(kDay, {"Centre 145500000,5"}).scan(QTime(0, 0)).scan(QTime(9, 5, 7), {32});
        const auto mended = repair(text.bytes);
        ASSERT_TRUE(mended) << locale.name().toStdString();
        ASSERT_EQ(play(*mended).toStdString(), "") << locale.name().toStdString();
    }
}

TEST_F(AmericanOracle, fiveHundredDamagedFiles_areJudgedAsTheyPlay) {
    std::mt19937 random(500);
    for (int run = 0; run < 500; ++run) {
        expectAgreement(damaged(random, randomRecording(random, begun())), run);
        if (HasFatalFailure()) {
            return;
        }
    }
}

} // namespace
} // namespace veldron
