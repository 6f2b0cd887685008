// SPDX-License-Identifier: MIT
#pragma once

#include "simulator/Faults.h"
#include "simulator/Unit.h"
#include "simulator/UnitLine.h"

#include <QByteArray>
#include <QList>

#include <optional>

namespace veldron {

/// The lines that a person or a test types at the simulator. Each is answered by lines of which the
/// last is "ok", or by one line "error: " and the reason; helpText() lists them. A line acts before
/// it is answered, so whoever waits for "ok" finds the fault armed. Each is noted in the log of the
/// traffic.
class UnitConsole {
public:
    /// All objects must outlive this one.
    UnitConsole(Unit &unit, Faults &faults, UnitLine &line);

    /// What \a line is answered by, without a last line end; nothing for an empty line. \a now is
    /// the time that the line runs on.
    [[nodiscard]] QByteArray execute(const QByteArray &line, double now);
    [[nodiscard]] bool wantsToQuit() const { return m_quit; }
    [[nodiscard]] static QByteArray helpText();

private:
    using Words = QList<QByteArray>;
    [[nodiscard]] QByteArray silence(const Words &words, double now);
    [[nodiscard]] QByteArray plug();
    [[nodiscard]] QByteArray set(const Words &words);
    /// Values as the unit would answer them on the line.
    [[nodiscard]] QByteArray get(const Words &words);
    /// Whatever is no other verb: "on" and "times" as they come, then the name of a fault and its
    /// argument.
    [[nodiscard]] QByteArray arm(Words words);
    [[nodiscard]] QByteArray listArmed() const;

    Unit &m_unit;
    Faults &m_faults;
    UnitLine &m_line;
    bool m_quit = false;
};

} // namespace veldron
