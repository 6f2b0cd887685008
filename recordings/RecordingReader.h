// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/ByteWindow.h"
#include "recordings/RecordingDates.h"
#include "recordings/RecordingVisitor.h"
#include "recordings/ScanFinder.h"

#include <QByteArray>

namespace veldron {

/// Reads a recording without loss, in one pass and with memory that doesn't grow with the file.
///
/// Unlike playback it isn't held up by levels that look like a blank or a line end: ScanFinder has
/// the way in which it finds the end of a scan. What can't be read is skipped up to the next whole
/// line and told as a finding with its place and length.
class RecordingReader {
public:
    /// \a source and \a visitor outlive the reader.
    RecordingReader(ByteSource &source, RecordingVisitor &visitor,
                    const RecordingDates::Rules &rules = {});

    /// Delivers the whole file; to be called once. UntrappedError(File) where the source can't be
    /// read, behind the calls for what came before.
    void read();
    /// Afterwards: whether it was a recording, by its first line or by a scan.
    [[nodiscard]] bool isRecording() const { return m_hasFirstLine || m_scanCount > 0; }
    [[nodiscard]] qint64 scanCount() const { return m_scanCount; }

private:
    /// A line of the block in hand; its bytes are in m_blockBytes.
    struct BlockLine {
        SettingsKey key{};
        RecordedPlace place;
        qsizetype length = 0;
    };

    /// Passes over a first line that is none of a recording, unless it can be read as something
    /// else.
    void readFirstLine();
    /// One scan, one settings line, or all that is skipped up to the next.
    void readItem();
    void takeScan(const ScanFinder::Fit &fit);
    void takeSetting(SettingsKey key, qsizetype length);
    void takeDate(QByteArrayView text, RecordedPlace place);
    /// Delivers the settings lines in hand, if there are any: at the end of a block, and ahead of
    /// whatever else comes.
    void closeBlock();
    void skipToWholeLine(RecordingFinding::Kind kind);
    /// Place of the first whole line in sight, -1 if there is none.
    [[nodiscard]] qsizetype nextWholeLine() const;
    /// Leaves \a count bytes behind and shows them to the visitor.
    void advance(qsizetype count);
    void report(RecordingFinding::Kind kind, RecordedPlace place, const QString &what,
                qint64 skipped = 0);

    ByteWindow m_window;
    RecordingVisitor &m_visitor;
    ScanFinder m_finder;
    RecordingDates m_dates;
    // The block in hand: its lines one behind the other.
    QByteArray m_blockBytes;
    std::vector<BlockLine> m_blockLines;
    std::optional<QDate> m_blockDate;
    DateForms::Set m_blockDateForms = 0;
    bool m_hasFirstLine = false;
    qint64 m_scanCount = 0;
};

} // namespace veldron
