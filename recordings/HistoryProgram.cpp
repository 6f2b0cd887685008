// SPDX-License-Identifier: MIT
#include "recordings/HistoryProgram.h"

#include "common/UntrappedError.h"
#include "recordings/CommandError.h"
#include "recordings/Commands.h"
#include "recordings/Console.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <memory>
#include <string>
#include <vector>

namespace veldron {

namespace {

constexpr const char *kExitCodes =
    "Exit codes: 0 done (check: the recording plays to its end), 1 parts were skipped (check: "
    "playback would end early), 2 not a recording, 3 a file can't be read or written, 64 wrong "
    "command line.";

struct Entry {
    CLI::App *options;
    std::unique_ptr<HistoryCommand> command;
};

std::vector<Entry> addCommands(CLI::App &program) {
    std::vector<Entry> entries;
    for (const CommandRow &row : commandRows()) {
        CLI::App *const options = program.add_subcommand(row.name, row.summary);
        options->footer(std::string("Example: ") + row.example);
        std::unique_ptr<HistoryCommand> command = row.make();
        command->addTo(*options);
        entries.push_back({options, std::move(command)});
    }
    return entries;
}

int runChosen(const std::vector<Entry> &entries, Console &console) {
    for (const Entry &entry : entries) {
        if (entry.options->parsed()) {
            return static_cast<int>(entry.command->run(console));
        }
    }
    return static_cast<int>(ExitCode::WrongUsage);
}

} // namespace

int runHistoryProgram(int argc, char **argv) {
    CLI::App program("Reads recordings of VELDRON without loss and hands them on.",
                     "veldron-history");
    program.require_subcommand(1);
    program.set_version_flag("--version", VELDRON_VERSION);
    program.footer(kExitCodes);
    const std::vector<Entry> entries = addCommands(program);
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        // Help and version come this way too, with 0.
        return program.exit(error) == 0 ? 0 : static_cast<int>(ExitCode::WrongUsage);
    }
    Console console;
    try {
        return runChosen(entries, console);
    } catch (const CommandError &error) {
        console.say(error.message());
        return static_cast<int>(error.code());
    } catch (const UntrappedError &error) {
        console.say(error.message());
        return static_cast<int>(ExitCode::FileError);
    } catch (const std::exception &error) {
        console.say(QString::fromLocal8Bit(error.what()));
        return static_cast<int>(ExitCode::FileError);
    }
}

} // namespace veldron
