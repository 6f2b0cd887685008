// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/CommandOptions.h"
#include "recordings/HistoryCommand.h"

#include <string>

namespace veldron {

/// `repair`: a copy that playback shows to its end, with a list of every line that was changed.
class RepairCommand : public HistoryCommand {
public:
    void addTo(CommandLine &options) override;
    ExitCode run(Console &console) override;

private:
    std::string m_file;
    OutputOptions m_output;
    DateOptions m_dates;
    LocaleOption m_locale;
};

} // namespace veldron
