// SPDX-License-Identifier: MIT
// The fuzzers' corpus once more, with the ordinary build: each file is read as its fuzzers read it,
// and leaves the readers fit for the next. A reader that breaks a promise ends the process, and so
// fails the test.
#include "tests/fuzz/FuzzEntry.h"
#include "tests/fuzz/HistoryTextEntry.h"
#include "tests/fuzz/LineEntry.h"
#include "tests/fuzz/LinkEntry.h"
#include "tests/fuzz/RecordingEntry.h"
#include "tests/fuzz/SettingsTextEntry.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <array>
#include <ostream>

namespace veldron {
namespace {

/// A fuzzer, the folder that it begins with, and what it runs.
struct Fuzzer {
    const char *name;
    const char *corpus;
    void (*entry)(const std::uint8_t *bytes, std::size_t size);
};

void PrintTo(const Fuzzer &fuzzer, std::ostream *out) {
    *out << fuzzer.name;
}

/// The one that plays recordings has two ways of it.
constexpr std::array kFuzzers{Fuzzer{"lines", "lines", readLinesOf},
                              Fuzzer{"times", "lines", readTimesOf},
                              Fuzzer{"link", "link", talkToUnit},
                              Fuzzer{"settings_text", "settings", readSettingsText},
                              Fuzzer{"settings", "settings", loadSettingsBytes},
                              Fuzzer{"history_text", "history", readHistoryText},
                              Fuzzer{"history", "history", playHistoryBytes},
                              Fuzzer{"history", "history", playHistoryToItsEnd},
                              Fuzzer{"history_reader", "history", readRecordingBytes},
                              Fuzzer{"history_repair", "history", repairRecordingBytes}};

QDir corpus() {
    return QDir(QStringLiteral(VELDRON_FUZZERS "/corpus"));
}

QStringList named(const char *Fuzzer::*member) {
    QStringList names;
    for (const Fuzzer &fuzzer : kFuzzers) {
        names.append(QLatin1String(fuzzer.*member));
    }
    names.sort();
    names.removeDuplicates();
    return names;
}

QByteArray contentOf(const QString &path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

class FuzzCorpus : public testing::TestWithParam<Fuzzer> {};

TEST_P(FuzzCorpus, eachFile_keepsThePromisesOfTheReaders) {
    const QDir folder(corpus().filePath(QLatin1String(GetParam().corpus)));
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    EXPECT_GE(names.size(), 8);
    for (const QString &name : names) {
        SCOPED_TRACE(name.toStdString());
        const QByteArray bytes = contentOf(folder.filePath(name));
        EXPECT_NO_THROW(GetParam().entry(reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                                         static_cast<std::size_t>(bytes.size())));
    }
}

INSTANTIATE_TEST_SUITE_P(Fuzzers, FuzzCorpus, testing::ValuesIn(kFuzzers));

TEST(FuzzCorpusFolders, each_isReplayed) {
    EXPECT_EQ(corpus().entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name),
              named(&Fuzzer::corpus));
    EXPECT_EQ(corpus().entryList(QDir::Files), QStringList());
}

TEST(FuzzCorpusFolders, eachFuzzer_isReplayedAndRunByTheScript) {
    QStringList built;
    const QString list = contentOf(QStringLiteral(VELDRON_FUZZERS "/CMakeLists.txt"));
    const QRegularExpression call(QStringLiteral("^veldron_fuzzer\\((\\w+)"),
                                  QRegularExpression::MultilineOption);
    for (const QRegularExpressionMatch &match : call.globalMatch(list)) {
        built.append(match.captured(1));
    }
    built.sort();
    EXPECT_EQ(built, named(&Fuzzer::name));
    const QByteArray script = contentOf(QStringLiteral(VELDRON_FUZZERS "/../../scripts/fuzz"));
    for (const Fuzzer &fuzzer : kFuzzers) {
        const QByteArray row = QByteArray("\n") + fuzzer.name + ' ' + fuzzer.corpus + ' ';
        EXPECT_TRUE(script.contains(row)) << fuzzer.name;
    }
}

} // namespace
} // namespace veldron
