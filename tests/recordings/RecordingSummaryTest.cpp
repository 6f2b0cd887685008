// SPDX-License-Identifier: MIT
#include "recordings/RecordingSummary.h"

#include "recordings/SummaryTexts.h"
#include "tests/recordings/Recordings.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace veldron {
namespace {

class RecordingSummaryTest : public testing::Test {
protected:
    const RecordingSummary &summary(const RecordingText &text) {
        MemorySource source(text.bytes);
        RecordingReader(source, m_summary).read();
        m_summary.finish();
        return m_summary;
    }
    static RecordingText begun() {
        RecordingText text;
        return text.block(kDay);
    }
    RecordingSummary m_summary{DateTimeText(QLocale(QLocale::English, QLocale::UnitedKingdom))};
};

TEST_F(RecordingSummaryTest, timesAndRate_areThoseOfFirstAndLastScan) {
    const RecordingSummary &got = summary(begun().scans(kTen, 11).scans(QTime(10, 0, 10), 1));
    EXPECT_EQ(got.scanCount(), 12);
    EXPECT_EQ(got.first()->text(), "2005-03-21 10:00:00");
    EXPECT_EQ(got.last()->text(), "2005-03-21 10:00:10");
    EXPECT_DOUBLE_EQ(*got.rate(), 1.1);
}

TEST_F(RecordingSummaryTest, levels_leaveFailedTransfersOut) {
    RecordingText text = begun();
    text.scan(kTen, {10, 20, 30}).scan(kTen, {0}).scan(kTen, LevelScan(325)).scan(kTen, {0, 25});
    const RecordingSummary &got = summary(text);
    EXPECT_EQ(got.failedTransfers(), 2);
    EXPECT_EQ(got.level(0.0), 0);
    EXPECT_EQ(got.level(0.5), 20);
    EXPECT_EQ(got.level(1.0), 30);
}

TEST_F(RecordingSummaryTest, levelOfAShare_isTheLastOneAtOrBelowIt) {
    struct Case {
        LevelScan levels;
        double share;
        int level;
    };
    for (const Case &row : {Case{{30, 10, 20, 40}, 0.5, 20}, Case{{30, 10, 20, 40}, 0.34, 20},
                            Case{{30, 10, 20, 40}, 0.32, 10}, Case{{30, 10, 20, 40}, 0.67, 30},
                            Case{{50, 10, 40, 20, 30}, 0.5, 30}, Case{{7, 7, 7, 200}, 0.99, 7},
                            Case{{0, 0, 255}, 0.5, 0}, Case{{0, 0, 255}, 1.0, 255}}) {
        RecordingSummary got{DateTimeText(QLocale::c())};
        MemorySource source(begun().scan(kTen, row.levels).bytes);
        RecordingReader(source, got).read();
        got.finish();
        EXPECT_EQ(got.level(row.share), row.level) << row.share;
    }
}

TEST_F(RecordingSummaryTest, pauses_areGapsFromThreePollsOn) {
    RecordingText text = begun(); // a poll a second
    text.scan(kTen).scan(kTen.addSecs(3)).scan(kTen.addSecs(7)).scan(kTen.addSecs(107));
    const RecordingSummary &got = summary(text);
    EXPECT_EQ(got.gapCount(), 2);
    EXPECT_EQ(got.longestGap(), 100);
    EXPECT_EQ(got.gaps()[0].from.second, 36003);
    EXPECT_EQ(got.gaps()[0].line, 14);
}

TEST_F(RecordingSummaryTest, pollOutOfAllBounds_doesNotWrap) {
    RecordingText text = begun();
    text.line("Poll 4000000000000000000").scan(kTen).scan(kTen.addSecs(10));
    EXPECT_EQ(summary(text).gapCount(), 0);
}

TEST_F(RecordingSummaryTest, stretches_endWhereSettingsChangeAndNotAtDates) {
    RecordingText text = begun();
    text.scans(kTen, 3).block(kDay.addDays(1)).scans(kTen, 3);
    text.block(kDay.addDays(1),
               {"MonitorMode 3", "Start 144000000", "Step 12500", "End 144025000"});
    text.scan(kTen.addSecs(9), {1, 2, 3});
    const RecordingSummary &got = summary(text);
    EXPECT_EQ(got.blockCount(), 3);
    ASSERT_EQ(got.stretches().size(), 2U);
    EXPECT_EQ(got.stretches()[0].scans, 6);
    EXPECT_EQ(got.stretches()[1].line, 28);
    EXPECT_EQ(got.stretches()[1].axis->at(2), Hertz::fromWhole(144025000));
}

TEST_F(RecordingSummaryTest, listsOfADamagedFile_keepTheFirstOnly) {
    RecordingText text = begun();
    for (int i = 0; i < 300; ++i) {
        text.scan(kTen).line("?");
    }
    const RecordingSummary &got = summary(text);
    EXPECT_EQ(got.findings().size(), RecordingSummary::kMostEntries);
    EXPECT_EQ(got.stumbles().size(), RecordingSummary::kMostEntries);
    EXPECT_EQ(got.stumbleCount(), 299);
    EXPECT_EQ(got.skipped(), 900);
}

TEST_F(RecordingSummaryTest, page_hasALineForEachFact) {
    RecordingText text = begun();
    text.scan(kTen, {101, 102, 103}).scan(kTen, {101, 102, 103}).scan(kTen.addSecs(1));
    EXPECT_EQ(pageOf(summary(text), "a.rec").toStdString(),
              "file        a.rec, 546 bytes\n"
              "from        2005-03-21 10:00:00 (local time of the recording machine)\n"
              "to          2005-03-21 10:00:01\n"
              "duration    0:00:01\n"
              "scans       3, 2.000 a second\n"
              "levels      -35 to -29 dB, median -35 dB\n"
              "gaps        none\n"
              "settings    blocks: 1, stretches of equal settings: 1\n"
              "            from 2005-03-21 10:00:00 (line 2): 3 scans, 140.500000 to 150.500000 "
              "MHz, step 31250 Hz\n"
              "              Poll 1000, MonitorMode 1, Span 10000000, Centre 145500000, Receiver "
              "Other (10M), RBW 2, Amp 0, DataMode 1\n"
              "playback    would end early; lines at which it would: 1\n"
              "            line 13: the scan has the same time as the first one of the file, so "
              "there is no telling how far the playback has come\n");
}

TEST_F(RecordingSummaryTest, json_tellsTheSame) {
    const QJsonObject object =
        QJsonDocument::fromJson(jsonOf(summary(begun().scans(kTen, 3)), "a.rec")).object();
    EXPECT_EQ(object["scans"].toInt(), 3);
    EXPECT_EQ(object["from"].toString(), "2005-03-21 10:00:00");
    EXPECT_EQ(object["levels_db"].toObject()["median"].toInt(), -35);
    EXPECT_TRUE(object["plays"].toBool());
    const QJsonObject stretch = object["stretches"].toArray().at(0).toObject();
    EXPECT_EQ(stretch["start_hz"].toDouble(), 140500000.0);
    EXPECT_EQ(stretch["settings"].toObject()["Receiver"].toString(), "Other (10M)");
}

TEST_F(RecordingSummaryTest, recordingWithoutScans_hasNoTimes) {
    const RecordingSummary &got = summary(begun());
    EXPECT_FALSE(got.first());
    EXPECT_FALSE(got.rate());
    EXPECT_FALSE(got.level(0.5));
    EXPECT_TRUE(pageOf(got, "a.rec").contains("scans       0\n"));
    EXPECT_TRUE(QJsonDocument::fromJson(jsonOf(got, "a.rec")).object()["from"].isNull());
}

} // namespace
} // namespace veldron
