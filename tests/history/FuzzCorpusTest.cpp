// SPDX-License-Identifier: MIT
// The fuzzers' corpus once more, with the ordinary build: each file ends in a load or in an error
// that a user would be told, and leaves the readers fit for the next.
#include "tests/fuzz/FuzzEntry.h"
#include "tests/fuzz/LineEntry.h"
#include "tests/fuzz/RecordingEntry.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

namespace veldron {
namespace {

int replay(const char *folderName, void (*entry)(const std::uint8_t *, std::size_t)) {
    const QDir folder(QLatin1String(VELDRON_FUZZ_CORPUS) + QLatin1Char('/') +
                      QLatin1String(folderName));
    int files = 0;
    for (const QString &name : folder.entryList(QDir::Files, QDir::Name)) {
        SCOPED_TRACE(name.toStdString());
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        EXPECT_NO_THROW(entry(reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                              static_cast<std::size_t>(bytes.size())));
        ++files;
    }
    return files;
}

TEST(FuzzCorpus, settingsFiles_loadOrFailCleanly) {
    EXPECT_GE(replay("settings", loadSettingsBytes), 8);
}

TEST(FuzzCorpus, historyFiles_playOrFailCleanly) {
    EXPECT_GE(replay("history", playHistoryBytes), 8);
}

/// As below, a reader that breaks a promise aborts the process.
TEST(FuzzCorpus, historyFiles_areReadWithoutLoss) {
    EXPECT_GE(replay("history", readRecordingBytes), 8);
}

/// A reader that breaks a promise aborts the process, and so fails this test.
TEST(FuzzCorpus, plainLines_addUpToTheirFile) {
    EXPECT_GE(replay("lines", readLinesOf), 9);
}

} // namespace
} // namespace veldron
