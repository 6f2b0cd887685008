// SPDX-License-Identifier: MIT
#pragma once

#include "common/DateTimeText.h"
#include "common/Hertz.h"
#include "common/UntrappedError.h"
#include "format/SettingsKeys.h"
#include "recordings/TimeForms.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QDate>
#include <QLocale>
#include <QString>
#include <QtGlobal>

#include <functional>
#include <optional>

namespace veldron {

/// A line at which playback would end.
struct Stumble {
    enum class Kind {
        Line,        ///< a scan line that falls apart: a level of 10, 13 or 32, or too many levels
        Time,        ///< a time of another locale
        Date,        ///< no date, or none of this locale
        FirstSecond, ///< a scan with the time of the first one
        Value,       ///< a setting that can't be read
        Cut,         ///< the file ends inside the line
        NoScan,      ///< playback shows nothing: there is no scan, or no line behind the only one
    };
    Kind kind;
    /// Line of the file, counted from 1, as in playback's own message.
    qint64 line;
    /// In the words of playback's own message.
    QString what;
};

/// Reads a recording as playback does, literally, and tells where playback would end.
///
/// Playback ends at the first such line. This goes on as if the line weren't there, so that all of
/// them are found in one pass. Texts are read under one locale, that of the program that is to
/// play.
///
/// Order of calls: take() for all bytes of the file, in pieces of any size, then finish(), then
/// plays(). Reports come from inside take() and finish(). A date that is none is reported at its
/// own line, once, when a scan below it wants it.
class PlaybackJudge {
public:
    using Report = std::function<void(const Stumble &)>;

    PlaybackJudge(const QLocale &locale, Report report);
    PlaybackJudge(const DateTimeText &texts, Report report);

    /// Takes the next bytes of the file.
    void take(QByteArrayView bytes);
    /// The file has ended.
    void finish();
    /// Afterwards: whether playback shows the file from its first scan to its end.
    [[nodiscard]] bool plays() const { return m_stumbles == 0; }
    [[nodiscard]] const DateTimeText &texts() const { return m_texts; }

private:
    /// The last StartSettings line, whose date counts for the scans below it.
    struct BlockDate {
        std::optional<QDate> date;
        QString text;
        qint64 line;
        bool isReported = false;
    };

    /// A part of a line without its end, which has come if \a ended.
    void takePiece(QByteArrayView piece, bool ended);
    void takeLine(QByteArrayView line, bool ended);
    /// What stands behind the key, taken apart as playback does, at the first blank.
    void takeScanLine(QByteArrayView value, bool ended);
    /// A scan that has levels: its date and its time.
    void takeScan(QByteArrayView timeText, bool ended);
    void takeSetting(SettingsKey key, const QString &value);
    /// Throws what the value's row of the table of settings lines would.
    void checkValue(SettingsKey key, const QString &value);
    void storeChannel();
    void endBlock();
    void takeDate(const QString &text);
    /// The second of the day; nothing where playback would read no time.
    [[nodiscard]] std::optional<qint32> secondOf(QByteArrayView timeText) const;
    /// Whether a date counts here; reports where none does.
    [[nodiscard]] bool hasDate();
    void report(Stumble::Kind kind, qint64 line, const UntrappedError &error);

    DateTimeText m_texts;
    TimeForms::Set m_forms; ///< those of the locale, and the plain one
    Report m_report;

    // The line in hand.
    QByteArray m_pending; ///< its beginning, where that came in an earlier piece
    qint64 m_line = 1;
    bool m_lineHasBytes = false;
    bool m_afterCarriageReturn = false;

    // What playback would know.
    std::optional<BlockDate> m_date;
    std::optional<qint64> m_start; ///< the moment of the first scan that is shown
    bool m_firstIsLast = false;    ///< nothing has followed the first scan yet
    bool m_foreignTimeReported = false;
    bool m_isChannelMode = false;
    Hertz m_channelStep;
    int m_channelLines = 0;

    qint64 m_stumbles = 0;
};

} // namespace veldron
