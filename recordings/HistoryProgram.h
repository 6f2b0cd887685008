// SPDX-License-Identifier: MIT
#pragma once

namespace veldron {

/// The program veldron-history: reads the command line and runs the one command that it names.
/// Errors are told on standard error. The result is for the shell: see ExitCode.
[[nodiscard]] int runHistoryProgram(int argc, char **argv);

} // namespace veldron
