// SPDX-License-Identifier: MIT
#include "recordings/NetcdfExport.h"

#include "tests/recordings/HistoryRun.h"
#include "tests/recordings/Recordings.h"

#include <QDir>

#include <random>

namespace veldron {
namespace {

class NetcdfExportTest : public HistoryRun {
protected:
    /// Exports to a.nc.
    void exportIt(const QByteArray &recording, const QStringList &options = {}) const {
        const Result result =
            run(QStringList{"export", "--netcdf", "-", "-o", "a.nc"} + options, recording);
        EXPECT_EQ(result.code, 0) << result.error.constData();
        EXPECT_EQ(result.error, "");
        EXPECT_EQ(result.out, "");
    }
    /// What a script prints that has a function opened(group, ...), for data sets of a.nc.
    [[nodiscard]] QByteArray python(const QByteArray &script) const {
        put("script.py", "import sys, xarray\n"
                         "def opened(group, **options):\n"
                         "    return xarray.open_dataset('a.nc', group=group, **options)\n" +
                             script);
        const Result result = shell(QStringLiteral(VELDRON_PYTHON " -W ignore script.py"));
        EXPECT_EQ(result.code, 0) << result.error.constData();
        return result.out;
    }
    /// KiB of memory that the export of a.rec, \a recording, takes at its peak.
    [[nodiscard]] int peakOf(const QByteArray &recording) const {
        put("a.rec", recording);
        // A sanitized program keeps what it has freed for a while, unless it is told not to.
        const Result result =
            shell(QStringLiteral("ASAN_OPTIONS=quarantine_size_mb=2 " VELDRON_PYTHON
                                 " -c 'import os, sys\n"
                                 "os.spawnv(os.P_WAIT, sys.argv[1], sys.argv[1:])\n"
                                 "import resource\n"
                                 "print(resource.getrusage(resource.RUSAGE_CHILDREN)"
                                 ".ru_maxrss)' ") +
                  program() + " export --netcdf a.rec --force");
        EXPECT_EQ(result.error, "");
        return result.out.toInt();
    }
    [[nodiscard]] QByteArray groups() const {
        return shell(QStringLiteral("ncdump -h a.nc | sed -n 's/^group: \\(.*\\) {/\\1/p'")).out;
    }
};

LevelScan scanOf(int number, qsizetype size) {
    LevelScan levels;
    for (qsizetype i = 0; i < size; ++i) {
        levels.push_back(static_cast<quint8>(number * 7 + i));
    }
    return levels;
}

constexpr const char *kDump =
    "netcdf a {\n"
    "\n"
    "// global attributes:\n"
    "\t\t:Conventions = \"CF-1.10\" ;\n"
    "\t\t:title = \"Recording of spectra\" ;\n"
    "\t\t:source = \"VELDRON\" ;\n"
    "\n"
    "group: stretch_0001 {\n"
    "  dimensions:\n"
    "  \ttime = UNLIMITED ; // (2 currently)\n"
    "  \tfrequency = 3 ;\n"
    "  variables:\n"
    "  \tint64 time(time) ;\n"
    "  \t\ttime:standard_name = \"time\" ;\n"
    "  \t\ttime:long_name = \"local time of the machine that recorded\" ;\n"
    "  \t\ttime:units = \"seconds since 1970-01-01 00:00:00\" ;\n"
    "  \t\ttime:calendar = \"proleptic_gregorian\" ;\n"
    "  \t\ttime:axis = \"T\" ;\n"
    "  \tubyte levels(time, frequency) ;\n"
    "  \t\tlevels:long_name = \"level\" ;\n"
    "  \t\tlevels:units = \"dB\" ;\n"
    "  \t\tlevels:add_offset = -132.f ;\n"
    "  \tdouble frequency(frequency) ;\n"
    "  \t\tfrequency:standard_name = \"radiation_frequency\" ;\n"
    "  \t\tfrequency:long_name = \"frequency\" ;\n"
    "  \t\tfrequency:units = \"Hz\" ;\n"
    "\n"
    "  // group attributes:\n"
    "  \t\t:Poll = 1000 ;\n"
    "  \t\t:MonitorMode = 1 ;\n"
    "  \t\t:Span = 10000000. ;\n"
    "  \t\t:Centre = 145500000. ;\n"
    "  \t\t:Receiver = \"Other (10M)\" ;\n"
    "  \t\t:RBW = 2 ;\n"
    "  \t\t:Amp = 0 ;\n"
    "  \t\t:DataMode = 1 ;\n"
    "  data:\n"
    "\n"
    "   time = 1111395907, 1111395908 ;\n"
    "\n"
    "   levels =\n"
    "  101, 0, 255,\n"
    "  1, 2, 3 ;\n"
    "\n"
    "   frequency = 140500000, 140531250, 140562500 ;\n"
    "  } // group stretch_0001\n"
    "}\n";

TEST_F(NetcdfExportTest, file_isWhatNcdumpShows) {
    RecordingText recording = emptyRecording();
    recording.scan(QTime(9, 5, 7), {101, 0, 255}).scan(QTime(9, 5, 8), {1, 2, 3});
    exportIt(recording.bytes);
    EXPECT_EQ(shell("ncdump a.nc").out, kDump);
}

TEST_F(NetcdfExportTest, levels_areReadBackByXarray) {
    LevelScan levels;
    for (int raw = 0; raw < 256; ++raw) {
        levels.push_back(static_cast<quint8>(raw));
    }
    exportIt(emptyRecording().scan(QTime(9, 0), levels).scan(QTime(23, 59, 59), levels).bytes);
    EXPECT_EQ(python("data = opened('stretch_0001')\n"
                     "print((data.levels == [range(-132, 124)] * 2).all().item())\n"
                     "print(data.levels.dtype.kind, data.levels.units)\n"
                     "print(*data.time.dt.strftime('%F %T').values)\n"
                     "print(*data.frequency.values[[0, 1, 255]].astype(int))\n"
                     "print(data.Span, data.Receiver)\n"),
              "True\nf dB\n2005-03-21 09:00:00 2005-03-21 23:59:59\n"
              "140500000 140531250 148468750\n10000000.0 Other (10M)\n");
}

TEST_F(NetcdfExportTest, scansOfManyChunks_areAllThere) {
    RecordingText recording = emptyRecording();
    QByteArray raw;
    for (int i = 0; i < 7300; ++i) {
        const LevelScan levels = scanOf(i, 20);
        raw.append(reinterpret_cast<const char *>(levels.data()),
                   static_cast<qsizetype>(levels.size()));
        recording.scan(QTime(21, 59).addSecs(i), levels);
    }
    exportIt(recording.bytes);
    EXPECT_EQ(python("data = opened('stretch_0001', mask_and_scale=False)\n"
                     "print(data.sizes['time'], data.levels.dtype, file=sys.stderr)\n"
                     "assert (data.time.diff('time').astype(int) == 10**9).all()\n"
                     "sys.stdout.buffer.write(data.levels.values.tobytes())\n"),
              raw);
}

TEST_F(NetcdfExportTest, dask_opensItLazily) {
    RecordingText recording = emptyRecording();
    for (int i = 0; i < 4000; ++i) {
        recording.scan(QTime(9, 0).addSecs(i), {static_cast<quint8>(i % 100), 132});
    }
    exportIt(recording.bytes);
    EXPECT_EQ(python("levels = opened('stretch_0001', chunks={'time': 1800}).levels\n"
                     "print(type(levels.data).__module__, levels.chunks)\n"
                     "print(levels.max('time').compute().values)\n"),
              "dask.array.core ((1800, 1800, 400), (2,))\n[-33.   0.]\n");
}

TEST_F(NetcdfExportTest, equalSettings_areAGroup) {
    RecordingText recording = emptyRecording();
    recording.scan(QTime(23, 59, 59)).block(kDay.addDays(1)).scan(QTime(0, 0));
    QStringList other = RecordingText::unitLines();
    other[2] = "Span 5000000";
    recording.block(kDay.addDays(1), other).scan(QTime(0, 0, 1));
    recording.block(kDay.addDays(1)).scan(QTime(0, 0, 2));
    exportIt(recording.bytes);
    EXPECT_EQ(groups(), "stretch_0001\nstretch_0002\nstretch_0003\n");
    EXPECT_EQ(python("for number in (1, 2, 3):\n"
                     "    data = opened(f'stretch_000{number}')\n"
                     "    print(data.sizes['time'], data.Span, int(data.frequency[0]))\n"),
              "2 10000000.0 140500000\n1 5000000.0 143000000\n1 10000000.0 140500000\n");
}

TEST_F(NetcdfExportTest, otherLengths_haveGroupsBesideTheStretch) {
    RecordingText recording = emptyRecording();
    recording.scan(QTime(9, 0), {0}).scan(QTime(9, 1), scanOf(1, 321));
    recording.scan(QTime(9, 2), {0}).scan(QTime(9, 3), LevelScan(325, 0));
    recording.scan(QTime(9, 4), scanOf(2, 320)).scan(QTime(9, 5), scanOf(3, 321));
    exportIt(recording.bytes);
    EXPECT_EQ(groups(), "stretch_0001_levels_1\nstretch_0001\nstretch_0001_levels_325\n"
                        "stretch_0001_levels_320\n");
    EXPECT_EQ(python("for end in ('', '_levels_1', '_levels_320', '_levels_325'):\n"
                     "    data = opened('stretch_0001' + end)\n"
                     "    print(*data.time.dt.strftime('%T').values, data.levels.shape[1])\n"),
              "09:01:00 09:05:00 321\n09:00:00 09:02:00 1\n09:04:00 320\n09:03:00 325\n");
}

TEST_F(NetcdfExportTest, unknownFrequencies_areLeftOut) {
    RecordingText recording;
    recording.block(kDay, {"Amp 3"}).scan(QTime(9, 0), {1, 2});
    const Result result = run({"export", "--netcdf", "-", "-o", "a.nc"}, recording.bytes);
    EXPECT_EQ(result.code, 0);
    EXPECT_TRUE(result.error.contains("1 scan without frequencies")) << result.error.constData();
    EXPECT_EQ(python("data = opened('stretch_0001')\n"
                     "print(list(data.coords), data.levels.shape, data.Amp)\n"),
              "['time'] (1, 2) 3\n");
}

TEST_F(NetcdfExportTest, scansWithoutADate_areLeftOutAndTold) {
    RecordingText recording;
    recording.scan(QTime(9, 0)).block(kDay).scan(QTime(9, 1));
    const Result result = run({"export", "--netcdf", "-", "-o", "a.nc"}, recording.bytes);
    EXPECT_TRUE(result.error.startsWith("standard input: 1 scan without a date"))
        << result.error.constData();
    EXPECT_EQ(python("print(opened('stretch_0001').sizes['time'])\n"), "1\n");
}

TEST_F(NetcdfExportTest, valueThatIsNoNumber_staysAText) {
    RecordingText recording;
    QStringList lines = RecordingText::unitLines();
    lines[2] = QString::fromLatin1("Span \xb5Hz");
    recording.block(kDay, lines).scan(QTime(9, 0));
    (void)run({"export", "--netcdf", "-", "-o", "a.nc"}, recording.bytes);
    const QByteArray header = shell("ncdump -h a.nc").out;
    EXPECT_TRUE(header.contains(":Span = \"\xc2\xb5Hz\" ;")) << header.constData();
}

TEST_F(NetcdfExportTest, window_leavesScansOut) {
    exportIt(emptyRecording().scans(QTime(9, 0), 10).bytes,
             {"--from", "09:00:03", "--to", "09:00:05"});
    EXPECT_EQ(python("print(*opened('stretch_0001').time.dt.strftime('%T').values)\n"),
              "09:00:03 09:00:04\n");
}

TEST_F(NetcdfExportTest, standardOutput_getsTheSameFile) {
    const QByteArray recording = emptyRecording().scans(QTime(9, 0), 10).bytes;
    exportIt(recording);
    const Result piped = run({"export", "--netcdf", "-", "-o", "-"}, recording);
    EXPECT_EQ(piped.code, 0) << piped.error.constData();
    const QByteArray dump = shell("ncdump a.nc").out;
    EXPECT_TRUE(dump.contains("dimensions:"));
    put("a.nc", piped.out);
    EXPECT_EQ(shell("ncdump a.nc").out, dump);
    put("a.rec", recording);
    const Result full = shell(program() + " export --netcdf a.rec -o - >/dev/full");
    EXPECT_EQ(full.code, 3);
    EXPECT_EQ(full.error, "standard output: No space left on device\n");
}

TEST_F(NetcdfExportTest, thousandsOfStretches_takeNoMoreMemoryThanAHundred) {
    const auto peak = [this](int stretches) {
        RecordingText recording;
        for (int i = 0; i < stretches; ++i) {
            recording.block(kDay, QStringList("Span 10000000")
                                      << QStringLiteral("Centre %1").arg(100000000 + i));
            recording.scan(QTime(9, 0).addSecs(i), scanOf(i, 100));
        }
        return peakOf(recording.bytes);
    };
    const int few = peak(100);
    EXPECT_GT(few, 10000);
    EXPECT_LT(peak(2000) - few, 8192);
    EXPECT_EQ(python("import netCDF4\n"
                     "groups = netCDF4.Dataset('a.nc').groups\n"
                     "print(len(groups), list(groups)[1999])\n"
                     "last = groups['stretch_2000']\n"
                     "print(last.Centre, last['levels'][0, :3].tolist())\n"),
              "2000 stretch_2000\n100001999.0 [37.0, 38.0, 39.0]\n");
}

TEST_F(NetcdfExportTest, scansOfAllLengths_takeLittleMemory) {
    const auto peak = [this](int lengths) {
        RecordingText recording = emptyRecording();
        for (int i = 0; i < 130 * lengths; ++i) {
            recording.scan(QTime(9, 0).addSecs(i % 3600), scanOf(i, 1 + i % lengths));
        }
        return peakOf(recording.bytes);
    };
    // It takes 23,000, with the sanitizers 37,000; with small chunks under way it was 43,000.
    const int one = peak(1);
    EXPECT_GT(one, 10000);
    EXPECT_LT(peak(325) - one, 40000);
}

TEST_F(NetcdfExportTest, output_standsBesideTheRecording) {
    put("a.rec", emptyRecording().scan(QTime(9, 0)).bytes);
    put("b", emptyRecording().scan(QTime(9, 0)).bytes);
    EXPECT_EQ(run({"export", "--netcdf", "a.rec"}).code, 0);
    EXPECT_EQ(run({"export", "--netcdf", "b"}).code, 0);
    EXPECT_EQ(run({"export", "--netcdf", "b"}).code, 3);
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files),
              (QStringList{"a.nc", "a.rec", "b", "b.nc"}));
    EXPECT_EQ(run({"export", "--netcdf", "-"}, content("b")).code, 64);
}

