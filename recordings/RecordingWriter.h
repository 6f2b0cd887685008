// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/OutputFile.h"
#include "recordings/PlaybackJudge.h"
#include "recordings/SettingsInForce.h"

#include <QByteArrayView>

namespace veldron {

/// Writes a recording out of lines of others. Lines are written as they are; one without an end,
/// as the last of a file may be, gets one when another follows.
class RecordingWriter {
public:
    /// \a out outlives the writer.
    explicit RecordingWriter(OutputFile &out) : m_out(out) {}

    /// The first line of every recording: \a line, or the usual one where that is empty. Only the
    /// first call writes.
    void firstLine(QByteArrayView line);
    /// One line or several, with their ends; the last one may lack it.
    void line(QByteArrayView bytes);
    /// A line of a scan, which the output file counts.
    void scan(QByteArrayView bytes);
    /// Shows all that is written from now on to \a judge too, which outlives the writer.
    void setJudge(PlaybackJudge *judge) { m_judge = judge; }

    [[nodiscard]] bool hasFirstLine() const { return m_hasFirstLine; }

private:
    void put(QByteArrayView bytes);

    OutputFile &m_out;
    PlaybackJudge *m_judge = nullptr;
    bool m_hasFirstLine = false;
    bool m_lineIsOpen = false;
};

} // namespace veldron
