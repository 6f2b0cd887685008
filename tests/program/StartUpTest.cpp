// SPDX-License-Identifier: MIT
// Start-up: splash, port search and signals before the window is shown, and the folder that is used
// for files and ports.
#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/ProgramRun.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QStandardPaths>

#include <csignal>
#include <cstring>

namespace veldron {

using namespace std::chrono_literals;

namespace {

/// Where \a picture stands on \a screen, pixel for pixel.
std::optional<QPoint> placeOf(const QImage &picture, const QImage &screen) {
    const std::size_t line = static_cast<std::size_t>(picture.width()) * sizeof(QRgb);
    const auto isAt = [&](int x, int y, int row) {
        return std::memcmp(screen.constScanLine(y + row) + static_cast<qsizetype>(x) * 4,
                           picture.constScanLine(row), line) == 0;
    };
    for (int y = 0; y + picture.height() <= screen.height(); ++y) {
        for (int x = 0; x + picture.width() <= screen.width(); ++x) {
            int row = isAt(x, y, picture.height() / 2) ? 0 : picture.height() + 1;
            while (row < picture.height() && isAt(x, y, row)) {
                ++row;
            }
            if (row == picture.height()) {
                return QPoint(x, y);
            }
        }
    }
    return std::nullopt;
}

class StartUp : public testing::Test {
protected:
    static constexpr qsizetype kSilentPorts = 5;

    /// A search that lasts: ports where nothing answers, a second each. Returns when the first of
    /// them is being asked.
    void launchIntoALongSearch() {
        ASSERT_TRUE(run.plugUnit(1));
        run.unit().tell("silence forever");
        for (qsizetype port = 2; port <= kSilentPorts; ++port) {
            ASSERT_TRUE(QFile::link(run.path("ports/COM1"), run.path("ports/COM%1").arg(port)));
        }
        run.launch();
        ASSERT_TRUE(eventually(20s, [this] { return portsAsked() > 0; }));
    }
    qsizetype portsAsked() { return run.unit().countSince(0, "RIVE"); }

    void expectOrderlyEnd() {
        ASSERT_TRUE(run.ends());
        EXPECT_EQ(run.exitCode(), 0);
        EXPECT_FALSE(run.hasCrashed());
        EXPECT_EQ(run.errorOutput(), QByteArray());
    }

    ProgramRun run;
};

TEST_F(StartUp, splash_isOnTheScreenWhileThePortsAreSearched) {
    const QImage picture = QImage(QStringLiteral(VELDRON_SPLASH))
                               .convertToFormat(QImage::Format_RGB32)
                               .scaled(536, 243, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    launchIntoALongSearch();
    const std::optional<QPoint> place = placeOf(picture, Desk::screenshot());
    ASSERT_TRUE(place);
    ASSERT_LT(portsAsked(), kSilentPorts);
    // Clicks and keys during the search are harmless.
    Desk::click(*place + picture.rect().center());
    Desk::focus("VELDRON");
    Desk::key("space");
    ASSERT_TRUE(run.awaitWindow());
    EXPECT_EQ(run.statusText(), "No serial port selected");
    EXPECT_EQ(Desk::windows(), QStringList{"VELDRON"});
    EXPECT_FALSE(placeOf(picture, Desk::screenshot()));
    run.sendTerminate();
    expectOrderlyEnd();
}

TEST_F(StartUp, terminateSignalDuringTheSearch_endsInOrderAfterIt) {
    launchIntoALongSearch();
    run.sendTerminate();
    expectOrderlyEnd();
    EXPECT_EQ(portsAsked(), kSilentPorts);
    EXPECT_TRUE(run.content(kDefaultFile).endsWith("EndSettings \r\n"));
    EXPECT_EQ(Desk::windows(), QStringList());
}

TEST_F(StartUp, terminateSignalWhileSettingsAreLoaded_endsInOrderAfterThem) {
    run.write(kDefaultFile, "VELDRONv1 Settings\r\nMonitorMode 1\r\nCentre 145500000\r\n"
                            "Receiver VK3900\r\nRXMode WFM\r\nRXStep 100000\r\n");
    ASSERT_TRUE(run.plugUnit());
    run.launch();
    ASSERT_TRUE(eventually(20s, [this] { return run.unit().countSince(0, "WUOM1") > 0; }));
    run.sendTerminate();
    expectOrderlyEnd();
    EXPECT_EQ(run.unit().countSince(0, "WUST100"), 1);
    EXPECT_TRUE(run.content(kDefaultFile).contains("\r\nCentre 145500000\r\n"));
}

TEST_F(StartUp, interruptAndHangUp_saveAndEnd) {
    for (const int number : {SIGINT, SIGHUP}) {
        ASSERT_TRUE(run.open());
        run.sendSignal(number);
        expectOrderlyEnd();
        EXPECT_TRUE(run.content(kDefaultFile).endsWith("EndSettings \r\n"));
        ASSERT_TRUE(QFile::remove(run.path(kDefaultFile)));
    }
}

TEST_F(StartUp, folderThatMayNotBeWritten_stillHoldsThePorts) {
    ASSERT_TRUE(run.plugUnit(5));
    run.lockFolder();
    ASSERT_TRUE(run.open());
    EXPECT_EQ(run.statusText(), "VELDRON connected on COM 5");
    run.sendTerminate();
    expectOrderlyEnd();
    EXPECT_FALSE(run.exists(kDefaultFile));
    QFile settings(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                   "/VELDRON/" + kDefaultFile);
    ASSERT_TRUE(settings.open(QIODevice::ReadOnly));
    EXPECT_TRUE(settings.readAll().contains("\r\nCentre 100000000\r\n"));
}

TEST_F(StartUp, endWithAFullDisk_keepsTheSettingsOfTheLastRun) {
    const QByteArray settings = "VELDRONv1 Settings\r\nPalette 5\r\nEndSettings \r\n";
    run.write(kDefaultFile, settings);
    run.limitFiles(100);
    ASSERT_TRUE(run.open());
    run.sendTerminate();
    expectOrderlyEnd();
    EXPECT_EQ(run.content(kDefaultFile), settings);
}

} // namespace

} // namespace veldron
