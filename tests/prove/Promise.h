// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QString>

#include "tests/prove/LiveProgram.h"

namespace veldron {

/// What is promised of every fault that the program survives: after it everything is as before.
///
/// Made before the fault, kept behind its end.
class Promise {
public:
    /// Two polls of a quarter of a second, and two seconds.
    static constexpr double kBackWithin = 2.5;
    /// Growth of memory that counts as none: what the allocator keeps of one row's work.
    static constexpr qint64 kGrowthKib = 1024;

    /// \a recording is the file that the program records into.
    Promise(LiveProgram &live, QString recording);

    /// After the fault panels show this.
    void changePanels(const QMap<QString, QString> &changed);
    /// The fault takes the recording's file away, or the room in it: the recording is over after
    /// it, and the unit's panels can be used again.
    void expectRecordingStopped() { m_goesOn = false; }
    /// The fault is over. The program polls again, at most \a lost scans that the unit sent are
    /// missing in the recording, no wrong value is left on the panels, and it holds no more of the
    /// machine than before. Prints a row of the matrix.
    void expectKept(const char *name, int lost);

private:
    void expectPanels();

    LiveProgram &m_live;
    QString m_recording;
    QMap<QString, QString> m_panels;
    LiveProgram::Footprint m_before;
    qsizetype m_place;
    bool m_goesOn = true;
};

} // namespace veldron
