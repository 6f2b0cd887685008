// SPDX-License-Identifier: MIT
#include "recordings/InfoCommand.h"

#include "tests/recordings/HistoryRun.h"
#include "tests/recordings/Recordings.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace veldron {
namespace {

class InfoCommandTest : public HistoryRun {
protected:
    /// A minute between two stretches, of which the second has a line that playback stumbles on.
    [[nodiscard]] static RecordingText recording() {
        RecordingText text;
        text.block(QDate(2005, 3, 21)).scan(QTime(9, 0), {100, 40, 70}).scans(QTime(9, 0, 1), 2);
        text.block(QDate(2005, 3, 21), {"Poll 1000", "MonitorMode 3", "Start 144000000",
                                        "Step 12500", "End 144025000", "RBW 99999"});
        return text.scan(QTime(9, 1), {80, 80, 80});
    }
    [[nodiscard]] QJsonObject json(const QByteArray &bytes, int code) const {
        const Result result = run({"info", "--json", "--locale", "en_GB", "-"}, bytes);
        EXPECT_EQ(result.code, code);
        QJsonParseError error{};
        const QJsonDocument document = QJsonDocument::fromJson(result.out, &error);
        EXPECT_EQ(error.error, QJsonParseError::NoError) << result.out.constData();
        return document.object();
    }
};

TEST_F(InfoCommandTest, page_tellsWhatIsInTheRecording) {
    put("a.rec", recording().bytes);
    const Result result = run({"info", "--locale", "en_GB", "a.rec"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.error, "");
    const QByteArray size = QByteArray::number(recording().bytes.size());
    for (const QByteArray &line :
         {"file        a.rec, " + size + " bytes\n",
          QByteArray("from        2005-03-21 09:00:00 (local time of the recording machine)\n"),
          QByteArray("duration    0:01:00\n"), QByteArray("scans       4"),
          QByteArray("gaps        1, the longest 0:00:58\n"),
          QByteArray("blocks: 2, stretches of equal settings: 2\n"),
          QByteArray("would end early; lines at which it would: 1\n"),
          QByteArray("the number \"99999\" is out of range")}) {
        EXPECT_TRUE(result.out.contains(line)) << line.constData() << "in\n"
                                               << result.out.constData();
    }
}

TEST_F(InfoCommandTest, json_hasTheSameForScripts) {
    const QJsonObject object = json(recording().bytes, 0);
    EXPECT_EQ(object["file"].toString(), "standard input");
    EXPECT_EQ(object["bytes"].toInt(), recording().bytes.size());
    EXPECT_EQ(object["from"].toString(), "2005-03-21 09:00:00");
    EXPECT_EQ(object["to"].toString(), "2005-03-21 09:01:00");
    EXPECT_EQ(object["scans"].toInt(), 4);
    EXPECT_EQ(object["failed_transfers"].toInt(), 0);
    EXPECT_EQ(object["levels_db"], (QJsonObject{{"least", -92}, {"median", -35}, {"most", -32}}));
    EXPECT_EQ(object["gaps"].toArray(), (QJsonArray{QJsonObject{{"from", "2005-03-21 09:00:02"},
                                                                {"to", "2005-03-21 09:01:00"},
                                                                {"seconds", 58},
                                                                {"line", 23}}}));
    EXPECT_FALSE(object["plays"].toBool());
    EXPECT_EQ(object["stumbles"].toArray().at(0).toObject()["line"].toInt(), 21);
    const QJsonObject second = object["stretches"].toArray().at(1).toObject();
    EXPECT_EQ(second["scans"].toInt(), 1);
    EXPECT_EQ(second["levels"].toInt(), 3);
    EXPECT_EQ(second["start_hz"].toDouble(), 144000000);
    EXPECT_EQ(second["step_hz"].toDouble(), 12500);
    EXPECT_EQ(second["settings"].toObject()["MonitorMode"].toString(), "3");
}

TEST_F(InfoCommandTest, median_isThatOfAllLevels) {
    RecordingText text;
    text.block(QDate(2005, 3, 21)).scan(QTime(9, 0), {92, 52, 82}).scan(QTime(9, 0, 1), {62, 72});
    EXPECT_EQ(json(text.bytes, 0)["levels_db"],
              (QJsonObject{{"least", -80}, {"median", -60}, {"most", -40}}));
    EXPECT_TRUE(run({"info", "-"}, text.bytes).out.contains("-80 to -40 dB, median -60 dB\n"));
}

TEST_F(InfoCommandTest, dateOrder_isAssumedWithAWarningOrGiven) {
    RecordingText text;
    put("a.rec", text.block(QDate(2005, 2, 3)).scans(QTime(9, 0), 2).bytes);
    const auto told = [this](const QString &locale, const QString &options) {
        Result result = shell("LC_ALL=" + locale + ' ' + program() + " info a.rec" + options);
        EXPECT_EQ(result.code, 0);
        return result.error + result.out.mid(result.out.indexOf("from")).left(23);
    };
    const QByteArray warning =
        "a.rec:2: day and month of \"03/02/2005\" can't be told apart, taken for ";
    EXPECT_EQ(told("en_GB", ""), warning + "2005-02-03\nfrom        2005-02-03 ");
    EXPECT_EQ(told("en_US", ""), warning + "2005-03-02\nfrom        2005-03-02 ");
    EXPECT_EQ(told("en_US", " --date-order dmy"), "from        2005-02-03 ");
    EXPECT_EQ(told("en_GB", " --date-order mdy"), "from        2005-03-02 ");
    EXPECT_TRUE(run({"info", "a.rec"})
                    .out.contains("day and month can't be told apart; --date-order decides\n"));
    const Result none = run({"info", "a.rec", "--date-order", "ymd"});
    EXPECT_EQ(none.code, 1);
    EXPECT_EQ(none.error,
              "a.rec:2: \"03/02/2005\" is no date of the form that this recording has\n");
}

TEST_F(InfoCommandTest, whatWasSkipped_isInTheListAndInTheCode) {
    RecordingText text = recording();
    const QJsonObject object = json(text.line("Nonsense").scan(QTime(9, 2)).bytes, 1);
    EXPECT_EQ(object["skipped_bytes"].toInt(), 10);
    EXPECT_EQ(object["findings"].toArray().at(0).toObject()["line"].toInt(), 24);
    EXPECT_EQ(object["findings"].toArray().at(0).toObject()["skipped"].toInt(), 10);
}

TEST_F(InfoCommandTest, recordingWithoutScans_hasNoTimes) {
    const QJsonObject object = json(RecordingText().bytes, 0);
    EXPECT_TRUE(object["from"].isNull());
    EXPECT_TRUE(object["scans_per_second"].isNull());
    EXPECT_TRUE(object["levels_db"].toObject()["median"].isNull());
    EXPECT_EQ(run({"info", "-"}, "something else\n").code, 2);
}

TEST_F(InfoCommandTest, failedTransfers_areCountedBesideTheScans) {
    RecordingText text;
    text.block(QDate(2005, 3, 21)).scans(QTime(9, 0), 2).scan(QTime(9, 0, 2), {0});
    const QByteArray page = run({"info", "-"}, text.bytes).out;
    EXPECT_TRUE(page.contains("\n            of failed transfers: 1\n")) << page.constData();
    EXPECT_EQ(json(text.bytes, 0)["failed_transfers"].toInt(), 1);
}

TEST_F(InfoCommandTest, longLists_endWithTheNumberLeftOut) {
    RecordingText text;
    text.block(QDate(2005, 3, 21));
    for (int minute = 0; minute <= 107; ++minute) {
        text.scan(QTime(9, 0).addSecs(60 * minute));
    }
    const QByteArray page = run({"info", "-"}, text.bytes).out;
    EXPECT_TRUE(page.contains("gaps        107, the longest 0:01:00\n")) << page.constData();
    EXPECT_TRUE(page.contains("\n            and 7 more\n")) << page.constData();
    const QJsonObject object = json(text.bytes, 0);
    EXPECT_EQ(object["gap_count"].toInt(), 107);
    EXPECT_EQ(object["gaps"].toArray().size(), 100);
}

} // namespace
} // namespace veldron
