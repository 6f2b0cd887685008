// SPDX-License-Identifier: MIT
#include "tests/program/SimulatedUnit.h"

#include <QElapsedTimer>
#include <QFile>

#include "tests/program/VirtualDesktop.h"

#include <gtest/gtest.h>

namespace veldron {

namespace {

constexpr int kLimit = 10000;

/// The bytes of a text in the log's quotes, without the line end at their own end.
QByteArray unquoted(const QByteArray &quoted) {
    QByteArray bytes;
    for (qsizetype i = 1; i + 1 < quoted.size(); ++i) {
        if (quoted.at(i) != '\\') {
            bytes += quoted.at(i);
            continue;
        }
        ++i;
        const char kind = quoted.at(i);
        if (kind == 'x') {
            bytes += QByteArray::fromHex(quoted.mid(i + 1, 2));
            i += 2;
        } else {
            bytes += kind == 'r' ? '\r' : (kind == 'n' ? '\n' : kind);
        }
    }
    return bytes.endsWith("\r\n") ? bytes.chopped(2) : bytes;
}

} // namespace

SimulatedUnit::~SimulatedUnit() {
    stop();
}

bool SimulatedUnit::start(const QString &program, const QString &port, const QString &log,
                          const QStringList &options) {
    m_log = log;
    VirtualDesktop::tieToThisProcess(m_process);
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(program, QStringList{QStringLiteral("--port"), port, QStringLiteral("--log"),
                                         log, QStringLiteral("--log-scans")} +
                                 options);
    while (!m_process.canReadLine() && m_process.waitForReadyRead(kLimit)) {
    }
    return m_process.readLine().startsWith("ready ");
}

void SimulatedUnit::setVariable(const QString &name, const QString &value) {
    QProcessEnvironment environment = m_process.processEnvironment();
    if (environment.isEmpty()) {
        environment = QProcessEnvironment::systemEnvironment();
    }
    environment.insert(name, value);
    m_process.setProcessEnvironment(environment);
}

QByteArray SimulatedUnit::tell(const QByteArray &line) {
    m_process.write(line + "\n");
    QByteArray answer;
    QElapsedTimer since;
    since.start();
    while (!since.hasExpired(kLimit)) {
        if (!m_process.canReadLine() && !m_process.waitForReadyRead(kLimit)) {
            break;
        }
        while (m_process.canReadLine()) {
            const QByteArray text = m_process.readLine();
            if (text == "ok\n") {
                return answer;
            }
            if (text.startsWith("error")) {
                ADD_FAILURE() << line.constData() << ": " << text.constData();
                return answer;
            }
            answer += text;
        }
    }
    ADD_FAILURE() << "The simulator did not answer " << line.constData();
    return answer;
}

QByteArray SimulatedUnit::setting(const QByteArray &name) {
    return tell("get " + name).trimmed().mid(name.size() + 1);
}

void SimulatedUnit::stop() {
    if (m_process.state() == QProcess::NotRunning) {
        return;
    }
    m_process.terminate();
    if (!m_process.waitForFinished(kLimit)) {
        m_process.kill();
        m_process.waitForFinished(kLimit);
    }
}

const QList<LineEvent> &SimulatedUnit::events() {
    QFile file(m_log);
    if (file.open(QIODevice::ReadOnly) && file.seek(m_read)) {
        while (!file.atEnd()) {
            const QByteArray line = file.readLine();
            if (!line.endsWith('\n')) {
                break; // still being written
            }
            m_read += line.size();
            takeLogLine(line.chopped(1));
        }
    }
    return m_events;
}

/// A log line, such as "2024-03-01T12:00:00.250 > "RIFD\r\n"" or "... = scan 321 bytes, 40 to 98,
/// ended: 2a2b".
void SimulatedUnit::takeLogLine(const QByteArray &line) {
    const qsizetype blank = line.indexOf(' ');
    LineEvent event;
    event.at = QDateTime::fromString(QString::fromLatin1(line.left(blank)), Qt::ISODateWithMs);
    const char kind = line.at(blank + 1);
    event.text = line.mid(blank + 3);
    if (kind == '>' || kind == '<') {
        event.kind = kind == '>' ? LineEvent::Kind::Command : LineEvent::Kind::Reply;
        event.text = unquoted(event.text);
    } else if (kind == '=' && event.text.startsWith("scan ")) {
        event.kind = LineEvent::Kind::Scan;
        const qsizetype colon = event.text.indexOf(": ");
        event.samples = colon < 0 ? QByteArray() : QByteArray::fromHex(event.text.mid(colon + 2));
    }
    m_events.append(event);
}

qsizetype SimulatedUnit::now() {
    return events().size();
}

QList<QByteArray> SimulatedUnit::commandsSince(qsizetype place) {
    QList<QByteArray> commands;
    const QList<LineEvent> &all = events();
    for (qsizetype i = place; i < all.size(); ++i) {
        if (all.at(i).kind == LineEvent::Kind::Command) {
            commands.append(all.at(i).text);
        }
    }
    return commands;
}

qsizetype SimulatedUnit::countSince(qsizetype place, const QByteArray &command) {
    return commandsSince(place).count(command);
}

QByteArray SimulatedUnit::lastScan(qsizetype place) {
    const QList<LineEvent> &all = events();
    for (qsizetype i = all.size() - 1; i >= place; --i) {
        if (all.at(i).kind == LineEvent::Kind::Scan) {
            return all.at(i).samples;
        }
    }
    return {};
}

qsizetype SimulatedUnit::scansSince(qsizetype place) {
    const QList<LineEvent> &all = events();
    return std::count_if(all.begin() + place, all.end(), [](const LineEvent &event) {
        return event.kind == LineEvent::Kind::Scan;
    });
}

} // namespace veldron
