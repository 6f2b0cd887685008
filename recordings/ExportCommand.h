// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/CommandOptions.h"
#include "recordings/HistoryCommand.h"
#include "recordings/RecordingExport.h"

#include <memory>
#include <string>

namespace veldron {

/// `export`: a recording in the form of other programs.
class ExportCommand : public HistoryCommand {
public:
    void addTo(CLI::App &options) override;
    ExitCode run(Console &console) override;

private:
    [[nodiscard]] std::string outputByDefault() const;
    [[nodiscard]] std::unique_ptr<RecordingExport> makeExport(Console &console, OutputFile &out);

    std::string m_file;
    bool m_csv = false;
    bool m_long = false;
    bool m_netcdf = false;
    OutputOptions m_output;
    DateOptions m_dates;
    TimeWindow m_window;
};

} // namespace veldron
