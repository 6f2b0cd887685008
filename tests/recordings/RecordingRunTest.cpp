// SPDX-License-Identifier: MIT
#include "recordings/RecordingRun.h"

#include "common/UntrappedError.h"
#include "tests/recordings/Recordings.h"
#include "tests/recordings/TestConsole.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace veldron {
namespace {

/// Counts scans, and tells the rest.
class Counter : public TellingVisitor {
public:
    using TellingVisitor::TellingVisitor;
    void scan(const RecordedScan & /*scan*/) override { ++scans; }
    void bytes(QByteArrayView piece) override { size += piece.size(); }
    void firstLine(QByteArrayView line) override { first = line.toByteArray(); }
    int scans = 0;
    qint64 size = 0;
    QByteArray first;
};

class RecordingRunTest : public testing::Test {
protected:
    ExitCode read(const QByteArray &bytes, const RecordingDates::Rules &rules = {}) {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        return readRecording(path().toStdString(), rules, m_counter, m_console);
    }
    [[nodiscard]] QString path() const { return m_folder.filePath("a.rec"); }
    [[nodiscard]] static RecordingText begun() {
        RecordingText text;
        return text.block(QDate(2005, 3, 21)).scans(QTime(9, 0), 3);
    }
    QTemporaryDir m_folder;
    TestConsole m_console;
    Counter m_counter{"a.rec", m_console};
};

TEST_F(RecordingRunTest, wholeRecording_isDone) {
    const QByteArray bytes = begun().bytes;
    EXPECT_EQ(read(bytes), ExitCode::Done);
    EXPECT_EQ(m_counter.scans, 3);
    EXPECT_EQ(m_counter.size, bytes.size());
    EXPECT_EQ(m_counter.first, "VELDRONv1 History file\r\n");
    EXPECT_EQ(m_console.said(), "");
}

TEST_F(RecordingRunTest, skippedBytes_areToldAndMakeItPartly) {
    EXPECT_EQ(read(begun().line("Nonsense").scans(QTime(9, 1), 1).bytes), ExitCode::Partly);
    EXPECT_EQ(m_counter.scans, 4);
    EXPECT_EQ(m_console.said(), "a.rec:15: neither a scan nor a setting (10 bytes at offset " +
                                    QByteArray::number(begun().bytes.size()) + " skipped)\n");
}

TEST_F(RecordingRunTest, dates_makeItPartlyWhereOneIsWrong) {
    RecordingText assumed;
    assumed.block(QDate(2005, 2, 3)).scans(QTime(9, 0), 2);
    // Day and month are a guess, and nothing says that it is wrong.
    EXPECT_EQ(read(assumed.bytes), ExitCode::Done);
    EXPECT_TRUE(m_console.said().contains("can't be told apart"));
    const QByteArray refuting = RecordingText().block(QDate(2005, 2, 13)).bytes.mid(24);
    EXPECT_EQ(read(assumed.bytes + refuting, {std::nullopt, DateOrder::MonthDayYear}),
              ExitCode::Partly);
    EXPECT_EQ(read(begun().line("StartSettings no date").bytes), ExitCode::Partly);
}

TEST_F(RecordingRunTest, otherFile_isNotARecordingAndMissingOneAnError) {
    try {
        (void)read("something else\r\n");
        FAIL() << "no error";
    } catch (const CommandError &error) {
        EXPECT_EQ(error.code(), ExitCode::NotARecording);
        EXPECT_EQ(error.message(), path() + ": this is not a recording");
    }
    EXPECT_THROW((void)readRecording("/no/such/file", {}, m_counter, m_console), UntrappedError);
}

} // namespace
} // namespace veldron
