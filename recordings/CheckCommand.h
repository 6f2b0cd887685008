// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/CommandOptions.h"
#include "recordings/HistoryCommand.h"

#include <string>
#include <vector>

namespace veldron {

/// `check`: whether playback shows recordings to their end. Prints one line a finding, as compilers
/// do; the exit code is the worst of all files. A file that can't be read is told, and doesn't keep
/// the others from being checked.
class CheckCommand : public HistoryCommand {
public:
    void addTo(CommandLine &options) override;
    ExitCode run(Console &console) override;

private:
    std::vector<std::string> m_files;
    DateOptions m_dates;
    LocaleOption m_locale;
};

} // namespace veldron
