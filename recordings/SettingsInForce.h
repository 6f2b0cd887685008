// SPDX-License-Identifier: MIT
#pragma once

#include "common/Hertz.h"
#include "format/SettingsKeys.h"
#include "recordings/RecordingVisitor.h"

#include <QByteArray>
#include <QString>

#include <map>
#include <optional>

namespace veldron {

/// Which frequencies the levels of a scan stand for: level i is at start + i x step.
struct FrequencyAxis {
    Hertz start;
    Hertz step;

    [[nodiscard]] Hertz at(qsizetype level) const { return start + step * level; }
    bool operator==(const FrequencyAxis &) const = default;
};

/// The settings that count at a place of a recording, gathered from the blocks above it.
///
/// A whole block replaces all settings but the display lines, which the blocks further down lack.
/// Settings lines without a whole block around them replace those of their keys.
class SettingsInForce {
public:
    void take(const RecordedBlock &block);
    /// Takes the lines of a whole block as lines() of another place has them.
    void takeLines(const std::map<SettingsKey, QByteArray> &lines);

    /// The text of a value; nothing where no block had the line.
    [[nodiscard]] std::optional<QString> value(SettingsKey key) const;
    /// A whole number; nothing where the text doesn't begin with one.
    [[nodiscard]] std::optional<qint64> number(SettingsKey key) const;
    /// A frequency or number of hertz, whichever decimal mark it has; nothing for another text.
    [[nodiscard]] std::optional<Hertz> hertz(SettingsKey key) const;
    /// In Channel mode start and step of the channels, otherwise half a span below the centre and a
    /// 320th of the span, in whole hertz. Nothing where the settings don't tell it, or where one of
    /// them is the -1 of a unit that didn't answer.
    [[nodiscard]] std::optional<FrequencyAxis> axis() const;
    /// The lines as they stand in the file, with their ends, in the order of the keys.
    [[nodiscard]] const std::map<SettingsKey, QByteArray> &lines() const { return m_lines; }

    bool operator==(const SettingsInForce &) const = default;

private:
    [[nodiscard]] bool isAnswered(SettingsKey key) const;

    std::map<SettingsKey, QByteArray> m_lines;
};

/// Whether \a key is one of the display lines, which only the first block of a recording has.
[[nodiscard]] bool isDisplayLine(SettingsKey key);

} // namespace veldron
