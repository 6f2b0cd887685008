// SPDX-License-Identifier: MIT
#include "recordings/JoinCommand.h"

#include "recordings/RecordingRun.h"
#include "recordings/RecordingWriter.h"
#include "recordings/ScanFinder.h"

#include <algorithm>
#include <utility>

namespace veldron {

namespace {

/// What goes from file to file.
struct Joined {
    explicit Joined(OutputFile &out) : writer(out) {}

    RecordingWriter writer;
    SettingsInForce settings;
    RecordingDates dates; ///< as a reader of the joined file has them
    TimeForms::Set timeForms = TimeForms::all();
    DateForms::Set dateForms = DateForms::all();
    std::optional<qint64> lastMoment;
};

class Joiner : public TellingVisitor {
public:
    Joiner(const std::string &file, Console &console, Joined &joined)
        : TellingVisitor(file, console), m_file(file), m_console(console), m_joined(joined),
          m_isFurther(joined.writer.hasFirstLine()) {}

    void firstLine(QByteArrayView bytes) override { m_joined.writer.firstLine(bytes); }
    void block(const RecordedBlock &block) override {
        checkDateForm(block);
        if (m_isFurther && !m_front && !m_hasScan) {
            m_front = Front{SettingsInForce(), block.date};
            m_front->settings.take(block);
            return;
        }
        // Another block right behind the first one tells the date by itself.
        settleFront(block.date.has_value() || hasDateOfFront());
        write(block);
    }
    void scan(const RecordedScan &scan) override {
        checkTimeForm(scan);
        RecordingDates without = m_joined.dates;
        settleFront(without.takeScan(scan.second) == scan.date);
        (void)m_joined.dates.takeScan(scan.second);
        warnOfOrder(scan);
        m_hasScan = true;
        m_joined.writer.firstLine({});
        m_joined.writer.scan(scan.bytes);
    }
    void finish() { settleFront(hasDateOfFront()); }

private:
    /// The first block of a further file.
    struct Front {
        SettingsInForce settings;
        std::optional<QDate> date;
    };

    void write(const RecordedBlock &block) {
        m_joined.writer.firstLine({});
        m_joined.settings.take(block);
        for (const RecordedSetting &line : block.lines) {
            noteDate(line.key, line.bytes);
            m_joined.writer.line(line.bytes);
        }
    }
    void noteDate(SettingsKey key, QByteArrayView line) {
        if (key == SettingsKey::StartSettings) {
            (void)m_joined.dates.takeBlock(settingsLineAt(line, true)->value);
        }
    }
    [[nodiscard]] bool hasDateOfFront() const {
        return m_front && m_front->date == m_joined.dates.date();
    }
    /// Writes what the first block changes. Nothing where \a dateStays without it and the settings
    /// do too.
    void settleFront(bool dateStays) {
        const std::optional<Front> front = std::exchange(m_front, std::nullopt);
        if (!front || (dateStays && hasSameSettings(front->settings))) {
            return;
        }
        const auto &inForce = m_joined.settings.lines();
        const std::map<SettingsKey, QByteArray> &lines = front->settings.lines();
        for (const auto &[key, line] : lines) {
            const auto old = inForce.find(key);
            if (isDisplayLine(key) && old != inForce.end() && old->second == line) {
                continue;
            }
            noteDate(key, line);
            m_joined.writer.line(line);
        }
        m_joined.settings.takeLines(lines);
    }
    [[nodiscard]] bool hasSameSettings(const SettingsInForce &front) const {
        auto ours = m_joined.settings.lines();
        auto other = front.lines();
        ours.erase(SettingsKey::StartSettings);
        other.erase(SettingsKey::StartSettings);
        return ours == other;
    }

    // Dates and times of one form only: a reader goes by that.
    void checkTimeForm(const RecordedScan &scan) {
        const auto reading = TimeForms::read(scan.timeText, m_joined.timeForms);
        if (!reading) {
            refuse(scan.place.line, QStringLiteral("times"));
        }
        m_joined.timeForms = reading->forms;
    }
    void checkDateForm(const RecordedBlock &block) {
        const auto text = block.values.value(SettingsKey::StartSettings);
        if (!text || !block.date) {
            return;
        }
        const DateForms::Set forms = DateForms::read(text->toLatin1(), m_joined.dateForms).forms;
        if (forms == 0) {
            refuse(block.place.line, QStringLiteral("dates"));
        }
        m_joined.dateForms = forms;
    }
    [[noreturn]] void refuse(qint64 line, const QString &what) const {
        throw CommandError(
            ExitCode::FileError,
            QStringLiteral("%1:%2: the %3 have another form than above, so these can't be joined")
                .arg(nameForMessages(m_file), QString::number(line), what));
    }
    void warnOfOrder(const RecordedScan &scan) {
        if (!scan.date) {
            return;
        }
        const qint64 moment = momentOf(*scan.date, scan.second);
        if (!m_hasScan && m_joined.lastMoment && moment < *m_joined.lastMoment) {
            m_console.complain(m_file, scan.place.line,
                               QStringLiteral("begins before the end of the recording in front"));
        }
        m_joined.lastMoment = moment;
    }

    std::string m_file;
    Console &m_console;
    Joined &m_joined;
    bool m_isFurther;
    bool m_hasScan = false;
    std::optional<Front> m_front;
};

} // namespace

void JoinCommand::addTo(CommandLine &options) {
    options.option("FILE", m_files, "The recordings in their order").required();
    m_output.addTo(options);
    m_dates.addTo(options);
}

ExitCode JoinCommand::run(Console &console) {
    std::unique_ptr<OutputFile> out = m_output.open("-", m_files);
    Joined joined(*out);
    joined.dates = RecordingDates(m_dates.rules());
    ExitCode worst = ExitCode::Done;
    for (const std::string &file : m_files) {
        Joiner joiner(file, console, joined);
        worst = std::max(worst, readRecording(file, m_dates.rules(), joiner, console));
        joiner.finish();
    }
    out->commit();
    return worst;
}

} // namespace veldron
