// SPDX-License-Identifier: MIT
#include "link/UnitSetting.h"
#include "tests/link/LinkFixture.h"

#include <set>
#include <string>

namespace veldron {
namespace {

class UnitSettingTest : public testing::Test {
protected:
    template <typename T>
    static void expectWrite(const UnitSetting<T> &row, const T &value, const char *sent,
                            const char *report) {
        EXPECT_EQ(QLatin1String(row.letters.write) + row.codec.argument(value),
                  QString::fromLatin1(sent));
        EXPECT_EQ(QLatin1String(row.letters.report) + row.codec.reportedArgument(value),
                  QString::fromLatin1(report));
    }
    template <typename T>
    static void expectRead(const UnitSetting<T> &row, const char *reply,
                           const std::optional<T> &value) {
        QString text = QString::fromLatin1(reply);
        EXPECT_EQ(row.codec.value(text), value) << row.letters.read << ' ' << reply;
    }

    const UnitSettingRows rows = unitSettingRows();
};

TEST_F(UnitSettingTest, codesAndCounts_areWrittenAsTheyAre) {
    expectWrite<qint16>(rows.RXMode, 3, "WUMD3", "WUMD3");
    expectWrite<qint16>(rows.RXMode, -32768, "WUMD-32768", "WUMD-32768");
    expectWrite<qint16>(rows.VDRAmp, -30, "WSGN-30", "WSGN-30");
    expectWrite<qint16>(rows.VDRRBW, 4, "WSBW4", "WSBW4");
    expectWrite<qint16>(rows.VDRSamples, 16, "WSAV16", "WSAV16");
    expectWrite(rows.VDRDataMode, DataModeCode::Average, "WSDM2", "WSDM2");
    expectWrite(rows.VDRMonitorMode, MonitorModeCode::Spectrum, "WUOM1", "WUOM1");
}

TEST_F(UnitSettingTest, receiver_isReportedByItsReadLetters) {
    expectWrite<qint16>(rows.RXType, 7, "WURX7", "RURX7");
}

TEST_F(UnitSettingTest, attenuator_isOneOrTwo) {
    expectWrite(rows.RXAtten, true, "WUAT1", "WUAT1");
    expectWrite(rows.RXAtten, false, "WUAT2", "WUAT2");
}

TEST_F(UnitSettingTest, receiverStep_isKilohertzWithSevenDigits) {
    expectWrite(rows.RXStep, 12500, "WUST12.5", "WUST12.5");
    expectWrite(rows.RXStep, 8330, "WUST8.33", "WUST8.33");
    expectWrite(rows.RXStep, 1, "WUST0.001", "WUST0.001");
    expectWrite(rows.RXStep, 100000000, "WUST100000", "WUST100000");
    expectWrite(rows.RXStep, 2147483647, "WUST2147484", "WUST2147484");
    expectWrite(rows.RXStep, -1, "WUST-0.001", "WUST-0.001");
}

TEST_F(UnitSettingTest, centre_isMegahertzAndReportedCutToWholeOnes) {
    const UnitSetting<Hertz> &row = rows.VDRCentre;
    expectWrite(row, Hertz::fromWhole(145125000), "WSCF145.125", "WSCF145");
    expectWrite(row, Hertz::fromWhole(-1), "WSCF-0.000001", "WSCF0");
    expectWrite(row, Hertz::fromWhole(999999), "WSCF0.999999", "WSCF0");
    expectWrite(row, Hertz::fromWhole(-1999999), "WSCF-1.999999", "WSCF-1");
    expectWrite(row, Hertz::fromUnits(35000000001234), "WSCF3500.0000001234", "WSCF3500");
}

TEST_F(UnitSettingTest, span_isMegahertzAndReportedCutToWholeOnes) {
    expectWrite(rows.VDRSpan, 10000000, "WSSP10", "WSSP10");
    expectWrite(rows.VDRSpan, 2500000, "WSSP2.5", "WSSP2");
    expectWrite(rows.VDRSpan, 0, "WSSP0", "WSSP0");
}

TEST_F(UnitSettingTest, channelData_isThreeFieldsBehindABlank) {
    expectWrite(rows.VDRChData,
                {Hertz::fromWhole(144000000), Hertz::fromWhole(25000), Hertz::fromWhole(146000000)},
                "WUCS 144 25 146", "WUCS 144 25 146");
}

TEST_F(UnitSettingTest, receiverModeAndModel_areReadStrictly) {
    expectRead<qint16>(rows.RXMode, "3", 3);
    expectRead<qint16>(rows.RXMode, " 12 ", 12);
    expectRead<qint16>(rows.RXMode, "2.5", 2);
    expectRead<qint16>(rows.RXMode, "32767", 32767);
    expectRead<qint16>(rows.RXType, "11", 11);
    for (const char *text : {"3x", "", "32768", "1e1", "ERR", "-40000"}) {
        expectRead<qint16>(rows.RXMode, text, std::nullopt);
        expectRead<qint16>(rows.RXType, text, std::nullopt);
    }
}

TEST_F(UnitSettingTest, receiverStep_isReadStrictlyAndRoundedHalfUp) {
    expectRead(rows.RXStep, "12.5", std::optional(12500));
    expectRead(rows.RXStep, "8.33", std::optional(8330));
    expectRead(rows.RXStep, "0.0004", std::optional(0));
    expectRead(rows.RXStep, "0.0005", std::optional(1));
    expectRead(rows.RXStep, "25.000", std::optional(25000));
    expectRead(rows.RXStep, "-1", std::optional(-1000));
    expectRead(rows.RXStep, "9999999", std::optional(2147483647));
    for (const char *text : {"12,5", "999999999999999999999999999999999999999999", ""}) {
        expectRead<qint32>(rows.RXStep, text, std::nullopt);
    }
}

TEST_F(UnitSettingTest, attenuator_isOnForOneAlone) {
    expectRead(rows.RXAtten, "1", std::optional(true));
    expectRead(rows.RXAtten, "2", std::optional(false));
    expectRead(rows.RXAtten, "0", std::optional(false));
    expectRead(rows.RXAtten, "-1", std::optional(false));
    expectRead<bool>(rows.RXAtten, "on", std::nullopt);
}

TEST_F(UnitSettingTest, otherNumbers_areReadFromTheBeginOfTheText) {
    expectRead<qint16>(rows.VDRAmp, "-20", -20);
    expectRead<qint16>(rows.VDRAmp, "-20dB", -20);
    expectRead<qint16>(rows.VDRAmp, "x", 0);
    expectRead<qint16>(rows.VDRAmp, "2.5", 2);
    expectRead<qint16>(rows.VDRAmp, "3.5", 4);
    expectRead<qint16>(rows.VDRAmp, "99999", 32767);
    expectRead<qint16>(rows.VDRRBW, " 4", 4);
    expectRead<qint16>(rows.VDRSamples, "9 samples", 9);
    expectRead(rows.VDRDataMode, "2", std::optional(DataModeCode::Average));
    expectRead(rows.VDRMonitorMode, "3", std::optional(MonitorModeCode::Channel));
    expectRead(rows.VDRMonitorMode, "9", std::optional(MonitorModeCode(9)));
}

TEST_F(UnitSettingTest, frequencies_areReadFromTheBeginOfTheText) {
    for (const UnitSetting<Hertz> *row : {&rows.VDRCentre, &rows.VDRMarkerFreq}) {
        expectRead(*row, "145.125", std::optional(Hertz::fromWhole(145125000)));
        expectRead(*row, "0.0000001234", std::optional(Hertz::fromUnits(1234)));
        expectRead(*row, "MHz", std::optional(Hertz()));
        expectRead(*row, "145.5\r\n", std::optional(Hertz::fromWhole(145500000)));
    }
    expectRead(rows.VDRSpan, "10.000000", std::optional(10000000));
    expectRead(rows.VDRSpan, "0.0000025", std::optional(2));
    expectRead(rows.VDRSpan, "3500", std::optional(2147483647));
    expectRead(rows.VDRSpan, "", std::optional(0));
}

TEST_F(UnitSettingTest, letters_areUniqueAndFour) {
    const auto &[a, b, c, d, e, f, g, h, i, j, k, l, m] = rows;
    std::set<std::string> letters;
    for (const SettingLetters &each :
         {a.letters, b.letters, c.letters, d.letters, e.letters, f.letters, g.letters, h.letters,
          i.letters, j.letters, k.letters, l.letters, m.letters, kMedianSamples}) {
        EXPECT_EQ(std::string(each.read).size(), 4U);
        EXPECT_EQ(each.read[0], 'R');
        EXPECT_EQ(each.write[0], 'W');
        EXPECT_TRUE(letters.insert(each.read).second) << each.read;
        EXPECT_TRUE(letters.insert(each.write).second) << each.write;
    }
}

} // namespace
} // namespace veldron
