// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace veldron::Manual {

/// The manual of a program whose executable lies in \a executableFolder: the installed pages, those
/// made in the build tree, or the text that they are made of in the source tree, the first that is
/// there. Empty if none is.
[[nodiscard]] QString find(const QString &executableFolder);

/// Hands the manual at \a path to the user's browser. Otherwise tells why it can't: the text for
/// the user, empty after a success.
[[nodiscard]] QString show(const QString &path);

} // namespace veldron::Manual
