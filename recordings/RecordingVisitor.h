// SPDX-License-Identifier: MIT
// What the reader of recordings delivers, and to whom. All views die with the call that gives them.
#pragma once

#include "format/SettingsBlock.h"
#include "format/SettingsKeys.h"
#include "recordings/DateForms.h"

#include <QByteArrayView>
#include <QDate>
#include <QString>
#include <QtGlobal>

#include <optional>
#include <vector>

namespace veldron {

/// Where something begins in the file.
struct RecordedPlace {
    /// Counted from 1. Each CR LF, lone CR and lone LF ends a line, those among levels too: these
    /// are the numbers that playback's own messages have.
    qint64 line = 1;
    /// Bytes in front of it.
    qint64 offset = 0;
};

/// One scan.
struct RecordedScan {
    RecordedPlace place;
    /// Raw levels in ascending frequency, 1 to 325. The level in dB is the byte less 132.
    QByteArrayView levels;
    /// The whole line, with its end if it has one.
    QByteArrayView bytes;
    /// What stands behind the blank, without the line end.
    QByteArrayView timeText;
    /// Second of the day, local time of the machine that recorded.
    qint32 second = 0;
    /// The day; nothing where no date stands above the scan.
    std::optional<QDate> date;
};

/// One line of a settings block.
struct RecordedSetting {
    SettingsKey key = SettingsKey::StartSettings;
    RecordedPlace place;
    /// The whole line, with its end if it has one.
    QByteArrayView bytes;
};

/// Settings lines that stand together: a block from StartSettings to EndSettings as a rule, less
/// where the file is damaged.
struct RecordedBlock {
    RecordedPlace place;
    std::vector<RecordedSetting> lines;
    /// The texts of the values by their keys.
    SettingsBlock values;
    /// What its StartSettings line tells; nothing without one, and where that is no date.
    std::optional<QDate> date;
    /// The forms that its text has and all dates above it have too; none without a date.
    DateForms::Set dateForms = 0;

    [[nodiscard]] bool has(SettingsKey key) const { return values.value(key).has_value(); }
    /// Whether the block is there from its first line to its last one.
    [[nodiscard]] bool isWhole() const {
        return has(SettingsKey::StartSettings) && has(SettingsKey::EndSettings);
    }
};

/// Something that is not as the recorder writes it.
struct RecordingFinding {
    enum class Kind {
        FirstLine,        ///< the file doesn't begin as recordings do
        UnknownLine,      ///< skipped: neither scan nor setting
        BadScan,          ///< skipped: begins as a scan and isn't one
        CutScan,          ///< skipped: the file ends inside its last line
        BadDate,          ///< a StartSettings line without a date that agrees with those before
        DateOrderAssumed, ///< day and month can't be told apart; an order was assumed
        DateOrderRefuted, ///< a later date shows that the assumed order was wrong
    };
    Kind kind;
    RecordedPlace place;
    /// Bytes that were skipped; 0 where nothing was lost.
    qint64 skipped = 0;
    /// In words, without file and line.
    QString what;
};

/// Receives a recording in the order of the file. All views are into the reader's memory and good
/// during the call only; what throws ends the reading.
class RecordingVisitor {
public:
    RecordingVisitor() = default;
    RecordingVisitor(const RecordingVisitor &) = delete;
    RecordingVisitor &operator=(const RecordingVisitor &) = delete;
    virtual ~RecordingVisitor() = default;

    /// All bytes of the file, piece by piece, each ahead of what was found in it.
    virtual void bytes(QByteArrayView /*bytes*/) {}
    /// The file's first line with its end, if it is that of a recording.
    virtual void firstLine(QByteArrayView /*bytes*/) {}
    virtual void scan(const RecordedScan &scan) = 0;
    virtual void block(const RecordedBlock &block) = 0;
    virtual void finding(const RecordingFinding &finding) = 0;
};

} // namespace veldron
