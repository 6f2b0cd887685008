// SPDX-License-Identifier: MIT
#include "recordings/HistoryProgram.h"

#include "common/UntrappedError.h"
#include "recordings/CommandError.h"
#include "recordings/CommandLine.h"
#include "recordings/Commands.h"
#include "recordings/Console.h"

#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veldron {

namespace {

constexpr const char *kExitCodes =
    "Exit codes: 0 done (check: the recording plays to its end), 1 parts were skipped (check: "
    "playback would end early), 2 not a recording, 3 a file can't be read or written, 64 wrong "
    "command line.";

struct Entry {
    CommandLine options;
    std::unique_ptr<HistoryCommand> command;
};

std::vector<Entry> addCommands(ProgramCommandLine &program) {
    std::vector<Entry> entries;
    for (const CommandRow &row : commandRows()) {
        CommandLine options =
            program.addCommand(row.name, row.summary, std::string("Example: ") + row.example);
        std::unique_ptr<HistoryCommand> command = row.make();
        command->addTo(options);
        entries.push_back({options, std::move(command)});
    }
    return entries;
}

int runChosen(const std::vector<Entry> &entries, Console &console) {
    for (const Entry &entry : entries) {
        if (entry.options.isNamed()) {
            return static_cast<int>(entry.command->run(console));
        }
    }
    return static_cast<int>(ExitCode::WrongUsage);
}

} // namespace

int runHistoryProgram(int argc, char **argv) {
    ProgramCommandLine program("veldron-history",
                               "Reads recordings of VELDRON without loss and hands them on.",
                               VELDRON_VERSION, kExitCodes);
    const std::vector<Entry> entries = addCommands(program);
    if (const std::optional<int> code = program.read(argc, argv)) {
        return *code;
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
