// SPDX-License-Identifier: MIT
#include "recordings/ExportCommand.h"

#include "recordings/CsvExport.h"
#include "recordings/OutputFile.h"

#include <CLI/CLI.hpp>

namespace veldron {

void ExportCommand::addTo(CLI::App &options) {
    options.add_option("FILE", m_file, "The recording, - for standard input")->required();
    CLI::Option_group *const form = options.add_option_group("Form");
    CLI::Option *const csv = form->add_flag(
        "--csv", m_csv, "A row a scan: date, time, low Hz, high Hz, Hz step, samples, dB, dB, ...");
    form->require_option(1);
    options.add_flag("--long", m_long, "With --csv, a row a level: local time, frequency, level")
        ->needs(csv);
    m_window.addTo(options);
    m_output.addTo(options);
    m_dates.addTo(options);
}

std::string ExportCommand::outputByDefault() const {
    return "-";
}

std::unique_ptr<RecordingExport> ExportCommand::makeExport(Console &console, OutputFile &out) {
    using Layout = CsvExport::Layout;
    return std::make_unique<CsvExport>(m_file, m_window, console, out,
                                       m_long ? Layout::Columns : Layout::Rows);
}

ExitCode ExportCommand::run(Console &console) {
    m_window.parse();
    const std::unique_ptr<OutputFile> out = m_output.open(outputByDefault(), m_file);
    const std::unique_ptr<RecordingExport> target = makeExport(console, *out);
    const ExitCode code = readRecording(m_file, m_dates.rules(), *target, console);
    target->finish();
    out->commit();
    return code;
}

} // namespace veldron
