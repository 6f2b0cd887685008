// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QString>

#include "tests/program/ProgramRun.h"

#include <optional>

namespace veldron {

/// The long form of a proof instead of the short one: the environment variable VELDRON_PROVE is
/// "long".
[[nodiscard]] bool provesLong();

/// A program under proof: it polls a simulated unit on COM 3 four times a second, and what it takes
/// of the machine and what it shows can be compared with a moment before.
class LiveProgram {
public:
    /// What the process holds of the machine.
    struct Footprint {
        qint64 residentKib = 0;
        int descriptors = 0;
    };

    /// Starts unit and program. False when the program's window doesn't come up or the unit isn't
    /// found.
    [[nodiscard]] bool open(const QByteArray &settings = {});
    /// The same with one poll a second, as it starts.
    [[nodiscard]] bool openAsItStarts(const QByteArray &settings = {});
    [[nodiscard]] bool startRecording(const QString &file);

    [[nodiscard]] ProgramRun &run() { return m_run; }
    [[nodiscard]] SimulatedUnit &unit() { return m_run.unit(); }

    [[nodiscard]] Footprint footprint() const;
    /// The text of each control of the panels that shows a setting of the unit.
    [[nodiscard]] QMap<QString, QString> panels() const;
    /// Waits until the link counts as up and the unit has sent two scans from now on. Seconds that
    /// this took; nothing when it took more than \a limit seconds.
    [[nodiscard]] std::optional<double> secondsToPolling(double limit);
    /// Scans that the unit has sent whole behind place \a place of its log, but for the last one,
    /// which aren't in the recording \a file.
    [[nodiscard]] int lostSince(qsizetype place, const QString &file);

private:
    ProgramRun m_run;
};

} // namespace veldron
