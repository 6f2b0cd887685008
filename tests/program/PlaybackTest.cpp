// SPDX-License-Identifier: MIT
// A recording of thirty scans, with a change at the unit in the middle, and its playback.
#include "tests/program/ChartPicture.h"
#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/ProgramRun.h"
#include "tests/program/RecordedFile.h"

#include <gtest/gtest.h>

#include <QLocale>

namespace veldron {

using namespace std::chrono_literals;

namespace {

/// What a panel shows: its label and its text.
struct Shown {
    const char *label;
    const char *text;
};

/// The panels at the start of the recording.
const QList<Shown> kRecorded = {
    {"Receiver", "VK3900"},  {"RX Frequency", "100.00000"},
    {"RX Mode", "WFM"},      {"RX Step", "100.000"},
    {"RX Atten", "off"},     {"Monitor mode", "Spectrum"},
    {"Span", "10.00000"},    {"Centre", "100.00000"},
    {"Start", "95.00000"},   {"End", "105.00000"},
    {"RBW", "32 kHz"},       {"Amp", "-30 dB"},
    {"Data mode", "Normal"},
};

const QList<QByteArray> kChangedByHand = {
    "set receiver 5",  "set mode 7",     "set step 25",    "set attenuator 1", "set amplitude -20",
    "set bandwidth 3", "set datamode 2", "set average 21", "set centre 145.5", "set span 5",
};

/// The panels of a unit that was changed so.
const QList<Shown> kChanged = {
    {"Receiver", "VK3700(10M)"}, {"RX Frequency", "145.50000"},
    {"RX Mode", "LSB"},          {"RX Step", "25.000"},
    {"RX Atten", "on"},          {"Monitor mode", "Spectrum"},
    {"Span", "5.00000"},         {"Centre", "145.50000"},
    {"Start", "143.00000"},      {"End", "148.00000"},
    {"RBW", "64 kHz"},           {"Amp", "-20 dB"},
    {"Data mode", "Avg"},        {"Samples", "21"},
};

const QByteArray kFullBlock = "PersistenceOn False\r\nPersistence 5\r\nWaterfallOn False\r\n"
                              "Palette 3\r\nUpdate 1\r\nMarkerOn True\r\n";

QByteArray shortBlock(const QByteArray &span) {
    return "Poll 1000\r\nMonitorMode 1\r\nSpan " + span +
           "\r\nCentre 100000000\r\nReceiver VK3900\r\nRXMode WFM\r\nRXStep 100000\r\n"
           "RXAtten False\r\nRBW 2\r\nAmp -30\r\nDataMode 1\r\nEndSettings \r\n";
}

class Playback : public testing::Test {
protected:
    /// At least \a whole scans, and as many behind the block that the change at the unit makes.
    void recordWithChange(qsizetype whole, qsizetype behind) {
        // The seconds between the polls pass four times as fast for program and unit alike.
        ClockFile &clock = run.shareClock();
        ASSERT_TRUE(run.plugUnit());
        ASSERT_TRUE(run.open());
        clock.hurry(4);
        run.choose("File", "Record");
        ASSERT_TRUE(run.answerFileDialog("Record to file", run.path(kBandFile)));
        Desk::focus("VELDRON");
        ASSERT_TRUE(eventually(20s, [&] { return read().scans.size() >= 4; }));
        run.unit().tell("set span 2");
        ASSERT_TRUE(eventually(
            60s, [&] { return read().scans.size() >= whole && scansOfBlock(2) >= behind; }));
        clock.hurry(1);
        run.choose("File", "Stop recording");
        ASSERT_TRUE(run.awaitStatus("VELDRON connected on COM 3"));
        file = read();
    }

    RecordedFile read() { return RecordedFile::read(run.content(kBandFile)); }

    qsizetype scansOfBlock(int block) {
        const QList<RecordedFile::Scan> scans = read().scans;
        return std::count_if(scans.begin(), scans.end(), [block](const RecordedFile::Scan &scan) {
            return scan.block == block;
        });
    }

    void expectBlocks() {
        const QByteArray start = "StartSettings " + date.toLatin1() + "\r\n";
        EXPECT_EQ(file.header, "VELDRONv1 History file");
        ASSERT_EQ(file.blocks.size(), 2);
        EXPECT_EQ(file.blocks.at(0), start + kFullBlock + shortBlock("10000000"));
        EXPECT_EQ(file.blocks.at(1), start + shortBlock("2000000"));
        EXPECT_TRUE(file.rest.isEmpty());
    }

    /// The block stands where the program read the unit's settings back: behind the scans that
    /// came before, ahead of those that came after.
    void expectBlockInItsPlace() {
        qsizetype before = 0;
        bool recording = false;
        QByteArray heard;
        for (const LineEvent &event : run.unit().events()) {
            recording = recording || event.samples == file.scans.first().samples;
            before += recording && event.kind == LineEvent::Kind::Scan ? 1 : 0;
            // Only reading everything back asks for these two in a row.
            if (recording && heard == "RSGN" && event.text == "RSDM") {
                break;
            }
            heard = event.kind == LineEvent::Kind::Command ? event.text : heard;
        }
        EXPECT_EQ(file.scans.size() - scansOfBlock(2), before);
    }

    void play() {
        run.choose("File", "Playback");
        ASSERT_TRUE(run.answerFileDialog("History playback", run.path(kBandFile)));
        Desk::focus("VELDRON");
        ASSERT_TRUE(eventually(5s, [this] { return run.statusText().startsWith("Playback"); }))
            << qPrintable(run.statusText());
        chart = run.chart();
    }

