// SPDX-License-Identifier: MIT
#include "recordings/RepairCommand.h"

#include "recordings/RecordingRepair.h"
#include "recordings/RecordingRun.h"

namespace veldron {

void RepairCommand::addTo(CommandLine &options) {
    options.option("IN", m_file, "The recording, - for standard input; it stays as it is")
        .required();
    options.option("OUT", m_output.path, "The copy to write").required();
    options.flag("--force", m_output.force, "Replace a file that is there already");
    m_dates.addTo(options);
    m_locale.addTo(options);
}

ExitCode RepairCommand::run(Console &console) {
    const DateTimeText texts(m_locale.locale());
    const std::unique_ptr<OutputFile> out = m_output.open("-", m_file);
    // Where the copy goes to standard output, the list can't.
    const std::unique_ptr<OutputFile> list =
        out->isStandardOutput() ? nullptr : std::make_unique<OutputFile>("-", false);
    RecordingRepair repair(*out, texts, [&](qint64 line, const QString &what) {
        if (list) {
            list->write(QStringLiteral("%1:%2: %3\n")
                            .arg(nameForMessages(m_file), QString::number(line), what)
                            .toLocal8Bit());
        } else {
            console.complain(m_file, line, what);
        }
    });
    const ExitCode code = readRecording(m_file, m_dates.rules(), repair, console);
    repair.finish();
    if (list) {
        list->commit();
    }
    if (!repair.plays()) {
        throw CommandError(ExitCode::Partly,
                           nameForMessages(m_file) +
                               QStringLiteral(": no scan is left that playback could show"));
    }
    out->commit();
    return code;
}

} // namespace veldron
