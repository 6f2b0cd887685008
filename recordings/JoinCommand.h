// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/CommandOptions.h"
#include "recordings/HistoryCommand.h"

#include <string>
#include <vector>

namespace veldron {

/// `join`: several recordings, one behind the other, as one. The lines stay as they are; of the
/// first block of a further recording only what changes something is kept. Recordings whose dates
/// or times have different forms are refused, because a recording has one; one that begins before
/// the end of the one in front is told.
class JoinCommand : public HistoryCommand {
public:
    void addTo(CommandLine &options) override;
    ExitCode run(Console &console) override;

private:
    std::vector<std::string> m_files;
    OutputOptions m_output;
    DateOptions m_dates;
};

} // namespace veldron
