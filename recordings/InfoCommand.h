// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/CommandOptions.h"
#include "recordings/HistoryCommand.h"

#include <string>

namespace veldron {

/// `info`: what is in a recording. The summary goes to standard output, the findings to standard
/// error.
class InfoCommand : public HistoryCommand {
public:
    void addTo(CommandLine &options) override;
    ExitCode run(Console &console) override;

private:
    std::string m_file;
    bool m_json = false;
    DateOptions m_dates;
    LocaleOption m_locale;
};

} // namespace veldron
