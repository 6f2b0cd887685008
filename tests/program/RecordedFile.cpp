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

void expectRecorded(const RecordedFile &file, const QList<LineEvent> &events) {
    ASSERT_FALSE(file.scans.isEmpty());
    QList<LineEvent> sent;
    for (const LineEvent &event : events) {
        if (event.kind == LineEvent::Kind::Scan) {
            sent << event;
        }
    }
    qsizetype first = 0;
    while (first < sent.size() && sent.at(first).samples != file.scans.first().samples) {
        ++first;
    }
    ASSERT_LE(first + file.scans.size(), sent.size()) << "scans that were never sent";
    for (qsizetype i = 0; i < file.scans.size(); ++i) {
        EXPECT_EQ(file.scans.at(i).samples, sent.at(first + i).samples) << "scan " << i;
        const int late = sent.at(first + i).at.time().msecsTo(file.timeOf(i));
        EXPECT_TRUE(late > -1000 && late < 1000) << "time of scan " << i << ": " << late;
    }
}

} // namespace veldron