    void step(const QString &button, qsizetype times) {
        for (qsizetype i = 0; i < times; ++i) {
            run.clickButton(button);
        }
    }

    void expectPanels(const QList<Shown> &panels) {
        for (const Shown &panel : panels) {
            EXPECT_EQ(run.shownAfterWait(panel.label, panel.text, 3s), QString(panel.text))
                << panel.label;
        }
    }

    /// Somebody turns the unit's own knobs, while the program follows them.
    void changeUnitBeforePlayback() {
        run.unit().tell("set bandwidth 4");
        run.unit().tell("set amplitude -10");
        run.unit().tell("set centre 433");
        ASSERT_EQ(run.shownAfterWait("Centre", "433.00000", 20s), "433.00000");
        ASSERT_EQ(run.shownAfterWait("RBW", "128 kHz", 20s), "128 kHz");
    }

    QString percent(double share) { return QString::number(share * 100.0, 'f', 2) + "%"; }

    void expectPanel(int index, const QString &text) {
        (void)eventually(3s, [&] { return run.panel(index) == text; });
        EXPECT_EQ(run.panel(index), text);
    }

    void expectPicture(qsizetype scan) { expectPicture(scan, file.scans.at(scan).samples); }

    void expectPicture(qsizetype scan, const QByteArray &samples) {
        EXPECT_TRUE(eventually(
            3s, [&] { return ChartPicture(Desk::screenshot(), chart).wrongColumns(samples) == 0; }))
            << "the picture of scan " << scan;
    }

    /// Waits until the newest scan read is on the screen.
    void expectAt(qsizetype scan) {
        const double share = double(file.scans.at(scan).end) / double(file.size);
        expectPanel(1, date + " " + QString::fromLatin1(file.scans.at(scan).time));
        expectPanel(2, percent(share));
        expectPicture(scan);
    }

    /// Ten seconds back from the newest scan read, which is \a scan.
    void expectTenBackFrom(qsizetype scan) {
        const QTime shown = file.timeOf(scan).addSecs(-10);
        const double back = 10.0 / file.timeOf(0).secsTo(file.timeOf(scan));
        const double share = double(file.scans.at(scan).end) / double(file.size);
        expectPanel(1, date + " " + shown.toString("HH:mm:ss"));
        expectPanel(2, percent((1.0 - back) * share));
        qsizetype stored = scan;
        while (file.timeOf(stored) > shown) {
            --stored;
        }
        // In the store a scan's last level falls onto the first of the row before it.
        QByteArray samples = file.scans.at(stored).samples;
        const char spilt = file.scans.at(stored + 1).samples.back();
        if (static_cast<quint8>(spilt) > static_cast<quint8>(samples.front())) {
            samples.front() = spilt;
        }
        expectPicture(stored, samples);
    }

    ProgramRun run;
    RecordedFile file;
    QRect chart;
    QString date =
        QLocale::c().toString(QDate::currentDate(), QLocale::c().dateFormat(QLocale::ShortFormat));
};

TEST_F(Playback, thirtyScansWithAChange_fileIsWhatTheUnitSentAndPlaysBack) {
    recordWithChange(30, 16);
    expectBlocks();
    expectBlockInItsPlace();
    expectRecorded(file, run.unit().events());

    changeUnitBeforePlayback();
    play();
    const qsizetype begin = run.unit().now();
    EXPECT_TRUE(run.statusText().startsWith("Playback from " + run.path(kBandFile) + "   "));
    EXPECT_TRUE(run.control("Span").has_value());
    EXPECT_FALSE(run.isEnabled("Span"));
    expectPanels(kRecorded);
    expectAt(0);
    for (const QByteArray &change : kChangedByHand) {
        run.unit().tell(change);
    }
    step("Step forward", 2);
    expectAt(2);
    expectPanels(kRecorded);

    // Past the change: the panels show it from its own scans on.
    const qsizetype firstBehind = file.scans.size() - scansOfBlock(2);
    const qsizetype place = firstBehind + 12;
    step("Step forward", place - 2);
    expectAt(place);
    EXPECT_EQ(run.shown("Span"), "2.00000");
    step("Step back", 10);
    expectTenBackFrom(place);
    step("Step forward", 11);
    expectAt(place + 1);

    // To the end at full speed, where the transport pauses by itself.
    run.clickButton("Playback speed");
    Desk::key("End");
    EXPECT_EQ(run.named("slider", "Playback speed")->description, "Playback speed 16ms");
    run.clickButton("Continuous playback");
    expectAt(file.scans.size() - 1);
    EXPECT_EQ(run.panel(2), "100.00%");
    EXPECT_TRUE(eventually(3s, [this] {
        const auto button = run.named("push button", "Step back");
        return button && button->isEnabled;
    }));

    // Back to the unit, which was left alone meanwhile.
    EXPECT_EQ(run.unit().commandsSince(begin), QList<QByteArray>());
    run.clickButton("Stop playback");
    EXPECT_TRUE(run.awaitStatus("VELDRON connected on COM 3"));
    expectPanels(kChanged);
    EXPECT_TRUE(run.isEnabled("Span"));
    const qsizetype end = run.unit().now();
    EXPECT_TRUE(eventually(5s, [&] { return run.unit().scansSince(end) > 1; }));
}

} // namespace

} // namespace veldron
