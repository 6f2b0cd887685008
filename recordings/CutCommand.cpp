// SPDX-License-Identifier: MIT
#include "recordings/CutCommand.h"

#include "recordings/RecordingRun.h"
#include "recordings/RecordingWriter.h"
#include "recordings/ScanFinder.h"

namespace veldron {

namespace {

/// Blocks that no scan has followed yet are kept up to here; beyond it they are written at once.
constexpr qsizetype kMostPending = 1 << 20;

/// The StartSettings line \a old with \a date, in one of \a forms.
QByteArray startLineOf(QByteArrayView old, const QDate &date, DateForms::Set forms) {
    const auto fit = settingsLineAt(old, true);
    const qsizetype valueAt = fit->value.data() - old.data();
    return old.first(valueAt).toByteArray() + DateForms::write(date, forms) +
           old.sliced(valueAt + fit->value.size()).toByteArray();
}

/// Passes on what lies in the window. A block belongs to the scan behind it.
class Cutter : public TellingVisitor {
public:
    Cutter(const std::string &file, Console &console, TimeWindow &window, OutputFile &out)
        : TellingVisitor(file, console), m_window(window), m_writer(out) {}

    void firstLine(QByteArrayView bytes) override { m_firstLine = bytes.toByteArray(); }
    void block(const RecordedBlock &block) override {
        if (m_pending.isEmpty()) {
            m_atLastScan = m_latest;
        }
        m_latest.take(block);
        m_pendingDate = m_pendingDate || block.date;
        m_dateForms = block.date ? block.dateForms : m_dateForms;
        for (const RecordedSetting &line : block.lines) {
            m_pending.append(line.bytes);
        }
        if (m_pending.size() > kMostPending) {
            settle(m_lastWasIn);
        }
    }
    void scan(const RecordedScan &scan) override {
        const bool isIn = m_window.has(scan);
        if (isIn && m_leftOut) {
            writeFront(scan);
            m_leftOut = false;
        }
        settle(isIn);
        if (isIn) {
            m_writer.scan(scan.bytes);
        }
        m_lastWasIn = isIn;
        m_leftOut = m_leftOut || !isIn;
    }
    /// What stands behind the last scan goes with it.
    void finish() { settle(m_lastWasIn); }

private:
    /// Writes or drops the blocks in hand.
    void settle(bool isIn) {
        if (isIn) {
            m_writer.firstLine(m_firstLine);
            if (!m_pending.isEmpty()) {
                m_writer.line(m_pending);
            }
        } else {
            m_leftOut = m_leftOut || !m_pending.isEmpty();
        }
        m_pending.clear();
        m_pendingDate = false;
    }
    /// The settings in front of the blocks in hand, with the date of \a scan if those tell none.
    void writeFront(const RecordedScan &scan) {
        m_writer.firstLine(m_firstLine);
        const SettingsInForce &settings = m_pending.isEmpty() ? m_latest : m_atLastScan;
        for (const auto &[key, line] : settings.lines()) {
            const bool isDate = key == SettingsKey::StartSettings && scan.date && !m_pendingDate;
            m_writer.line(isDate ? startLineOf(line, *scan.date, m_dateForms) : line);
        }
    }

    TimeWindow &m_window;
    RecordingWriter m_writer;
    QByteArray m_firstLine;
    SettingsInForce m_latest;
    SettingsInForce m_atLastScan; ///< those above the blocks in hand
    QByteArray m_pending;         ///< blocks that no scan has followed yet
    bool m_pendingDate = false;   ///< one of them has a date
    DateForms::Set m_dateForms = 0;
    bool m_lastWasIn = false;
    bool m_leftOut = false; ///< since the last line that was written
};

} // namespace

void CutCommand::addTo(CommandLine &options) {
    options.option("FILE", m_file, "The recording, - for standard input").required();
    m_window.addTo(options);
    m_output.addTo(options);
    m_dates.addTo(options);
}

ExitCode CutCommand::run(Console &console) {
    m_window.parse();
    const std::unique_ptr<OutputFile> out = m_output.open("-", m_file);
    Cutter cutter(m_file, console, m_window, *out);
    const ExitCode code = readRecording(m_file, m_dates.rules(), cutter, console);
    cutter.finish();
    if (out->scanCount() == 0) {
        throw CommandError(ExitCode::Partly,
                           nameForMessages(m_file) + QStringLiteral(": no scan lies in this time"));
    }
    out->commit();
    return code;
}

} // namespace veldron
