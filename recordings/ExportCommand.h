// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/CommandOptions.h"
#include "recordings/HistoryCommand.h"
#include "recordings/PngExport.h"
#include "recordings/RecordingExport.h"

#include <memory>
#include <string>

namespace veldron {

/// `export`: a recording in the form of other programs, one of CSV, netCDF and PNG.
///
/// CSV and netCDF take one pass. A picture takes two, the first to find out what there is to show,
/// for which a pipe is copied to a temporary file.
class ExportCommand : public HistoryCommand {
public:
    void addTo(CommandLine &options) override;
    ExitCode run(Console &console) override;

private:
    /// Those that only make sense with \a png.
    void addPictureOptions(CommandLine &options, const DeclaredOption &png);
    /// Standard output for CSV, otherwise a file beside the recording. CommandError(WrongUsage)
    /// where the recording comes from standard input, and so has no name, and the user gave none.
    [[nodiscard]] std::string outputByDefault() const;
    [[nodiscard]] std::unique_ptr<RecordingExport> makeExport(Console &console, OutputFile &out);
    /// CommandError(WrongUsage) for a size or a frequency that is none.
    [[nodiscard]] PictureOptions pictureOptions() const;
    ExitCode exportPicture(Console &console);
    ExitCode exportInOnePass(Console &console);

    std::string m_file;
    bool m_csv = false;
    bool m_long = false;
    bool m_netcdf = false;
    bool m_png = false;
    std::string m_size = "1280x800";
    std::string m_low;
    std::string m_high;
    std::string m_colours;
    bool m_trace = false;
    bool m_noAxes = false;
    OutputOptions m_output;
    DateOptions m_dates;
    TimeWindow m_window;
};

} // namespace veldron
