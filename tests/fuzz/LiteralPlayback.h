// SPDX-License-Identifier: MIT
#pragma once

#include "common/DateTimeText.h"

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <optional>

namespace veldron {

/// What playback comes to with a recording.
struct LiteralOutcome {
    /// The line at which it ends with an error; nothing where it doesn't.
    std::optional<qint64> errorLine;
    /// The error's text for the user.
    QString error;
    /// Whether a scan is shown at all.
    bool isShown = false;

    [[nodiscard]] bool plays() const { return isShown && !errorLine; }
};

/// Plays \a file forward as the main program does, with its own readers of lines, scans and values
/// but without its window: nothing is drawn, no panel holds a value. Ends the process where a
/// reader breaks a promise: lines that aren't the file's, a scan whose levels aren't the bytes of
/// its line or that doesn't survive being written again, a time that isn't the one in the text.
[[nodiscard]] LiteralOutcome playLiterally(const QByteArray &file, const DateTimeText &texts);

} // namespace veldron
