// SPDX-License-Identifier: MIT
#include "recordings/ExportCommand.h"

#include "recordings/CsvExport.h"
#include "recordings/NetcdfExport.h"
#include "recordings/OutputFile.h"

#include <CLI/CLI.hpp>

namespace veldron {

namespace {

/// \a file with \a ending instead of its own.
std::string besideRecording(const std::string &file, const std::string &ending) {
    const std::string own = ".rec";
    const bool isOwn =
        file.size() > own.size() && file.compare(file.size() - own.size(), own.size(), own) == 0;
    return (isOwn ? file.substr(0, file.size() - own.size()) : file) + ending;
}

} // namespace

void ExportCommand::addTo(CLI::App &options) {
    options.add_option("FILE", m_file, "The recording, - for standard input")->required();
    CLI::Option_group *const form = options.add_option_group("Form");
    CLI::Option *const csv = form->add_flag(
        "--csv", m_csv, "A row a scan: date, time, low Hz, high Hz, Hz step, samples, dB, dB, ...");
    form->add_flag("--netcdf", m_netcdf, "netCDF-4 for xarray and others, beside the recording");
    form->require_option(1);
    options.add_flag("--long", m_long, "With --csv, a row a level: local time, frequency, level")
        ->needs(csv);
    m_window.addTo(options);
    m_output.addTo(options);
    m_dates.addTo(options);
}

std::string ExportCommand::outputByDefault() const {
    if (m_csv) {
        return "-";
    }
    if (m_file == "-" && m_output.path.empty()) {
        throw CommandError(ExitCode::WrongUsage,
                           QStringLiteral("standard input has no name for the output: give -o"));
    }
    return besideRecording(m_file, ".nc");
}

std::unique_ptr<RecordingExport> ExportCommand::makeExport(Console &console, OutputFile &out) {
    if (m_netcdf) {
        return std::make_unique<NetcdfExport>(m_file, m_window, console, out);
    }
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
