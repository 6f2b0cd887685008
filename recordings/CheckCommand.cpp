// SPDX-License-Identifier: MIT
#include "recordings/CheckCommand.h"

#include "common/UntrappedError.h"
#include "recordings/OutputFile.h"
#include "recordings/PlaybackJudge.h"
#include "recordings/RecordingRun.h"

#include <algorithm>
#include <optional>

namespace veldron {

namespace {

/// Writes what the judge of playback and the reader find, each line once: what the judge has told
/// of a line isn't told again.
class Findings : public RecordingVisitor {
public:
    Findings(const std::string &file, const QLocale &locale, OutputFile &out)
        : m_name(nameForMessages(file)), m_out(out),
          m_judge(locale, [this](const Stumble &stumble) {
              m_lastStumble = stumble.line;
              print(stumble.line, QStringLiteral("playback would end: ") + stumble.what);
          }) {}

    void bytes(QByteArrayView bytes) override { m_judge.take(bytes); }
    void scan(const RecordedScan & /*scan*/) override {}
    void block(const RecordedBlock & /*block*/) override {}
    void finding(const RecordingFinding &finding) override {
        // The judge looks at the last line when it knows that the file ends there.
        if (finding.kind == RecordingFinding::Kind::CutScan) {
            m_cut = finding;
        } else {
            printUnlessTold(finding);
        }
    }
    void finish() {
        m_judge.finish();
        if (m_cut) {
            printUnlessTold(*m_cut);
        }
    }
    [[nodiscard]] bool plays() const { return m_judge.plays(); }

private:
    void printUnlessTold(const RecordingFinding &finding) {
        if (m_lastStumble < finding.place.line) {
            print(finding.place.line, finding.what);
        }
    }
    void print(qint64 line, const QString &what) {
        m_out.write(
            QStringLiteral("%1:%2: %3\n").arg(m_name, QString::number(line), what).toLocal8Bit());
    }

    QString m_name;
    OutputFile &m_out;
    qint64 m_lastStumble = 0;
    std::optional<RecordingFinding> m_cut;
    PlaybackJudge m_judge;
};

} // namespace

void CheckCommand::addTo(CommandLine &options) {
    options.option("FILE", m_files, "The recordings, - for standard input").required();
    m_dates.addTo(options);
    m_locale.addTo(options);
}

ExitCode CheckCommand::run(Console &console) {
    ExitCode worst = ExitCode::Done;
    OutputFile out("-", false);
    for (const std::string &file : m_files) {
        Findings findings(file, m_locale.locale(), out);
        try {
            (void)readRecording(file, m_dates.rules(), findings, console);
            findings.finish();
            worst = std::max(worst, findings.plays() ? ExitCode::Done : ExitCode::Partly);
        } catch (const CommandError &error) {
            console.say(error.message());
            worst = std::max(worst, error.code());
        } catch (const UntrappedError &error) {
            console.say(error.message());
            worst = std::max(worst, ExitCode::FileError);
        }
    }
    out.commit();
    return worst;
}

} // namespace veldron
