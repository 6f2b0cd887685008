// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace veldron {

/// An option or argument that a command has declared. It may be copied, and is good for as long as
/// the program's command line.
class DeclaredOption {
public:
    explicit DeclaredOption(CLI::Option *option) : m_option(option) {}

    DeclaredOption &required();
    /// What the help shows for the value.
    DeclaredOption &called(const std::string &value);
    /// Any other value is refused.
    DeclaredOption &oneOf(const std::vector<std::string> &values);
    /// The help shows the value that counts without the option.
    DeclaredOption &showDefault();
    /// It is refused without \a other.
    DeclaredOption &needs(const DeclaredOption &other);

private:
    CLI::Option *m_option;
};

/// What one command takes on its command line, or a group of its options.
///
/// Values go to variables that outlive the reading of the line, and that keep what they have where
/// an option isn't given. CommandLine.cpp alone includes the parser's headers, which take longer to
/// compile than all commands together.
class CommandLine {
public:
    explicit CommandLine(CLI::App *options) : m_options(options) {}

    /// An option with a value ("-o,--output"), or an argument by its place ("FILE").
    DeclaredOption option(const std::string &name, std::string &value, const std::string &help);
    /// The same, which may have several values.
    DeclaredOption option(const std::string &name, std::vector<std::string> &values,
                          const std::string &help);
    DeclaredOption flag(const std::string &name, bool &isGiven, const std::string &help);
    /// A group, of whose options one must be given, and one only.
    CommandLine choice(const std::string &title);
    /// Whether the user has named this command. Asked when the line has been read.
    [[nodiscard]] bool isNamed() const;

private:
    CLI::App *m_options;
};

/// The command line of the whole program, of which each command is a part.
class ProgramCommandLine {
public:
    ProgramCommandLine(const std::string &name, const std::string &summary,
                       const std::string &version, const std::string &footer);
    ~ProgramCommandLine();
    ProgramCommandLine(const ProgramCommandLine &) = delete;
    ProgramCommandLine &operator=(const ProgramCommandLine &) = delete;

    CommandLine addCommand(const std::string &name, const std::string &summary,
                           const std::string &footer);
    /// Reads the line: nothing where a command is to run. Otherwise help or version have been
    /// printed, which is 0, or on standard error what is wrong, which is 64.
    [[nodiscard]] std::optional<int> read(int argc, char **argv);

private:
    std::unique_ptr<CLI::App> m_program;
};

} // namespace veldron
