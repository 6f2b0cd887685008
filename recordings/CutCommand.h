// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/CommandOptions.h"
#include "recordings/HistoryCommand.h"

#include <string>

namespace veldron {

/// `cut`: the scans of a window of time as a recording of their own. The lines stay as they are;
/// in front of the first one stand the settings that count there.
class CutCommand : public HistoryCommand {
public:
    void addTo(CommandLine &options) override;
    ExitCode run(Console &console) override;

private:
    std::string m_file;
    OutputOptions m_output;
    DateOptions m_dates;
    TimeWindow m_window;
};

} // namespace veldron
