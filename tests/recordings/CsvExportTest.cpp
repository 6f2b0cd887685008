// SPDX-License-Identifier: MIT
#include "recordings/CsvExport.h"

#include "tests/recordings/HistoryRun.h"
#include "tests/recordings/Recordings.h"

namespace veldron {
namespace {

class CsvExportTest : public HistoryRun {
protected:
    [[nodiscard]] QByteArray exported(const QByteArray &recording,
                                      const QStringList &options = {}) const {
        const Result result = run(QStringList{"export", "--csv", "-"} + options, recording);
        EXPECT_EQ(result.code, 0) << result.error.constData();
        EXPECT_EQ(result.error, "");
        return result.out;
    }
    [[nodiscard]] QByteArray python(const QStringList &arguments) const {
        QProcess process;
        process.setWorkingDirectory(m_folder.path());
        process.start(QStringLiteral(VELDRON_PYTHON), arguments);
        EXPECT_TRUE(process.waitForFinished(kMostWait));
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
        return process.readAllStandardOutput();
    }
};

LevelScan allLevels() {
    LevelScan levels;
    for (int raw = 0; raw < 256; ++raw) {
        levels.push_back(static_cast<quint8>(raw));
    }
    return levels;
}

TEST_F(CsvExportTest, scan_isARow) {
    EXPECT_EQ(exported(emptyRecording().scan(QTime(9, 5, 7), {101, 0, 255}).bytes),
              "2005-03-21, 09:05:07, 140500000, 140562500, 31250, 1, -31, -132, 123\n");
}

TEST_F(CsvExportTest, averagedScan_tellsItsSamples) {
    RecordingText recording;
    QStringList lines = RecordingText::unitLines();
    lines.last() = "DataMode 2";
    recording.block(kDay, lines << "Samples 16").scan(QTime(9, 0), {132});
    EXPECT_EQ(exported(recording.bytes),
              "2005-03-21, 09:00:00, 140500000, 140500000, 31250, 16, 0\n");
    lines[lines.size() - 2] = "DataMode 3";
    recording.block(kDay, lines).scan(QTime(9, 1), {132});
    EXPECT_TRUE(exported(recording.bytes).endsWith(", 31250, 1, 0\n"));
}

TEST_F(CsvExportTest, newSettings_moveTheFrequencies) {
    RecordingText recording = emptyRecording();
    recording.scan(QTime(9, 0), {132, 133});
    recording.block(kDay, {"MonitorMode 3", "Start 100000000.5", "Step 12500", "End 100012500.5"});
    recording.scan(QTime(9, 1), {132, 133}).scan(QTime(9, 2), {132});
    EXPECT_EQ(exported(recording.bytes),
              "2005-03-21, 09:00:00, 140500000, 140531250, 31250, 1, 0, 1\n"
              "2005-03-21, 09:01:00, 100000000, 100012500, 12500, 1, 0, 1\n"
              "2005-03-21, 09:02:00, 100000000, 100000000, 12500, 1, 0\n");
}

TEST_F(CsvExportTest, timesAllOverTheDay_areWrittenInTwoDigitsEach) {
    RecordingText recording = emptyRecording();
    QByteArray rows;
    for (int i = 0; i < 60; ++i) {
        const QTime time(i * 24 / 60, i, 59 - i);
        recording.scan(time, {132});
        rows += "2005-03-21, " + time.toString(Qt::ISODate).toLatin1() +
                ", 140500000, 140500000, 31250, 1, 0\n";
    }
    EXPECT_EQ(exported(recording.bytes), rows);
}

TEST_F(CsvExportTest, midnight_movesTheDate) {
    const QByteArray rows =
        exported(emptyRecording().scan(QTime(23, 59, 59), {132}).scan(QTime(0, 0), {132}).bytes);
    EXPECT_TRUE(rows.contains("\n2005-03-22, 00:00:00, ")) << rows.constData();
}

TEST_F(CsvExportTest, allLevels_areReadBackByPython) {
    RecordingText recording = emptyRecording();
    recording.scan(QTime(9, 0), allLevels()).scan(QTime(9, 1), allLevels());
    put("a.csv", exported(recording.bytes));
    EXPECT_EQ(python({"-c", "import csv, sys\n"
                            "for row in csv.reader(open('a.csv'), skipinitialspace=True):\n"
                            "    print(*row[:2], [int(level) + 132 for level in row[6:]]"
                            " == list(range(256)))\n"}),
              "2005-03-21 09:00:00 True\n2005-03-21 09:01:00 True\n");
}

TEST_F(CsvExportTest, columns_haveALineALevel) {
    RecordingText recording = emptyRecording();
    recording.scan(QTime(9, 0), {101, 255}).scan(QTime(9, 1), {0});
    recording.block(kDay, {"MonitorMode 3", "Start 100000000.5", "Step 12500", "End 100012500.5"});
    recording.scan(QTime(9, 2), {132, 133});
    EXPECT_EQ(exported(recording.bytes, {"--long"}), "local_time,frequency_hz,level_db\n"
                                                     "2005-03-21T09:00:00,140500000,-31\n"
                                                     "2005-03-21T09:00:00,140531250,123\n"
                                                     "2005-03-21T09:01:00,140500000,-132\n"
                                                     "2005-03-21T09:02:00,100000000.5,0\n"
                                                     "2005-03-21T09:02:00,100012500.5,1\n");
}

TEST_F(CsvExportTest, allLevelsInColumns_areReadBackByPython) {
    put("a.csv", exported(emptyRecording().scan(QTime(9, 0), allLevels()).bytes, {"--long"}));
    EXPECT_EQ(python({"-c", "import csv\n"
                            "rows = list(csv.DictReader(open('a.csv')))\n"
                            "print([int(row['level_db']) for row in rows]"
                            " == list(range(-132, 124)),"
                            " [int(row['frequency_hz']) for row in rows]"
                            " == list(range(140500000, 148500000, 31250)))\n"}),
              "True True\n");
}

TEST_F(CsvExportTest, longestScan_isWhole) {
    const LevelScan levels(325, 1);
    const QByteArray row = exported(emptyRecording().scan(QTime(9, 0), levels).bytes);
    EXPECT_EQ(row.count(", -131"), 325);
    EXPECT_TRUE(row.endsWith(", -131\n"));
    const QByteArray lines = exported(emptyRecording().scan(QTime(9, 0), levels).bytes, {"--long"});
    EXPECT_EQ(lines.count(",-131\n"), 325);
}

TEST_F(CsvExportTest, window_leavesScansOut) {
    const QByteArray recording = emptyRecording().scans(QTime(9, 0), 10).bytes;
    const QByteArray rows = exported(recording, {"--from", "09:00:03", "--to", "09:00:05"});
    EXPECT_EQ(rows.count('\n'), 2);
    EXPECT_TRUE(rows.startsWith("2005-03-21, 09:00:03, ")) << rows.constData();
}

TEST_F(CsvExportTest, heatMapScript_showsTheSignalInItsPlace) {
    RecordingText recording = emptyRecording();
    for (int second = 0; second < 5; ++second) {
        LevelScan levels = RecordingText::plainScan();
        if (second == 3) {
            levels[200] = 'b';
        }
        recording.scan(QTime(9, 0, second), levels);
    }
    put("a.csv", exported(recording.bytes));
    (void)python({QStringLiteral(VELDRON_TEST_FOLDER "/heatmap.py"), "a.csv", "a.pgm"});
    QByteArray picture(qsizetype{321} * 5, '\0');
    picture[321 * 3 + 200] = '\xff';
    EXPECT_EQ(content("a.pgm"), "P5 321 5 255\n" + picture);
}

TEST_F(CsvExportTest, whatTheRecordingDoesNotTell_staysEmpty) {
    RecordingText recording;
    recording.scan(QTime(9, 0), {132, 133});
    const Result rows = run({"export", "--csv", "-"}, recording.bytes);
    EXPECT_EQ(rows.out, ", 09:00:00, , , , 1, 0, 1\n");
    EXPECT_EQ(rows.error,
              "standard input: 1 scan without a date above them\n"
              "standard input: 1 scan without frequencies in the settings above them\n");
    EXPECT_EQ(run({"export", "--csv", "--long", "-"}, recording.bytes).out,
              "local_time,frequency_hz,level_db\n09:00:00,,0\n09:00:00,,1\n");
}

TEST_F(CsvExportTest, output_isTheStandardOneOrAFile) {
    const QByteArray recording = emptyRecording().scans(QTime(9, 0), 3).bytes;
    put("a.rec", recording);
    const Result result = run({"export", "--csv", "a.rec", "-o", "a.csv"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(content("a.csv"), exported(recording));
    EXPECT_EQ(run({"export", "--csv", "a.rec", "-o", "a.csv"}).code, 3);
    EXPECT_EQ(run({"export", "--csv", "a.rec", "-o", "a.csv", "--force"}).code, 0);
    EXPECT_EQ(run({"export", "--csv", "a.rec", "-o", "a.rec", "--force"}).code, 3);
}

TEST_F(CsvExportTest, fullDisk_isToldWithTheScansThatArrived) {
    put("a.rec", emptyRecording().scans(QTime(9, 0), 3).bytes);
    const Result result = run({"export", "--csv", "a.rec", "-o", "/dev/full"});
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.error, "/dev/full: No space left on device (0 of the scans arrived)\n");
}

} // namespace
} // namespace veldron
