// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>

#include "tests/program/SharedClock.h"

#include <chrono>

namespace veldron {

/// The clock of a program under test, set while it runs; a file in which it and the program share
/// their SharedClock. Removes the file at its end, which the programs don't notice.
class ClockFile {
public:
    explicit ClockFile(QString path);
    ClockFile(const ClockFile &) = delete;
    ClockFile &operator=(const ClockFile &) = delete;
    ~ClockFile();

    [[nodiscard]] const QString &path() const { return m_path; }
    /// What the program takes for now.
    [[nodiscard]] QDateTime now() const;
    /// Sets the time of day, and not the steady clock, forward or back.
    void turn(std::chrono::milliseconds by);
    /// Sets the time of day so that it is \a moment now.
    void set(const QDateTime &moment);
    /// Waits are cut to this part of their time from now on; 1 is in full.
    void hurry(int times) { m_clock->haste = times; }

private:
    QString m_path;
    SharedClock *m_clock = nullptr;
};

} // namespace veldron
