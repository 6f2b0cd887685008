// SPDX-License-Identifier: MIT
// SIGKILL while a recording runs and while settings are saved, and a disk that is full.
#include "tests/prove/LiveProgram.h"

#include <QDir>
#include <QThread>

#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/Printing.h"
#include "tests/program/RecordedFile.h"

#include <gtest/gtest.h>

#include <random>

namespace veldron {

using namespace std::chrono_literals;

namespace {

const QString kFile = QStringLiteral("kills.rec");
constexpr unsigned kSeed = 20260102;

int times(int inLongForm, int inShortForm) {
    return provesLong() ? inLongForm : inShortForm;
}

TEST(Kills, atRandomMomentsOfARecording_nothingIsLostButTheScanInHand) {
    std::minstd_rand random(kSeed); // NOLINT(cert-msc51-cpp): the same moments at each run
    const int count = times(50, 3);
    for (int i = 0; i < count; ++i) {
        LiveProgram live;
        ASSERT_TRUE(live.open());
        ASSERT_TRUE(live.startRecording(kFile));
        const qsizetype place = live.unit().now();
        QThread::msleep(500 + random() % 1500);
        live.run().sendKill();
        ASSERT_TRUE(live.run().ends());
        const RecordedFile file = RecordedFile::read(live.run().content(kFile));
        EXPECT_FALSE(file.scans.isEmpty()) << i;
        EXPECT_EQ(live.lostSince(place, kFile), 0) << i;
        // Half a line at most stands at the end of the file.
        EXPECT_LE(file.rest.size(), 345) << i;
    }
    std::printf("kills in a recording: %d\n", count);
}

/// The settings file as the saves of one run may leave it: what stood there, or a whole new one.
bool isWholeSettingsFile(const QByteArray &content) {
    return content.startsWith("VELDRONv1 Settings\r\n") && content.endsWith("EndSettings \r\n");
}

TEST(Kills, whileSettingsAreSaved_theFileIsTheOldOrTheNewOneWhole) {
    std::minstd_rand random(kSeed); // NOLINT(cert-msc51-cpp): the same moments at each run
    const int count = times(20, 2);
    int replaced = 0;
    for (int i = 0; i < count; ++i) {
        LiveProgram live;
        ASSERT_TRUE(live.open());
        const QByteArray old = live.run().content(QStringLiteral("VELDRON.set"));
        // The exit saves; the kill comes somewhere in it.
        live.run().sendTerminate();
        QThread::usleep(random() % 30000);
        live.run().sendKill();
        ASSERT_TRUE(live.run().ends());
        const QByteArray now = live.run().content(QStringLiteral("VELDRON.set"));
        EXPECT_TRUE(now == old || isWholeSettingsFile(now)) << i << ": " << now.constData();
        replaced += now == old ? 0 : 1;
    }
    std::printf("kills in a save: %d, the new file stood after %d\n", count, replaced);
}

TEST(Kills, onAFullDisk_theRecordingHoldsWhatFittedAndTheSettingsStayWhole) {
    std::minstd_rand random(kSeed); // NOLINT(cert-msc51-cpp): the same limits at each run
    const int count = times(20, 2);
    for (int i = 0; i < count; ++i) {
        LiveProgram live;
        const qint64 limit = 3000 + static_cast<qint64>(random() % 4000);
        live.run().limitFiles(limit);
        ASSERT_TRUE(live.open());
        ASSERT_TRUE(live.startRecording(kFile));
        const qsizetype place = live.unit().now();
        // The recorder stops by itself; the scan that didn't fit is the one that is lost.
        ASSERT_TRUE(live.run().awaitStatus(QStringLiteral("VELDRON connected on COM 3"), 30s)) << i;
        const RecordedFile file = RecordedFile::read(live.run().content(kFile));
        EXPECT_LE(file.size, limit) << i;
        EXPECT_TRUE(file.rest.isEmpty()) << i;
        EXPECT_GE(file.size, limit - 700) << i << ": room was left";
        EXPECT_GT(live.unit().scansSince(place), 0) << i;
        live.run().sendTerminate();
        ASSERT_TRUE(live.run().ends()) << i;
        EXPECT_TRUE(isWholeSettingsFile(live.run().content(QStringLiteral("VELDRON.set")))) << i;
    }
    std::printf("full disks: %d\n", count);
}

} // namespace

} // namespace veldron
