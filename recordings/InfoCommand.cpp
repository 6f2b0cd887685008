// SPDX-License-Identifier: MIT
#include "recordings/InfoCommand.h"

#include "recordings/OutputFile.h"
#include "recordings/RecordingRun.h"

#include <CLI/CLI.hpp>

#include <QDateTime>

namespace veldron {

namespace {

class Summary : public TellingVisitor {
public:
    using TellingVisitor::TellingVisitor;

    void bytes(QByteArrayView bytes) override { m_size += bytes.size(); }
    void block(const RecordedBlock & /*block*/) override { ++m_blocks; }
    void scan(const RecordedScan &scan) override {
        const QString text = textOf(scan);
        if (++m_scans == 1) {
            m_first = text;
        }
        m_last = text;
    }
    [[nodiscard]] QString text() const {
        return QStringLiteral("from    %1\nto      %2\nscans   %3\nblocks  %4\nbytes   %5\n")
            .arg(m_first, m_last)
            .arg(m_scans)
            .arg(m_blocks)
            .arg(m_size);
    }

private:
    static QString textOf(const RecordedScan &scan) {
        const QString time = QTime(0, 0).addSecs(scan.second).toString(Qt::ISODate);
        return scan.date ? scan.date->toString(Qt::ISODate) + QLatin1Char(' ') + time : time;
    }

    QString m_first = QStringLiteral("-");
    QString m_last = QStringLiteral("-");
    qint64 m_scans = 0;
    qint64 m_blocks = 0;
    qint64 m_size = 0;
};

} // namespace

void InfoCommand::addTo(CLI::App &options) {
    options.add_option("FILE", m_file, "The recording, - for standard input")->required();
    m_dates.addTo(options);
}

ExitCode InfoCommand::run(Console &console) {
    Summary summary(m_file, console);
    const ExitCode code = readRecording(m_file, m_dates.rules(), summary, console);
    OutputFile out("-", false);
    out.write(summary.text().toLocal8Bit());
    out.commit();
    return code;
}

} // namespace veldron
