// SPDX-License-Identifier: MIT
#include "tests/program/RecordedFile.h"

#include "tests/program/Printing.h"

#include <gtest/gtest.h>

namespace veldron {

namespace {

RecordedFile::Scan scanOf(const QByteArray &line, qsizetype end, int block) {
    const qsizetype blank = line.indexOf(' ', 5);
    return {line.mid(5, blank - 5), line.mid(blank + 1), end, block};
}

} // namespace

RecordedFile RecordedFile::read(const QByteArray &content) {
    RecordedFile file;
    file.size = content.size();
    bool inBlock = false;
    qsizetype at = 0;
    for (qsizetype end = content.indexOf("\r\n"); end >= 0; end = content.indexOf("\r\n", at)) {
        const QByteArray line = content.mid(at, end - at);
        if (at == 0) {
            file.header = line;
        } else if (line.startsWith("Data ")) {
            EXPECT_FALSE(inBlock) << "a scan inside a block";
            file.scans.append(scanOf(line, end + 2, static_cast<int>(file.blocks.size())));
        } else if (line.startsWith("StartSettings ")) {
            inBlock = true;
            file.blocks.append(line + "\r\n");
        } else {
            EXPECT_TRUE(inBlock) << "neither scan nor settings: " << line.constData();
            file.blocks.last() += line + "\r\n";
            inBlock = line != "EndSettings ";
        }
        at = end + 2;
    }
    file.rest = content.mid(at);
    return file;
}

QTime RecordedFile::timeOf(qsizetype scan) const {
    return QTime::fromString(QString::fromLatin1(scans.at(scan).time), QStringLiteral("HH:mm:ss"));
}

QList<LineEvent> sentFromFirstOf(const RecordedFile &file, const QList<LineEvent> &events) {
    QList<LineEvent> sent;
    for (const LineEvent &event : events) {
        const bool isScan = event.kind == LineEvent::Kind::Scan;
        if (isScan && (!sent.isEmpty() || event.samples == file.scans.first().samples)) {
            sent << event;
        }
    }
    return sent;
}

void expectRecorded(const RecordedFile &file, const QList<LineEvent> &events) {
    ASSERT_FALSE(file.scans.isEmpty());
    const QList<LineEvent> sent = sentFromFirstOf(file, events);
    ASSERT_LE(file.scans.size(), sent.size()) << "scans that were never sent";
    for (qsizetype i = 0; i < file.scans.size(); ++i) {
        EXPECT_EQ(file.scans.at(i).samples, sent.at(i).samples) << "scan " << i;
        ASSERT_TRUE(file.timeOf(i).isValid())
            << "time of scan " << i << ": " << file.scans.at(i).time.constData();
        const int late = sent.at(i).at.time().msecsTo(file.timeOf(i));
        EXPECT_TRUE(late > -1000 && late < 1000) << "time of scan " << i << ": " << late;
    }
}

} // namespace veldron
