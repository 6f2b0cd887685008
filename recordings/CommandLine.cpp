// SPDX-License-Identifier: MIT
#include "recordings/CommandLine.h"

#include "recordings/CommandError.h"

#include <CLI/CLI.hpp>

namespace veldron {

DeclaredOption &DeclaredOption::required() {
    m_option->required();
    return *this;
}

DeclaredOption &DeclaredOption::called(const std::string &value) {
    m_option->type_name(value);
    return *this;
}

DeclaredOption &DeclaredOption::oneOf(const std::vector<std::string> &values) {
    m_option->check(CLI::IsMember(values));
    return *this;
}

DeclaredOption &DeclaredOption::showDefault() {
    m_option->capture_default_str();
    return *this;
}

DeclaredOption &DeclaredOption::needs(const DeclaredOption &other) {
    m_option->needs(other.m_option);
    return *this;
}

DeclaredOption CommandLine::option(const std::string &name, std::string &value,
                                   const std::string &help) {
    return DeclaredOption(m_options->add_option(name, value, help));
}

DeclaredOption CommandLine::option(const std::string &name, std::vector<std::string> &values,
                                   const std::string &help) {
    return DeclaredOption(m_options->add_option(name, values, help));
}

DeclaredOption CommandLine::flag(const std::string &name, bool &isGiven, const std::string &help) {
    return DeclaredOption(m_options->add_flag(name, isGiven, help));
}

CommandLine CommandLine::choice(const std::string &title) {
    CLI::Option_group *const group = m_options->add_option_group(title);
    group->require_option(1);
    return CommandLine(group);
}

bool CommandLine::isNamed() const {
    return m_options->parsed();
}

ProgramCommandLine::ProgramCommandLine(const std::string &name, const std::string &summary,
                                       const std::string &version, const std::string &footer)
    : m_program(std::make_unique<CLI::App>(summary, name)) {
    m_program->require_subcommand(1);
    m_program->set_version_flag("--version", version);
    m_program->footer(footer);
}

ProgramCommandLine::~ProgramCommandLine() = default;

CommandLine ProgramCommandLine::addCommand(const std::string &name, const std::string &summary,
                                           const std::string &footer) {
    CLI::App *const command = m_program->add_subcommand(name, summary);
    command->footer(footer);
    return CommandLine(command);
}

std::optional<int> ProgramCommandLine::read(int argc, char **argv) {
    try {
        m_program->parse(argc, argv);
        return std::nullopt;
    } catch (const CLI::ParseError &error) {
        // Help and version come this way too, with 0.
        return m_program->exit(error) == 0 ? 0 : static_cast<int>(ExitCode::WrongUsage);
    }
}

} // namespace veldron
