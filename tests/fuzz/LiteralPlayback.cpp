// SPDX-License-Identifier: MIT
#include "tests/fuzz/LiteralPlayback.h"

#include "common/TextFile.h"
#include "common/TimeOfDay.h"
#include "format/FileErrors.h"
#include "format/FileLine.h"
#include "format/ScanLine.h"
#include "format/SettingsKeys.h"
#include "format/SettingsValue.h"
#include "tests/fuzz/Demand.h"
#include "tests/fuzz/PlainText.h"

#include <QBuffer>

#include <algorithm>
#include <limits>
#include <memory>
#include <vector>

namespace veldron {

namespace {

constexpr qint16 kChannelMode = 3;
/// What a span of 320 channels is held in.
constexpr qint64 kWidestSpan = std::numeric_limits<qint32>::max();

/// Nothing that ends a line or a scan.
bool isPlainLevel(std::uint8_t level) {
    return level != '\n' && level != '\r' && level != ' ';
}

class Player {
public:
    Player(const QByteArray &file, const DateTimeText &texts)
        : m_texts(texts), m_reader(openBuffer(file)), m_lines(PlainText::linesOf(file)) {}

    LiteralOutcome play() {
        try {
            (void)nextLine();
            while (readToNextScan()) {
                showScan();
            }
        } catch (const UntrappedError &error) {
            fail(m_reader.lineNumber(), error);
        }
        demand(m_outcome.errorLine || m_reader.lineNumber() == lineCount());
        return m_outcome;
    }

private:
    static std::unique_ptr<QIODevice> openBuffer(const QByteArray &file) {
        auto buffer = std::make_unique<QBuffer>();
        buffer->setData(file);
        buffer->open(QIODevice::ReadOnly);
        return buffer;
    }
    [[nodiscard]] qint64 lineCount() const { return static_cast<qint64>(m_lines.size()); }

    void fail(qint64 line, const UntrappedError &error) {
        if (!m_outcome.errorLine) {
            m_outcome.errorLine = line;
            m_outcome.error = error.message();
        }
    }

    QString nextLine() {
        const QString line = m_reader.readLine();
        const PlainText::Line &plain =
            m_lines.at(static_cast<std::size_t>(m_reader.lineNumber()) - 1);
        demand(line == QString::fromLatin1(plain.bytes) && m_reader.lastLineEnded() == plain.ended);
        demand(m_reader.lastLineLength() == plain.bytes.size());
        return line;
    }

    bool readToNextScan() {
        if (m_outcome.errorLine) {
            return false;
        }
        while (!m_reader.atEnd()) {
            const FileLine line = FileLine::of(nextLine());
            if (line.key == ScanLine::kKey) {
                m_scan = readScan(line.value);
                return true;
            }
            if (const auto key = settingsKeyOf(line.key)) {
                readSetting(*key, line.value);
            }
        }
        return false;
    }

    ScanLine readScan(const QString &value) const {
        ScanLine scan = ScanLine::of(value, m_texts);
        const QByteArray bytes = value.toLatin1();
        const qsizetype count = qMin(bytes.indexOf(' '), ScanLine::kMostLevels);
        const LevelScan levels(bytes.begin(), bytes.begin() + count);
        demand(scan.levels == levels && !levels.empty());
        const QByteArray behind = bytes.mid(count + 1);
        demand(scan.timeText.toLatin1() == behind);
        if (const auto second = PlainText::plainTime(behind)) {
            demand(scan.time && QTime(0, 0).secsTo(*scan.time) == *second);
        }
        if (scan.time && std::all_of(levels.begin(), levels.end(), isPlainLevel)) {
            const FileLine written = FileLine::of(ScanLine::lineFor(levels, *scan.time, m_texts));
            const ScanLine again = ScanLine::of(written.value, m_texts);
            demand(again.levels == levels && again.time == scan.time);
        }
        return scan;
    }

    /// Reads the value as playback does, where the display's numbers are left alone.
    void readSetting(SettingsKey key, const QString &value) {
        using Key = SettingsKey;
        switch (key) {
        case Key::StartSettings:
            m_dateText = value;
            m_date = m_texts.readDate(value);
            m_dateLine = m_reader.lineNumber();
            m_channelLines = 0;
            m_step = Hertz();
            break;
        case Key::MonitorMode: {
            const auto mode = SettingsValue::whole<qint16>(value);
            m_mode = mode >= 0 && mode <= kChannelMode ? mode : m_mode;
            break;
        }
        case Key::Poll:
        case Key::RBW:
        case Key::Amp:
        case Key::DataMode:
        case Key::Samples:
            (void)SettingsValue::whole<qint16>(value);
            break;
        case Key::RXStep:
            (void)SettingsValue::whole<qint32>(value);
            break;
        case Key::Span:
        case Key::MarkerFrequency:
            (void)SettingsValue::numberOfHertz(value);
            break;
        case Key::Centre:
        case Key::Start:
        case Key::End:
            (void)SettingsValue::frequency(value, m_texts.decimalMark());
            m_channelLines += key == Key::Centre ? 0 : 1;
            break;
        case Key::Step:
            m_step = SettingsValue::numberOfHertz(value);
            ++m_channelLines;
            break;
        case Key::EndSettings:
            endBlock();
            break;
        default:
            break;
        }
    }

    void endBlock() const {
        const qint64 span = qint64{m_step.roundedTo32()} * kScanSteps;
        const bool fits = span <= kWidestSpan && span >= -kWidestSpan - 1;
        if (m_channelLines == 3 && m_mode != kChannelMode && !fits) {
            throw UntrappedError(UntrappedError::Kind::Overflow, QStringLiteral("span"));
        }
    }

    void showScan() {
        if (!m_outcome.isShown && m_reader.atEnd()) {
            return; // a scan that is the last line isn't shown
        }
        // Of the first scan the date is looked at before the time, of all others behind it.
        const bool dateFirst = !m_outcome.isShown;
        if (!(dateFirst ? hasDate() && hasTime() : hasTime() && hasDate())) {
            return;
        }
        const qint64 moment =
            m_date->toJulianDay() * kSecondsPerDay + QTime(0, 0).secsTo(*m_scan.time);
        if (!m_outcome.isShown) {
            m_start = moment;
            m_outcome.isShown = true;
        } else if (moment == m_start) {
            fail(m_reader.lineNumber(), FileErrors::noTimePassed());
        }
    }
    bool hasTime() {
        if (!m_scan.time) {
            fail(m_reader.lineNumber(), FileErrors::notATimeOfScan(m_scan.timeText));
        }
        return m_scan.time.has_value();
    }
    bool hasDate() {
        if (!m_dateText) {
            fail(m_reader.lineNumber(), FileErrors::noDate());
        } else if (!m_date) {
            fail(m_dateLine, FileErrors::notADate(*m_dateText));
        }
        return m_date.has_value();
    }

    const DateTimeText &m_texts;
    TextFileReader m_reader;
    std::vector<PlainText::Line> m_lines;
    LiteralOutcome m_outcome;
    std::optional<QString> m_dateText;
    std::optional<QDate> m_date;
    qint64 m_dateLine = 0;
    ScanLine m_scan;
    qint64 m_start = 0;
    qint16 m_mode = 1;
    Hertz m_step;
    int m_channelLines = 0;
};

} // namespace

LiteralOutcome playLiterally(const QByteArray &file, const DateTimeText &texts) {
    return Player(file, texts).play();
}

} // namespace veldron
