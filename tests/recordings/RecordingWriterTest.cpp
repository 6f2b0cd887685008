// SPDX-License-Identifier: MIT
#include "recordings/RecordingWriter.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace veldron {
namespace {

class RecordingWriterTest : public testing::Test {
protected:
    QByteArray written() {
        m_out.commit();
        QFile file(m_folder.filePath("out"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }
    QTemporaryDir m_folder;
    OutputFile m_out{m_folder.filePath("out").toStdString(), false};
    RecordingWriter m_writer{m_out};
};

TEST_F(RecordingWriterTest, firstLine_isWrittenOnce) {
    EXPECT_FALSE(m_writer.hasFirstLine());
    m_writer.firstLine("VELDRONv1 History file\n");
    m_writer.firstLine("another\n");
    EXPECT_TRUE(m_writer.hasFirstLine());
    EXPECT_EQ(written(), "VELDRONv1 History file\n");
}

TEST_F(RecordingWriterTest, linesWithoutAnEnd_getOneWhenAnotherFollows) {
    m_writer.firstLine({});
    m_writer.line("RBW 1\r");
    m_writer.line("Amp 1");
    m_writer.scan("Data a 10:00:00");
    EXPECT_EQ(m_out.scanCount(), 1);
    EXPECT_EQ(written(), "VELDRONv1 History file\r\nRBW 1\rAmp 1\r\nData a 10:00:00");
}

TEST_F(RecordingWriterTest, judge_seesAllThatIsWritten) {
    QStringList found;
    PlaybackJudge judge(QLocale(QLocale::English, QLocale::UnitedKingdom),
                        [&](const Stumble &stumble) { found += QString::number(stumble.line); });
    m_writer.setJudge(&judge);
    m_writer.firstLine({});
    m_writer.line("StartSettings 21/03/2005\r\nRBW 99999");
    m_writer.line("EndSettings\r\n");
    judge.finish();
    // The setting, and that no scan follows.
    EXPECT_EQ(found.value(0), "3");
    EXPECT_FALSE(judge.plays());
}

} // namespace
} // namespace veldron
