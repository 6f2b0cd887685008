// SPDX-License-Identifier: MIT
#include "recordings/PlaybackJudge.h"

#include "common/LeadingNumber.h"
#include "common/LevelScan.h"
#include "common/TextFile.h"
#include "common/TimeOfDay.h"
#include "format/FileErrors.h"
#include "format/ScanLine.h"
#include "format/SettingsValue.h"
#include "utilities/Codes.h"

#include <cstring>
#include <limits>
#include <utility>

namespace veldron {

namespace {

constexpr int kChannelsOfABlock = 3;

/// The forms that the times of \a texts have, and the plain form.
TimeForms::Set formsOf(const DateTimeText &texts) {
    TimeForms::Set own = TimeForms::all();
    TimeForms::Set plain = TimeForms::all();
    for (const QTime time : {QTime(9, 4, 7), QTime(13, 45, 38), QTime(0, 0, 0)}) {
        const auto ownReading = TimeForms::read(texts.timeText(time).toLatin1(), own);
        own = ownReading ? ownReading->forms : 0;
        plain = TimeForms::read(time.toString(Qt::ISODate).toLatin1(), plain)->forms;
    }
    return own | plain;
}

qsizetype lineEndIn(QByteArrayView bytes) {
    const qsizetype feed = bytes.indexOf('\n');
    const QByteArrayView before = feed < 0 ? bytes : bytes.first(feed);
    const qsizetype carriage = before.indexOf('\r');
    return carriage >= 0 ? carriage : feed;
}

UntrappedError foreignTime(const QString &text) {
    return {UntrappedError::Kind::BadValue,
            QStringLiteral("\"%1\" is a time of another locale, as others may be further down")
                .arg(text)};
}

UntrappedError spanTooLarge() {
    return {UntrappedError::Kind::Overflow,
            QStringLiteral("the channels' step is too large for a span")};
}

UntrappedError nothingBehindTheScan() {
    return {UntrappedError::Kind::BadValue,
            QStringLiteral("the only scan is the last line, and playback shows none of those")};
}

} // namespace

PlaybackJudge::PlaybackJudge(const QLocale &locale, Report report)
    : PlaybackJudge(DateTimeText(locale), std::move(report)) {}

PlaybackJudge::PlaybackJudge(const DateTimeText &texts, Report report)
    : m_texts(texts), m_forms(formsOf(m_texts)), m_report(std::move(report)) {}

void PlaybackJudge::report(Stumble::Kind kind, qint64 line, const UntrappedError &error) {
    ++m_stumbles;
    m_report({kind, line, error.message()});
}

void PlaybackJudge::take(QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        if (std::exchange(m_afterCarriageReturn, false) && bytes[0] == '\n') {
            bytes = bytes.sliced(1);
            continue;
        }
        const qsizetype end = lineEndIn(bytes);
        takePiece(end < 0 ? bytes : bytes.first(end), end >= 0);
        m_afterCarriageReturn = end >= 0 && bytes[end] == '\r';
        bytes = end < 0 ? QByteArrayView() : bytes.sliced(end + 1);
    }
}

void PlaybackJudge::takePiece(QByteArrayView piece, bool ended) {
    m_lineHasBytes = true;
    // Any byte at all behind the first scan lets playback begin.
    m_firstIsLast = false;
    const bool inOnePiece = ended && m_pending.isEmpty();
    if (!inOnePiece) {
        m_pending.append(
            piece.first(qMin(piece.size(), TextFileReader::kLongestLine - m_pending.size())));
    }
    if (!ended) {
        return;
    }
    const QByteArrayView line = inOnePiece ? piece : QByteArrayView(m_pending);
    takeLine(line.first(qMin(line.size(), TextFileReader::kLongestLine)), true);
    m_pending.clear();
    m_lineHasBytes = false;
    ++m_line;
}

void PlaybackJudge::finish() {
    if (m_lineHasBytes) {
        takeLine(m_pending, false);
    } else {
        m_line = qMax<qint64>(1, m_line - 1); // the last one that there is
    }
    if (!m_start) {
        // What was wrong with the scans that are there has been told.
        if (m_stumbles == 0) {
            report(Stumble::Kind::NoScan, m_line, FileErrors::noScan());
        }
    } else if (m_firstIsLast) {
        report(Stumble::Kind::NoScan, m_line, nothingBehindTheScan());
    }
}

void PlaybackJudge::takeLine(QByteArrayView line, bool ended) {
    if (m_line == 1) {
        return; // passed over, whatever it says
    }
    if (line.startsWith("Data ")) {
        takeScanLine(line.sliced(ScanLine::kKey.size() + 1), ended);
        return;
    }
    if (line == "Data") {
        takeScanLine({}, ended);
        return;
    }
    const qsizetype blank = line.indexOf(' ');
    const QByteArrayView key = blank < 0 ? line : line.first(blank);
    const auto setting = settingsKeyOf(QString::fromLatin1(key));
    if (setting) {
        takeSetting(*setting, blank < 0 ? QString() : QString::fromLatin1(line.sliced(blank + 1)));
    }
}

