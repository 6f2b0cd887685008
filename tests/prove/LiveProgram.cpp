// SPDX-License-Identifier: MIT
#include "tests/prove/LiveProgram.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QSet>

#include "tests/program/Desk.h"
#include "tests/program/Eventually.h"
#include "tests/program/RecordedFile.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace veldron {

using namespace std::chrono_literals;

bool provesLong() {
    return qgetenv("VELDRON_PROVE") == "long";
}

bool LiveProgram::open(const QByteArray &settings) {
    return openAsItStarts(settings) && m_run.pollFourTimesASecond();
}

bool LiveProgram::openAsItStarts(const QByteArray &settings) {
    m_run.write(QStringLiteral("VELDRON.set"), "VELDRONv1 Settings\r\n" + settings);
    return m_run.plugUnit() && m_run.open() && m_run.awaitStatus(kConnected);
}

bool LiveProgram::startRecording(const QString &file) {
    m_run.choose(QStringLiteral("File"), QStringLiteral("Record"));
    const bool named = m_run.answerFileDialog(QStringLiteral("Record to file"), m_run.path(file));
    Desk::focus(QStringLiteral("VELDRON"));
    return named && eventually(5s, [this] {
               return m_run.statusText().startsWith(QLatin1String("Recording"));
           });
}

LiveProgram::Footprint LiveProgram::footprint() const {
    const QString process = QStringLiteral("/proc/%1/").arg(m_run.processId());
    QFile statm(process + QStringLiteral("statm"));
    EXPECT_TRUE(statm.open(QIODevice::ReadOnly));
    const qint64 pages = statm.readAll().split(' ').value(1).toLongLong();
    const QDir descriptors(process + QStringLiteral("fd"));
    const auto links =
        descriptors.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    return {pages * ::sysconf(_SC_PAGESIZE) / 1024, static_cast<int>(links.size())};
}

QMap<QString, QString> LiveProgram::panels() const {
    return m_run.shown({QStringLiteral("Receiver"), QStringLiteral("RX Mode"),
                        QStringLiteral("RX Step"), QStringLiteral("RX Atten"),
                        QStringLiteral("RX Frequency"), QStringLiteral("Amp"),
                        QStringLiteral("RBW"), QStringLiteral("Data mode"),
                        QStringLiteral("Monitor mode"), QStringLiteral("Span"),
                        QStringLiteral("Centre"), QStringLiteral("Start"), QStringLiteral("End")});
}

std::optional<double> LiveProgram::secondsToPolling(double limit) {
    const qsizetype place = unit().now();
    QElapsedTimer since;
    since.start();
    const bool polls = eventually(std::chrono::milliseconds(static_cast<int>(limit * 1000.0)),
                                  [&] { return unit().scansSince(place) >= 2; });
    return polls ? std::optional<double>(static_cast<double>(since.elapsed()) / 1000.0)
                 : std::nullopt;
}

int LiveProgram::lostSince(qsizetype place, const QString &file) {
    QSet<QByteArray> recorded;
    for (const RecordedFile::Scan &scan : RecordedFile::read(m_run.content(file)).scans) {
        recorded.insert(scan.samples);
    }
    QList<QByteArray> sent;
    const QList<LineEvent> &events = unit().events();
    for (qsizetype i = place; i < events.size(); ++i) {
        if (events.at(i).kind == LineEvent::Kind::Scan) {
            sent.append(events.at(i).samples);
        }
    }
    int lost = 0;
    for (qsizetype i = 0; i + 1 < sent.size(); ++i) {
        lost += recorded.contains(sent.at(i)) ? 0 : 1;
    }
    return lost;
}

} // namespace veldron
