// SPDX-License-Identifier: MIT
#include "link/DeviceCommands.h"
#include "tests/link/LinkFixture.h"

#include <set>
#include <string>

namespace veldron {
namespace {

struct WriteCase {
    const char *readLetters; ///< names the row
    DeviceValue value;
    const char *sent;
    const char *report;
};

const std::vector<WriteCase> &writeCases() {
    static const std::vector<WriteCase> cases{
        {"RUMD", qint16{3}, "WUMD3", "WUMD3"},
        {"RUMD", qint16{-32768}, "WUMD-32768", "WUMD-32768"},
        {"RURX", qint16{7}, "WURX7", "RURX7"},
        {"RUST", qint32{12500}, "WUST12.5", "WUST12.5"},
        {"RUST", qint32{8330}, "WUST8.33", "WUST8.33"},
        {"RUST", qint32{1}, "WUST0.001", "WUST0.001"},
        {"RUST", qint32{100000000}, "WUST100000", "WUST100000"},
        {"RUST", qint32{2147483647}, "WUST2147484", "WUST2147484"},
        {"RUST", qint32{-1}, "WUST-0.001", "WUST-0.001"},
        {"RUAT", true, "WUAT1", "WUAT1"},
        {"RUAT", false, "WUAT2", "WUAT2"},
        {"RSGN", qint16{-30}, "WSGN-30", "WSGN-30"},
        {"RSBW", qint16{4}, "WSBW4", "WSBW4"},
        {"RSDM", qint16{2}, "WSDM2", "WSDM2"},
        {"RSAV", qint16{16}, "WSAV16", "WSAV16"},
        {"RSME", qint16{9}, "WSME9", "WSME9"},
        {"RUOM", qint16{1}, "WUOM1", "WUOM1"},
        {"RSCF", Hertz::fromWhole(145125000), "WSCF145.125", "WSCF145"},
        {"RSCF", Hertz::fromWhole(-1), "WSCF-0.000001", "WSCF0"},
        {"RSCF", Hertz::fromWhole(999999), "WSCF0.999999", "WSCF0"},
        {"RSCF", Hertz::fromWhole(-1999999), "WSCF-1.999999", "WSCF-1"},
        {"RSCF", Hertz::fromUnits(35000000001234), "WSCF3500.0000001234", "WSCF3500"},
        {"RSSP", qint32{10000000}, "WSSP10", "WSSP10"},
        {"RSSP", qint32{2500000}, "WSSP2.5", "WSSP2"},
        {"RSSP", qint32{0}, "WSSP0", "WSSP0"},
    };
    return cases;
}

TEST(DeviceCommands, write_sendsAndReportsTheExactText) {
    for (const WriteCase &each : writeCases()) {
        const DeviceCommand &command = deviceCommand(each.readLetters);
        EXPECT_EQ(writeText(command, each.value), QString::fromLatin1(each.sent));
        EXPECT_EQ(reportText(command, each.value), QString::fromLatin1(each.report));
    }
}

TEST(DeviceCommands, writeCases_coverTheWholeTable) {
    std::set<std::string> covered;
    for (const WriteCase &each : writeCases()) {
        covered.insert(each.readLetters);
    }
    for (const DeviceCommand &command : deviceCommands()) {
        EXPECT_TRUE(covered.contains(command.readLetters)) << command.readLetters;
    }
}

struct ReadCase {
    const char *readLetters;
    const char *reply;
    DeviceValue value;
};

const std::vector<ReadCase> &readCases() {
    static const std::vector<ReadCase> cases{
        {"RUMD", "3", qint16{3}},
        {"RUMD", " 12 ", qint16{12}},
        {"RUMD", "2.5", qint16{2}},
        {"RUMD", "3x", qint16{-1}},
        {"RUMD", "", qint16{-1}},
        {"RUMD", "32767", qint16{32767}},
        {"RUMD", "32768", qint16{-1}},
        {"RUMD", "1e1", qint16{-1}},
        {"RURX", "11", qint16{11}},
        {"RURX", "ERR", qint16{-1}},
        {"RURX", "-40000", qint16{-1}},
        {"RUST", "12.5", qint32{12500}},
        {"RUST", "8.33", qint32{8330}},
        {"RUST", "0.0004", qint32{0}},
        {"RUST", "0.0005", qint32{1}},
        {"RUST", "25.000", qint32{25000}},
        {"RUST", "-1", qint32{-1000}},
        {"RUST", "9999999", qint32{2147483647}},
        {"RUST", "12,5", qint32{-1}},
        {"RUST", "999999999999999999999999999999999999999999", qint32{-1}},
        {"RUAT", "1", true},
        {"RUAT", "2", false},
        {"RUAT", "0", false},
        {"RUAT", "-1", false},
        {"RUAT", "on", false},
        {"RSGN", "-20", qint16{-20}},
        {"RSGN", "-20dB", qint16{-20}},
        {"RSGN", "x", qint16{0}},
        {"RSGN", "2.5", qint16{2}},
        {"RSGN", "3.5", qint16{4}},
        {"RSGN", "99999", qint16{32767}},
        {"RSBW", " 4", qint16{4}},
        {"RSDM", "2", qint16{2}},
        {"RSAV", "16", qint16{16}},
        {"RSME", "9 samples", qint16{9}},
        {"RUOM", "3", qint16{3}},
        {"RSCF", "145.125", Hertz::fromWhole(145125000)},
        {"RSCF", "0.0000001234", Hertz::fromUnits(1234)},
        {"RSCF", "MHz", Hertz()},
        {"RSSP", "10.000000", qint32{10000000}},
        {"RSSP", "0.0000025", qint32{2}},
        {"RSSP", "3500", qint32{2147483647}},
        {"RSSP", "", qint32{0}},
    };
    return cases;
}

TEST(DeviceCommands, reply_readsAsItsRowSays) {
    for (const ReadCase &each : readCases()) {
        EXPECT_EQ(parseReply(deviceCommand(each.readLetters), QString::fromLatin1(each.reply)),
                  each.value)
            << each.readLetters << each.reply;
    }
}

TEST(DeviceCommands, readCases_coverTheWholeTable) {
    std::set<std::string> covered;
    for (const ReadCase &each : readCases()) {
        covered.insert(each.readLetters);
    }
    for (const DeviceCommand &command : deviceCommands()) {
        EXPECT_TRUE(covered.contains(command.readLetters)) << command.readLetters;
    }
}

TEST(DeviceCommands, table_lettersAreUniqueAndPaired) {
    std::set<std::string> letters;
    for (const DeviceCommand &command : deviceCommands()) {
        const std::string write = command.writeLetters;
        const std::string read = command.readLetters;
        EXPECT_EQ(write.size(), 4U);
        EXPECT_EQ("W" + read.substr(1), write);
        EXPECT_TRUE(letters.insert(read).second) << read;
    }
}

TEST(DeviceCommands, emptyCache_holdsZeroOfEachType) {
    const DeviceCache cache = emptyDeviceCache();
    for (const DeviceCommand &command : deviceCommands()) {
        const DeviceValue &value = cache.at(static_cast<std::size_t>(command.slot));
        EXPECT_EQ(value.index(), command.failure.index()) << command.readLetters;
        EXPECT_TRUE(value == DeviceValue(qint16{0}) || value == DeviceValue(qint32{0}) ||
                    value == DeviceValue(false) || value == DeviceValue(Hertz()));
    }
}

} // namespace
} // namespace veldron