void PlaybackJudge::takeScanLine(QByteArrayView value, bool ended) {
    const qsizetype blank = value.indexOf(' ');
    const qsizetype count = qMin(blank < 0 ? value.size() : blank, ScanLine::kMostLevels);
    if (blank < 0 || count == 0) {
        const UntrappedError error =
            blank < 0 ? FileErrors::scanWithoutTime() : FileErrors::scanWithoutLevels();
        report(ended ? Stumble::Kind::Line : Stumble::Kind::Cut, m_line,
               ended ? error : FileErrors::cutScan());
        return;
    }
    takeScan(value.sliced(qMin(count + 1, value.size())), ended);
}

std::optional<qint32> PlaybackJudge::secondOf(QByteArrayView timeText) const {
    if (const auto reading = TimeForms::read(timeText, m_forms)) {
        return reading->second;
    }
    // Playback takes a few texts more than the recorder writes.
    const auto time = m_texts.readTime(QString::fromLatin1(timeText));
    return time ? std::optional(QTime(0, 0).secsTo(*time)) : std::nullopt;
}

bool PlaybackJudge::hasDate() {
    if (!m_date) {
        report(Stumble::Kind::Date, m_line, FileErrors::noDate());
        return false;
    }
    if (!m_date->date && !std::exchange(m_date->isReported, true)) {
        report(Stumble::Kind::Date, m_date->line, FileErrors::notADate(m_date->text));
    }
    return m_date->date.has_value();
}

void PlaybackJudge::takeScan(QByteArrayView timeText, bool ended) {
    // Where nothing is shown yet, playback looks at the date first.
    if (!m_start && !hasDate()) {
        return;
    }
    const std::optional<qint32> second = secondOf(timeText);
    if (!second) {
        const QString text = QString::fromLatin1(timeText);
        if (!ended) {
            report(Stumble::Kind::Cut, m_line, FileErrors::cutScan());
        } else if (!TimeForms::read(timeText, TimeForms::all())) {
            report(Stumble::Kind::Line, m_line, FileErrors::notATimeOfScan(text));
        } else if (!std::exchange(m_foreignTimeReported, true)) {
            report(Stumble::Kind::Time, m_line, foreignTime(text));
        }
        return;
    }
    if (!hasDate()) {
        return;
    }
    const qint64 moment = m_date->date->toJulianDay() * kSecondsPerDay + *second;
    if (!m_start) {
        m_start = moment;
        m_firstIsLast = true;
    } else if (moment == *m_start) {
        report(Stumble::Kind::FirstSecond, m_line, FileErrors::noTimePassed());
    }
}

void PlaybackJudge::takeDate(const QString &text) {
    m_date = BlockDate{m_texts.readDate(text), text, m_line};
    m_channelLines = 0;
    m_channelStep = Hertz();
}

void PlaybackJudge::takeSetting(SettingsKey key, const QString &value) {
    try {
        checkValue(key, value);
    } catch (const UntrappedError &error) {
        report(Stumble::Kind::Value, m_line, error);
    }
}

/// Reads the value as its row of the table of settings lines does in playback, where the numbers of
/// the display lines are left alone.
void PlaybackJudge::checkValue(SettingsKey key, const QString &value) {
    switch (key) {
    case SettingsKey::StartSettings:
        takeDate(value);
        break;
    case SettingsKey::Poll:
    case SettingsKey::RBW:
    case SettingsKey::Amp:
    case SettingsKey::DataMode:
    case SettingsKey::Samples:
        (void)SettingsValue::whole<qint16>(value);
        break;
    case SettingsKey::MonitorMode: {
        const auto mode = SettingsValue::whole<qint16>(value);
        // The panel keeps its mode where it has no row for the new one.
        if (mode >= 0 && mode <= static_cast<qint16>(MonitorModeCode::Channel)) {
            m_isChannelMode = mode == static_cast<qint16>(MonitorModeCode::Channel);
        }
        break;
    }
    case SettingsKey::RXStep:
        (void)SettingsValue::whole<qint32>(value);
        break;
    case SettingsKey::Span:
    case SettingsKey::MarkerFrequency:
        (void)SettingsValue::numberOfHertz(value);
        break;
    case SettingsKey::Centre:
        (void)SettingsValue::frequency(value, m_texts.decimalMark());
        break;
    case SettingsKey::Start:
    case SettingsKey::End:
        (void)SettingsValue::frequency(value, m_texts.decimalMark());
        storeChannel();
        break;
    case SettingsKey::Step:
        m_channelStep = SettingsValue::numberOfHertz(value);
        storeChannel();
        break;
    case SettingsKey::EndSettings:
        endBlock();
        break;
    default:
        break;
    }
}

void PlaybackJudge::storeChannel() {
    if (m_channelLines == std::numeric_limits<qint16>::max()) {
        throw FileErrors::tooManyChannelLines();
    }
    ++m_channelLines;
}

/// Outside channel mode the panel works out a span from the step, as a number of 32 bits.
void PlaybackJudge::endBlock() {
    const qint64 span = qint64{m_channelStep.roundedTo32()} * kScanSteps;
    if (m_channelLines == kChannelsOfABlock && !m_isChannelMode &&
        span != static_cast<qint32>(span)) {
        throw spanTooLarge();
    }
}

} // namespace veldron
