// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace veldron {

/// The facts that name one of the two kinds of files. Both are text, one byte a character
/// (Latin-1), and their lines end in CR LF; readers take a lone CR or LF for a line end too.
struct FileKind {
    /// The first line. Writers put it there for people; no reader compares it, and any first line
    /// is passed over unread.
    const char *firstLine;
    /// Ending of the name, without the point.
    const char *suffix;
    /// What file dialogs show for the kind: "VELDRON Settings (*.set)".
    const char *filter;
};

/// One settings block and nothing else.
inline constexpr FileKind kSettingsFile{"VELDRONv1 Settings", "set", "VELDRON Settings (*.set)"};

/// A settings block in full form, then scan lines (format/ScanLine.h), with further blocks in short
/// form between them wherever a setting or the date has changed. There is no trailer: the file ends
/// with the last line that was written.
inline constexpr FileKind kHistoryFile{"VELDRONv1 History file", "rec", "VELDRON History (*.rec)"};

} // namespace veldron
