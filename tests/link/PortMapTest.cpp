// SPDX-License-Identifier: MIT
#include "link/PortMap.h"
#include "tests/link/LinkFixture.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace veldron {
namespace {

QStringList noDevices() {
    return {};
}

TEST(PortMap, systemDevices_orderedByFamilyThenNaturally) {
    const PortMap map = PortMap::ofDevices({"/dev/ttyACM0", "/dev/rfcomm0", "/dev/ttyUSB10",
                                            "/dev/ttyS10", "/dev/ttyUSB2", "/dev/ttyS2",
                                            "/dev/ttyAMA0", "/dev/ttyACM1", "/dev/ttyS0"});
    QStringList ordered;
    for (qint16 port = 1; port <= 9; ++port) {
        ordered.append(map.device(port));
    }
    EXPECT_EQ(ordered, QStringList({"/dev/ttyS0", "/dev/ttyS2", "/dev/ttyS10", "/dev/ttyUSB2",
                                    "/dev/ttyUSB10", "/dev/ttyACM0", "/dev/ttyACM1", "/dev/rfcomm0",
                                    "/dev/ttyAMA0"}));
}

TEST(PortMap, systemDevices_takeTheNumbersFromOne) {
    const PortMap map = PortMap::ofDevices({"/dev/ttyUSB0", "/dev/ttyS0"});
    EXPECT_EQ(map.device(1), "/dev/ttyS0");
    EXPECT_EQ(map.device(2), "/dev/ttyUSB0");
    EXPECT_EQ(map.device(3), "");
}

TEST(PortMap, moreThanSixteenDevices_theRestIsLeftOut) {
    QStringList devices;
    for (int number = 0; number < 20; ++number) {
        devices.append(QStringLiteral("/dev/ttyS%1").arg(number));
    }
    const PortMap map = PortMap::ofDevices(devices);
    EXPECT_EQ(map.device(16), "/dev/ttyS15");
    EXPECT_EQ(map.device(17), "");
}

TEST(PortMap, numbersOutsideTheRange_haveNoDevice) {
    const PortMap map = PortMap::ofDevices({"/dev/ttyS0"});
    for (const qint16 port : {qint16{0}, qint16{-1}, qint16{17}, qint16{32767}}) {
        EXPECT_EQ(map.device(port), "");
    }
}

TEST(PortMap, noDevices_nothingExists) {
    EXPECT_EQ(PortMap::ofDevices({}).device(1), "");
}

TEST(PortMap, noPortsFolder_theSystemsListCounts) {
    const QTemporaryDir folder;
    const PortMap map =
        PortMap::choose({folder.path()}, [] { return QStringList{"/dev/ttyUSB4"}; });
    EXPECT_EQ(map.device(1), "/dev/ttyUSB4");
}

TEST(PortMap, portsFolder_decidesAloneAndTheSystemIsNotAsked) {
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir("ports"));
    bool asked = false;
    const PortMap map = PortMap::choose({folder.path()}, [&asked] {
        asked = true;
        return QStringList{"/dev/ttyS0"};
    });
    EXPECT_EQ(map.device(1), "");
    EXPECT_FALSE(asked);
}

TEST(PortMap, plainFileCalledPorts_isNoFolder) {
    const QTemporaryDir folder;
    QFile file(folder.filePath("ports"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const PortMap map = PortMap::choose({folder.path()}, [] { return QStringList{"/dev/ttyS0"}; });
    EXPECT_EQ(map.device(1), "/dev/ttyS0");
}

TEST(PortMap, entryOfThePortsFolder_isFoundWhenItAppears) {
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir("ports"));
    const PortMap map = PortMap::choose({folder.path()}, noDevices);
    EXPECT_EQ(map.device(3), "");
    ASSERT_TRUE(QFile::link("/dev/null", folder.filePath("ports/COM3")));
    EXPECT_EQ(map.device(3), folder.filePath("ports/COM3"));
    EXPECT_EQ(map.device(4), "");
}

TEST(PortMap, portsFolderOfTheUser_countsIfThereIsNoneBesideTheProgram) {
    const QTemporaryDir program;
    const QTemporaryDir user;
    ASSERT_TRUE(QDir(user.path()).mkdir("ports"));
    ASSERT_TRUE(QFile::link("/dev/null", user.filePath("ports/COM7")));
    const PortMap map = PortMap::choose({program.path(), user.path()}, noDevices);
    EXPECT_EQ(map.device(7), user.filePath("ports/COM7"));
}

TEST(PortMap, portsFoldersInBothPlaces_theOneBesideTheProgramDecidesAlone) {
    const QTemporaryDir program;
    const QTemporaryDir user;
    ASSERT_TRUE(QDir(program.path()).mkdir("ports"));
    ASSERT_TRUE(QDir(user.path()).mkdir("ports"));
    ASSERT_TRUE(QFile::link("/dev/null", user.filePath("ports/COM7")));
    const PortMap map = PortMap::choose({program.path(), user.path()}, noDevices);
    EXPECT_EQ(map.device(7), "");
}

TEST(PortMap, entryThatLeadsNowhere_stillHasItsPath) {
    const QTemporaryDir folder;
    ASSERT_TRUE(QFile::link(folder.filePath("gone"), folder.filePath("COM16")));
    EXPECT_EQ(PortMap::ofFolder(folder.path()).device(16), folder.filePath("COM16"));
}

} // namespace
} // namespace veldron
