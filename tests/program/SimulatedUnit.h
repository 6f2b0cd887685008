// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QProcess>
#include <QString>

namespace veldron {

using Commands = QList<QByteArray>;
/// What the program asks for when it reads everything back, in data mode Normal or Max: outside
/// Channel mode and in it.
inline const Commands kReadBack = {"RURX", "RUST", "RUAT", "RUMD", "RSGN",
                                   "RSDM", "RSBW", "RUOM", "RSSP", "RSCF"};
inline const Commands kReadBackChannels = {"RURX", "RUST", "RUAT", "RUMD", "RSGN",
                                           "RSDM", "RSBW", "RUOM", "RUCS", "RICD"};

/// One line of the simulator's log of exchanges.
struct LineEvent {
    enum class Kind { Command, Reply, Scan, Note };
    QDateTime at;
    Kind kind = Kind::Note;
    QByteArray text;    ///< of commands and replies without the line end
    QByteArray samples; ///< of scans
};

/// The simulator as a process of its own, at an entry of a folder of ports.
class SimulatedUnit {
public:
    SimulatedUnit() = default;
    SimulatedUnit(const SimulatedUnit &) = delete;
    SimulatedUnit &operator=(const SimulatedUnit &) = delete;
    ~SimulatedUnit();

    /// Starts \a program with its line at \a port and its log at \a log. True once it is ready.
    [[nodiscard]] bool start(const QString &program, const QString &port, const QString &log,
                             const QStringList &options = {});
    /// A variable of the environment that the simulator will be started in.
    void setVariable(const QString &name, const QString &value);
    /// Hands the simulator a line; what it answered before its "ok". Fails the test on an error.
    QByteArray tell(const QByteArray &line);
    /// One of the unit's settings, in the line's own form.
    [[nodiscard]] QByteArray setting(const QByteArray &name);
    void stop();

    /// Everything logged so far.
    [[nodiscard]] const QList<LineEvent> &events();
    /// Place in the log: what comes later is behind it.
    [[nodiscard]] qsizetype now();
    /// All commands behind a place in the log.
    [[nodiscard]] Commands commandsSince(qsizetype place);
    /// How often a command was heard behind a place.
    [[nodiscard]] qsizetype countSince(qsizetype place, const QByteArray &command);
    /// The latest whole scan; empty if there is none behind \a place.
    [[nodiscard]] QByteArray lastScan(qsizetype place = 0);
    /// Number of whole scans behind a place.
    [[nodiscard]] qsizetype scansSince(qsizetype place);

private:
    void takeLogLine(const QByteArray &line);

    QProcess m_process;
    QString m_log;
    qint64 m_read = 0;
    QList<LineEvent> m_events;
};

} // namespace veldron
