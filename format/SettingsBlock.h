// SPDX-License-Identifier: MIT
#pragma once

#include "common/TextFile.h"
#include "format/FileLine.h"
#include "format/SettingsKeys.h"

#include <QString>

#include <map>
#include <optional>

namespace veldron {

/// A settings block as data: the text of each setting that it has, from StartSettings (whose value
/// is the date) to EndSettings. In its short form, which recordings have below their first block,
/// the six display lines are missing.
///
/// Reading: hand every line of a file to take(), and look at the values after the line for which
/// isEnd() is true. A block that begins, begins empty; a key that comes twice keeps the second
/// value. Writing: set the values, then writeTo(), which puts the lines into their order.
class SettingsBlock {
public:
    /// Notes the value of \a line; a StartSettings line drops all values from before. False, and
    /// nothing noted, for a line that is no settings line.
    bool take(const FileLine &line);
    /// Whether \a line is the last one of a block. Its value, if any, says nothing.
    [[nodiscard]] static bool isEnd(const FileLine &line);

    void set(SettingsKey key, const QString &value) { m_values[key] = value; }
    /// The value's text; nothing where the block lacks the line.
    [[nodiscard]] std::optional<QString> value(SettingsKey key) const;

    /// Writes the lines in the order of the keys. An empty block writes nothing.
    void writeTo(LineSink &sink) const;

private:
    std::map<SettingsKey, QString> m_values;
};

} // namespace veldron
