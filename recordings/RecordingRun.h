// SPDX-License-Identifier: MIT
#pragma once

#include "recordings/CommandError.h"
#include "recordings/Console.h"
#include "recordings/RecordingDates.h"
#include "recordings/RecordingVisitor.h"

#include <string>

namespace veldron {

/// A visitor that tells findings on standard error, as "FILE:LINE: what", and leaves scans and
/// blocks to the class that it is made for.
class TellingVisitor : public RecordingVisitor {
public:
    /// \a console outlives the visitor.
    TellingVisitor(std::string file, Console &console)
        : m_file(std::move(file)), m_console(console) {}

    void block(const RecordedBlock & /*block*/) override {}
    void finding(const RecordingFinding &finding) override {
        m_console.complain(m_file, finding.place.line, finding.what);
    }

private:
    std::string m_file;
    Console &m_console;
};

/// Reads the recording \a path ("-" is the standard input) with a progress bar, and gives all of it
/// to \a visitor. Partly where something was skipped, or where a date could not be read or was
/// refuted. CommandError(NotARecording) behind the end of a file that is none, UntrappedError(File)
/// for one that can't be read; the visitor has had all calls for what came before.
[[nodiscard]] ExitCode readRecording(const std::string &path, const RecordingDates::Rules &rules,
                                     RecordingVisitor &visitor, Console &console);

} // namespace veldron
