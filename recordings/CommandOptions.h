// SPDX-License-Identifier: MIT
// The options that commands share. Each struct is a member of its command, adds itself to the
// command's options and then holds what the user gave.
#pragma once

#include "recordings/CommandLine.h"
#include "recordings/Console.h"
#include "recordings/OutputFile.h"
#include "recordings/RecordingDates.h"
#include "recordings/RecordingVisitor.h"

#include <QLocale>
#include <QtGlobal>

#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veldron {

/// --date-order.
struct DateOptions {
    void addTo(CommandLine &options);
    /// What the user knows, and otherwise the order of the present locale.
    [[nodiscard]] RecordingDates::Rules rules() const;

    /// "dmy", "mdy" or "ymd"; empty where the option was not given.
    std::string order;
};

/// --locale: whose texts playback would read.
struct LocaleOption {
    void addTo(CommandLine &options);
    /// The named one, or that of the machine. CommandError(WrongUsage) for a name that is none.
    [[nodiscard]] QLocale locale() const;

    std::string name;
};

/// -o and --force.
struct OutputOptions {
    void addTo(CommandLine &options);
    /// Opens what the user named, or \a byDefault. UntrappedError(File) if that is the recording
    /// \a input itself.
    [[nodiscard]] std::unique_ptr<OutputFile> open(const std::string &byDefault,
                                                   const std::string &input) const;
    /// The same for several recordings.
    [[nodiscard]] std::unique_ptr<OutputFile> open(const std::string &byDefault,
                                                   const std::vector<std::string> &inputs) const;

    /// What the user named, "-" for standard output; empty for the default.
    std::string path;
    bool force = false;
};

/// --from and --to: a window of time, from its first second to the one before its last.
///
/// A moment is seconds since day 0 of the Julian calendar, local time of the recording. Order of
/// calls: addTo(), parse(), then has() for each scan. A window that has seen scans has fixed its
/// day, so each pass over a file takes a copy of its own.
class TimeWindow {
public:
    void addTo(CommandLine &options);
    /// Reads the two texts. CommandError(WrongUsage) for one that is no time.
    void parse();
    /// Whether \a scan lies in it. Scans are asked in the order of the file: times of day without a
    /// date are those of the first scan's day. Without a bound each scan does, and one without a
    /// date lies in no window with a bound.
    [[nodiscard]] bool has(const RecordedScan &scan);
    [[nodiscard]] bool isOpen() const { return from.empty() && to.empty(); }

    /// As they were typed; empty without a bound.
    std::string from;
    std::string to;

private:
    /// A time that was given: of a day, or of the first scan's.
    struct Bound {
        std::optional<QDate> day;
        qint32 second = 0;
    };
    [[nodiscard]] static Bound read(const std::string &text);
    /// Gives times of day without a date the day of the first scan.
    void fixDay(const QDate &firstDay);

    std::optional<Bound> m_first;
    std::optional<Bound> m_last;
};

/// Seconds since day 0 of the Julian calendar.
[[nodiscard]] qint64 momentOf(const QDate &date, qint32 second);

} // namespace veldron
