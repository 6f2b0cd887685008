// SPDX-License-Identifier: MIT
#include "recordings/PngExport.h"

#include "chart/LevelScale.h"
#include "tests/recordings/HistoryRun.h"
#include "tests/recordings/Recordings.h"
#include "utilities/Colour.h"
#include "utilities/Palette.h"

#include <QDir>

#include <algorithm>
#include <numeric>
#include <set>

namespace veldron {
namespace {

/// A picture as numbers, out of a plain PPM file.
struct Picture {
    int width = 0;
    int height = 0;
    QByteArray bytes;

    /// 0x00BBGGRR, as the chart's colours.
    [[nodiscard]] quint32 at(int x, int y) const {
        const auto channel = [&](int number) {
            return static_cast<quint32>(
                static_cast<quint8>(bytes[(qsizetype{y} * width + x) * 3 + number]));
        };
        return channel(0) | channel(1) << 8U | channel(2) << 16U;
    }
    [[nodiscard]] std::vector<quint32> row(int y) const {
        std::vector<quint32> colours;
        for (int x = 0; x < width; ++x) {
            colours.push_back(at(x, y));
        }
        return colours;
    }
};

class PngExportTest : public HistoryRun {
protected:
    [[nodiscard]] Picture exported(const QByteArray &recording, const QStringList &options) const {
        put("a.rec", recording);
        const Result result = run(QStringList{"export", "--png", "a.rec", "--force"} + options);
        EXPECT_EQ(result.code, 0) << result.error.constData();
        EXPECT_EQ(result.error, "");
        EXPECT_EQ(shell("convert a.png -depth 8 a.ppm").code, 0);
        QByteArray bytes = content("a.ppm");
        Picture picture;
        const QByteArrayList head = bytes.left(30).simplified().split(' ');
        picture.width = head.value(1).toInt();
        picture.height = head.value(2).toInt();
        picture.bytes = bytes.right(qsizetype{picture.width} * picture.height * 3);
        return picture;
    }
    [[nodiscard]] Picture bare(const QByteArray &recording, const QString &size,
                               const QStringList &options = {}) const {
        return exported(recording, QStringList{"--no-axes", "--size", size} + options);
    }
};

/// What the chart shows for a raw level.
quint32 colourOf(int raw, PaletteCode scheme = PaletteCode::Spectrum6) {
    return GeneralUtilities::PaletteColour(LevelScale().schemeLevel(raw),
                                           static_cast<qint16>(scheme));
}

std::vector<quint32> coloursOf(const std::vector<int> &raw) {
    std::vector<quint32> colours;
    for (const int level : raw) {
        colours.push_back(colourOf(level));
    }
    return colours;
}

TEST_F(PngExportTest, barePicture_hasTheChartsColoursAndTheNewestScanOnTop) {
    RecordingText recording = emptyRecording();
    recording.scan(QTime(9, 0), {50, 60, 70, 80}).scan(QTime(9, 0, 1), {90, 100, 101, 45});
    const Picture picture = bare(recording.bytes, "4x2");
    EXPECT_EQ(picture.width, 4);
    EXPECT_EQ(picture.height, 2);
    EXPECT_EQ(picture.row(0), coloursOf({90, 100, 101, 45}));
    EXPECT_EQ(picture.row(1), coloursOf({50, 60, 70, 80}));
}

TEST_F(PngExportTest, everyScheme_isTheChartsOwn) {
    const QByteArray recording =
        emptyRecording().scan(QTime(9, 0), {42, 55, 66, 77, 88, 99, 102}).bytes;
    const QStringList names{"black-to-white", "white-to-black", "hot-metal",
                            "rainbow",        "spectrum-5",     "spectrum-6"};
    for (int scheme = 0; scheme < names.size(); ++scheme) {
        const Picture picture = bare(recording, "7x1", {"--colours", names[scheme]});
        EXPECT_EQ(picture.at(3, 0), colourOf(77, static_cast<PaletteCode>(scheme)));
        EXPECT_EQ(picture.at(6, 0), colourOf(102, static_cast<PaletteCode>(scheme)));
    }
}

TEST_F(PngExportTest, schemeOfTheRecording_isTaken) {
    RecordingText recording;
    recording.block(kDay, RecordingText::unitLines() << "Palette 3").scan(QTime(9, 0), {70});
    EXPECT_EQ(bare(recording.bytes, "1x1").at(0, 0), colourOf(70, PaletteCode::Rainbow));
}

TEST_F(PngExportTest, scansInOnePixel_showTheStrongest) {
    RecordingText recording = emptyRecording();
    for (int second = 0; second < 100; ++second) {
        LevelScan levels(4, 50);
        levels[second == 37 ? 1 : 0] = second == 37 ? 101 : 60;
        recording.scan(QTime(9, 0).addSecs(second), levels);
    }
    const Picture picture = bare(recording.bytes, "4x10");
    for (int y = 0; y < 10; ++y) {
        EXPECT_EQ(picture.row(y), coloursOf({60, y == 6 ? 101 : 50, 50, 50})) << y;
    }
}

TEST_F(PngExportTest, levelsInOnePixel_showTheStrongest) {
    LevelScan levels(321, 50);
    levels[100] = 90;
    levels[320] = 80;
    const Picture picture = bare(emptyRecording().scan(QTime(9, 0), levels).bytes, "32x1");
    for (int x = 0; x < 32; ++x) {
        EXPECT_EQ(picture.at(x, 0), colourOf(x == 10 ? 90 : x == 31 ? 80 : 50)) << x;
    }
}

TEST_F(PngExportTest, largePicture_spreadsScansAndLevels) {
    RecordingText recording = emptyRecording();
    recording.scan(QTime(9, 0), {50, 60}).scan(QTime(9, 0, 1), {70, 80});
    const Picture picture = bare(recording.bytes, "6x4");
    EXPECT_EQ(picture.row(0), coloursOf({70, 70, 70, 80, 80, 80}));
    EXPECT_EQ(picture.row(1), picture.row(0));
    EXPECT_EQ(picture.row(2), coloursOf({50, 50, 50, 60, 60, 60}));
    EXPECT_EQ(picture.row(3), picture.row(2));
}

TEST_F(PngExportTest, gap_staysEmptyButAPollIntervalDoesNot) {
    RecordingText recording;
    QStringList lines = RecordingText::unitLines();
    lines[0] = "Poll 2000";
    recording.block(kDay, lines);
    recording.scan(QTime(9, 0), {60}).scan(QTime(9, 0, 2), {70}).scan(QTime(9, 0, 59), {80});
    const Picture picture = bare(recording.bytes, "1x60");
    EXPECT_EQ(picture.at(0, 59), colourOf(60));
    EXPECT_EQ(picture.at(0, 58), colourOf(60));
    EXPECT_EQ(picture.at(0, 57), colourOf(70));
    EXPECT_EQ(picture.at(0, 30), colourOf(0));
    EXPECT_EQ(picture.at(0, 0), colourOf(80));
}

TEST_F(PngExportTest, failedTransfers_areNotDrawn) {
    RecordingText recording = emptyRecording();
    recording.scan(QTime(9, 0), {60, 60}).scan(QTime(9, 0, 1), {0});
    recording.scan(QTime(9, 0, 2), LevelScan(325, 0)).scan(QTime(9, 0, 3), {70, 70});
    const Picture picture = bare(recording.bytes, "2x4");
    EXPECT_EQ(picture.row(0), coloursOf({70, 70}));
    EXPECT_EQ(picture.row(3), coloursOf({60, 60}));
}

TEST_F(PngExportTest, window_isCutOut) {
    RecordingText recording = emptyRecording();
    for (int second = 0; second < 10; ++second) {
        recording.scan(QTime(9, 0, second), {static_cast<quint8>(50 + second)});
    }
    const Picture picture =
        bare(recording.bytes, "1x2", {"--from", "09:00:04", "--to", "09:00:06"});
    EXPECT_EQ(picture.at(0, 0), colourOf(55));
    EXPECT_EQ(picture.at(0, 1), colourOf(54));
}

TEST_F(PngExportTest, frequencies_areCutOutAndWidened) {
    const QByteArray recording = emptyRecording().scan(QTime(9, 0), {50, 60, 70, 80, 90}).bytes;
    EXPECT_EQ(bare(recording, "3x1", {"--low", "140531250", "--high", "140.59375M"}).row(0),
              coloursOf({60, 70, 80}));
    EXPECT_EQ(bare(recording, "3x1", {"--low", "140437.5k", "--high", "140500000"}).row(0),
              coloursOf({0, 0, 50}));
}

TEST_F(PngExportTest, frequencyWithALetter_countsToItsLastDigit) {
    const QByteArray recording = emptyRecording().scan(QTime(9, 0), {50, 60, 70, 80, 90}).bytes;
    for (const char *low : {"140500k", "140.5M", "0.1405G"}) {
        EXPECT_EQ(bare(recording, "3x1", {"--low", low, "--high", "140562.5k"}).row(0),
                  coloursOf({50, 60, 70}))
            << low;
    }
}

TEST_F(PngExportTest, newSettings_moveTheLevels) {
    RecordingText recording = emptyRecording();
    recording.scan(QTime(9, 0), {50, 60, 70});
    recording.block(kDay, {"MonitorMode 3", "Start 140531250", "Step 31250", "End 140562500"});
    recording.scan(QTime(9, 0, 1), {80, 90});
    const Picture picture = bare(recording.bytes, "3x2");
    EXPECT_EQ(picture.row(0), coloursOf({0, 80, 90}));
    EXPECT_EQ(picture.row(1), coloursOf({50, 60, 70}));
}

TEST_F(PngExportTest, axes_standAroundTheWaterfall) {
    const QByteArray recording = emptyRecording().scans(QTime(9, 0), 600).bytes;
    const Picture picture = exported(recording, {"--size", "800x400"});
    EXPECT_EQ(picture.width, 800);
    EXPECT_EQ(picture.height, 400);
    // Frame, waterfall, and a tick, a dotted line and a text at 09:04, 359 seconds below the top.
    constexpr quint32 kWhite = 0x00FFFFFF;
    constexpr quint32 kGrey = 0x007F7F7F;
    EXPECT_EQ(picture.at(89, 200), kWhite);
    EXPECT_EQ(picture.at(90, 200), colourOf('a'));
    const int y = 24 + 359 * 346 / 600;
    EXPECT_EQ(picture.at(86, y), kWhite);
    EXPECT_EQ(picture.at(86, y + 2), 0U);
    EXPECT_EQ(picture.at(98, y), kGrey);
    EXPECT_EQ(picture.at(99, y), colourOf('a'));
    int bright = 0;
    for (int x = 35; x < 82; ++x) {
        bright += (picture.at(x, y) & 0xFFU) > 100 ? 1 : 0;
    }
    EXPECT_GT(bright, 5);
}

TEST_F(PngExportTest, frame_hasItsCornersAndNothingBeyond) {
    const Picture picture =
        exported(emptyRecording().scans(QTime(9, 0), 600).bytes, {"--size", "800x400"});
    constexpr quint32 kBlack = 0;
    constexpr quint32 kWhite = 0x00FFFFFF;
    constexpr quint32 kGrey = 0x007F7F7F;
    const std::vector<quint32> middle = picture.row(200);
    const auto right =
        static_cast<int>(middle.rend() - std::find(middle.rbegin(), middle.rend(), kGrey) - 1);
    const std::vector<quint32> top = picture.row(23);
    EXPECT_EQ(std::count(top.begin() + 90, top.begin() + right + 1, kGrey), right - 89);
    EXPECT_EQ(picture.at(right + 1, 23), kBlack);
    const std::vector<quint32> bottom = picture.row(370);
    EXPECT_EQ(std::count(bottom.begin() + 89, bottom.begin() + right + 1, kWhite), right - 88);
    EXPECT_EQ(picture.at(right + 1, 370), kBlack);
    EXPECT_EQ(picture.at(88, 23), kBlack);
    EXPECT_EQ(picture.at(89, 22), kBlack);
    EXPECT_EQ(picture.at(89, 371), kBlack);
}

TEST_F(PngExportTest, textsOfADay_areNotCutOff) {
    RecordingText recording = emptyRecording();
    for (int minute = 0; minute < 24 * 60; minute += 10) {
        recording.scan(QTime(minute / 60, minute % 60));
    }
    for (const QSize size : {QSize(1280, 800), QSize(2560, 1600)}) {
        const Picture picture = exported(
            recording.bytes,
            {"--trace", "--size", QStringLiteral("%1x%2").arg(size.width()).arg(size.height())});
        ASSERT_EQ(picture.width, size.width());
        std::set<quint32> edge;
        for (int x = 0; x < size.width(); ++x) {
            edge.insert({picture.at(x, 0), picture.at(x, size.height() - 1)});
        }
        for (int y = 0; y < size.height(); ++y) {
            edge.insert({picture.at(0, y), picture.at(size.width() - 1, y)});
        }
        EXPECT_EQ(edge, std::set<quint32>{0}) << size.width();
    }
}

TEST_F(PngExportTest, trace_showsStrongestMedianAndWeakest) {
    RecordingText recording = emptyRecording();
    for (int second = 0; second < 5; ++second) {
        recording.scan(QTime(9, 0, second), {static_cast<quint8>(second < 3 ? 60 + second : 90)});
    }
    const Picture picture = bare(recording.bytes, "1x303", {"--trace"});
    const auto rowOf = [](int raw) {
        return LevelScale().rowOf(raw, 0, 100);
    };
    EXPECT_EQ(picture.at(0, rowOf(60)), 0x007F7F7FU);
    EXPECT_EQ(picture.at(0, rowOf(62)), 0x0000FF00U);
    EXPECT_EQ(picture.at(0, rowOf(90)), 0x0000FFFFU);
    EXPECT_EQ(picture.at(0, rowOf(61)), 0U);
}

/// The rows of the trace in which the curve of the strongest levels stands at \a x.
std::vector<int> peakRows(const Picture &picture, int x) {
    std::vector<int> rows;
    for (int y = 0; y < 101; ++y) {
        if (picture.at(x, y) == 0x0000FFFFU) {
            rows.push_back(y);
        }
    }
    return rows;
}

std::vector<int> rowsBetween(int from, int to) {
    std::vector<int> rows(static_cast<std::size_t>(to - from) + 1);
    std::iota(rows.begin(), rows.end(), from);
    return rows;
}

TEST_F(PngExportTest, medianOfAnEvenNumber_isTheLowerOfTheTwo) {
    RecordingText recording = emptyRecording();
    for (const int level : {60, 90, 61, 70}) {
        recording.scan(QTime(9, 0).addSecs(level), {static_cast<quint8>(level)});
    }
    const Picture picture = bare(recording.bytes, "1x303", {"--trace"});
    EXPECT_EQ(picture.at(0, LevelScale().rowOf(61, 0, 100)), 0x0000FF00U);
}

TEST_F(PngExportTest, curvesOfTheTrace_haveNoHoles) {
    const Picture picture =
        bare(emptyRecording().scan(QTime(9, 0), {60, 90, 50, 50}).bytes, "4x303", {"--trace"});
    const auto rowOf = [](int raw) {
        return LevelScale().rowOf(raw, 0, 100);
    };
    EXPECT_EQ(peakRows(picture, 0), rowsBetween(rowOf(60), rowOf(60)));
    EXPECT_EQ(peakRows(picture, 1), rowsBetween(rowOf(90), rowOf(60) - 1));
    EXPECT_EQ(peakRows(picture, 2), rowsBetween(rowOf(90) + 1, rowOf(50)));
    EXPECT_EQ(peakRows(picture, 3), rowsBetween(rowOf(50), rowOf(50)));
}

TEST_F(PngExportTest, curvesOfTheTrace_endWhereNothingWasMeasured) {
    RecordingText recording = emptyRecording();
    recording.scan(QTime(9, 0), {60, 60});
    recording.block(kDay, {"MonitorMode 3", "Start 140593750", "Step 31250", "End 140625000"});
    recording.scan(QTime(9, 1), {90, 90});
    const Picture picture = bare(recording.bytes, "5x303", {"--trace"});
    const int low = LevelScale().rowOf(60, 0, 100);
    const int high = LevelScale().rowOf(90, 0, 100);
    EXPECT_EQ(peakRows(picture, 1), rowsBetween(low, low));
    EXPECT_EQ(peakRows(picture, 2), std::vector<int>());
    EXPECT_EQ(peakRows(picture, 3), rowsBetween(high, high));
}

TEST_F(PngExportTest, whatCannotBeDrawn_isAnErrorWithoutAFile) {
    put("a.rec", emptyRecording().scan(QTime(9, 0)).bytes);
    for (const QStringList &options :
         {QStringList{"--size", "big"}, QStringList{"--size", "0x10"}, QStringList{"--low", "x"},
          QStringList{"--low", "2G", "--high", "1G"}, QStringList{"--size", "50x50"},
          QStringList{"--colours", "grey"}}) {
        EXPECT_EQ(run(QStringList{"export", "--png", "a.rec"} + options).code, 64)
            << options.join(' ').toStdString();
    }
    EXPECT_EQ(run({"export", "--csv", "a.rec", "--trace"}).code, 64);
    EXPECT_EQ(run({"export", "--png", "a.rec", "--from", "10:00"}).code, 1);
    const Result piped = shell(program() + " export --png <(cat a.rec) -o a.png");
    EXPECT_EQ(piped.code, 3);
    EXPECT_TRUE(piped.error.endsWith(": a picture takes two passes, and so a file or -\n"))
        << piped.error.constData();
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList{"a.rec"});
}

TEST_F(PngExportTest, standardInput_isDrawnLikeAFile) {
    put("a.rec", emptyRecording().scans(QTime(9, 0), 300).bytes);
    const QByteArray other = emptyRecording().scan(QTime(9, 0), LevelScan(321, 'z')).bytes;
    put("b.rec", other + content("a.rec"));
    const QString command = program() + " export --png --size 300x200 --trace -o - ";
    const QByteArray drawn = shell(command + "a.rec").out;
    EXPECT_TRUE(drawn.startsWith("\x89PNG"));
    // The last one has been read in part before it became the standard input.
    for (const QString &fromInput :
         {command + "- <a.rec", "cat a.rec | " + command + '-',
          QStringLiteral("{ head -c %1 >c.rec; %2 -; } <b.rec").arg(other.size()).arg(command)}) {
        const Result result = shell(fromInput);
        EXPECT_EQ(result.code, 0) << fromInput.toStdString();
        EXPECT_EQ(result.error, "");
        EXPECT_EQ(result.out, drawn) << fromInput.toStdString();
    }
}

TEST_F(PngExportTest, skippedBytes_areToldOnce) {
    put("a.rec", emptyRecording().scan(QTime(9, 0)).bytes + "Data cut");
    const Result result = run({"export", "--png", "a.rec"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.error.count('\n'), 1) << result.error.constData();
}

} // namespace
} // namespace veldron
