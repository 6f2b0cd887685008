// SPDX-License-Identifier: MIT
#pragma once

#include "common/DateTimeText.h"
#include "recordings/PlaybackJudge.h"
#include "recordings/RecordingVisitor.h"
#include "recordings/RecordingWriter.h"

#include <QString>

#include <functional>
#include <optional>

namespace veldron {

/// Writes a recording that playback shows to its end, as near to the one that is read as that
/// allows:
///
/// - levels of 10, 13 and 32 become the next one above, which is none of them;
/// - scans with the time of the first one, scans with more levels than playback reads, and scans
///   above the first date are left out;
/// - the unit's lines of a block in which a failure value stands are left out, as is each value
///   that can't be read; times, dates and decimal marks of another locale are written anew;
/// - what can't be read at all is left out.
class RecordingRepair : public RecordingVisitor {
public:
    /// Told for each line that isn't written as it was.
    using Report = std::function<void(qint64 line, const QString &what)>;

    /// \a texts are those of the program that is to play. \a out outlives the repair.
    RecordingRepair(OutputFile &out, const DateTimeText &texts, Report report);

    void firstLine(QByteArrayView bytes) override;
    void scan(const RecordedScan &scan) override;
    void block(const RecordedBlock &block) override;
    void finding(const RecordingFinding &finding) override;
    /// Behind the last call of the reader.
    void finish();
    /// Afterwards: whether playback shows what was written.
    [[nodiscard]] bool plays() const { return m_judge.plays(); }

private:
    /// In words; nothing for a scan that is written.
    [[nodiscard]] std::optional<QString> whyLeftOut(const RecordedScan &scan) const;
    void writeScan(const RecordedScan &scan);
    void writeSetting(const RecordedSetting &line, const std::optional<QDate> &date);
    /// The line with its date as playback reads it.
    [[nodiscard]] QByteArray mendedDate(const RecordedSetting &line, const QDate &date) const;
    /// The line with the decimal mark of playback's locale; empty where that doesn't help.
    [[nodiscard]] QByteArray mendedMark(const RecordedSetting &line) const;
    [[nodiscard]] bool isReadable(const RecordedSetting &line) const;

    DateTimeText m_texts;
    Report m_report;
    PlaybackJudge m_judge;
    RecordingWriter m_writer;
    std::optional<QDate> m_date; ///< the one that playback has for the next scan
    std::optional<qint64> m_start;
    qint64 m_scans = 0;
    /// Nothing has been written behind the first scan.
    bool m_firstIsLast = false;
    qint64 m_lastLine = 1;
};

} // namespace veldron
