// SPDX-License-Identifier: MIT
#include "recordings/RecordingExport.h"

#include "tests/recordings/Recordings.h"
#include "tests/recordings/TestConsole.h"

#include <gtest/gtest.h>

namespace veldron {
namespace {

/// Notes what an export is given.
class Notes : public RecordingExport {
public:
    using RecordingExport::RecordingExport;
    QStringList log;

protected:
    void settingsChanged() override {
        log += settings().value(SettingsKey::Centre).value_or("none");
    }
    void take(const RecordedScan &scan) override {
        log += QStringLiteral("%1 from %2")
                   .arg(scan.second - 32400)
                   .arg(axis() ? axis()->start.toText() : QStringLiteral("nowhere"));
    }
    void writeRest() override { log += "rest"; }
};

class RecordingExportTest : public testing::Test {
protected:
    [[nodiscard]] QStringList notesOf(const QByteArray &bytes, const TimeWindow &given = {}) {
        TimeWindow window = given;
        window.parse();
        Notes notes("a.rec", window, m_console);
        MemorySource source(bytes);
        RecordingReader(source, notes).read();
        notes.finish();
        return notes.log;
    }
    TestConsole m_console;
};

TEST_F(RecordingExportTest, scans_comeWithTheSettingsInForce) {
    RecordingText text;
    text.block(kDay).scan(QTime(9, 0)).block(kDay, {"Centre 1", "Span 0"}).scan(QTime(9, 0, 1));
    EXPECT_EQ(notesOf(text.bytes),
              (QStringList{"145500000", "0 from 140500000", "1", "1 from 1", "rest"}));
    EXPECT_EQ(m_console.said(), "");
}

TEST_F(RecordingExportTest, window_leavesScansOutAndKeepsSettings) {
    RecordingText text;
    text.block(kDay).scans(QTime(9, 0), 5);
    TimeWindow window;
    window.from = "09:00:02";
    window.to = "09:00:03";
    EXPECT_EQ(notesOf(text.bytes, window), (QStringList{"145500000", "2 from 140500000", "rest"}));
}

TEST_F(RecordingExportTest, whatScansLack_isToldOnceWithTheirNumber) {
    RecordingText text;
    text.scans(QTime(9, 0), 2).block(kDay, {"Amp 1"}).scan(QTime(9, 0, 2));
    EXPECT_EQ(notesOf(text.bytes),
              (QStringList{"0 from nowhere", "1 from nowhere", "none", "2 from nowhere", "rest"}));
    EXPECT_EQ(m_console.said(), "a.rec: 2 scans without a date above them\n"
                                "a.rec: 3 scans without frequencies in the settings above them\n");
}

TEST_F(RecordingExportTest, nothingToExport_isTold) {
    EXPECT_EQ(notesOf(RecordingText().block(kDay).bytes), (QStringList{"145500000", "rest"}));
    EXPECT_EQ(m_console.said(), "a.rec: no scan to export\n");
}

} // namespace
} // namespace veldron
