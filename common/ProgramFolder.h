// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace veldron::ProgramFolder {

/// The folder that holds the default settings file and that file dialogs start in: the folder of
/// the executable if the user may write there, otherwise the user's application data folder, which
/// is made if it is missing. An installed program always has the user's, also where root runs it or
/// where it is installed below the user's home. Needs a QCoreApplication.
[[nodiscard]] QString path();

/// The rule behind path(), with both candidates given. A program counts as installed if the folder
/// "../share/veldron", where an installation keeps its data, stands beside that of the executable.
[[nodiscard]] QString choose(const QString &executableFolder, const QString &userFolder);

} // namespace veldron::ProgramFolder
