// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace veldron {

/// How a file that is saved takes the place of what stands under its name. Whoever saves a file,
/// and whoever tells the user beforehand whether that will work, asks here.
struct FileReplacement {
    enum class Way {
        Rename,  ///< a new file is written beside the target and renamed over it
        InPlace, ///< the folder forbids that: the target is overwritten
        Refused, ///< neither is possible
    };

    Way way;
    /// Where the name leads to, through any chain of links. It need not exist.
    QString target;
    /// Why neither is possible, in a sentence for the user; otherwise empty.
    QString refusal;

    /// Looks at the file system as it is now. Nothing is held or tried: the write that follows can
    /// fail all the same.
    [[nodiscard]] static FileReplacement of(const QString &path);
};

/// Where \a path leads to, through any chain of links: a path that is no link, or the last one that
/// was looked at where the links go in a circle.
[[nodiscard]] QString endOfLinks(const QString &path);

} // namespace veldron
