// SPDX-License-Identifier: MIT
#include "recordings/ScanFinder.h"

#include <gtest/gtest.h>

#include <QByteArray>

namespace veldron {
namespace {

using Trust = ScanFinder::Trust;

QByteArray scan(const QByteArray &levels, const char *time = "10:00:00") {
    return "Data " + levels + ' ' + time + "\r\n";
}

/// A finder that has seen \a count scans of \a levels.
ScanFinder finderAfter(int count, qsizetype levels) {
    ScanFinder finder;
    const QByteArray bytes = scan(QByteArray(levels, 'a'));
    for (int i = 0; i < count; ++i) {
        const auto fit = finder.find(bytes, true);
        EXPECT_TRUE(fit);
        finder.note(*fit);
    }
    return finder;
}

TEST(ScanFinder, settingsLine_isReadWithKeyValueAndEnd) {
    const QByteArray bytes = "Receiver VK 3900\r\nRBW 1\r\n";
    const auto fit = settingsLineAt(bytes, false);
    ASSERT_TRUE(fit);
    EXPECT_EQ(fit->key, SettingsKey::Receiver);
    EXPECT_EQ(fit->length, 18);
    EXPECT_EQ(fit->value, "VK 3900");
    EXPECT_EQ(settingsLineAt("EndSettings \n", true)->length, 13);
    EXPECT_EQ(settingsLineAt("EndSettings\rRBW", false)->length, 12);
}

TEST(ScanFinder, lineWithoutAnEnd_countsAtTheEndOfTheFileOnly) {
    EXPECT_FALSE(settingsLineAt("RBW 1", false));
    EXPECT_EQ(settingsLineAt("RBW 1", true)->value, "1");
    EXPECT_EQ(settingsLineAt("RBW", true)->value, "");
}

TEST(ScanFinder, otherLines_areNoSettings) {
    for (const char *line : {"RBWX 1\r\n", "rbw 1\r\n", "Other 1\r\n", "\r\n", " RBW 1\r\n"}) {
        EXPECT_FALSE(settingsLineAt(line, true)) << line;
    }
    EXPECT_TRUE(settingsLineAt("Receiver " + QByteArray(500, 'a') + "\r\n", true));
    EXPECT_FALSE(settingsLineAt("Receiver " + QByteArray(504, 'a') + "\r\n", true));
}

TEST(ScanFinder, scan_endsWhereATimeAndAKnownKeyFollow) {
    const QByteArray levels = "ab 10:00:00\r\ncd 99:00:00\r\nef";
    const auto fit = ScanFinder().find(scan(levels) + "RBW 1\r\n", true);
    ASSERT_TRUE(fit);
    EXPECT_EQ(fit->levels, levels.size());
    EXPECT_EQ(fit->timeLength, 8);
    EXPECT_EQ(fit->length, 5 + levels.size() + 11);
    EXPECT_EQ(fit->time.second, 36000);
    EXPECT_TRUE(fit->isFollowed);
}

TEST(ScanFinder, lengthOfARun_isTriedBeforeTheNearestPlace) {
    // Levels that hold a whole scan and the key of the next one.
    QByteArray levels(100, 'b');
    const QByteArray trick = " 10:00:00\r\nData ";
    levels.replace(20, trick.size(), trick);
    const QByteArray bytes = scan(levels) + scan(QByteArray(100, 'c'));
    EXPECT_EQ(finderAfter(3, 100).find(bytes, true)->levels, 100);
    EXPECT_EQ(finderAfter(2, 100).find(bytes, true)->levels, 20);
    EXPECT_FALSE(finderAfter(2, 100).findByNeighbours(bytes, true, Trust::Run));
    EXPECT_EQ(finderAfter(2, 100).findByNeighbours(bytes, true, Trust::Any)->levels, 100);
}

TEST(ScanFinder, lengthThatComesBack_keepsItsRun) {
    ScanFinder finder = finderAfter(3, 100);
    const QByteArray other = scan("x");
    finder.note(*finder.find(other, true));
    EXPECT_EQ(finder.findByNeighbours(scan(QByteArray(100, 'a')), true, Trust::Run)->levels, 100);
    EXPECT_FALSE(finder.findByNeighbours(other, true, Trust::Run));
}

TEST(ScanFinder, scanAheadOfDamage_isFoundByItsNeighbours) {
    const QByteArray bytes = scan(QByteArray(100, 'a')) + "\x01 damage";
    const auto fit = finderAfter(3, 100).find(bytes, true);
    ASSERT_TRUE(fit);
    EXPECT_EQ(fit->levels, 100);
    EXPECT_FALSE(fit->isFollowed);
    EXPECT_FALSE(finderAfter(3, 90).find(bytes, true));
}

TEST(ScanFinder, levels_areOneToTheMost) {
    EXPECT_TRUE(ScanFinder().find(scan("a"), true));
    EXPECT_TRUE(ScanFinder().find(scan(QByteArray(ScanFinder::kMostLevels, 'a')), true));
    EXPECT_FALSE(ScanFinder().find(scan(QByteArray(ScanFinder::kMostLevels + 1, 'a')), true));
    EXPECT_FALSE(ScanFinder().find("Data 10:00:00\r\n", true));
    EXPECT_FALSE(ScanFinder::isScanKey("Data"));
    EXPECT_FALSE(ScanFinder::isScanKey("data a"));
}

TEST(ScanFinder, timesOfAnotherForm_endNoScan) {
    ScanFinder finder;
    finder.note(*finder.find(scan("aa", "22:00:00"), true));
    EXPECT_FALSE(finder.find(scan("aa", "9:00:00 PM"), true));
    EXPECT_TRUE(ScanFinder().find(scan("aa", "9:00:00 PM"), true));
}

TEST(ScanFinder, timeThatMayBeCut_endsNoScan) {
    ScanFinder finder;
    // Half of a day might follow, as long as nothing has shown that hours go up to 23.
    EXPECT_FALSE(finder.find("Data aa 10:00:00", true));
    finder.note(*finder.find(scan("aa", "22:00:00"), true));
    EXPECT_TRUE(finder.find("Data aa 10:00:00", true));
    EXPECT_FALSE(finder.find("Data aa 10:00:0", true));
    EXPECT_FALSE(finder.find("Data aa 10:00:00", false));
}

} // namespace
} // namespace veldron
