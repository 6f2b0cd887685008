// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/HistoryCommand.h"

#include <memory>
#include <span>

namespace veldron {

/// A command as the command line and its help know it.
struct CommandRow {
    /// What is typed behind the program's name.
    const char *name;
    /// One line, for the list of the commands.
    const char *summary;
    /// A whole command line, for the help.
    const char *example;
    std::unique_ptr<HistoryCommand> (*make)();
};

/// All commands, in the order of the help. A new command is a row.
[[nodiscard]] std::span<const CommandRow> commandRows();

} // namespace veldron
