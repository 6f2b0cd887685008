// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/CommandError.h"
#include "recordings/CommandLine.h"
#include "recordings/Console.h"

namespace veldron {

/// One command of the program: made, given its options, and run once.
class HistoryCommand {
public:
    HistoryCommand() = default;
    HistoryCommand(const HistoryCommand &) = delete;
    HistoryCommand &operator=(const HistoryCommand &) = delete;
    virtual ~HistoryCommand() = default;

    /// Adds what the command takes to \a options, which writes into members of the command.
    virtual void addTo(CommandLine &options) = 0;
    /// Does it, behind addTo() and the reading of the command line. Results go to files and to
    /// standard output, messages to \a console. Ends by a CommandError, or by an UntrappedError for
    /// a file that can't be read or written, where it can't.
    virtual ExitCode run(Console &console) = 0;
};

} // namespace veldron
