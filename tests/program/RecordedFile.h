// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QTime>

#include "tests/program/SimulatedUnit.h"

namespace veldron {

/// A history file, parsed by a reader of the tests' own.
struct RecordedFile {
    struct Scan {
        QByteArray samples;
        QByteArray time;
        qsizetype end = 0; ///< bytes of the file up to and with this line
        int block = 0;     ///< how many settings blocks stand above it
    };
    QByteArray header;
    QList<QByteArray> blocks; ///< with all their line ends
    QList<Scan> scans;
    /// Bytes behind the last whole line.
    QByteArray rest;
    qsizetype size = 0;

    [[nodiscard]] static RecordedFile read(const QByteArray &content);
    [[nodiscard]] QTime timeOf(qsizetype scan) const;
};

/// The scans that the unit says it sent, from the first one of \a file on.
[[nodiscard]] QList<LineEvent> sentFromFirstOf(const RecordedFile &file,
                                               const QList<LineEvent> &events);

/// Compares a recording with the scans that the unit says it sent: one line for each, none missing
/// between the first and the last, each with the second it came in. Fails the test where they
/// differ.
void expectRecorded(const RecordedFile &file, const QList<LineEvent> &events);

} // namespace veldron
