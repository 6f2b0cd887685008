// SPDX-License-Identifier: MIT
#include "recordings/InfoCommand.h"

#include "recordings/OutputFile.h"
#include "recordings/RecordingRun.h"
#include "recordings/RecordingSummary.h"
#include "recordings/SummaryTexts.h"

namespace veldron {

void InfoCommand::addTo(CommandLine &options) {
    options.option("FILE", m_file, "The recording, - for standard input").required();
    options.flag("--json", m_json, "For scripts: one JSON object");
    m_dates.addTo(options);
    m_locale.addTo(options);
}

ExitCode InfoCommand::run(Console &console) {
    RecordingSummary summary{DateTimeText(m_locale.locale())};
    const ExitCode code = readRecording(m_file, m_dates.rules(), summary, console);
    summary.finish();
    for (const RecordingFinding &finding : summary.findings()) {
        console.complain(m_file, finding.place.line, finding.what);
    }
    const QString name = nameForMessages(m_file);
    OutputFile out("-", false);
    out.write(m_json ? jsonOf(summary, name) : pageOf(summary, name).toLocal8Bit());
    out.commit();
    return code;
}

} // namespace veldron