TEST_F(NetcdfExportTest, fullDisk_isToldWithTheScansThatArrived) {
    RecordingText recording = emptyRecording();
    std::mt19937 random(3);
    for (int i = 0; i < 8000; ++i) {
        LevelScan levels(100);
        std::generate(levels.begin(), levels.end(), [&] { return static_cast<quint8>(random()); });
        recording.scan(QTime(9, 0).addSecs(i), levels);
    }
    put("a.rec", recording.bytes);
    const Result result =
        shell("trap '' XFSZ; ulimit -f 200; " + program() + " export --netcdf a.rec");
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.error, "a.nc: File too large (0 of the scans arrived)\n");
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList{"a.rec"});
}

TEST_F(NetcdfExportTest, script_searchesSeveralFiles) {
    LevelScan signal = RecordingText::plainScan();
    signal[200] = 'b';
    put("a.rec", emptyRecording().scans(QTime(9, 0), 3).bytes);
    RecordingText second;
    second.block(kDay.addDays(1)).scan(QTime(9, 0), {0}).scan(QTime(9, 0, 1), signal);
    put("b.rec", second.bytes);
    for (const char *file : {"a.rec", "b.rec"}) {
        EXPECT_EQ(run({"export", "--netcdf", file}).code, 0);
    }
    const Result result = shell(
        QStringLiteral(VELDRON_PYTHON " -W ignore " VELDRON_DOCS "/history-xarray.py a.nc b.nc"));
    EXPECT_EQ(result.out, "4 scans of 321 levels in 2 chunks\n"
                          "from 2005-03-21 09:00:00 to 2005-03-22 09:00:01\n"
                          "strongest: -34 dB at 146750000 Hz\nmean: -35.00 dB\n")
        << result.error.constData();
}

} // namespace
} // namespace veldron
